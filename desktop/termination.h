// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <functional>

class QObject;

namespace desktop {

/// Opens whatever of standard input, output and error is closed to nowhere. Otherwise the next file
/// takes its number, and what is meant for the standard output is written to the X server or to a
/// camera. Call before anything is opened.
void fillStandardStreams();

/// Runs `last` on the GUI thread when SIGINT, SIGTERM or SIGHUP arrives, and then ends the process
/// by that very signal, so that whoever started it sees the usual status. When the GUI thread does
/// not get to it within ten seconds, because a camera does not answer or because `context` is gone,
/// or `last` takes more than ten, the process is ended by SIGALRM all the same. A signal that the
/// process was started with ignored stays ignored. Also makes a standard output that nobody reads
/// harmless instead of deadly. Does nothing where there are no such signals.
void onSignal(QObject *context, std::function<void()> last);

} // namespace desktop
