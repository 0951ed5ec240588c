// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT
#include "virtual_camera/camera/streaming_parameters.h"

#include "virtual_camera/camera/control_table.h"
#include "virtual_camera/camera/little_endian.h"

#include <algorithm>
#include <array>
#include <linux/usb/video.h>

namespace virtual_camera {

namespace {

struct Block
{
    std::uint16_t videoClass; // from this release on
    std::size_t size;
};
constexpr std::array<Block, 3> blocks{ { { 0x0100, 26 }, { 0x0110, 34 }, { 0x0150, 48 } } };

// A host that speaks an older release sends a shorter block.
bool canTake(std::size_t length, std::uint16_t videoClass)
{
    return std::any_of(blocks.begin(), blocks.end(),
        [&](const Block &block) { return block.size == length && block.videoClass <= videoClass; });
}

bool namesTheFormat(const Bytes &block)
{
    constexpr std::size_t formatIndex = 2;
    constexpr std::size_t frameIndex = 3;
    return block[formatIndex] == 1 && block[frameIndex] == 1;
}

std::variant<Answer, RequestError> propose(
    const ControlRequest &request, bool commit, std::uint16_t videoClass)
{
    if (!canTake(request.data.size(), videoClass))
        return RequestError::InvalidRequest;
    if (commit && !namesTheFormat(request.data))
        return RequestError::OutOfRange;
    return Answer::done();
}

} // namespace

std::size_t streamingBlockSize(std::uint16_t videoClass)
{
    std::size_t size = 0;
    for (const Block &block : blocks) {
        if (block.videoClass <= videoClass)
            size = block.size;
    }
    return size;
}

Bytes streamingBlock(std::uint16_t videoClass)
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
    append(block, clockFrequency, 4); // from here on: 1.1
    append(block, 0, 4);              // bmFramingInfo, bPreferedVersion, bMinVersion, bMaxVersion
    append(block, 0, 6);              // from here on: 1.5. bUsage to bmRateControlModes
    append(block, 0, 8);              // bmLayoutPerStream
    block.resize(streamingBlockSize(videoClass));
    return block;
}

std::variant<Answer, RequestError> answerStreamingRequest(
    const ControlRequest &request, std::uint16_t videoClass)
{
    const bool commit = request.selector() == UVC_VS_COMMIT_CONTROL;
    if ((request.value & 0xffU) != 0 || (!commit && request.selector() != UVC_VS_PROBE_CONTROL))
        return RequestError::InvalidControl;
    const auto code = static_cast<RequestCode>(request.request);
    if (request.hostReads() == (code == RequestCode::SetCur))
        return RequestError::InvalidRequest;
    switch (code) {
    case RequestCode::SetCur:
        return propose(request, commit, videoClass);
    case RequestCode::GetMin:
    case RequestCode::GetMax:
    case RequestCode::GetDef:
        // Only what is being negotiated has a range.
        if (commit)
            return RequestError::InvalidRequest;
        [[fallthrough]];
    case RequestCode::GetCur:
        return Answer::reply(request, streamingBlock(videoClass));
    case RequestCode::GetLen:
        return Answer::reply(
            request, { static_cast<std::uint8_t>(streamingBlockSize(videoClass)), 0 });
    case RequestCode::GetInfo:
        return Answer::reply(request, { UVC_CONTROL_CAP_GET | UVC_CONTROL_CAP_SET });
    default:
        return RequestError::InvalidRequest;
    }
}

} // namespace virtual_camera
