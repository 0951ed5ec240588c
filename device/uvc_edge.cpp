// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

#include "device/uvc_edge.h"

// Weak references: without these look-ups in libuvc, every camera is assumed to have both units.
#pragma weak uvc_get_camera_terminal
#pragma weak uvc_get_processing_units

namespace uvc_edge {

namespace {

uvc_device_t *entry(uvc_device_t **list, int index)
{
    if (!list || index < 0)
        return nullptr;
    for (; *list && index > 0; ++list, --index) { }
    return *list;
}

bool hasCameraTerminal(uvc_device_handle_t *devh)
{
    return !&uvc_get_camera_terminal || uvc_get_camera_terminal(devh);
}

bool hasProcessingUnit(uvc_device_handle_t *devh)
{
    return !&uvc_get_processing_units || uvc_get_processing_units(devh);
}

constexpr uvc_error_t readiness(bool has) { return has ? UVC_SUCCESS : UVC_ERROR_NOT_SUPPORTED; }

} // namespace

uvc_error_t deviceList(uvc_context_t *context, uvc_device_t ***list)
{
    return context ? uvc_get_device_list(context, list) : UVC_ERROR_NO_DEVICE;
}

uvc_error_t open(uvc_device_t **list, int index, Handle &handle)
{
    uvc_device_t *const device = entry(list, index);
    if (!device)
        return UVC_ERROR_NO_DEVICE;
    uvc_device_handle_t *opened = nullptr;
    const uvc_error_t status = uvc_open(device, &opened);
    if (succeeded(status))
        handle = { opened,
            { readiness(hasCameraTerminal(opened)), readiness(hasProcessingUnit(opened)) } };
    return status;
}

uvc_error_t close(Handle &handle)
{
    if (handle.ready[CameraTerminal] == UVC_ERROR_NO_DEVICE)
        return UVC_ERROR_NO_DEVICE;
    handle = { handle.devh };
    uvc_close(handle.devh);
    return UVC_SUCCESS;
}

} // namespace uvc_edge
