// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT
#include "virtual_camera/command/script.h"

#include "virtual_camera/camera/words.h"

#include <cerrno>
#include <charconv>
#include <cmath>
#include <cstring>
#include <glib.h>
#include <optional>
#include <stdexcept>

namespace virtual_camera {

namespace {

using std::chrono::milliseconds;

std::optional<milliseconds> parseSeconds(std::string_view text)
{
    constexpr double longest = 1e6;
    double seconds = 0;
    const auto [end, error] =
        std::from_chars(text.data(), text.data() + text.size(), seconds, std::chars_format::fixed);
    if (error != std::errc{} || end != text.data() + text.size() || !(seconds >= 0)
        || seconds > longest)
        return std::nullopt;
    return milliseconds(std::llround(seconds * 1000));
}

// Appends the step of this line, if it has one; what is wrong, or nothing.
std::optional<std::string> addStep(Script &script, int number, std::string_view line)
{
    line = line.substr(0, line.find('#'));
    const std::vector<std::string_view> words = splitWords(line);
    if (words.empty())
        return std::nullopt;
    const milliseconds before = script.empty() ? milliseconds(0) : script.back().time;
    const bool relative = words[0].front() == '+';
    std::optional<milliseconds> time = parseSeconds(words[0].substr(relative ? 1 : 0));
    if (!time)
        return "'" + std::string(words[0]) + "' is not a time in seconds";
    if (relative)
        *time += before;
    if (*time < before)
        return std::string(words[0]) + " is earlier than the line before";
    line.remove_prefix(line.find(words[0]) + words[0].size());
    const auto parsed = parseControlCommand(line);
    if (const auto *problem = std::get_if<std::string>(&parsed))
        return *problem;
    script.push_back({ number, *time, std::get<ControlCommand>(parsed) });
    return std::nullopt;
}

} // namespace

std::variant<Script, std::string> parseScript(std::string_view text)
{
    Script script;
    int number = 0;
    for (const std::string_view line : split(text, '\n')) {
        if (const auto problem = addStep(script, ++number, line))
            return std::to_string(number) + ": " + *problem;
    }
    return script;
}

Script readScript(const std::string &path)
{
    gchar *bytes = nullptr;
    gsize size = 0;
    if (!g_file_get_contents(path.c_str(), &bytes, &size, nullptr))
        throw std::runtime_error("cannot read the script " + path + ": " + std::strerror(errno));
    const std::string text(bytes, size);
    g_free(bytes);
    auto parsed = parseScript(text);
    if (const auto *problem = std::get_if<std::string>(&parsed))
        throw std::runtime_error(path + ":" + *problem);
    return std::get<Script>(parsed);
}

} // namespace virtual_camera
