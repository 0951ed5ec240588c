// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

// A program on libuvc as anybody may have written it; it knows nothing of virtual cameras. It zooms
// the first camera in as far as it goes, and says when it is there.

#include <cstdint>
#include <cstdio>
#include <libuvc/libuvc.h>
#include <unistd.h>

namespace {

int fail(const char *what, uvc_error_t status)
{
    std::printf("%s: %s\n", what, uvc_strerror(status));
    return 1;
}

int zoomIn(uvc_device_handle_t *camera)
{
    std::uint16_t tele = 0;
    uvc_error_t status = uvc_get_zoom_abs(camera, &tele, UVC_GET_MAX);
    if (status != UVC_SUCCESS)
        return fail("This camera has no zoom", status);
    status = uvc_set_zoom_abs(camera, tele);
    if (status != UVC_SUCCESS)
        return fail("The camera does not zoom", status);
    for (std::uint16_t zoom = 0; zoom != tele; usleep(20000)) {
        status = uvc_get_zoom_abs(camera, &zoom, UVC_GET_CUR);
        if (status != UVC_SUCCESS)
            return fail("Lost the camera", status);
    }
    std::printf("Zoomed in to %d\n", tele);
    return 0;
}

} // namespace

int main()
{
    uvc_context_t *context = nullptr;
    uvc_device_t *device = nullptr;
    uvc_device_handle_t *camera = nullptr;
    uvc_error_t status = uvc_init(&context, nullptr);
    if (status == UVC_SUCCESS)
        status = uvc_find_device(context, &device, 0, 0, nullptr);
    if (status != UVC_SUCCESS)
        return fail("No camera", status);
    status = uvc_open(device, &camera);
    if (status != UVC_SUCCESS)
        return fail("Cannot open the camera", status);
    // The operating system closes what is open.
    return zoomIn(camera);
}
