// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT
#include "virtual_camera/camera/control_request.h"

#include "virtual_camera/camera/little_endian.h"

#include <algorithm>
#include <linux/usb/ch9.h>
#include <utility>

namespace virtual_camera {

bool ControlRequest::hostReads() const { return (requestType & USB_DIR_IN) != 0; }

bool ControlRequest::isStandard() const
{
    return (requestType & USB_TYPE_MASK) == USB_TYPE_STANDARD;
}

bool ControlRequest::isClass() const { return (requestType & USB_TYPE_MASK) == USB_TYPE_CLASS; }

int ControlRequest::recipient() const { return requestType & USB_RECIP_MASK; }

std::optional<ControlRequest> parseControlRequest(const std::uint8_t *bytes, std::size_t size)
{
    constexpr std::size_t setupSize = sizeof(usb_ctrlrequest);
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

Answer Answer::reply(const ControlRequest &request, Bytes bytes)
{
    bytes.resize(std::min<std::size_t>(request.length, bytes.size()));
    return { false, std::move(bytes) };
}

} // namespace virtual_camera
