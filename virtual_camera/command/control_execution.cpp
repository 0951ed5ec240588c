// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT
#include "virtual_camera/command/control_execution.h"
#include "virtual_camera/command/state_text.h"
#include "virtual_camera/testbed/testbed.h"

#include <stdexcept>

namespace virtual_camera {

namespace {

using Verb = ControlCommand::Verb;

std::string listText(Testbed &testbed)
{
    std::string text;
    for (int number = 1; number <= testbed.size(); ++number) {
        const Device &device = testbed.device(number);
        text += text.empty() ? "" : "; ";
        text += std::to_string(number) + (device.isCamera() ? " camera" : " storage");
        text += device.pluggedIn() ? " address " + std::to_string(device.address()) : " unplugged";
    }
    return text;
}

void stall(Device &device, const ControlCommand &command)
{
    if (!command.control)
        device.stallEverything();
    else if (command.code)
        device.stall(*command.control, *command.code);
    else
        device.stall(*command.control);
}

std::string executeOn(Device &device, const ControlCommand &command)
{
    switch (command.verb) {
    case Verb::State:
        return stateText(device);
    case Verb::Unplug:
        if (!device.pluggedIn())
            throw std::invalid_argument("device is unplugged already");
        device.unplug();
        break;
    case Verb::Replug:
        if (device.pluggedIn())
            throw std::invalid_argument("device is plugged in already");
        device.replug(command.number);
        return "address " + std::to_string(device.address());
    case Verb::Stall:
        stall(device, command);
        break;
    case Verb::Unstall:
        device.unstall();
        break;
    case Verb::Short:
        device.answerShort(*command.control, static_cast<std::size_t>(*command.number));
        break;
    case Verb::Full:
        device.answerFully();
        break;
    case Verb::Delay:
        device.delay(std::chrono::milliseconds(*command.number));
        break;
    case Verb::RefuseOpen:
        device.refuseOpen(*command.number);
        break;
    case Verb::RefuseClaim:
        device.refuseClaim(*command.number != 0);
        break;
    case Verb::SetRange:
        device.setRange(*command.control, command.range);
        break;
    case Verb::Clear:
        device.clearFaults();
        break;
    case Verb::Help:
    case Verb::List:
        break;
    }
    return {};
}

std::string ok(const std::string &text) { return text.empty() ? "ok" : "ok " + text; }

} // namespace

std::string execute(const ControlCommand &command, Testbed &testbed)
{
    if (command.verb == Verb::Help)
        return ok("commands:" + controlCommandWords() + " (virtual-camera --help explains them)");
    if (command.verb == Verb::List)
        return ok(listText(testbed));
    if (command.device < 1 || command.device > testbed.size())
        return "error: there is no device " + std::to_string(command.device) + " (1 to "
            + std::to_string(testbed.size()) + ")";
    try {
        return ok(executeOn(testbed.device(command.device), command));
    } catch (const std::exception &problem) {
        return "error: " + std::string(problem.what());
    }
}

std::string executeLine(std::string_view line, Testbed &testbed)
{
    const std::variant<ControlCommand, std::string> parsed = parseControlCommand(line);
    if (const auto *problem = std::get_if<std::string>(&parsed))
        return "error: " + *problem;
    return execute(std::get<ControlCommand>(parsed), testbed);
}

} // namespace virtual_camera
