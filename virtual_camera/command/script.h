// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT
#pragma once

#include "virtual_camera/command/control_command.h"

#include <chrono>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace virtual_camera {

/// A control command and when to carry it out.
struct ScriptStep
{
    int line;                       // in the file, from 1
    std::chrono::milliseconds time; // since the start; never before the step before
    ControlCommand command;
};
using Script = std::vector<ScriptStep>;

/// Reads lines such as "1.5 unplug 1" and "+0.5 replug 1". The text says which line is wrong, and
/// why: "3: no command is called 'explode'".
std::variant<Script, std::string> parseScript(std::string_view text);
/// Throws std::runtime_error, with the file's name.
Script readScript(const std::string &path);

} // namespace virtual_camera
