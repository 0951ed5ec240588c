// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT
#pragma once

#include "virtual_camera/command/json.h"
#include "virtual_camera/command/wake_up.h"

#include <map>
#include <memory>
#include <string>
#include <vector>

namespace virtual_camera {

class Connection;
class Testbed;

/// Pushes every change of the devices to the programs that watch them: what differs from the
/// message before, at most 60 times a second. Who does not read gets the difference later, at once.
class StateFeed
{
public:
    explicit StateFeed(Testbed &testbed);

    /// The program is sent everything at once, then the changes.
    void add(const std::shared_ptr<Connection> &connection);
    /// Something may have changed. Any thread may call.
    void touch();

private:
    /// The text of each member of a device, as it was sent last.
    using Members = std::map<std::string, std::string>;
    struct Watcher
    {
        std::weak_ptr<Connection> connection;
        std::vector<Members> sent;
    };

    void forget(const std::function<bool(const Watcher &)> &which);
    void push();
    std::vector<json::Object> states(bool withDescriptions) const;
    void send(Watcher &watcher, json::Object message, const std::vector<json::Object> &states);

    Testbed &m_testbed;
    std::vector<Watcher> m_watchers;
    std::atomic<bool> m_watched{ false };
    /// Since the last push, by more than motors.
    std::atomic<bool> m_touched{ false };
    WakeUp m_wakeUp;
};

} // namespace virtual_camera
