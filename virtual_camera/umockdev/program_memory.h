// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstring>
#include <memory>
#include <umockdev.h>

namespace virtual_camera {

/// A piece of a program's memory: a copy, which goes back when the system call ends.
struct Unref
{
    void operator()(UMockdevIoctlData *data) const;
};
using Memory = std::unique_ptr<UMockdevIoctlData, Unref>;

/// What the pointer at this offset points to; null when it points nowhere. Waits for the program,
/// which may have been stopped: hold no lock.
Memory follow(UMockdevIoctlData *data, std::size_t offset, std::size_t size);

void write(const Memory &memory, std::size_t offset, const void *bytes, std::size_t size);

template<typename T> T read(const UMockdevIoctlData &memory)
{
    T value;
    std::memcpy(&value, memory.data, sizeof value);
    return value;
}

} // namespace virtual_camera
