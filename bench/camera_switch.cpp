// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

// Closes, opens and reads a camera, by the panel's device and by bare calls in turn. Prints the
// nanoseconds of each pair.

#include <chrono>
#include <cstdio>
#include <cstdlib>

#include "device/base_device.h"
#include "opponents/camera.h"

namespace {

template<typename Step> long long nanoseconds(Step step)
{
    const auto start = std::chrono::steady_clock::now();
    step();
    const auto taken = std::chrono::steady_clock::now() - start;
    return std::chrono::duration_cast<std::chrono::nanoseconds>(taken).count();
}

template<typename Value>
void readAll(uvc_device_handle_t *camera,
    uvc_error_t (*getter)(uvc_device_handle_t *, Value *, uvc_req_code))
{
    Value value = 0;
    for (const uvc_req_code code : { UVC_GET_CUR, UVC_GET_MIN, UVC_GET_MAX, UVC_GET_DEF })
        getter(camera, &value, code);
}

void readAll(uvc_device_handle_t *camera)
{
    readAll(camera, uvc_get_backlight_compensation);
    readAll(camera, uvc_get_gamma);
    readAll(camera, uvc_get_contrast);
    readAll(camera, uvc_get_saturation);
    readAll(camera, uvc_get_brightness);
    readAll(camera, uvc_get_sharpness);
    readAll(camera, uvc_get_white_balance_temperature);
    readAll(camera, uvc_get_power_line_frequency);
}

} // namespace

int main(int argc, char *argv[])
{
    const int rounds = argc > 1 ? std::atoi(argv[1]) : 1;
    BaseDevice *const device = BaseDevice::CreateDevice(USB);
    uvc_context_t *context = nullptr;
    uvc_device_t **list = nullptr;
    uvc_init(&context, nullptr);
    uvc_get_device_list(context, &list);
    for (int round = 0; round < rounds; ++round) {
        // What is closed first in each measurement is opened before it.
        if (!device->OpenDevice("0", 0))
            return 1;
        const auto panels = nanoseconds([device] {
            device->CloseDevice();
            device->OpenDevice("0", 0);
            device->GetPropertyValues();
        });
        device->CloseDevice();

        uvc_device_handle_t *camera = nullptr;
        if (uvc_open(*list, &camera) != UVC_SUCCESS)
            return 1;
        const auto bare = nanoseconds([list, &camera] {
            uvc_close(camera);
            uvc_open(*list, &camera);
            readAll(camera);
        });
        uvc_close(camera);
        std::printf("%lld %lld\n", panels, bare);
    }
    return 0;
}
