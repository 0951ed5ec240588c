// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

#include "device/uvc_edge.h"

#include <set>

namespace uvc_edge {

namespace {

// Process-wide, as libuvc's handles are: one camera may be opened through several devices.
std::set<uvc_device_handle_t *> &openHandles()
{
    static std::set<uvc_device_handle_t *> handles;
    return handles;
}

uvc_device_t *entry(uvc_device_t **list, int index)
{
    if (!list || index < 0)
        return nullptr;
    for (; *list && index > 0; ++list, --index) { }
    return *list;
}

} // namespace

uvc_error_t deviceList(uvc_context_t *context, uvc_device_t ***list)
{
    return context ? uvc_get_device_list(context, list) : UVC_ERROR_NO_DEVICE;
}

uvc_error_t open(uvc_device_t **list, int index, uvc_device_handle_t **handle)
{
    uvc_device_t *const device = entry(list, index);
    if (!device)
        return UVC_ERROR_NO_DEVICE;
    uvc_device_handle_t *opened = nullptr;
    const uvc_error_t status = uvc_open(device, &opened);
    if (status < 0)
        return status;
    openHandles().insert(opened);
    *handle = opened;
    return status;
}

uvc_error_t close(uvc_device_handle_t *handle)
{
    if (openHandles().erase(handle) == 0)
        return UVC_ERROR_NO_DEVICE;
    uvc_close(handle);
    return UVC_SUCCESS;
}

bool isOpen(uvc_device_handle_t *handle) { return openHandles().count(handle) > 0; }

} // namespace uvc_edge
