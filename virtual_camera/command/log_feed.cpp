// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT
#include "virtual_camera/command/log_feed.h"

#include "virtual_camera/command/control_socket.h"

#include <algorithm>
#include <utility>

namespace virtual_camera {

namespace {

constexpr std::size_t longestBacklog = 1 << 19;

} // namespace

LogFeed::LogFeed() : m_format(jsonLog()), m_wakeUp(0, [this] { push(); }) { }

void LogFeed::add(const std::shared_ptr<Connection> &connection)
{
    const bool known = std::any_of(
        m_followers.begin(), m_followers.end(), [&connection](const Follower &follower) {
            return follower.connection.lock() == connection;
        });
    if (!known)
        m_followers.push_back({ connection });
    m_followed = true;
}

void LogFeed::write(const LogRecord &record)
{
    if (!m_followed)
        return;
    std::string line = m_format.record(record);
    if (line.empty())
        return;
    line.pop_back();
    {
        const std::lock_guard lock(m_mutex);
        m_lines.push_back(std::move(line));
    }
    m_wakeUp.request();
}

void LogFeed::push()
{
    std::vector<std::string> lines;
    {
        const std::lock_guard lock(m_mutex);
        lines.swap(m_lines);
    }
    const auto gone = std::remove_if(m_followers.begin(), m_followers.end(),
        [](const Follower &follower) { return follower.connection.expired(); });
    m_followers.erase(gone, m_followers.end());
    m_followed = !m_followers.empty();
    for (Follower &follower : m_followers) {
        for (const std::string &line : lines)
            send(follower, line);
    }
}

void LogFeed::send(Follower &follower, const std::string &line) const
{
    const std::shared_ptr<Connection> connection = follower.connection.lock();
    if (!connection)
        return;
    if (connection->unsent() + line.size() > longestBacklog) {
        ++follower.lost;
        return;
    }
    if (follower.lost > 0) {
        std::string lost = m_format.lost(std::exchange(follower.lost, 0));
        lost.pop_back();
        connection->send(lost);
    }
    connection->send(line);
}

} // namespace virtual_camera
