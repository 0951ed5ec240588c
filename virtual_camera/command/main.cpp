// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT
#include "virtual_camera/camera/words.h"
#include "virtual_camera/command/child_process.h"
#include "virtual_camera/command/command_line.h"
#include "virtual_camera/command/control_socket.h"
#include "virtual_camera/command/preload.h"
#include "virtual_camera/command/session.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <exception>
#include <optional>
#include <unistd.h>

using namespace virtual_camera;

namespace {

constexpr int failure = 1;
constexpr int wrongUsage = 2;
constexpr int cannotRun = 126;
constexpr int notFound = 127;

int complain(const std::string &message, int exitCode)
{
    std::fprintf(stderr, "virtual-camera: %s\n", message.c_str());
    return exitCode;
}

int tell(const CommandLine &line)
{
    std::string words;
    for (const std::string &word : line.command)
        words += words.empty() ? word : ' ' + word;
    // What follows goes on until somebody ends it.
    const bool follows = (line.command[0] == "watch" || line.command[0] == "log");
    std::optional<bool> ok;
    askSocket(*line.socket, words, [&](const std::string &answer) {
        if (!ok)
            ok = answer.substr(0, 2) == "ok" || answer.substr(0, 10) == R"({"ok":true)";
        std::puts(answer.c_str());
        std::fflush(stdout);
        return follows;
    });
    if (!ok)
        return complain(*line.socket + ": no answer", failure);
    return *ok ? 0 : failure;
}

// Becomes the command.
int joinBus(const CommandLine &line)
{
    std::string answer;
    askSocket(*line.socket, "environment", [&answer](const std::string &text) {
        answer = text;
        return false;
    });
    if (answer.substr(0, 3) != "ok ")
        return complain(*line.socket + ": no bus answers there", failure);
    std::vector<std::string> bus;
    for (const std::string_view variable : splitWords(std::string_view(answer).substr(3)))
        bus.emplace_back(variable);
    std::vector<std::string> variables = environmentWith(bus);
    std::vector<std::string> command = line.command;
    execvpe(command[0].c_str(), pointersTo(command).data(), pointersTo(variables).data());
    const int error = errno;
    return complain("cannot run " + command[0] + ": " + std::strerror(error),
        error == ENOENT ? notFound : cannotRun);
}

int run(const CommandLine &line)
{
    if (const std::string problem = preloadProblem(); !problem.empty())
        return complain(
            "umockdev's preload library cannot be loaded (" + problem + "); install libumockdev0",
            failure);
    Session session(line);
    try {
        return session.run();
    } catch (const CannotRun &problem) {
        const bool missing = problem.code() == std::errc::no_such_file_or_directory;
        return complain(problem.what(), missing ? notFound : cannotRun);
    }
}

} // namespace

int main(int count, char **arguments)
{
    const auto parsed = parseCommandLine({ arguments + 1, arguments + count });
    if (const auto *problem = std::get_if<std::string>(&parsed))
        return complain(*problem + "; see virtual-camera --help", wrongUsage);
    const auto &line = std::get<CommandLine>(parsed);
    try {
        switch (line.mode) {
        case CommandLine::Mode::Help:
            std::fputs(helpText().c_str(), stdout);
            return 0;
        case CommandLine::Mode::Version:
            std::puts("virtual-camera " PTZ_VERSION);
            return 0;
        case CommandLine::Mode::Tell:
            return tell(line);
        case CommandLine::Mode::Join:
            return joinBus(line);
        case CommandLine::Mode::Run:
            return run(line);
        }
    } catch (const std::exception &problem) {
        return complain(problem.what(), failure);
    }
    return failure;
}
