// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT
#include "virtual_camera/camera/streaming_parameters.h"

#include "virtual_camera/camera/control_table.h"
#include "virtual_camera/camera/little_endian.h"

#include <algorithm>

namespace virtual_camera {

namespace {

constexpr std::uint8_t probeSelector = 0x01;
constexpr std::uint8_t commitSelector = 0x02;
constexpr std::size_t blockSize10 = 26; // USB Video Class 1.0
constexpr std::size_t blockSize11 = 34;

} // namespace

Bytes defaultStreamingParameters()
{
    Bytes block;
    append(block, 0x0001, 2); // bmHint: the frame interval is kept
    append(block, 1, 1);      // bFormatIndex
    append(block, 1, 1);      // bFrameIndex
    append(block, frameInterval, 4);
    append(block, 0, 2); // wKeyFrameRate
    append(block, 0, 2); // wPFrameRate
    append(block, 0, 2); // wCompQuality
    append(block, 0, 2); // wCompWindowSize
    append(block, 0, 2); // wDelay
    append(block, pictureBytes, 4);
    append(block, streamingPayload, 4);
    append(block, 27000000, 4); // dwClockFrequency
    append(block, 0, 4);        // bmFramingInfo, bPreferedVersion, bMinVersion, bMaxVersion
    return block;
}

std::optional<Answer> answerStreamingRequest(const ControlRequest &request, const Bytes &block)
{
    if (request.value != probeSelector << 8 && request.value != commitSelector << 8)
        return std::nullopt;
    const auto code = static_cast<RequestCode>(request.request);
    const bool blockFits = request.length == blockSize10 || request.length == blockSize11;
    if (code == RequestCode::SetCur && !request.hostReads() && blockFits)
        return Answer::done();
    if (!request.hostReads())
        return std::nullopt;
    switch (code) {
    case RequestCode::GetCur:
    case RequestCode::GetMin:
    case RequestCode::GetMax:
    case RequestCode::GetDef:
        if (!blockFits)
            return std::nullopt;
        return Answer::done({ block.begin(), block.begin() + request.length });
    case RequestCode::GetLen:
        if (request.length < 2)
            return std::nullopt;
        return Answer::done({ blockSize11, 0 });
    case RequestCode::GetInfo:
        if (request.length < 1)
            return std::nullopt;
        return Answer::done({ 0x03 });
    default:
        return std::nullopt;
    }
}

} // namespace virtual_camera
