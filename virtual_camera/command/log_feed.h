// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT
#pragma once

#include "virtual_camera/command/log_format.h"
#include "virtual_camera/command/wake_up.h"

#include <memory>
#include <mutex>
#include <vector>

namespace virtual_camera {

class Connection;

/// Hands the log to the programs that follow it at the control socket. One that does not read
/// loses records, and is told how many.
class LogFeed
{
public:
    LogFeed();

    /// The program is sent every record from now on.
    void add(const std::shared_ptr<Connection> &connection);
    /// Any thread may call.
    void write(const LogRecord &record);

private:
    struct Follower
    {
        std::weak_ptr<Connection> connection;
        std::uint64_t lost = 0;
    };

    void push();
    void send(Follower &follower, const std::string &line) const;

    LogFormat m_format;
    std::vector<Follower> m_followers;
    std::atomic<bool> m_followed{ false };
    std::mutex m_mutex; // guards what follows
    std::vector<std::string> m_lines;
    WakeUp m_wakeUp;
};

} // namespace virtual_camera
