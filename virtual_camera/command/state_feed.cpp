// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT
#include "virtual_camera/command/state_feed.h"

#include "virtual_camera/command/control_socket.h"
#include "virtual_camera/command/description_json.h"
#include "virtual_camera/command/state_json.h"
#include "virtual_camera/testbed/testbed.h"

#include <algorithm>

namespace virtual_camera {

namespace {

constexpr gint64 pause = 1000000 / 60;

bool anythingMoves(Testbed &testbed)
{
    for (int number = 1; number <= testbed.size(); ++number) {
        const Device &device = testbed.device(number);
        if (device.isCamera() && device.state().moving())
            return true;
    }
    return false;
}

// The members that are not as they were, which are then as they are.
template<typename Members> json::Object takeChanges(Members &sent, const json::Object &now)
{
    json::Object changes;
    for (const auto &[name, value] : now.members()) {
        std::string &before = sent[name];
        if (before != value.text()) {
            before = value.text();
            changes.add(name, value);
        }
    }
    return changes;
}

} // namespace

StateFeed::StateFeed(Testbed &testbed) : m_testbed(testbed), m_wakeUp(pause, [this] { push(); }) { }

void StateFeed::add(const std::shared_ptr<Connection> &connection)
{
    connection->onSent([this] { touch(); });
    // Who asks again is told everything again, and each change once.
    forget(
        [&connection](const Watcher &watcher) { return watcher.connection.lock() == connection; });
    m_watchers.push_back(
        { connection, std::vector<Members>(static_cast<std::size_t>(m_testbed.size())) });
    m_watched = true;
    send(m_watchers.back(), json::Object{ { "ok", true } }.add(greeting(m_testbed)), states(true));
    touch();
}

void StateFeed::forget(const std::function<bool(const Watcher &)> &which)
{
    m_watchers.erase(std::remove_if(m_watchers.begin(), m_watchers.end(), which), m_watchers.end());
}

void StateFeed::touch()
{
    if (!m_watched)
        return;
    m_touched = true;
    m_wakeUp.request();
}

void StateFeed::push()
{
    forget([](const Watcher &watcher) { return watcher.connection.expired(); });
    m_watched = !m_watchers.empty();
    if (!m_watched)
        return;
    // Asked first: a motor that stops in between is sent once more.
    const bool moving = anythingMoves(m_testbed);
    const std::vector<json::Object> now = states(m_touched.exchange(false));
    for (Watcher &watcher : m_watchers)
        send(watcher, { { "event", "change" }, { "time", secondsNow(m_testbed) } }, now);
    if (moving)
        m_wakeUp.request();
}

std::vector<json::Object> StateFeed::states(bool withDescriptions) const
{
    std::vector<json::Object> all;
    for (int number = 1; number <= m_testbed.size(); ++number) {
        const Device &device = m_testbed.device(number);
        json::Object state;
        if (withDescriptions)
            state.add("description", describe(device));
        all.push_back(state.add(stateJson(device)));
    }
    return all;
}

// Nothing while the program still has to read what it was sent before.
void StateFeed::send(
    Watcher &watcher, json::Object message, const std::vector<json::Object> &states)
{
    const std::shared_ptr<Connection> connection = watcher.connection.lock();
    if (!connection || connection->unsent() > 0)
        return;
    json::Array devices;
    for (std::size_t i = 0; i < states.size(); ++i) {
        const json::Object changes = takeChanges(watcher.sent[i], states[i]);
        if (!changes.members().empty())
            devices.emplace_back(json::Object{ { "number", i + 1 } }.add(changes));
    }
    if (!devices.empty())
        connection->send(message.add("devices", devices).text());
}

} // namespace virtual_camera
