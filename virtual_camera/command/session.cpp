// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT
#include "virtual_camera/command/session.h"

#include "virtual_camera/command/control_execution.h"
#include "virtual_camera/command/preload.h"

#include <csignal>
#include <poll.h>
#include <stdexcept>
#include <sys/signalfd.h>
#include <thread>
#include <unistd.h>

namespace virtual_camera {

namespace {

// Blocks them for all threads, those of umockdev too, as they are started later.
int openSignals()
{
    sigset_t set;
    sigemptyset(&set);
    for (const int signal : { SIGINT, SIGTERM, SIGHUP, SIGQUIT, SIGCHLD })
        sigaddset(&set, signal);
    sigprocmask(SIG_BLOCK, &set, nullptr);
    std::signal(SIGPIPE, SIG_IGN);
    return signalfd(-1, &set, SFD_CLOEXEC);
}

std::optional<LogFile> openLog(const std::optional<std::string> &path)
{
    return path ? std::make_optional<LogFile>(*path) : std::nullopt;
}

} // namespace

Session::Session(const CommandLine &line)
    : m_line(line), m_signals(openSignals()), m_log(openLog(line.log)), m_testbed(line.devices)
{
    m_testbed.log().keepRecords(false);
    if (m_log)
        m_testbed.log().setWriter([this](const LogRecord &record) { m_log->write(record); });
    if (line.socket)
        m_socket.emplace(
            *line.socket, [this](std::string_view text) { return executeLine(text, m_testbed); });
    for (const std::string &command : line.atStart) {
        const std::string answer = executeLine(command, m_testbed);
        if (answer.substr(0, 2) != "ok")
            throw std::runtime_error("--at-start '" + command + "': " + answer);
    }
}

Session::~Session() { close(m_signals); }

int Session::run()
{
    m_child.emplace(m_line.command, preloadedEnvironment(m_testbed.rootDirectory()));
    while (!m_child->ended()) {
        std::vector<pollfd> descriptors{ { m_signals, POLLIN, 0 } };
        if (m_socket) {
            for (const int descriptor : m_socket->descriptors())
                descriptors.push_back({ descriptor, POLLIN, 0 });
        }
        poll(descriptors.data(), descriptors.size(), -1);
        for (const pollfd &ready : descriptors) {
            if (ready.revents == 0)
                continue;
            if (ready.fd == m_signals)
                takeSignal();
            else
                m_socket->serve(ready.fd);
        }
    }
    waitForClosing();
    return m_child->exitCode();
}

void Session::takeSignal()
{
    signalfd_siginfo signal{};
    if (read(m_signals, &signal, sizeof signal) != sizeof signal)
        return;
    const auto number = static_cast<int>(signal.ssi_signo);
    // What is typed at a terminal reaches the command by itself.
    const bool fromTerminal = signal.ssi_code == SI_KERNEL;
    if (number != SIGCHLD && !fromTerminal)
        m_child->send(number);
}

// The end of the command closes its files; the log is to say so. Programs that it left behind
// may keep theirs.
void Session::waitForClosing()
{
    constexpr int tries = 200;
    constexpr std::chrono::milliseconds pause{ 2 };
    for (int i = 0; i < tries && m_testbed.openFiles() > 0; ++i)
        std::this_thread::sleep_for(pause);
}

} // namespace virtual_camera
