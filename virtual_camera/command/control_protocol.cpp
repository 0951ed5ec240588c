// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT
#include "virtual_camera/command/control_protocol.h"

#include "virtual_camera/camera/words.h"
#include "virtual_camera/command/control_execution.h"
#include "virtual_camera/command/control_socket.h"
#include "virtual_camera/command/log_feed.h"
#include "virtual_camera/command/state_feed.h"
#include "virtual_camera/command/state_json.h"

namespace virtual_camera {

namespace {

using Verb = ControlCommand::Verb;

bool onlyJsonTells(std::string_view line)
{
    const std::vector<std::string_view> words = splitWords(line);
    return !words.empty()
        && (words[0] == "describe" || words[0] == "watch" || words[0] == "log"
            || (words[0] == "state" && words.size() == 1));
}

// Whether the line asks for JSON; the word that says so is taken away.
bool takeJson(std::string_view &line)
{
    constexpr std::string_view word = "json";
    const std::vector<std::string_view> words = splitWords(line);
    if (words.empty() || words[0] != word)
        return onlyJsonTells(line);
    line.remove_prefix(line.find(word) + word.size());
    return true;
}

} // namespace

void answerLine(const std::shared_ptr<Connection> &connection, std::string_view line,
    const Controlled &controlled)
{
    const bool json = takeJson(line);
    const auto parsed = parseControlCommand(line);
    const auto *command = std::get_if<ControlCommand>(&parsed);
    Reply reply;
    if (command == nullptr)
        reply = { false, std::get<1>(parsed) };
    else if (command->verb == Verb::Watch)
        return controlled.states.add(connection);
    else if (command->verb == Verb::Log)
        reply = { true, {}, greeting(controlled.testbed).add("log", logVersion) };
    else if (command->verb == Verb::Environment)
        reply = { true, controlled.environment };
    else
        reply = execute(*command, controlled.testbed);
    connection->send(json ? reply.inJson() : reply.inWords());
    if (command != nullptr && command->verb == Verb::Log)
        controlled.log.add(connection);
    controlled.states.touch();
}

} // namespace virtual_camera
