// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

// What a small camera program opens at its start.
#pragma once

#include <libuvc/libuvc.h>

inline uvc_device_handle_t *openCamera()
{
    uvc_context_t *context = nullptr;
    uvc_device_t *device = nullptr;
    uvc_device_handle_t *camera = nullptr;
    if (uvc_init(&context, nullptr) != UVC_SUCCESS
        || uvc_find_device(context, &device, 0, 0, nullptr) != UVC_SUCCESS
        || uvc_open(device, &camera) != UVC_SUCCESS)
        return nullptr;
    return camera;
}
