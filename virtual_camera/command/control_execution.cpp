// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT
#include "virtual_camera/command/control_execution.h"
#include "virtual_camera/command/description_json.h"
#include "virtual_camera/command/state_json.h"
#include "virtual_camera/command/state_text.h"
#include "virtual_camera/testbed/testbed.h"

#include <algorithm>
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

std::string executeOn(Device &device, const ControlCommand &command)
{
    switch (command.verb) {
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
    case Verb::Go:
        device.go(command.order);
        break;
    case Verb::AddFault:
        device.add(command.fault);
        break;
    case Verb::Unstall:
        device.unstall();
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
        device.setRange(command.ranged.control, command.range, command.ranged.field);
        break;
    case Verb::Clear:
        device.clearFaults();
        break;
    default:
        break; // about no single device
    }
    return {};
}

json::Object statesJson(Testbed &testbed, int only)
{
    json::Array devices;
    for (int number = std::max(only, 1); number <= (only > 0 ? only : testbed.size()); ++number)
        devices.emplace_back(json::Object{ { "number", number },
            { "requests_under_way", testbed.device(number).requestsUnderWay() } }
                .add(stateJson(testbed.device(number))));
    return greeting(testbed).add("devices", devices);
}

json::Object descriptionsJson(Testbed &testbed)
{
    json::Array devices;
    for (int number = 1; number <= testbed.size(); ++number)
        devices.emplace_back(describe(testbed.device(number)));
    return greeting(testbed).add("devices", devices);
}

} // namespace

std::string Reply::inWords() const
{
    if (!ok)
        return "error: " + text;
    return text.empty() ? "ok" : "ok " + text;
}

std::string Reply::inJson() const
{
    json::Object object{ { "ok", ok } };
    if (!ok)
        object.add("error", text);
    else if (more.members().empty() && !text.empty())
        object.add("text", text);
    return object.add(more).text();
}

Reply execute(const ControlCommand &command, Testbed &testbed)
{
    if (command.device > testbed.size())
        return { false,
            "there is no device " + std::to_string(command.device) + " (1 to "
                + std::to_string(testbed.size()) + ")" };
    try {
        switch (command.verb) {
        case Verb::Help:
            return { true,
                "commands:" + controlCommandWords() + " (virtual-camera --help explains them)" };
        case Verb::List:
            return { true, listText(testbed) };
        case Verb::Describe:
            return { true, {}, descriptionsJson(testbed) };
        case Verb::State:
            return { true, command.device > 0 ? stateText(testbed.device(command.device)) : "",
                statesJson(testbed, command.device) };
        case Verb::Watch:
        case Verb::Log:
        case Verb::Environment:
            return { false, "only for a program that stays at the control socket" };
        default:
            return { true, executeOn(testbed.device(command.device), command) };
        }
    } catch (const std::exception &problem) {
        return { false, problem.what() };
    }
}

Reply executeLine(std::string_view line, Testbed &testbed)
{
    const std::variant<ControlCommand, std::string> parsed = parseControlCommand(line);
    if (const auto *problem = std::get_if<std::string>(&parsed))
        return { false, *problem };
    return execute(std::get<ControlCommand>(parsed), testbed);
}

} // namespace virtual_camera
