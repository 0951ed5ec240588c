// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT
#pragma once

#include "virtual_camera/command/child_process.h"
#include "virtual_camera/command/command_line.h"
#include "virtual_camera/command/control_socket.h"
#include "virtual_camera/command/crash_cleaner.h"
#include "virtual_camera/command/log_feed.h"
#include "virtual_camera/command/log_file.h"
#include "virtual_camera/command/script_player.h"
#include "virtual_camera/command/state_feed.h"
#include "virtual_camera/testbed/testbed.h"

#include <list>
#include <optional>

namespace virtual_camera {

/// From the cameras being plugged in to the end of the command that runs on them.
class Session
{
public:
    /// Throws what its parts throw, and std::runtime_error when a start command fails.
    explicit Session(const CommandLine &line);
    ~Session();

    /// Starts the command and waits for its end; its exit code, or 1 when that is 0 but a step of
    /// the script failed.
    int run();

private:
    static gboolean onSignal(gint descriptor, GIOCondition condition, void *session);
    std::string socketPath() const;
    void listen();
    void startViewer();
    void carryOut(const ScriptStep &step);
    void waitForClosing();

    const CommandLine &m_line;
    const Script m_script;
    CrashCleaner m_cleaner;
    std::unique_ptr<GMainLoop, void (*)(GMainLoop *)> m_loop;
    int m_signals; // descriptor from which signals are read
    std::list<LogFile> m_logs;
    LogFeed m_logFeed;
    Testbed m_testbed;
    StateFeed m_feed;
    std::vector<std::string> m_environment; // what programs need to see the bus
    std::optional<ControlSocket> m_socket;
    std::optional<ChildProcess> m_child;
    std::optional<ChildProcess> m_viewer;
    std::optional<ScriptPlayer> m_player;
    bool m_scriptFailed = false;
};

} // namespace virtual_camera
