// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT
#include "virtual_camera/command/control_protocol.h"

#include "virtual_camera/camera/words.h"
#include "virtual_camera/command/control_execution.h"
#include "virtual_camera/command/control_socket.h"
#include "virtual_camera/command/state_feed.h"

namespace virtual_camera {

namespace {

bool onlyJsonTells(std::string_view line)
{
    const std::vector<std::string_view> words = splitWords(line);
    return !words.empty()
        && (words[0] == "describe" || words[0] == "watch"
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
    Testbed &testbed, StateFeed &feed)
{
    const bool json = takeJson(line);
    const auto parsed = parseControlCommand(line);
    const auto *command = std::get_if<ControlCommand>(&parsed);
    if (command != nullptr && command->verb == ControlCommand::Verb::Watch)
        return feed.add(connection);
    const Reply reply =
        command != nullptr ? execute(*command, testbed) : Reply{ false, std::get<1>(parsed) };
    connection->send(json ? reply.inJson() : reply.inWords());
    feed.touch();
}

} // namespace virtual_camera
