// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT
#include "virtual_camera/command/crash_cleaner.h"

#include <array>
#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <filesystem>
#include <sys/wait.h>
#include <system_error>
#include <unistd.h>

namespace virtual_camera {

namespace {

// Signals for a group or a terminal are not meant for this process, and it keeps nothing open that
// somebody may wait for.
void becomeIndependent(int pipe)
{
    setsid();
    for (const int signal : { SIGINT, SIGTERM, SIGHUP, SIGQUIT })
        std::signal(signal, SIG_IGN);
    dup2(pipe, STDIN_FILENO);
    close_range(STDIN_FILENO + 1, ~0U, 0);
}

// The pipe ends when no process writes to it any more.
[[noreturn]] void clean()
{
    std::string folder;
    std::array<char, 256> bytes{};
    ssize_t count = 0;
    while ((count = read(STDIN_FILENO, bytes.data(), bytes.size())) > 0)
        folder.append(bytes.data(), static_cast<std::size_t>(count));
    std::error_code ignored;
    if (!folder.empty())
        std::filesystem::remove_all(folder, ignored);
    _exit(0);
}

} // namespace

CrashCleaner::CrashCleaner()
{
    std::array<int, 2> ends{};
    if (pipe2(ends.data(), O_CLOEXEC) != 0 || (m_process = fork()) < 0)
        throw std::system_error(errno, std::generic_category(), "cannot start a process");
    if (m_process == 0) {
        becomeIndependent(ends[0]);
        clean();
    }
    close(ends[0]);
    m_pipe = ends[1];
}

CrashCleaner::~CrashCleaner()
{
    close(m_pipe);
    waitpid(m_process, nullptr, 0);
}

void CrashCleaner::watchOver(const std::string &folder) const
{
    if (write(m_pipe, folder.data(), folder.size()) < 0)
        throw std::system_error(errno, std::generic_category(), folder);
}

} // namespace virtual_camera
