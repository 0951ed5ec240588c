// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT
#pragma once

#include "virtual_camera/umockdev/usbfs_node.h"

#include <cstring>
#include <memory>
#include <umockdev.h>

// What usbfs_node.cpp and usbfs_calls.cpp share; nobody else needs it.

namespace virtual_camera {

// A piece of the program's memory.
struct Unref
{
    void operator()(UMockdevIoctlData *data) const { g_object_unref(data); }
};
using Memory = std::unique_ptr<UMockdevIoctlData, Unref>;

// What the pointer at this offset points to; null when the program cannot be read.
inline Memory follow(UMockdevIoctlData *data, std::size_t offset, std::size_t size)
{
    return data == nullptr ? nullptr
                           : Memory(umockdev_ioctl_data_resolve(data, offset, size, nullptr));
}

template<typename T> T read(const UMockdevIoctlData &memory)
{
    T value;
    std::memcpy(&value, memory.data, sizeof value);
    return value;
}

inline void write(const Memory &memory, std::size_t offset, const void *bytes, std::size_t size)
{
    if (size == 0)
        return;
    // umockdev takes the bytes without const, but only copies them.
    auto *source = static_cast<guint8 *>(const_cast<void *>(bytes));
    umockdev_ioctl_data_update(memory.get(), offset, source, static_cast<gint>(size));
}

// One system call: its arguments and what it may need to know of who makes it.
struct UsbfsNode::Call
{
    UMockdevIoctlClient *client;
    UMockdevIoctlData *argument;
    unsigned long request;
    int file;
    // The pointer itself. umockdev writes over its own copy when it is followed.
    std::uint64_t pointer = virtual_camera::read<std::uint64_t>(*argument);

    Memory memory(std::size_t size) const { return follow(argument, 0, size); }
    template<typename T> bool read(T &value) const
    {
        const Memory found = memory(sizeof value);
        if (!found)
            return false;
        value = virtual_camera::read<T>(*found);
        return true;
    }
    template<typename T> bool write(const T &value) const
    {
        const Memory found = memory(sizeof value);
        if (!found)
            return false;
        virtual_camera::write(found, 0, &value, sizeof value);
        return true;
    }
};

} // namespace virtual_camera
