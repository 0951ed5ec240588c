// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <string>
#include <string_view>

namespace virtual_camera {

class Connection;
class LogFeed;
class StateFeed;
class Testbed;

/// What the lines that programs send to the control socket are about.
struct Controlled
{
    Testbed &testbed;
    StateFeed &states;
    LogFeed &log;
    std::string environment; // that programs need, as NAME=value separated by blanks
};

/// Answers a line: in words, or in JSON when the line begins with "json" or is about something that
/// only JSON can tell.
void answerLine(const std::shared_ptr<Connection> &connection, std::string_view line,
    const Controlled &controlled);

} // namespace virtual_camera
