// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <string_view>

namespace virtual_camera {

class Connection;
class StateFeed;
class Testbed;

// Answers a line that a program sent to the control socket: in words, or in JSON when the line
// begins with "json" or is about something that only JSON can tell.
void answerLine(const std::shared_ptr<Connection> &connection, std::string_view line,
    Testbed &testbed, StateFeed &feed);

} // namespace virtual_camera
