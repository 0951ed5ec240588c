// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <sys/types.h>
#include <system_error>
#include <vector>

namespace virtual_camera {

// Says which program and why.
class CannotRun : public std::system_error
{
public:
    using std::system_error::system_error;
};

// A program that was started, with this one's standard streams.
class ChildProcess
{
public:
    // Throws CannotRun.
    ChildProcess(
        const std::vector<std::string> &command, const std::vector<std::string> &environment);

    pid_t id() const { return m_id; }
    // Nothing when it has ended already.
    void send(int signal) const;
    // Whether it has ended; does not wait.
    bool ended();
    // Its exit code, or 128 and the signal that ended it.
    int exitCode() const { return m_exitCode; }

private:
    pid_t m_id = 0;
    bool m_ended = false;
    int m_exitCode = 0;
};

} // namespace virtual_camera
