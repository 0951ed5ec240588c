// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace virtual_camera {

// Numbers as USB sends them, low byte first. Sizes are 1 to 8 bytes.

std::uint64_t readUnsigned(const std::uint8_t *bytes, std::size_t size);
std::int64_t readSigned(const std::uint8_t *bytes, std::size_t size);
/// Appends the low bytes of the value.
void append(std::vector<std::uint8_t> &bytes, std::int64_t value, std::size_t size);

} // namespace virtual_camera
