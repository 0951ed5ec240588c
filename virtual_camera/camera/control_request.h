// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <optional>
#include <utility>
#include <vector>

namespace virtual_camera {

using Bytes = std::vector<std::uint8_t>;

// One control transfer as it arrives at a device: the setup packet and, when the host sends
// data, that data. Field names and meanings are those of the USB standard.
struct ControlRequest
{
    std::uint8_t requestType = 0;
    std::uint8_t request = 0;
    std::uint16_t value = 0;
    std::uint16_t index = 0;
    std::uint16_t length = 0; // bytes that follow, or that the host is ready to take
    Bytes data;               // what the host sent; empty when the host reads

    bool hostReads() const { return (requestType & 0x80U) != 0; }
    bool isStandard() const { return (requestType & 0x60U) == 0; }
    bool isClass() const { return (requestType & 0x60U) == 0x20U; }
    int recipient() const { return requestType & 0x1f; }
    std::uint8_t selector() const { return static_cast<std::uint8_t>(value >> 8U); }
    std::uint8_t entity() const { return static_cast<std::uint8_t>(index >> 8U); }
    std::uint8_t interfaceNumber() const { return static_cast<std::uint8_t>(index & 0xffU); }
};

// Reads a setup packet and, for a host that sends, the data behind it. Nothing when there are
// fewer bytes than the setup packet announces.
std::optional<ControlRequest> parseControlRequest(const std::uint8_t *bytes, std::size_t size);

// What a device does with a control transfer: it takes it (with data when the host reads) or
// it stalls the pipe.
struct Answer
{
    bool stalled = false;
    Bytes data;

    static Answer stall() { return { true, {} }; }
    static Answer done(Bytes bytes = {}) { return { false, std::move(bytes) }; }
};

} // namespace virtual_camera
