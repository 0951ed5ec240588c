// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT
#include "virtual_camera/command/child_process.h"

#include <csignal>
#include <spawn.h>
#include <sys/wait.h>

namespace virtual_camera {

namespace {

std::vector<char *> pointersTo(std::vector<std::string> &texts)
{
    std::vector<char *> pointers;
    for (std::string &text : texts)
        pointers.push_back(text.data());
    pointers.push_back(nullptr);
    return pointers;
}

// The signals as a program expects them, whatever this one has blocked or ignores.
class PlainSignals
{
public:
    PlainSignals()
    {
        posix_spawnattr_init(&m_attributes);
        sigset_t set;
        sigemptyset(&set);
        posix_spawnattr_setsigmask(&m_attributes, &set);
        sigaddset(&set, SIGPIPE);
        posix_spawnattr_setsigdefault(&m_attributes, &set);
        posix_spawnattr_setflags(&m_attributes, POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF);
    }
    ~PlainSignals() { posix_spawnattr_destroy(&m_attributes); }
    PlainSignals(const PlainSignals &) = delete;
    PlainSignals &operator=(const PlainSignals &) = delete;
    const posix_spawnattr_t *attributes() const { return &m_attributes; }

private:
    posix_spawnattr_t m_attributes;
};

} // namespace

ChildProcess::ChildProcess(
    const std::vector<std::string> &command, const std::vector<std::string> &environment)
{
    std::vector<std::string> words = command;
    std::vector<std::string> variables = environment;
    const PlainSignals signals;
    const int error = posix_spawnp(&m_id, words[0].c_str(), nullptr, signals.attributes(),
        pointersTo(words).data(), pointersTo(variables).data());
    if (error != 0)
        throw CannotRun(error, std::generic_category(), "cannot run " + command[0]);
}

void ChildProcess::send(int signal) const
{
    if (!m_ended)
        kill(m_id, signal);
}

bool ChildProcess::ended()
{
    int status = 0;
    if (m_ended || waitpid(m_id, &status, WNOHANG) != m_id)
        return m_ended;
    constexpr int killedBySignal = 128;
    m_ended = true;
    m_exitCode = WIFSIGNALED(status) ? killedBySignal + WTERMSIG(status) : WEXITSTATUS(status);
    return true;
}

} // namespace virtual_camera
