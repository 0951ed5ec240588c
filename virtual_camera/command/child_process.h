// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <glib.h>
#include <string>
#include <system_error>
#include <vector>

namespace virtual_camera {

/// Says which program and why.
class CannotRun : public std::system_error
{
public:
    using std::system_error::system_error;
};

/// The texts as functions of the C library take lists; they must outlive it.
std::vector<char *> pointersTo(std::vector<std::string> &texts);

/// A program that was started, with this one's standard streams. It ends with this one, however
/// that ends.
class ChildProcess
{
public:
    /// Calls the function from the main loop when the program has ended. Throws CannotRun.
    ChildProcess(const std::vector<std::string> &command,
        const std::vector<std::string> &environment, std::function<void()> onEnd);
    ~ChildProcess();
    ChildProcess(const ChildProcess &) = delete;
    ChildProcess &operator=(const ChildProcess &) = delete;

    /// Nothing when it has ended already.
    void send(int signal) const;
    /// Its exit code, or 128 and the signal that ended it.
    int exitCode() const { return m_exitCode; }

private:
    static void onExit(GPid id, gint status, void *process);

    GPid m_id = 0;
    guint m_watch = 0; // 0 when it has ended
    int m_exitCode = 0;
    std::function<void()> m_onEnd;
};

} // namespace virtual_camera
