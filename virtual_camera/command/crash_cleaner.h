// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <sys/types.h>

namespace virtual_camera {

/// Removes a folder when this process is gone, even if it is killed: a process of its own waits for
/// that. To be made before there are threads.
class CrashCleaner
{
public:
    CrashCleaner();
    /// The folder should be gone by now.
    ~CrashCleaner();
    CrashCleaner(const CrashCleaner &) = delete;
    CrashCleaner &operator=(const CrashCleaner &) = delete;

    void watchOver(const std::string &folder) const;

private:
    pid_t m_process;
    int m_pipe;
};

} // namespace virtual_camera
