// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT
#pragma once

#include <string_view>
#include <vector>

namespace virtual_camera {

// The parts between separators, empty ones too.
inline std::vector<std::string_view> split(std::string_view text, char separator)
{
    std::vector<std::string_view> parts;
    for (std::size_t end = 0; (end = text.find(separator)) != std::string_view::npos;) {
        parts.push_back(text.substr(0, end));
        text.remove_prefix(end + 1);
    }
    parts.push_back(text);
    return parts;
}

// The words of a line, without the blanks between and around them.
inline std::vector<std::string_view> splitWords(std::string_view line)
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

} // namespace virtual_camera
