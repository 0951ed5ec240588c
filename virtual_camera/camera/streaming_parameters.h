// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT
#pragma once

#include "virtual_camera/camera/control_request.h"

#include <optional>

namespace virtual_camera {

// The one picture format that the camera announces.
constexpr std::uint16_t pictureWidth = 1920;
constexpr std::uint16_t pictureHeight = 1080;
constexpr std::uint32_t pictureBytes = pictureWidth * pictureHeight * 2;
constexpr std::uint32_t frameInterval = 333333; // 100 ns each
constexpr std::uint16_t streamingPayload = 1024;

// The probe and commit block of the USB Video Class 1.1, filled for that format.
Bytes defaultStreamingParameters();

// Negotiation on the streaming interface; the camera has one format, so whatever is proposed
// comes back as that. Nothing when the request is to stall. No picture is ever sent.
std::optional<Answer> answerStreamingRequest(const ControlRequest &request, const Bytes &block);

} // namespace virtual_camera
