// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT
#include "virtual_camera/command/command_line.h"

#include "virtual_camera/camera/words.h"
#include "virtual_camera/command/control_command.h"

#include <array>

namespace virtual_camera {

namespace {

using Problem = std::optional<std::string>;
using Mode = CommandLine::Mode;

// What has been read so far. Options for devices can only be carried out when all devices
// are known.
struct Draft
{
    CommandLine line;
    std::vector<std::string> options;
    bool devicesGiven = false;
};

std::string quoted(std::string_view text) { return "'" + std::string(text) + "'"; }

Problem readCameras(Draft &draft, const std::string &value)
{
    const std::optional<std::int64_t> count = parseNumber(value);
    if (!count)
        return "--cameras expects a number, not " + quoted(value);
    if (*count < 1 || *count > mostDevices)
        return "--cameras can be from 1 to " + std::to_string(mostDevices) + ", not " + value;
    if (draft.devicesGiven)
        return "--cameras and --devices can be given only once, and not both";
    draft.devicesGiven = true;
    draft.line.devices = DeviceDescription::ptzCameras(static_cast<int>(*count));
    return std::nullopt;
}

Problem readDevices(Draft &draft, const std::string &value)
{
    if (draft.devicesGiven)
        return "--cameras and --devices can be given only once, and not both";
    draft.devicesGiven = true;
    const std::vector<std::string_view> kinds = split(value, ',');
    if (kinds.size() > mostDevices)
        return "--devices can name up to " + std::to_string(mostDevices);
    draft.line.devices = DeviceDescription::ptzCameras(static_cast<int>(kinds.size()));
    for (std::size_t i = 0; i < kinds.size(); ++i) {
        if (kinds[i] == "other-camera")
            draft.line.devices[i] = DeviceDescription::otherCamera();
        else if (kinds[i] == "storage")
            draft.line.devices[i] = DeviceDescription::storage();
        else if (kinds[i] != "camera")
            return "--devices knows camera, other-camera and storage, not " + quoted(kinds[i]);
    }
    return std::nullopt;
}

Problem readOption(Draft &draft, const std::string &value)
{
    draft.options.push_back(value);
    return std::nullopt;
}

Problem readLog(Draft &draft, const std::string &value)
{
    if (value.empty())
        return "--log expects a file name or -";
    draft.line.log = value;
    return std::nullopt;
}

Problem readSocket(Draft &draft, const std::string &value)
{
    if (value.empty())
        return "--control expects a file name";
    draft.line.socket = value;
    return std::nullopt;
}

Problem readAtStart(Draft &draft, const std::string &value)
{
    const auto parsed = parseControlCommand(value);
    if (const auto *problem = std::get_if<std::string>(&parsed))
        return "--at-start " + quoted(value) + ": " + *problem;
    draft.line.atStart.push_back(value);
    return std::nullopt;
}

struct Option
{
    std::string_view name;
    Problem (*read)(Draft &, const std::string &);
};

constexpr std::array<Option, 6> options{ { { "--cameras", readCameras },
    { "--devices", readDevices }, { "--option", readOption }, { "--log", readLog },
    { "--control", readSocket }, { "--at-start", readAtStart } } };

// "2.product=Hall" is for device 2, "product=Hall" for every camera.
Problem applyDeviceOption(std::vector<DeviceDescription> &devices, std::string_view text)
{
    const std::string name = "--option " + quoted(text);
    const std::size_t equals = text.find('=');
    if (equals == std::string_view::npos)
        return name + ": expected [N.]KEY=VALUE";
    std::string_view key = text.substr(0, equals);
    const std::string_view value = text.substr(equals + 1);
    std::optional<std::int64_t> only;
    if (const std::size_t dot = key.find('.'); dot != std::string_view::npos) {
        only = parseNumber(key.substr(0, dot));
        if (!only || *only < 1 || *only > static_cast<std::int64_t>(devices.size()))
            return name + ": there is no device " + quoted(key.substr(0, dot));
        key.remove_prefix(dot + 1);
        if (devices[static_cast<std::size_t>(*only - 1)].kind != DeviceDescription::Kind::Camera)
            return name + ": device " + std::to_string(*only) + " is no camera";
    }
    for (std::size_t i = 0; i < devices.size(); ++i) {
        if (only && static_cast<std::int64_t>(i) != *only - 1)
            continue;
        if (Problem problem = applyOption(devices[i].camera, key, value))
            return name + ": " + *problem;
    }
    return std::nullopt;
}

const Option *findOption(std::string_view name)
{
    for (const Option &option : options) {
        if (option.name == name)
            return &option;
    }
    return nullptr;
}

Problem finish(Draft &draft)
{
    if (draft.line.command.empty())
        return "no command given (virtual-camera [OPTIONS] -- COMMAND [ARGUMENTS])";
    if (!draft.devicesGiven)
        draft.line.devices = DeviceDescription::ptzCameras(1);
    for (const std::string &option : draft.options) {
        if (Problem problem = applyDeviceOption(draft.line.devices, option))
            return problem;
    }
    return std::nullopt;
}

std::variant<CommandLine, std::string> readTell(const std::vector<std::string> &arguments)
{
    if (arguments.size() < 3)
        return "--tell expects a socket and a command (virtual-camera --tell SOCKET unplug 2)";
    CommandLine line;
    line.mode = Mode::Tell;
    line.socket = arguments[1];
    line.command.assign(arguments.begin() + 2, arguments.end());
    return line;
}

} // namespace

std::variant<CommandLine, std::string> parseCommandLine(const std::vector<std::string> &arguments)
{
    if (!arguments.empty() && arguments[0] == "--tell")
        return readTell(arguments);
    Draft draft;
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        const std::string &argument = arguments[i];
        if (argument == "--help" || argument == "-h" || argument == "--version") {
            draft.line.mode = argument == "--version" ? Mode::Version : Mode::Help;
            return draft.line;
        }
        if (argument == "--" || argument.substr(0, 1) != "-") {
            const auto first = arguments.begin() + static_cast<std::ptrdiff_t>(i);
            draft.line.command.assign(argument == "--" ? first + 1 : first, arguments.end());
            break;
        }
        const std::size_t equals = argument.find('=');
        const std::string name = argument.substr(0, equals);
        const Option *option = findOption(name);
        if (option == nullptr)
            return "unknown option " + quoted(name);
        const bool attached = equals != std::string::npos;
        if (!attached && ++i == arguments.size())
            return name + " needs a value";
        if (Problem problem =
                option->read(draft, attached ? argument.substr(equals + 1) : arguments[i]))
            return *problem;
    }
    if (Problem problem = finish(draft))
        return *problem;
    return draft.line;
}

