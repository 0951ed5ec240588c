// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT
#pragma once

#include "virtual_camera/camera/clock.h"
#include "virtual_camera/camera/control_request.h"

#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <deque>
#include <functional>
#include <mutex>
#include <string>
#include <vector>

namespace virtual_camera {

// Something that a device saw.
struct LogRecord
{
    enum class Event {
        Request, // a control transfer, logged when it has been answered
        Open,
        Close,
        Unplug,
        Replug,
        Reset // by a program
    };
    enum class Result {
        Ok,
        Stall,
        Short,    // answered, but cut by a fault
        Gone,     // the device was unplugged before it answered
        Cancelled // the program gave up waiting
    };

    std::uint64_t sequence = 0;               // from 1, over all devices of a testbed
    std::chrono::microseconds time{ 0 };      // since the testbed was made
    std::chrono::microseconds submitted{ 0 }; // when a request came, on the same clock
    int address = 0;                          // for a replug
    int device = 0;                           // its number, from 1
    int file = 0; // which open file of the device, from 1; 0 for plugging
    Event event = Event::Request;
    // For requests. The data are the bytes that the host sent, or those that it got.
    ControlRequest request;
    Result result = Result::Ok;

    // Whether this is a request to a control, as against those that every USB device gets.
    bool isControlRequest() const { return event == Event::Request && request.isClass(); }
};

// "ok", "stall", ... and "request", "open", ...
const char *resultName(LogRecord::Result result);
const char *eventName(LogRecord::Event event);

// "cam1 SET_CUR pantilt_relative pan=+1 pan_speed=21 tilt=0 tilt_speed=0 [01 15 00 00] ok"
std::string toText(const LogRecord &record);
// The same with the seconds before it: "0.512345 cam1 ..."
std::string toTimedText(const LogRecord &record);

// Everything that the devices of a testbed saw lately, in the order in which they saw it. Every
// function may be called from any thread.
class RequestLog
{
public:
    using Records = std::deque<LogRecord>;
    static constexpr std::chrono::seconds patience{ 20 };
    /// So many are kept, the latest ones; they take some 20 MB.
    static constexpr std::size_t mostRecords = 100000;

    // The clock dates the records; the log begins now.
    explicit RequestLog(Clock clock = steadyClock());

    // Numbers the record, gives it the time and tells those who wait.
    void add(LogRecord record);
    void clear();
    // On the clock that dates the records.
    std::chrono::microseconds now() const;

    Records all() const;
    // Requests to controls, of one device or (0) of all of them.
    Records requests(int device = 0) const;
    // The same in words, without the time.
    std::vector<std::string> lines(int device = 0) const;
    // Everything in words: requests to controls and opening, closing, plugging.
    std::vector<std::string> allLines() const;

    // Waits until the condition holds for all records; false when it still does not after the
    // time, which is only meant to end a test that has failed.
    bool waitUntil(const std::function<bool(const Records &)> &condition,
        std::chrono::milliseconds longest = patience) const;
    bool waitForRequests(std::size_t count, int device = 0) const;
    // For a line, as lines() and allLines() have it.
    bool waitForLine(const std::string &line) const;

    // Off: records are only handed to the writer, and none can be asked for. On at first.
    void keepRecords(bool keep);
    // Is handed every record as it comes, one at a time.
    void setWriter(std::function<void(const LogRecord &)> writer);

private:
    mutable std::mutex m_mutex;
    mutable std::condition_variable m_grown;
    Records m_records;
    bool m_keep = true;
    std::uint64_t m_lastSequence = 0;
    const Clock m_clock;
    const std::chrono::microseconds m_start;
    std::function<void(const LogRecord &)> m_writer;
};

} // namespace virtual_camera
