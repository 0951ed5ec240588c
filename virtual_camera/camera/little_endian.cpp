// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT
#include "virtual_camera/camera/little_endian.h"

namespace virtual_camera {

std::uint64_t readUnsigned(const std::uint8_t *bytes, std::size_t size)
{
    std::uint64_t value = 0;
    for (std::size_t i = size; i > 0; --i)
        value = value << 8U | bytes[i - 1];
    return value;
}

std::int64_t readSigned(const std::uint8_t *bytes, std::size_t size)
{
    const std::size_t unused = 64 - 8 * size;
    return static_cast<std::int64_t>(readUnsigned(bytes, size) << unused)
        >> static_cast<std::int64_t>(unused);
}

void append(std::vector<std::uint8_t> &bytes, std::int64_t value, std::size_t size)
{
    auto rest = static_cast<std::uint64_t>(value);
    for (std::size_t i = 0; i < size; ++i, rest >>= 8U)
        bytes.push_back(static_cast<std::uint8_t>(rest & 0xffU));
}

} // namespace virtual_camera
