// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QObject>

#include <functional>

namespace desktop {

/// Reopens closed standard streams on /dev/null, so that the X server's or a camera's file does not
/// become one of them, and makes writing to a closed pipe an error instead of a fatal signal. Call
/// before anything is opened.
void prepareStandardStreams();

/// Clean shutdown: runs `release` before the process ends.
///
/// - On quit, when this object is destroyed.
/// - When the toolkit exits because its X server is gone.
/// - On SIGINT, SIGTERM and SIGHUP, which then end the process as if they had not been caught. A
///   signal that was ignored from the start stays ignored. SIGALRM ends a process that has not
///   ended ten seconds after the first signal.
class Termination : public QObject
{
public:
    explicit Termination(std::function<void()> release);
    ~Termination() override;

private:
    const std::function<void()> release;
};

} // namespace desktop
