// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

#include "desktop/termination.h"

#include <QSocketNotifier>

#include <array>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <utility>

#ifdef Q_OS_UNIX
#include <fcntl.h>
#include <unistd.h>
#endif

namespace desktop {

namespace {

// What exit() has to run: the toolkit calls it from the event loop when its X server is gone.
const std::function<void()> *atExit = nullptr;

#ifdef Q_OS_UNIX

// From the signal handler to the event loop.
std::array<int, 2> wake = { -1, -1 };

// For the requests of the control at work, and once more for the release. Neither comes to ten
// requests, and a camera that takes a second for each still gets all of them.
constexpr unsigned graceSeconds = 10;

// Only the first signal starts the grace period.
volatile std::sig_atomic_t graceBegun = 0;

void writeSignal(int number)
{
    const int error = errno;
    const auto byte = static_cast<char>(number);
    static_cast<void>(!write(wake[1], &byte, 1));
    if (graceBegun == 0)
        alarm(graceSeconds);
    graceBegun = 1;
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
    alarm(graceSeconds);
    release();
    std::signal(number, SIG_DFL);
    std::raise(number);
}

#endif

} // namespace

void prepareStandardStreams()
{
#ifdef Q_OS_UNIX
    std::signal(SIGPIPE, SIG_IGN);
    for (const int stream : { STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO }) {
        // Open takes the lowest free number, which is this one.
        if (fcntl(stream, F_GETFD) == -1)
            static_cast<void>(open("/dev/null", O_RDWR));
    }
#endif
}

Termination::Termination(std::function<void()> last) : release(std::move(last))
{
    atExit = &release;
    std::atexit([] {
        if (atExit)
            (*atExit)();
    });
#ifdef Q_OS_UNIX
    if (pipe(wake.data()) != 0)
        return;
    catchSignals();
    auto *const notifier = new QSocketNotifier(wake[0], QSocketNotifier::Read, this);
    connect(notifier, &QSocketNotifier::activated, this, [this] { endBySignal(release); });
#endif
}

Termination::~Termination()
{
    atExit = nullptr;
    release();
}

} // namespace desktop
