// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

#include "tests/device/wire.h"

#include <algorithm>
#include <iomanip>
#include <ostream>
#include <tuple>

namespace wire {

namespace {

Request request(const Control &control, std::uint8_t requestType, std::uint8_t code, Bytes data)
{
    return { requestType, code, static_cast<std::uint16_t>(control.selector << 8U),
        static_cast<std::uint16_t>(control.unit << 8U), control.length, std::move(data) };
}

Request read(const Control &control, std::uint8_t code) { return request(control, 0xa1, code, {}); }

using virtual_camera::LogRecord;
using virtual_camera::RequestLog;

int count(const RequestLog::Records &records, int camera, LogRecord::Event event)
{
    return static_cast<int>(std::count_if(records.begin(), records.end(), [=](const auto &record) {
        return record.event == event && (camera == 0 || record.device == camera);
    }));
}

} // namespace

bool operator==(const Request &a, const Request &b)
{
    const auto all = [](const Request &r) {
        return std::tie(r.requestType, r.request, r.value, r.index, r.length, r.data);
    };
    return all(a) == all(b);
}

std::ostream &operator<<(std::ostream &out, const Request &request)
{
    const auto hex = [&out](unsigned number, int digits) -> std::ostream & {
        return out << std::hex << std::setfill('0') << std::setw(digits) << number << std::dec;
    };
    hex(request.requestType, 2) << ' ';
    hex(request.request, 2) << " value=";
    hex(request.value, 4) << " index=";
    hex(request.index, 4) << " length=" << request.length << " [";
    for (const std::uint8_t byte : request.data)
        hex(byte, 2) << ' ';
    return out << ']';
}

Request set(const Control &control, Bytes data)
{
    return request(control, 0x21, 0x01, std::move(data));
}
Request getCur(const Control &control) { return read(control, 0x81); }
Request getMin(const Control &control) { return read(control, 0x82); }
Request getMax(const Control &control) { return read(control, 0x83); }
Request getDef(const Control &control) { return read(control, 0x87); }

Requests received(const RequestLog &log, int camera)
{
    Requests requests;
    for (const LogRecord &record : log.requests(camera)) {
        const auto &seen = record.request;
        requests.push_back({ seen.requestType, seen.request, seen.value, seen.index, seen.length,
            seen.hostReads() ? Bytes{} : seen.data });
    }
    return requests;
}

int opens(const RequestLog &log, int camera)
{
    return count(log.all(), camera, LogRecord::Event::Open);
}

bool waitUntilClosed(const RequestLog &log, int camera)
{
    return log.waitUntil([camera](const RequestLog::Records &records) {
        return count(records, camera, LogRecord::Event::Close)
            == count(records, camera, LogRecord::Event::Open);
    });
}

} // namespace wire
