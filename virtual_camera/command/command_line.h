// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT
#pragma once

#include "virtual_camera/usb/device_description.h"

#include <optional>
#include <string>
#include <variant>
#include <vector>

namespace virtual_camera {

/// What the command was asked to do.
struct CommandLine
{
    enum class Mode {
        Run,  // plug in the devices and start the command
        Join, // start the command on a bus that is already running
        Tell, // send words to one that runs
        Help,
        Version
    };
    enum class LogKind { Text, Json, Pcap };
    struct Log
    {
        LogKind kind;
        std::string path; // or "-"
    };

    Mode mode = Mode::Run;
    std::vector<DeviceDescription> devices;
    std::vector<Log> logs;
    std::optional<std::string> socket;
    std::optional<std::string> script;
    bool view = false;                // show what the cameras see
    std::vector<std::string> atStart; // control commands to carry out before the command starts
    std::vector<std::string> command; // in Tell mode, the words to send
};

/// Reads the arguments, without the program's name. The text says what is wrong with them.
std::variant<CommandLine, std::string> parseCommandLine(const std::vector<std::string> &arguments);

std::string helpText();

} // namespace virtual_camera