namespace {

std::string controlNames()
{
    constexpr std::size_t widest = 90;
    std::string text;
    std::string line = " ";
    for (const ControlTraits &control : allControls()) {
        const std::string name = control.name;
        if (line.size() + name.size() > widest) {
            text += line + "\n";
            line = " ";
        }
        line += ' ' + name;
    }
    return text + line + "\n";
}

} // namespace

std::string helpText()
{
    return R"(Usage: virtual-camera [OPTIONS] [--] COMMAND [ARGUMENTS]
       virtual-camera --tell SOCKET CONTROL-COMMAND

Runs COMMAND on a USB bus of its own, into which simulated pan-tilt-zoom cameras are plugged. The
cameras answer as real ones do and move; COMMAND needs no change, and sees no other USB device.
The exit code is that of COMMAND, or 128 + the signal that ended it.

Options:
  --cameras N           plug in N cameras, 1 to 32 (default 1)
  --devices LIST        plug in these, in this order; a comma-separated list of
                        camera, other-camera (another product id) and storage (no camera)
  --option [N.]KEY=VALUE
                        describe device N, or all cameras; may be repeated. Keys:
                          product, manufacturer, serial   text; an empty one is left out
                          vendor-id, product-id           a number, or 0x...
                          pan, tilt, and controls         MIN:MAX:DEFAULT:CURRENT[:STEP]
                          without                         a control that the camera lacks, or all of
                                                          camera_terminal or processing_unit
  --log FILE            write each request to FILE as it is answered; - is standard output
  --control SOCKET      take control commands at this Unix socket while COMMAND runs
  --at-start COMMAND    carry out a control command before COMMAND starts; may be repeated
  --tell SOCKET ...     send a control command and print the answer; the exit code is 0 for ok
  --help, --version

Control commands (N counts the devices from 1):
)" + controlCommandHelp()
        + "\nControls:\n" + controlNames() + R"(
The log has one line for each request: seconds, device, request, control, what its bytes mean, the
bytes, and the outcome (ok, stall, short, gone, cancelled):
  0.512345 cam1 SET_CUR pantilt_relative pan=+1 pan_speed=21 tilt=0 tilt_speed=0 [01 15 00 00] ok
  0.734501 cam1 SET_CUR roll_absolute value=103 (recall preset 3) [67 00] ok
  0.800213 cam1 GET_CUR brightness value=128 [80 00] ok
Opening, closing, unplugging and plugging in again have lines of their own.

Examples:
  virtual-camera --cameras 3 -- lsusb -v
  virtual-camera --option brightness=-64:64:0:10 --log - -- ptz-panel
  virtual-camera --control /tmp/camera.sock -- ptz-panel &
  virtual-camera --tell /tmp/camera.sock unplug 1

Exit codes of its own: 1 failure, 2 wrong usage, 126 COMMAND cannot be run, 127 no such COMMAND.
)";
}

} // namespace virtual_camera
