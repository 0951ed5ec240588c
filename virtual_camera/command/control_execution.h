// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT
#pragma once

#include "virtual_camera/command/control_command.h"
#include "virtual_camera/command/json.h"

#include <string>
#include <string_view>

namespace virtual_camera {

class Testbed;

/// What became of a command.
struct Reply
{
    bool ok = true;
    std::string text;    // for words: what is to be said, or what is wrong
    json::Object more{}; // for JSON: what is told in place of the text

    std::string inWords() const; // "ok ..." or "error: ..."
    std::string inJson() const;  // {"ok":true,...} or {"ok":false,"error":"..."}
};

/// Does it; it is in force when the function returns.
Reply execute(const ControlCommand &command, Testbed &testbed);
/// Parses and executes.
Reply executeLine(std::string_view line, Testbed &testbed);

} // namespace virtual_camera
