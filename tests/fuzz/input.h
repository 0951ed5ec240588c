// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

namespace fuzz {

// The bytes that a fuzzer made up, taken from the front. What is missing at the end is zero.
class Input
{
public:
    Input(const std::uint8_t *bytes, std::size_t size) : m_rest(bytes), m_size(size) { }

    bool empty() const { return m_size == 0; }

    std::vector<std::uint8_t> bytes(std::size_t most)
    {
        const std::size_t count = std::min(most, m_size);
        std::vector<std::uint8_t> taken(m_rest, m_rest + count);
        skip(count);
        return taken;
    }

    std::vector<std::uint8_t> exactly(std::size_t count)
    {
        std::vector<std::uint8_t> taken = bytes(count);
        taken.resize(count);
        return taken;
    }

    std::uint8_t byte() { return exactly(1)[0]; }

    // From 0 to count - 1.
    std::size_t oneOf(std::size_t count) { return byte() % count; }

    unsigned word()
    {
        const std::vector<std::uint8_t> both = exactly(2);
        return both[0] | static_cast<unsigned>(both[1]) << 8U;
    }

    // Up to the next end of line, which is taken too.
    std::string_view line()
    {
        const std::string_view rest(reinterpret_cast<const char *>(m_rest), m_size);
        const std::string_view taken = rest.substr(0, rest.find('\n'));
        skip(std::min(taken.size() + 1, m_size));
        return taken;
    }

private:
    void skip(std::size_t count)
    {
        m_rest += count;
        m_size -= count;
    }

    const std::uint8_t *m_rest;
    std::size_t m_size;
};

} // namespace fuzz
