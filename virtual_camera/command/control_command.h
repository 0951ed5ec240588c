// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT
#pragma once

#include "virtual_camera/camera/camera_description.h"
#include "virtual_camera/camera/remote_order.h"
#include "virtual_camera/usb/faults.h"

#include <optional>
#include <string>
#include <string_view>
#include <variant>

namespace virtual_camera {

/// One line that tells the virtual camera what to do while it runs, such as "unplug 2" or
/// "stall 1 brightness GET_CUR".
struct ControlCommand
{
    enum class Verb {
        Help,
        List,
        Describe,
        State,
        Watch,
        Log,
        Environment,
        Unplug,
        Replug,
        Go,
        AddFault,
        Unstall,
        Full,
        Delay,
        RefuseOpen,
        RefuseClaim,
        SetRange,
        Clear
    };

    Verb verb = Verb::Help;
    int device = 0;            // from 1; 0 for none, or for all of them
    std::optional<int> number; // address, milliseconds, errno, or 1 for "on"
    RemoteOrder order;
    Fault fault;
    RangedField ranged{}; // what the range is for
    Range range;
};

/// The command, or what is wrong with the line, in words.
std::variant<ControlCommand, std::string> parseControlCommand(std::string_view line);

/// The first words of all commands, each with a blank before it.
std::string controlCommandWords();
/// What every command is for, for --help.
std::string controlCommandHelp();

} // namespace virtual_camera
