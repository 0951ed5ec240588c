// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

// What a camera received, as the numbers that were on the bus.
#pragma once

#include "virtual_camera/usb/request_log.h"

#include <cstdint>
#include <initializer_list>
#include <iosfwd>
#include <string>
#include <vector>

namespace wire {

using Bytes = std::vector<std::uint8_t>;

/// The setup packet of a control request and, of a request that sends, its data. What the camera
/// answered to a request that reads is not part of it.
struct Request
{
    std::uint8_t requestType; // 0x21 to an interface, 0xa1 from it
    std::uint8_t request;     // SET_CUR and so on
    std::uint16_t value;      // the control's selector in the high byte
    std::uint16_t index;      // the unit in the high byte, the interface in the low one
    std::uint16_t length;
    Bytes data;
};
using Requests = std::vector<Request>;

bool operator==(const Request &a, const Request &b);
std::ostream &operator<<(std::ostream &out, const Request &request);

/// A control of the camera: unit and selector. Its interface is number 0.
struct Control
{
    std::uint8_t unit;
    std::uint8_t selector;
    std::uint8_t length;
};

// Camera terminal (unit 1) and processing unit (unit 2), with the USB Video Class's selectors.
constexpr Control focusAbsolute{ 1, 0x06, 2 };
constexpr Control focusRelative{ 1, 0x07, 2 };
constexpr Control zoomAbsolute{ 1, 0x0b, 2 };
constexpr Control zoomRelative{ 1, 0x0c, 3 };
constexpr Control pantiltAbsolute{ 1, 0x0d, 8 };
constexpr Control pantiltRelative{ 1, 0x0e, 4 };
constexpr Control rollAbsolute{ 1, 0x0f, 2 };
constexpr Control backlight{ 2, 0x01, 2 };
constexpr Control brightness{ 2, 0x02, 2 };
constexpr Control contrast{ 2, 0x03, 2 };
constexpr Control gain{ 2, 0x04, 2 };
constexpr Control powerLineFrequency{ 2, 0x05, 1 };
constexpr Control saturation{ 2, 0x07, 2 };
constexpr Control sharpness{ 2, 0x08, 2 };
constexpr Control gamma{ 2, 0x09, 2 };
constexpr Control whiteBalance{ 2, 0x0a, 2 };
constexpr Control whiteBalanceAuto{ 2, 0x0b, 1 };

/// SET_CUR with these bytes.
Request set(const Control &control, Bytes data);
Request getCur(const Control &control);
Request getMin(const Control &control);
Request getMax(const Control &control);
Request getDef(const Control &control);

/// What a camera (by number; 0 for any) received since the log was cleared, in order.
Requests received(const virtual_camera::RequestLog &log, int camera = 0);

/// How often a camera (0 for any) was opened since the log was cleared.
int opens(const virtual_camera::RequestLog &log, int camera = 0);

/// Waits until a camera (0 for any) was closed as often as it was opened since the log was cleared.
bool waitUntilClosed(const virtual_camera::RequestLog &log, int camera = 0);

} // namespace wire
