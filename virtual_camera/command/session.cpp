// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT
#include "virtual_camera/command/session.h"

#include "virtual_camera/command/control_execution.h"
#include "virtual_camera/command/control_protocol.h"
#include "virtual_camera/command/pcap_log.h"
#include "virtual_camera/command/preload.h"

#include <csignal>
#include <cstdio>
#include <filesystem>
#include <glib-unix.h>
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
    for (const int signal : { SIGINT, SIGTERM, SIGHUP, SIGQUIT })
        sigaddset(&set, signal);
    sigprocmask(SIG_BLOCK, &set, nullptr);
    std::signal(SIGPIPE, SIG_IGN);
    return signalfd(-1, &set, SFD_CLOEXEC);
}

LogFormat formatOf(CommandLine::LogKind kind)
{
    switch (kind) {
    case CommandLine::LogKind::Json:
        return jsonLog();
    case CommandLine::LogKind::Pcap:
        return pcapLog();
    default:
        return textLog();
    }
}

} // namespace

Session::Session(const CommandLine &line)
    : m_line(line), m_script(line.script ? readScript(*line.script) : Script()),
      m_loop(g_main_loop_new(nullptr, FALSE), g_main_loop_unref), m_signals(openSignals()),
      m_testbed(line.devices), m_feed(m_testbed)
{
    m_cleaner.watchOver(m_testbed.rootDirectory());
    m_environment = busEnvironment(m_testbed.rootDirectory());
    for (const CommandLine::Log &log : line.logs)
        m_logs.emplace_back(log.path, formatOf(log.kind));
    m_testbed.log().keepRecords(false);
    m_testbed.log().setWriter([this](const LogRecord &record) {
        for (LogFile &log : m_logs)
            log.write(record);
        m_logFeed.write(record);
        m_feed.touch();
    });
    g_unix_fd_add(m_signals, G_IO_IN, onSignal, this);
    if (line.socket || line.view)
        listen();
    for (const std::string &command : line.atStart) {
        const Reply reply = executeLine(command, m_testbed);
        if (!reply.ok)
            throw std::runtime_error("--at-start '" + command + "': " + reply.inWords());
    }
}

// Files that are closed only now are of no interest to anybody.
Session::~Session()
{
    m_testbed.log().setWriter({});
    close(m_signals);
}

// The viewer needs a socket also where nobody asked for one.
std::string Session::socketPath() const
{
    return m_line.socket.value_or(m_testbed.rootDirectory() + "/control");
}

void Session::listen()
{
    Controlled controlled{ m_testbed, m_feed, m_logFeed, {} };
    for (const std::string &variable : m_environment)
        controlled.environment += (controlled.environment.empty() ? "" : " ") + variable;
    m_socket.emplace(socketPath(),
        [controlled](const std::shared_ptr<Connection> &connection, std::string_view text) {
            answerLine(connection, text, controlled);
        });
}

// It shows; nothing depends on it. It sees no emulated bus, and ends when the socket does.
void Session::startViewer()
{
    const auto folder = std::filesystem::read_symlink("/proc/self/exe").parent_path();
    try {
        m_viewer.emplace(std::vector<std::string>{ folder / "virtual-camera-view", socketPath() },
            environmentWith({}), [] { });
    } catch (const CannotRun &error) {
        std::fprintf(stderr, "virtual-camera: no view: %s\n", error.what());
    }
}

int Session::run()
{
    if (m_line.view)
        startViewer();
    m_child.emplace(
        m_line.command, environmentWith(m_environment), [this] { g_main_loop_quit(m_loop.get()); });
    m_player.emplace(m_script, [this](const ScriptStep &step) { carryOut(step); });
    g_main_loop_run(m_loop.get());
    waitForClosing();
    return m_child->exitCode() == 0 && m_scriptFailed ? 1 : m_child->exitCode();
}

void Session::carryOut(const ScriptStep &step)
{
    const Reply reply = execute(step.command, m_testbed);
    m_feed.touch();
    if (reply.ok)
        return;
    m_scriptFailed = true;
    std::fprintf(stderr, "virtual-camera: %s:%d: %s\n", m_line.script->c_str(), step.line,
        reply.text.c_str());
}

gboolean Session::onSignal(gint descriptor, GIOCondition, void *session)
{
    signalfd_siginfo signal{};
    if (read(descriptor, &signal, sizeof signal) != sizeof signal)
        return G_SOURCE_CONTINUE;
    // What is typed at a terminal reaches the command by itself.
    const bool fromTerminal = signal.ssi_code == SI_KERNEL;
    auto *self = static_cast<Session *>(session);
    if (self->m_child && !fromTerminal)
        self->m_child->send(static_cast<int>(signal.ssi_signo));
    return G_SOURCE_CONTINUE;
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
