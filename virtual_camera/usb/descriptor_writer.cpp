// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT
#include "virtual_camera/usb/descriptor_writer.h"

#include "virtual_camera/camera/little_endian.h"

namespace virtual_camera {

DescriptorWriter &DescriptorWriter::add(std::uint8_t type, std::initializer_list<Number> rest)
{
    const std::size_t start = m_bytes.size();
    append(m_bytes, 0, 1);
    append(m_bytes, type, 1);
    for (const Number &number : rest)
        append(m_bytes, number.value, number.size);
    m_bytes[start] = static_cast<std::uint8_t>(m_bytes.size() - start);
    return *this;
}

DescriptorWriter &DescriptorWriter::add(const DescriptorWriter &others)
{
    m_bytes.insert(m_bytes.end(), others.m_bytes.begin(), others.m_bytes.end());
    return *this;
}

} // namespace virtual_camera
