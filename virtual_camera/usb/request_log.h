// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT
#pragma once

#include "virtual_camera/camera/clock.h"
#include "virtual_camera/usb/log_record.h"

#include <chrono>
#include <condition_variable>
#include <deque>
#include <functional>
#include <mutex>
#include <string>
#include <vector>

namespace virtual_camera {

/// Everything that the devices of a testbed saw lately, in the order in which they saw it. Every
/// function may be called from any thread.
class RequestLog
{
public:
    using Records = std::deque<LogRecord>;
    static constexpr std::chrono::seconds patience{ 20 };
    /// So many are kept, the latest ones; they take some 20 MB.
    static constexpr std::size_t mostRecords = 100000;

    /// The clock dates the records; the log begins now.
    explicit RequestLog(Clock clock = steadyClock());

    /// Numbers the record, gives it the time and tells those who wait.
    void add(LogRecord record);
    void clear();
    /// On the clock that dates the records.
    std::chrono::microseconds now() const;

    Records all() const;
    /// Requests to controls, of one device or (0) of all of them.
    Records requests(int device = 0) const;
    /// The same in words, without the time.
    std::vector<std::string> lines(int device = 0) const;
    /// Everything in words: requests to controls and opening, closing, plugging.
    std::vector<std::string> allLines() const;

    /// Waits until the condition holds for all records; false when it still does not after the
    /// time, which is only meant to end a test that has failed.
    bool waitUntil(const std::function<bool(const Records &)> &condition,
        std::chrono::milliseconds longest = patience) const;
    bool waitForRequests(std::size_t count, int device = 0) const;
    /// For a line, as lines() and allLines() have it.
    bool waitForLine(const std::string &line) const;

    /// Off: records are only handed to the writer, and none can be asked for. On at first.
    void keepRecords(bool keep);
    /// Is handed every record as it comes, one at a time.
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
