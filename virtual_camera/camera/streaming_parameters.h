// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT
#pragma once

#include "virtual_camera/camera/control_request.h"

#include <variant>

namespace virtual_camera {

// The one picture format that the camera announces.
constexpr std::uint16_t pictureWidth = 1920;
constexpr std::uint16_t pictureHeight = 1080;
constexpr std::uint32_t pictureBytes = pictureWidth * pictureHeight * 2;
constexpr std::uint32_t frameInterval = 333333; ///< 100 ns each
constexpr std::uint16_t streamingPayload = 1024;
constexpr std::uint32_t clockFrequency = 27000000; ///< Hz

/// Length of the probe and commit block: 26 bytes in release 1.0 of the USB Video Class, 34 in
/// 1.1, 48 in 1.5.
std::size_t streamingBlockSize(std::uint16_t videoClass);

/// That block, filled in for the one format.
Bytes streamingBlock(std::uint16_t videoClass);

/// The answer to a request for the streaming interface itself, or why it stalls. Whatever a
/// program proposes comes back as the one format; committing to any other is refused. No picture
/// is ever sent.
std::variant<Answer, RequestError> answerStreamingRequest(
    const ControlRequest &request, std::uint16_t videoClass);

} // namespace virtual_camera
