// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT
#pragma once

#include "virtual_camera/camera/control_request.h"

#include <chrono>
#include <cstdint>
#include <string>

namespace virtual_camera {

/// Something that a device saw.
struct LogRecord
{
    enum class Event {
        Request, ///< a control transfer, logged when it has been answered
        Open,
        Close,
        Unplug,
        Replug,
        Reset ///< by a program
    };
    enum class Result {
        Ok,
        Stall,
        Gone,      ///< the device was unplugged before it answered
        Cancelled, ///< the program gave up waiting
        // What faults make of it:
        Short,         ///< the answer was cut
        Long,          ///< the answer was filled up
        Overflow,      ///< the answer was longer than the host had asked for
        Wrong,         ///< the answer was inverted
        Lost,          ///< acknowledged, but not carried out
        ProtocolError, ///< garbage on the wire
        NoResponse     ///< silence on the wire
    };

    std::uint64_t sequence = 0;               ///< from 1, over all devices of a testbed
    std::chrono::microseconds time{ 0 };      ///< since the testbed was made
    std::chrono::microseconds submitted{ 0 }; ///< when a request came, on the same clock
    int address = 0;                          ///< for a replug
    int device = 0;                           ///< its number, from 1
    int file = 0; ///< which open file of the device, from 1; 0 for plugging
    Event event = Event::Request;
    // For requests. The data are the bytes that the host sent, or those that it got.
    ControlRequest request;
    Result result = Result::Ok;

    /// Whether this is a request to a control, as against those that every USB device gets.
    bool isControlRequest() const { return event == Event::Request && request.isClass(); }
};

/// "ok", "stall", ... and "request", "open", ...
const char *resultName(LogRecord::Result result);
const char *eventName(LogRecord::Event event);
/// As the kernel reports it: 0, or a negative errno.
int statusOf(LogRecord::Result result);

/// "cam1 SET_CUR pantilt_relative pan=+1 pan_speed=21 tilt=0 tilt_speed=0 [01 15 00 00] ok"
std::string toText(const LogRecord &record);
/// The same with the seconds before it: "0.512345 cam1 ..."
std::string toTimedText(const LogRecord &record);

} // namespace virtual_camera
