// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

// What somebody tells the command virtual-camera: the words after its name, the lines that come
// through its socket, and how the bytes of the lines come in.
//
// An input is: a byte, then lines. They are taken for control commands, for the words of a command
// line, for a script and, from byte 0x80 on, for what comes in at a socket, the more at a time the
// higher the byte. System calls are slow; so most lines go the short way.
#include "tests/fuzz/expect.h"
#include "tests/fuzz/input.h"
#include "tests/fuzz/socket_client.h"
#include "virtual_camera/command/command_line.h"
#include "virtual_camera/command/control_command.h"
#include "virtual_camera/command/device_options.h"
#include "virtual_camera/command/script.h"

namespace {

using namespace virtual_camera;
using fuzz::expect;

void checkProblem(const std::string &problem)
{
    expect(!problem.empty(), "what is refused is refused for a reason");
}

void checkRange(const ControlCommand &command)
{
    const ControlTraits &control = traits(command.ranged.control);
    expect(command.ranged.field < control.fields.size(), "a range belongs to a field");
    const Field &field = control.fields[command.ranged.field];
    const Range &range = command.range;
    for (const std::int64_t number : { range.min, range.max, range.def, range.cur, range.res })
        expect(number >= field.lowest() && number <= field.highest(),
            "the numbers of a range have room in the control");
}

void checkFault(const ControlCommand &command)
{
    const std::string text = faultText(command.fault);
    const auto again = parseControlCommand(
        std::string(faultWord(command.fault.effect)) + " 1" + (text.empty() ? "" : " ") + text);
    const auto *same = std::get_if<ControlCommand>(&again);
    expect(same != nullptr && faultText(same->fault) == text,
        "what a fault is called sets the same fault");
}

void checkCommand(const ControlCommand &command)
{
    using Verb = ControlCommand::Verb;
    const bool general = command.verb == Verb::Help || command.verb == Verb::List
        || command.verb == Verb::Describe || command.verb == Verb::Watch
        || command.verb == Verb::Log || command.verb == Verb::Environment;
    expect(command.device >= 0 && (!general || command.device == 0)
            && (general || command.verb == Verb::State || command.device > 0),
        "a command is for a device or for none");
    const auto numberIn = [&command](int lowest, int highest) {
        expect(command.number && *command.number >= lowest && *command.number <= highest,
            "a number is one that the command knows");
    };
    switch (command.verb) {
    case Verb::Replug:
        if (command.number)
            numberIn(1, 127);
        break;
    case Verb::AddFault:
        checkFault(command);
        break;
    case Verb::Delay:
        numberIn(0, 3600 * 1000);
        break;
    case Verb::RefuseOpen:
        numberIn(0, 133);
        break;
    case Verb::RefuseClaim:
        numberIn(0, 1);
        break;
    case Verb::SetRange:
        checkRange(command);
        break;
    default:
        break;
    }
}

void checkLine(std::string_view line)
{
    const auto parsed = parseControlCommand(line);
    const auto padded = parseControlCommand(" \t" + std::string(line) + " \r");
    expect(parsed.index() == padded.index(), "blanks around a command do not matter");
    if (const auto *problem = std::get_if<std::string>(&parsed))
        checkProblem(*problem);
    else
        checkCommand(std::get<ControlCommand>(parsed));
}

void checkWords(const std::vector<std::string> &words)
{
    const auto parsed = parseCommandLine(words);
    if (const auto *problem = std::get_if<std::string>(&parsed))
        return checkProblem(*problem);
    const auto &line = std::get<CommandLine>(parsed);
    const bool runs = line.mode == CommandLine::Mode::Run;
    if (runs || line.mode == CommandLine::Mode::Tell || line.mode == CommandLine::Mode::Join)
        expect(!line.command.empty(), "there is something to run or to tell");
    if (runs)
        expect(!line.devices.empty() && line.devices.size() <= mostDevices,
            "as many devices are plugged in as there are sockets");
    for (const std::string &command : line.atStart)
        expect(parseControlCommand(command).index() == 0, "what is done at the start can be done");
}

void checkScript(std::string_view text)
{
    const auto parsed = parseScript(text);
    if (const auto *problem = std::get_if<std::string>(&parsed))
        return checkProblem(*problem);
    std::chrono::milliseconds before{ 0 };
    int line = 0;
    for (const ScriptStep &step : std::get<Script>(parsed)) {
        expect(step.time >= before && step.line > line, "a script goes forward");
        before = step.time;
        line = step.line;
        checkCommand(step.command);
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *bytes, std::size_t size)
{
    fuzz::Input input(bytes, size);
    if (const std::uint8_t choice = input.byte(); choice >= 0x80) {
        const std::size_t atATime = 7 + 16 * (choice - std::size_t{ 0x80 });
        const std::vector<std::uint8_t> rest = fuzz::Input(input).bytes(size);
        fuzz::checkSocket({ reinterpret_cast<const char *>(rest.data()), rest.size() }, atATime);
    }
    std::vector<std::string> words;
    while (!input.empty()) {
        words.emplace_back(input.line());
        checkLine(words.back());
    }
    checkWords(words);
    checkScript({ reinterpret_cast<const char *>(bytes), size });
    return 0;
}
