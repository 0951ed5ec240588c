// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT
#pragma once

#include "virtual_camera/camera/control_request.h"

#include <initializer_list>

namespace virtual_camera {

/// Puts descriptors one behind the other.
class DescriptorWriter
{
public:
    /// A number and how many bytes it takes.
    struct Number
    {
        std::int64_t value;
        std::size_t size;
    };
    static constexpr Number u8(std::int64_t value) { return { value, 1 }; }
    static constexpr Number u16(std::int64_t value) { return { value, 2 }; }
    static constexpr Number u24(std::int64_t value) { return { value, 3 }; }
    static constexpr Number u32(std::int64_t value) { return { value, 4 }; }

    /// One descriptor: its length byte, its type, the rest.
    DescriptorWriter &add(std::uint8_t type, std::initializer_list<Number> rest);
    DescriptorWriter &add(const DescriptorWriter &others);

    std::int64_t size() const { return static_cast<std::int64_t>(m_bytes.size()); }
    const Bytes &bytes() const { return m_bytes; }

private:
    Bytes m_bytes;
};

} // namespace virtual_camera
