// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT
#pragma once

#include "virtual_camera/camera/little_endian.h"

#include <cstdint>
#include <initializer_list>
#include <vector>

namespace virtual_camera {

// Puts descriptors one behind the other.
class DescriptorWriter
{
public:
    // One number and how many bytes it takes.
    struct Number
    {
        std::int64_t value;
        std::size_t size;
    };
    static constexpr Number u8(std::int64_t value) { return { value, 1 }; }
    static constexpr Number u16(std::int64_t value) { return { value, 2 }; }
    static constexpr Number u24(std::int64_t value) { return { value, 3 }; }
    static constexpr Number u32(std::int64_t value) { return { value, 4 }; }

    // One descriptor; its length byte is put before the type.
    DescriptorWriter &add(std::uint8_t type, std::initializer_list<Number> rest)
    {
        const std::size_t start = m_bytes.size();
        append(m_bytes, 0, 1);
        append(m_bytes, type, 1);
        for (const Number &number : rest)
            append(m_bytes, number.value, number.size);
        m_bytes[start] = static_cast<std::uint8_t>(m_bytes.size() - start);
        return *this;
    }

    DescriptorWriter &add(const DescriptorWriter &others)
    {
        m_bytes.insert(m_bytes.end(), others.m_bytes.begin(), others.m_bytes.end());
        return *this;
    }

    std::int64_t size() const { return static_cast<std::int64_t>(m_bytes.size()); }
    const std::vector<std::uint8_t> &bytes() const { return m_bytes; }

private:
    std::vector<std::uint8_t> m_bytes;
};

} // namespace virtual_camera
