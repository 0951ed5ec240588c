// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <utility>
#include <vector>

namespace virtual_camera {

using Bytes = std::vector<std::uint8_t>;

/// One control transfer as it arrives at a device: the setup packet and, when the host sends
/// data, that data. Field names and meanings are those of USB 2.0, section 9.3.
struct ControlRequest
{
    std::uint8_t requestType = 0;
    std::uint8_t request = 0;
    std::uint16_t value = 0;
    std::uint16_t index = 0;
    std::uint16_t length = 0; ///< bytes that follow, or that the host is ready to take
    Bytes data;               ///< what the host sent; empty when the host reads

    bool hostReads() const;
    bool isStandard() const;
    bool isClass() const;
    /// USB_RECIP_DEVICE, USB_RECIP_INTERFACE, ...
    int recipient() const;

    // For requests of the USB Video Class:
    std::uint8_t selector() const { return static_cast<std::uint8_t>(value >> 8U); }
    std::uint8_t entity() const { return static_cast<std::uint8_t>(index >> 8U); }
    std::uint8_t interfaceNumber() const { return static_cast<std::uint8_t>(index & 0xffU); }
};

/// Reads a setup packet and, for a host that sends, the data behind it. Empty when there are
/// fewer bytes than the setup packet announces.
std::optional<ControlRequest> parseControlRequest(const std::uint8_t *bytes, std::size_t size);

/// Why the last request stalled, as a camera answers when it is asked (USB Video Class 1.1,
/// 4.2.1.2).
enum class RequestError : std::uint8_t {
    None = 0,
    NotReady = 1,
    WrongState = 2,
    Power = 3,
    OutOfRange = 4,
    InvalidUnit = 5,
    InvalidControl = 6,
    InvalidRequest = 7
};

/// What a device does with a control transfer: it takes it (with data when the host reads) or
/// it stalls the pipe.
struct Answer
{
    bool stalled = false;
    Bytes data;

    static Answer stall() { return { true, {} }; }
    static Answer done(Bytes bytes = {}) { return { false, std::move(bytes) }; }
    /// What the host reads: never more than it asked for.
    static Answer reply(const ControlRequest &request, Bytes bytes);
};

} // namespace virtual_camera
