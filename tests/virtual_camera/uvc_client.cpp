// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

// A small camera program on libuvc that shares nothing with the rest. Each line that it prints is
// one fact; the exit code is 0 when everything went as it does with a good camera.
//
//   uvc_client               lists the cameras, drives each and reads back what it has set
//   uvc_client turn          pans the first camera to the right until a line comes in;
//                            ends with the next one
//   uvc_client read COUNT    reads the brightness of the first camera so many times
//   uvc_client hold SECONDS  opens the first camera and reads its brightness until that fails

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <libuvc/libuvc.h>

namespace {

int failures = 0;

void check(const char *what, bool good)
{
    printf("  %s: %s\n", what, good ? "ok" : "FAILED");
    if (!good)
        ++failures;
}

using GetValue = uvc_error_t(uvc_device_handle_t *, std::uint16_t *, uvc_req_code);
using SetValue = uvc_error_t(uvc_device_handle_t *, std::uint16_t);

struct Control
{
    const char *name;
    GetValue *get;
    SetValue *set;
};

const Control controls[] = {
    { "contrast", uvc_get_contrast, uvc_set_contrast },
    { "saturation", uvc_get_saturation, uvc_set_saturation },
    { "sharpness", uvc_get_sharpness, uvc_set_sharpness },
    { "gamma", uvc_get_gamma, uvc_set_gamma },
    { "white balance temperature", uvc_get_white_balance_temperature,
        uvc_set_white_balance_temperature },
    { "backlight compensation", uvc_get_backlight_compensation, uvc_set_backlight_compensation },
    { "gain", uvc_get_gain, uvc_set_gain },
};

void checkControl(uvc_device_handle_t *camera, const Control &control)
{
    std::uint16_t min = 0, max = 0, def = 0, cur = 0;
    bool good = control.get(camera, &min, UVC_GET_MIN) == UVC_SUCCESS
        && control.get(camera, &max, UVC_GET_MAX) == UVC_SUCCESS
        && control.get(camera, &def, UVC_GET_DEF) == UVC_SUCCESS;
    good = good && min < max && def >= min && def <= max;
    good = good && control.set(camera, max) == UVC_SUCCESS
        && control.get(camera, &cur, UVC_GET_CUR) == UVC_SUCCESS && cur == max;
    good = good && control.set(camera, static_cast<std::uint16_t>(max + 1)) == UVC_ERROR_PIPE;
    good = good && control.set(camera, def) == UVC_SUCCESS;
    check(control.name, good);
}

void checkBrightness(uvc_device_handle_t *camera)
{
    std::int16_t min = 0, cur = 0;
    bool good = uvc_get_brightness(camera, &min, UVC_GET_MIN) == UVC_SUCCESS
        && uvc_set_brightness(camera, min) == UVC_SUCCESS
        && uvc_get_brightness(camera, &cur, UVC_GET_CUR) == UVC_SUCCESS && cur == min;
    check("brightness", good);
}

void waitALittle()
{
    const timespec time = { 0, 20 * 1000 * 1000 };
    nanosleep(&time, nullptr);
}

// The camera takes its time; gives it half a minute.
bool arrivesAt(uvc_device_handle_t *camera, std::int32_t pan, std::int32_t tilt)
{
    for (int tries = 0; tries < 1500; ++tries) {
        std::int32_t p = 0, t = 0;
        if (uvc_get_pantilt_abs(camera, &p, &t, UVC_GET_CUR) != UVC_SUCCESS)
            return false;
        if (p == pan && t == tilt)
            return true;
        waitALittle();
    }
    return false;
}

void checkMotion(uvc_device_handle_t *camera)
{
    std::int32_t before = 0, after = 0, tilt = 0;
    check("travels", uvc_set_pantilt_abs(camera, 3600, -7200) == UVC_SUCCESS);
    check("arrives", arrivesAt(camera, 3600, -7200));

    uvc_get_pantilt_abs(camera, &before, &tilt, UVC_GET_CUR);
    bool good = uvc_set_pantilt_rel(camera, 1, 24, 0, 0) == UVC_SUCCESS;
    waitALittle();
    good = good && uvc_set_pantilt_rel(camera, 0, 0, 0, 0) == UVC_SUCCESS;
    uvc_get_pantilt_abs(camera, &after, &tilt, UVC_GET_CUR);
    check("pans to the right", good && after > before);
    waitALittle();
    uvc_get_pantilt_abs(camera, &before, &tilt, UVC_GET_CUR);
    check("stops", after == before);

    check("zooms",
        uvc_set_zoom_rel(camera, 1, 1, 5) == UVC_SUCCESS
            && uvc_set_zoom_rel(camera, 0, 1, 5) == UVC_SUCCESS);
    check("focuses",
        uvc_set_focus_auto(camera, 0) == UVC_SUCCESS
            && uvc_set_focus_rel(camera, -1, 3) == UVC_SUCCESS
            && uvc_set_focus_rel(camera, 0, 0) == UVC_SUCCESS);
    check("takes commands",
        uvc_set_roll_abs(camera, 23) == UVC_SUCCESS && uvc_set_roll_abs(camera, 8) == UVC_SUCCESS);
    check("goes home", arrivesAt(camera, 0, 0));
}

void drive(uvc_device_t *device)
{
    uvc_device_handle_t *camera = nullptr;
    uvc_error_t status = uvc_open(device, &camera);
    if (status != UVC_SUCCESS) {
        printf("  open: %d\n", status);
        ++failures;
        return;
    }
    checkBrightness(camera);
    for (const Control &control : controls)
        checkControl(camera, control);
    checkMotion(camera);
    uvc_close(camera);
}

int listAndDrive(uvc_device_t **devices)
{
    int count = 0;
    for (; devices[count] != nullptr; ++count) {
        uvc_device_descriptor_t *descriptor = nullptr;
        if (uvc_get_device_descriptor(devices[count], &descriptor) != UVC_SUCCESS)
            return 1;
        printf("camera %d: %04x:%04x product '%s' serial '%s'\n", count + 1, descriptor->idVendor,
            descriptor->idProduct, descriptor->product ? descriptor->product : "",
            descriptor->serialNumber ? descriptor->serialNumber : "");
        uvc_free_device_descriptor(descriptor);
        drive(devices[count]);
    }
    printf("%d cameras, %d failures\n", count, failures);
    return failures != 0;
}

int readBrightness(uvc_device_t *device, int count)
{
    uvc_device_handle_t *camera = nullptr;
    if (device == nullptr || uvc_open(device, &camera) != UVC_SUCCESS)
        return 1;
    for (std::int16_t value = 0; count > 0; --count) {
        if (uvc_get_brightness(camera, &value, UVC_GET_CUR) != UVC_SUCCESS)
            return 1;
    }
    uvc_close(camera);
    return 0;
}

void awaitLine()
{
    for (int letter = 0; letter != '\n' && letter != EOF;)
        letter = getchar();
}

int turn(uvc_device_t *device)
{
    uvc_device_handle_t *camera = nullptr;
    if (device == nullptr || uvc_open(device, &camera) != UVC_SUCCESS)
        return 1;
    if (uvc_set_pantilt_rel(camera, 1, 1, 0, 0) != UVC_SUCCESS)
        return 1;
    puts("turning");
    awaitLine();
    if (uvc_set_pantilt_rel(camera, 0, 0, 0, 0) != UVC_SUCCESS)
        return 1;
    puts("standing");
    awaitLine();
    uvc_close(camera);
    return 0;
}

// Says "reading" after the first good answer; ends, without closing, when one is bad.
int hold(uvc_device_t *device, int seconds)
{
    uvc_device_handle_t *camera = nullptr;
    if (device == nullptr || uvc_open(device, &camera) != UVC_SUCCESS)
        return 1;
    const time_t end = time(nullptr) + seconds;
    int answers = 0;
    while (time(nullptr) < end) {
        std::int16_t value = 0;
        const uvc_error_t status = uvc_get_brightness(camera, &value, UVC_GET_CUR);
        if (status != UVC_SUCCESS) {
            printf("failed with %d\n", status);
            return 0;
        }
        if (answers++ == 0)
            puts("reading");
        waitALittle();
    }
    return 1;
}

} // namespace

int main(int count, char **arguments)
{
    uvc_context_t *context = nullptr;
    uvc_device_t **devices = nullptr;
    setvbuf(stdout, nullptr, _IOLBF, 0);
    if (uvc_init(&context, nullptr) != UVC_SUCCESS
        || uvc_get_device_list(context, &devices) != UVC_SUCCESS)
        return 1;
    if (count == 3 && strcmp(arguments[1], "read") == 0)
        return readBrightness(devices[0], atoi(arguments[2]));
    if (count == 3 && strcmp(arguments[1], "hold") == 0)
        return hold(devices[0], atoi(arguments[2]));
    if (count == 2 && strcmp(arguments[1], "turn") == 0)
        return turn(devices[0]);
    const int result = listAndDrive(devices);
    uvc_free_device_list(devices, 1);
    uvc_exit(context);
    return result;
}
