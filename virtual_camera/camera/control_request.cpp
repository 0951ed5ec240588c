// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT
#include "virtual_camera/camera/control_request.h"

#include "virtual_camera/camera/little_endian.h"

namespace virtual_camera {

std::optional<ControlRequest> parseControlRequest(const std::uint8_t *bytes, std::size_t size)
{
    constexpr std::size_t setupSize = 8;
    if (bytes == nullptr || size < setupSize)
        return std::nullopt;
    ControlRequest request;
    request.requestType = bytes[0];
    request.request = bytes[1];
    request.value = static_cast<std::uint16_t>(readUnsigned(bytes + 2, 2));
    request.index = static_cast<std::uint16_t>(readUnsigned(bytes + 4, 2));
    request.length = static_cast<std::uint16_t>(readUnsigned(bytes + 6, 2));
    if (size - setupSize < request.length)
        return std::nullopt;
    if (!request.hostReads())
        request.data.assign(bytes + setupSize, bytes + setupSize + request.length);
    return request;
}

} // namespace virtual_camera
