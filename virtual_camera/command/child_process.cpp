// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT
#include "virtual_camera/command/child_process.h"

#include <cerrno>
#include <csignal>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <utility>

namespace virtual_camera {

std::vector<char *> pointersTo(std::vector<std::string> &texts)
{
    std::vector<char *> pointers;
    for (std::string &text : texts)
        pointers.push_back(text.data());
    pointers.push_back(nullptr);
    return pointers;
}

namespace {

// In the new process: the signals as a program expects them, whatever this one has blocked or
// ignores.
void prepareChild(void *)
{
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    std::signal(SIGPIPE, SIG_DFL);
    sigset_t none;
    sigemptyset(&none);
    sigprocmask(SIG_SETMASK, &none, nullptr);
}

int errnoOf(const GError &error)
{
    switch (error.code) {
    case G_SPAWN_ERROR_NOENT:
        return ENOENT;
    case G_SPAWN_ERROR_ACCES:
        return EACCES;
    case G_SPAWN_ERROR_NOEXEC:
        return ENOEXEC;
    default:
        return EIO;
    }
}

} // namespace

ChildProcess::ChildProcess(const std::vector<std::string> &command,
    const std::vector<std::string> &environment, std::function<void()> onEnd)
    : m_onEnd(std::move(onEnd))
{
    std::vector<std::string> words = command;
    std::vector<std::string> variables = environment;
    constexpr int flags = G_SPAWN_SEARCH_PATH | G_SPAWN_DO_NOT_REAP_CHILD
        | G_SPAWN_LEAVE_DESCRIPTORS_OPEN | G_SPAWN_CHILD_INHERITS_STDIN;
    GError *error = nullptr;
    if (!g_spawn_async(nullptr, pointersTo(words).data(), pointersTo(variables).data(),
            static_cast<GSpawnFlags>(flags), prepareChild, nullptr, &m_id, &error)) {
        const int code = errnoOf(*error);
        g_error_free(error);
        throw CannotRun(code, std::generic_category(), "cannot run " + command[0]);
    }
    m_watch = g_child_watch_add(m_id, onExit, this);
}

ChildProcess::~ChildProcess()
{
    if (m_watch != 0)
        g_source_remove(m_watch);
}

void ChildProcess::send(int signal) const
{
    if (m_watch != 0)
        kill(m_id, signal);
}

void ChildProcess::onExit(GPid, gint status, void *process)
{
    constexpr int killedBySignal = 128;
    auto *self = static_cast<ChildProcess *>(process);
    self->m_watch = 0;
    self->m_exitCode =
        WIFSIGNALED(status) ? killedBySignal + WTERMSIG(status) : WEXITSTATUS(status);
    self->m_onEnd();
}

} // namespace virtual_camera
