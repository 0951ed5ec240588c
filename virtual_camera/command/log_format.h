// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT
#pragma once

#include "virtual_camera/usb/request_log.h"

#include <cstdint>
#include <functional>
#include <string>

namespace virtual_camera {

/// Of the log in words and in JSON. It grows when a program that understood the last one would be
/// misled.
constexpr int logVersion = 1;

/// What a log consists of, in bytes as they go out.
struct LogFormat
{
    std::function<std::string()> header;
    /// Empty for a record that this log leaves out.
    std::function<std::string(const LogRecord &)> record;
    /// In place of so many records that nobody took in time.
    std::function<std::string(std::uint64_t)> lost;
};

LogFormat textLog();
LogFormat jsonLog();

} // namespace virtual_camera
