// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

namespace virtual_camera {

/// The parts between separators, empty ones included.
std::vector<std::string_view> split(std::string_view text, char separator);

/// The words of a line, without the blanks between and around them.
std::vector<std::string_view> splitWords(std::string_view line);

/// The whole text as a number, decimal or with 0x; empty when it is not one.
std::optional<std::int64_t> parseNumber(std::string_view text);

} // namespace virtual_camera
