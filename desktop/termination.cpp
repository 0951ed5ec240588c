// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

#include "desktop/termination.h"

#include <QtGlobal>

#ifdef Q_OS_UNIX

#include <QSocketNotifier>

#include <array>
#include <cerrno>
#include <csignal>
#include <utility>

#include <fcntl.h>
#include <unistd.h>

namespace desktop {

namespace {

// From the signal handler, which may do almost nothing, to the event loop.
std::array<int, 2> wake = { -1, -1 };

// Time for the requests of the control that is at work, and once more for letting everything go.
// Neither comes to ten, and with a camera that takes a second for each all of them get through.
constexpr unsigned graceSeconds = 10;

// The first signal counts: further ones do not give a camera that never answers more time.
volatile std::sig_atomic_t graceBegun = 0;

bool openPipe()
{
    if (wake[0] >= 0)
        return true;
    if (pipe(wake.data()) != 0)
        return false;
    for (const int end : wake) {
        fcntl(end, F_SETFD, FD_CLOEXEC);
        fcntl(end, F_SETFL, O_NONBLOCK);
    }
    return true;
}

void writeSignal(int number)
{
    const int error = errno;
    const auto byte = static_cast<char>(number);
    static_cast<void>(!write(wake[1], &byte, 1));
    // A camera that never answers keeps the event loop from seeing this. Then the process ends
    // all the same.
    if (graceBegun == 0)
        alarm(graceSeconds);
    graceBegun = 1;
    errno = error;
}

void endBy(int number)
{
    std::signal(number, SIG_DFL);
    std::raise(number);
}

} // namespace

void fillStandardStreams()
{
    for (const int stream : { STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO }) {
        // Open takes the lowest free number, which is this one.
        if (fcntl(stream, F_GETFD) == -1)
            static_cast<void>(open("/dev/null", O_RDWR));
    }
}

void onSignal(QObject *context, std::function<void()> last)
{
    std::signal(SIGPIPE, SIG_IGN);
    if (!openPipe())
        return;
    auto *const notifier = new QSocketNotifier(wake[0], QSocketNotifier::Read, context);
    QObject::connect(notifier, &QSocketNotifier::activated, context, [last = std::move(last)] {
        char number = 0;
        if (read(wake[0], &number, 1) != 1)
            return;
        alarm(graceSeconds);
        last();
        endBy(number);
    });
    for (const int number : { SIGINT, SIGTERM, SIGHUP }) {
        struct sigaction action = {};
        sigaction(number, nullptr, &action);
        if (action.sa_handler == SIG_IGN)
            continue;
        action = {};
        action.sa_handler = writeSignal;
        action.sa_flags = SA_RESTART;
        sigaction(number, &action, nullptr);
    }
}

} // namespace desktop

#else

namespace desktop {

void fillStandardStreams() { }

void onSignal(QObject * /*context*/, std::function<void()> /*last*/) { }

} // namespace desktop

#endif
