// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT
#include "virtual_camera/umockdev/program_memory.h"

namespace virtual_camera {

void Unref::operator()(UMockdevIoctlData *data) const { g_object_unref(data); }

Memory follow(UMockdevIoctlData *data, std::size_t offset, std::size_t size)
{
    return Memory(
        data == nullptr ? nullptr : umockdev_ioctl_data_resolve(data, offset, size, nullptr));
}

void write(const Memory &memory, std::size_t offset, const void *bytes, std::size_t size)
{
    if (size == 0)
        return;
    // umockdev takes the bytes without const, but only copies them.
    auto *source = static_cast<guint8 *>(const_cast<void *>(bytes));
    umockdev_ioctl_data_update(memory.get(), offset, source, static_cast<gint>(size));
}

} // namespace virtual_camera
