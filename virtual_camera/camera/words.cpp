// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT
#include "virtual_camera/camera/words.h"

#include <charconv>

namespace virtual_camera {

std::vector<std::string_view> split(std::string_view text, char separator)
{
    std::vector<std::string_view> parts;
    for (std::size_t end = 0; (end = text.find(separator)) != std::string_view::npos;) {
        parts.push_back(text.substr(0, end));
        text.remove_prefix(end + 1);
    }
    parts.push_back(text);
    return parts;
}

std::vector<std::string_view> splitWords(std::string_view line)
{
    constexpr std::string_view blanks = " \t\r\n";
    std::vector<std::string_view> words;
    for (std::size_t start = 0;
        (start = line.find_first_not_of(blanks)) != std::string_view::npos;) {
        line.remove_prefix(start);
        words.push_back(line.substr(0, line.find_first_of(blanks)));
        line.remove_prefix(words.back().size());
    }
    return words;
}

std::optional<std::int64_t> parseNumber(std::string_view text)
{
    const bool negative = !text.empty() && text.front() == '-';
    if (negative)
        text.remove_prefix(1);
    const bool hexadecimal = text.substr(0, 2) == "0x" || text.substr(0, 2) == "0X";
    if (hexadecimal)
        text.remove_prefix(2);
    // from_chars would accept a second sign.
    if (text.empty() || text.front() == '-')
        return std::nullopt;
    std::int64_t number = 0;
    const auto [end, error] =
        std::from_chars(text.data(), text.data() + text.size(), number, hexadecimal ? 16 : 10);
    if (error != std::errc{} || end != text.data() + text.size())
        return std::nullopt;
    return negative ? -number : number;
}

} // namespace virtual_camera
