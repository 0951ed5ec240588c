// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT
#pragma once

#include "virtual_camera/command/control_command.h"

#include <string>
#include <string_view>

namespace virtual_camera {

class Testbed;

// Does it, and answers with one line without its end: "ok ..." when it is in force, else
// "error: ...".
std::string execute(const ControlCommand &command, Testbed &testbed);
// Parses and executes.
std::string executeLine(std::string_view line, Testbed &testbed);

} // namespace virtual_camera
