// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

#include "desktop/termination.h"

#include <QSocketNotifier>

#include <array>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <utility>

#include <fcntl.h>
#include <unistd.h>

namespace desktop {

namespace {

// Run by exit(), which the toolkit calls when its X server is gone.
const std::function<void()> *atExit = nullptr;

// From the signal handler to the event loop.
std::array<int, 2> wake = { -1, -1 };

// Long enough to stop a camera that takes a second per request. A camera being read may take
// longer; SIGALRM then ends the process.
constexpr unsigned graceSeconds = 10;

void writeSignal(int number)
{
    const int error = errno;
    const auto byte = static_cast<char>(number);
    static_cast<void>(!write(wake[1], &byte, 1));
    // Further signals do not prolong the grace period.
    const unsigned left = alarm(graceSeconds);
    if (left != 0)
        alarm(left);
    errno = error;
}

void catchSignals()
{
    for (const int end : wake) {
        fcntl(end, F_SETFD, FD_CLOEXEC);
        fcntl(end, F_SETFL, O_NONBLOCK);
    }
    for (const int number : { SIGINT, SIGTERM, SIGHUP }) {
        struct sigaction action = {};
        sigaction(number, nullptr, &action);
        if (action.sa_handler == SIG_IGN)
            continue;
        action.sa_handler = writeSignal;
        action.sa_flags = SA_RESTART;
        sigaction(number, &action, nullptr);
    }
}

void endBySignal(const std::function<void()> &release)
{
    char number = 0;
    if (read(wake[0], &number, 1) != 1)
        return;
    release();
    std::signal(number, SIG_DFL);
    std::raise(number);
}

} // namespace

void prepareStandardStreams()
{
    std::signal(SIGPIPE, SIG_IGN);
    for (const int stream : { STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO }) {
        // open() returns the lowest free descriptor, which is this one.
        if (fcntl(stream, F_GETFD) == -1)
            static_cast<void>(open("/dev/null", O_RDWR));
    }
}

Termination::Termination(std::function<void()> last) : release(std::move(last))
{
    atExit = &release;
    std::atexit([] {
        if (atExit)
            (*atExit)();
    });
    if (pipe(wake.data()) != 0)
        return;
    catchSignals();
    auto *const notifier = new QSocketNotifier(wake[0], QSocketNotifier::Read, this);
    connect(notifier, &QSocketNotifier::activated, this, [this] { endBySignal(release); });
}

Termination::~Termination()
{
    atExit = nullptr;
    release();
}

} // namespace desktop
