// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT
#pragma once

#include "virtual_camera/command/child_process.h"
#include "virtual_camera/command/command_line.h"
#include "virtual_camera/command/control_socket.h"
#include "virtual_camera/command/log_file.h"
#include "virtual_camera/command/state_feed.h"
#include "virtual_camera/testbed/testbed.h"

#include <optional>

namespace virtual_camera {

// From the cameras being plugged in to the end of the command that runs on them.
class Session
{
public:
    // Throws what its parts throw, and std::runtime_error when a start command fails.
    explicit Session(const CommandLine &line);
    ~Session();

    // Starts the command and waits for its end; its exit code.
    int run();

private:
    static gboolean onSignal(gint descriptor, GIOCondition condition, void *session);
    void waitForClosing();

    const CommandLine &m_line;
    std::unique_ptr<GMainLoop, void (*)(GMainLoop *)> m_loop;
    int m_signals; // descriptor from which signals are read
    std::optional<LogFile> m_log;
    Testbed m_testbed;
    StateFeed m_feed;
    std::optional<ControlSocket> m_socket;
    std::optional<ChildProcess> m_child;
};

} // namespace virtual_camera
