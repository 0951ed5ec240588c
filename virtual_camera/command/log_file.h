// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT
#pragma once

#include "virtual_camera/command/log_format.h"

#include <memory>
#include <string>

namespace virtual_camera {

/// A log that is written as it comes. Where a reader could make the writer wait, a thread of its
/// own writes: a pipe that nobody reads stops that thread and nothing else.
class LogFile
{
public:
    /// "-" is standard output. Throws std::system_error when it cannot be written.
    LogFile(const std::string &path, LogFormat format);
    /// Waits for what can still be written, but not for a reader that has stopped reading.
    ~LogFile();
    LogFile(const LogFile &) = delete;
    LogFile &operator=(const LogFile &) = delete;

    /// Any thread may call.
    void write(const LogRecord &record);

private:
    struct Backlog;
    static void writeOut(const std::shared_ptr<Backlog> &backlog);

    std::shared_ptr<Backlog> m_backlog; // the thread's, too, which may outlive this
};

} // namespace virtual_camera
