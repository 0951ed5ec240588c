// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT
#include "virtual_camera/command/control_command.h"

#include "virtual_camera/camera/words.h"
#include "virtual_camera/command/fault_command.h"

#include <array>
#include <cerrno>
#include <limits>

namespace virtual_camera {

namespace {

using Verb = ControlCommand::Verb;
using Arguments = std::vector<std::string_view>;
// Fills in the command; what is wrong, or nothing.
using Problem = std::optional<std::string>;
using Reader = Problem (*)(ControlCommand &, const Arguments &);

constexpr int longestDelay = 3600 * 1000;

Problem readNothing(ControlCommand &, const Arguments &) { return std::nullopt; }

Problem readNumber(std::optional<int> &number, std::string_view text, int lowest, int highest)
{
    const std::optional<std::int64_t> given = parseNumber(text);
    if (!given || *given < lowest || *given > highest)
        return "expected a number from " + std::to_string(lowest) + " to " + std::to_string(highest)
            + ", not '" + std::string(text) + "'";
    number = static_cast<int>(*given);
    return std::nullopt;
}

Problem readDevice(ControlCommand &command, const Arguments &arguments)
{
    std::optional<int> number;
    if (readNumber(number, arguments[0], 1, std::numeric_limits<int>::max()))
        return "'" + std::string(arguments[0]) + "' is not the number of a device";
    command.device = *number;
    return std::nullopt;
}

Problem readDeviceIfAny(ControlCommand &command, const Arguments &arguments)
{
    return arguments.empty() ? std::nullopt : readDevice(command, arguments);
}

Problem readAddress(ControlCommand &command, const Arguments &arguments)
{
    return arguments.empty() ? std::nullopt : readNumber(command.number, arguments[0], 1, 127);
}

template<Fault::Effect effect>
Problem readFaultWith(ControlCommand &command, const Arguments &arguments)
{
    command.fault.effect = effect;
    return readFault(command.fault, arguments);
}

Problem readDelay(ControlCommand &command, const Arguments &arguments)
{
    return readNumber(command.number, arguments[0], 0, longestDelay);
}

Problem readError(ControlCommand &command, const Arguments &arguments)
{
    struct Named
    {
        std::string_view name;
        int error;
    };
    constexpr std::array<Named, 6> errors{ { { "none", 0 }, { "EACCES", EACCES },
        { "EBUSY", EBUSY }, { "EIO", EIO }, { "ENODEV", ENODEV }, { "EPERM", EPERM } } };
    for (const Named &known : errors) {
        if (known.name == arguments[0]) {
            command.number = known.error;
            return std::nullopt;
        }
    }
    return "expected EACCES, EBUSY, EIO, ENODEV, EPERM or none, not '" + std::string(arguments[0])
        + "'";
}

Problem readOnOff(ControlCommand &command, const Arguments &arguments)
{
    if (arguments[0] != "on" && arguments[0] != "off")
        return "expected on or off, not '" + std::string(arguments[0]) + "'";
    command.number = arguments[0] == "on" ? 1 : 0;
    return std::nullopt;
}

Problem readRange(ControlCommand &command, const Arguments &arguments)
{
    CameraDescription scratch;
    const std::optional<RangedField> named = findRange(arguments[0]);
    if (Problem problem = named
            ? applyOption(scratch, arguments[0], arguments[1])
            : "nothing with a range is called '" + std::string(arguments[0]) + "'")
        return problem;
    command.ranged = *named;
    command.range = scratch.range(named->control, named->field);
    return std::nullopt;
}

Problem readGo(ControlCommand &command, const Arguments &arguments)
{
    return readRemoteOrder(command.order, arguments);
}

struct Form
{
    std::string_view word;
    Verb verb;
    bool takesDevice;
    std::size_t fewest; // further arguments
    std::size_t most;
    Reader read;
    const char *usage;
    const char *meaning;
};

// clang-format off
    constexpr std::array<Form, 23> forms{{
        {"help", Verb::Help, false, 0, 0, readNothing, "help", "name the commands"},
        {"list", Verb::List, false, 0, 0, readNothing, "list", "name the devices"},
        {"describe", Verb::Describe, false, 0, 0, readNothing, "describe", "what all devices are, in JSON: names, lens, controls with their ranges"},
        {"state", Verb::State, false, 0, 1, readDeviceIfAny, "state [N]", "what camera N is doing; without N all devices, in JSON"},
        {"watch", Verb::Watch, false, 0, 0, readNothing, "watch", "the same, then every change as it happens, in JSON"},
        {"log", Verb::Log, false, 0, 0, readNothing, "log", "every line of the log from now on, in JSON"},
        {"environment", Verb::Environment, false, 0, 0, readNothing, "environment", "the variables with which programs see the bus (see --join)"},
        {"unplug", Verb::Unplug, true, 0, 0, readNothing, "unplug N", "pull the cable of device N"},
        {"replug", Verb::Replug, true, 0, 1, readAddress, "replug N [ADDRESS]", "plug it in again, at the same bus address or another"},
        {"go", Verb::Go, true, 1, 8, readGo, "go N MOVE...", "move the camera as its remote control does"},
        {"stall", Verb::AddFault, true, 1, 5, readFaultWith<Fault::Effect::Stall>, "stall N TARGET [REQUEST] [WHEN]", "refuse requests, or only GET_CUR, GET_MIN, ..."},
        {"unstall", Verb::Unstall, true, 0, 0, readNothing, "unstall N", "stop stalling requests"},
        {"short", Verb::AddFault, true, 2, 6, readFaultWith<Fault::Effect::Short>, "short N TARGET [REQUEST] BYTES [WHEN]", "cut answers to so many bytes"},
        {"full", Verb::Full, true, 0, 0, readNothing, "full N", "stop cutting answers"},
        {"long", Verb::AddFault, true, 2, 6, readFaultWith<Fault::Effect::Long>, "long N TARGET [REQUEST] BYTES [WHEN]", "fill answers up to so many bytes; more than were asked for overflow"},
        {"wrong", Verb::AddFault, true, 1, 5, readFaultWith<Fault::Effect::Wrong>, "wrong N TARGET [REQUEST] [WHEN]", "invert every bit of answers"},
        {"fail", Verb::AddFault, true, 2, 6, readFaultWith<Fault::Effect::ProtocolError>, "fail N TARGET [REQUEST] EPROTO|ETIME [WHEN]", "let requests fail on the wire"},
        {"lose-stop", Verb::AddFault, true, 0, 3, readFaultWith<Fault::Effect::LoseStop>, "lose-stop N [WHEN]", "acknowledge stops of motors, but let them run on"},
        {"delay", Verb::Delay, true, 1, 1, readDelay, "delay N MILLISECONDS", "take so long for each request"},
        {"refuse-open", Verb::RefuseOpen, true, 1, 1, readError, "refuse-open N EACCES|EBUSY|EIO|ENODEV|EPERM|none", "let opening the device fail"},
        {"busy", Verb::RefuseClaim, true, 1, 1, readOnOff, "busy N on|off", "let another program hold the camera"},
        {"range", Verb::SetRange, true, 2, 2, readRange, "range N CONTROL|pan|tilt MIN:MAX:DEFAULT:CURRENT[:STEP]", "announce another range"},
        {"clear", Verb::Clear, true, 0, 0, readNothing, "clear N", "clear all faults (not unplug, not range)"},
    }};
// clang-format on

const Form *findForm(std::string_view word)
{
    for (const Form &form : forms) {
        if (form.word == word)
            return &form;
    }
    return nullptr;
}

} // namespace

std::variant<ControlCommand, std::string> parseControlCommand(std::string_view line)
{
    Arguments words = splitWords(line);
    if (words.empty())
        return "no command given";
    const Form *form = findForm(words[0]);
    if (form == nullptr)
        return "no command is called '" + std::string(words[0]) + "' (try help)";
    ControlCommand command;
    command.verb = form->verb;
    words.erase(words.begin());
    const std::size_t own = form->takesDevice ? 1 : 0;
    if (words.size() < own + form->fewest || words.size() > own + form->most)
        return "usage: " + std::string(form->usage);
    if (form->takesDevice) {
        if (Problem problem = readDevice(command, words))
            return *problem;
        words.erase(words.begin());
    }
    if (Problem problem = form->read(command, words))
        return *problem;
    return command;
}

std::string controlCommandWords()
{
    std::string text;
    for (const Form &form : forms)
        text += ' ' + std::string(form.word);
    return text;
}

std::string controlCommandHelp()
{
    std::string text;
    for (const Form &form : forms)
        text += "  " + std::string(form.usage) + "\n      " + form.meaning + "\n";
    return text + R"(
MOVE is a place (pan=P, tilt=T, zoom=Z or focus=F), or a drive until stop or the end of the travel
(left, right, up, down, in, out, near or far, with =SPEED as in the relative controls if not at
full speed), or stop, home or preset=K.

TARGET is a control, all of them, or descriptors (reads of strings). WHEN counts the requests that
the fault is about: 'at K' strikes the Kth only, 'every K' each Kth, and 'share PERCENT [SEED]' that
share of them, drawn by the seed. Without it, all are struck.
)";
}

} // namespace virtual_camera
