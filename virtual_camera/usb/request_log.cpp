// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT
#include "virtual_camera/usb/request_log.h"

#include <algorithm>
#include <utility>

namespace virtual_camera {

namespace {

bool isWorthALine(const LogRecord &record)
{
    return record.isControlRequest() || record.event != LogRecord::Event::Request;
}

bool belongsTo(const LogRecord &record, int device)
{
    return record.isControlRequest() && (device == 0 || record.device == device);
}

} // namespace

RequestLog::RequestLog(Clock clock) : m_clock(std::move(clock)), m_start(m_clock()) { }

void RequestLog::add(LogRecord record)
{
    const std::lock_guard lock(m_mutex);
    record.sequence = ++m_lastSequence;
    record.time = now();
    if (m_writer)
        m_writer(record);
    if (m_keep)
        m_records.push_back(std::move(record));
    if (m_records.size() > mostRecords)
        m_records.pop_front();
    m_grown.notify_all();
}

std::chrono::microseconds RequestLog::now() const { return m_clock() - m_start; }

void RequestLog::clear()
{
    const std::lock_guard lock(m_mutex);
    m_records.clear();
}

RequestLog::Records RequestLog::all() const
{
    const std::lock_guard lock(m_mutex);
    return m_records;
}

RequestLog::Records RequestLog::requests(int device) const
{
    Records found;
    const std::lock_guard lock(m_mutex);
    std::copy_if(m_records.begin(), m_records.end(), std::back_inserter(found),
        [device](const LogRecord &record) { return belongsTo(record, device); });
    return found;
}

std::vector<std::string> RequestLog::lines(int device) const
{
    std::vector<std::string> texts;
    for (const LogRecord &record : requests(device))
        texts.push_back(toText(record));
    return texts;
}

std::vector<std::string> RequestLog::allLines() const
{
    std::vector<std::string> texts;
    for (const LogRecord &record : all()) {
        if (isWorthALine(record))
            texts.push_back(toText(record));
    }
    return texts;
}

bool RequestLog::waitUntil(
    const std::function<bool(const Records &)> &condition, std::chrono::milliseconds longest) const
{
    std::unique_lock lock(m_mutex);
    return m_grown.wait_for(lock, longest, [&] { return condition(m_records); });
}

bool RequestLog::waitForRequests(std::size_t count, int device) const
{
    return waitUntil([count, device](const Records &records) {
        const auto found = std::count_if(records.begin(), records.end(),
            [device](const LogRecord &record) { return belongsTo(record, device); });
        return static_cast<std::size_t>(found) >= count;
    });
}

bool RequestLog::waitForLine(const std::string &line) const
{
    return waitUntil([&line](const Records &records) {
        return std::any_of(records.begin(), records.end(), [&line](const LogRecord &record) {
            return isWorthALine(record) && toText(record) == line;
        });
    });
}

void RequestLog::keepRecords(bool keep)
{
    const std::lock_guard lock(m_mutex);
    m_keep = keep;
}

void RequestLog::setWriter(std::function<void(const LogRecord &)> writer)
{
    const std::lock_guard lock(m_mutex);
    m_writer = std::move(writer);
}

} // namespace virtual_camera
