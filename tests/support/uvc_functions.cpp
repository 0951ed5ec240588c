// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

// The functions that stand before libuvc's. Parameter names are libuvc's own.

#include "tests/support/uvc_call_notes.h"

using namespace uvc_call_recorder;

namespace {

void noteDevices(uvc_device_t **list)
{
    for (int i = 0; list[i]; ++i)
        recorder().devices[list[i]] = { list, i };
}

std::string nameOf(uvc_device_t *device)
{
    const auto known = recorder().devices.find(device);
    if (known == recorder().devices.end())
        return device ? "no_device" : "null";
    const auto &[list, place] = known->second;
    return recorder().lists.of(list) + "[" + std::to_string(place) + "]";
}

} // namespace

uvc_error_t uvc_init(uvc_context_t **ctx, libusb_context *usb_ctx)
{
    return noted(
        __func__, [=] { return libuvcsOwn<decltype(uvc_init)>("uvc_init")(ctx, usb_ctx); },
        [=](bool made) {
            const std::string own = usb_ctx ? ", a libusb context" : "";
            return (made ? recorder().contexts.add(*ctx) : "") + own;
        });
}

void uvc_exit(uvc_context_t *ctx)
{
    notedEnd(__func__, recorder().contexts.remove(ctx),
        [=] { libuvcsOwn<decltype(uvc_exit)>("uvc_exit")(ctx); });
}

uvc_error_t uvc_get_device_list(uvc_context_t *ctx, uvc_device_t ***list)
{
    return noted(
        __func__,
        [=] { return libuvcsOwn<decltype(uvc_get_device_list)>("uvc_get_device_list")(ctx, list); },
        [=](bool made) {
            const std::string context = recorder().contexts.of(ctx);
            if (!made)
                return context;
            noteDevices(*list);
            return context + ", " + recorder().lists.add(*list);
        });
}

void uvc_free_device_list(uvc_device_t **list, uint8_t unref_devices)
{
    notedEnd(__func__, recorder().lists.remove(list) + text(unref_devices), [=] {
        libuvcsOwn<decltype(uvc_free_device_list)>("uvc_free_device_list")(list, unref_devices);
    });
}

uvc_error_t uvc_get_device_descriptor(uvc_device_t *dev, uvc_device_descriptor_t **desc)
{
    return noted(
        __func__,
        [=] {
            return libuvcsOwn<decltype(uvc_get_device_descriptor)>("uvc_get_device_descriptor")(
                dev, desc);
        },
        [=](bool made) {
            const std::string device = nameOf(dev);
            return made ? device + ", " + recorder().descriptors.add(*desc) : device;
        });
}

void uvc_free_device_descriptor(uvc_device_descriptor_t *desc)
{
    notedEnd(__func__, recorder().descriptors.remove(desc), [=] {
        libuvcsOwn<decltype(uvc_free_device_descriptor)>("uvc_free_device_descriptor")(desc);
    });
}

uvc_error_t uvc_open(uvc_device_t *dev, uvc_device_handle_t **devh)
{
    return noted(
        __func__, [=] { return libuvcsOwn<decltype(uvc_open)>("uvc_open")(dev, devh); },
        [=](bool made) {
            const std::string device = nameOf(dev);
            return made ? device + ", " + recorder().handles.add(*devh) : device;
        });
}

void uvc_close(uvc_device_handle_t *devh)
{
    const bool open = recorder().handles.knows(devh);
    notedEnd(__func__, recorder().handles.remove(devh), [=] {
        if (open || depth > 1)
            libuvcsOwn<decltype(uvc_close)>("uvc_close")(devh);
    });
}

// ---- motion, zoom, focus, vendor commands ----

uvc_error_t uvc_set_pantilt_rel(uvc_device_handle_t *devh, int8_t pan_rel, uint8_t pan_speed,
    int8_t tilt_rel, uint8_t tilt_speed)
{
    return control(__func__, devh, pan_rel, pan_speed, tilt_rel, tilt_speed);
}
uvc_error_t uvc_set_pantilt_abs(uvc_device_handle_t *devh, int32_t pan, int32_t tilt)
{
    return control(__func__, devh, pan, tilt);
}
uvc_error_t uvc_set_zoom_rel(
    uvc_device_handle_t *devh, int8_t zoom_rel, uint8_t digital_zoom, uint8_t speed)
{
    return control(__func__, devh, zoom_rel, digital_zoom, speed);
}
uvc_error_t uvc_set_zoom_abs(uvc_device_handle_t *devh, uint16_t focal_length)
{
    return control(__func__, devh, focal_length);
}
uvc_error_t uvc_get_zoom_abs(
    uvc_device_handle_t *devh, uint16_t *focal_length, uvc_req_code req_code)
{
    return control(__func__, devh, focal_length, req_code);
}
uvc_error_t uvc_set_focus_rel(uvc_device_handle_t *devh, int8_t focus_rel, uint8_t speed)
{
    return control(__func__, devh, focus_rel, speed);
}
uvc_error_t uvc_get_focus_abs(uvc_device_handle_t *devh, uint16_t *focus, uvc_req_code req_code)
{
    return control(__func__, devh, focus, req_code);
}
uvc_error_t uvc_set_roll_abs(uvc_device_handle_t *devh, int16_t roll)
{
    return control(__func__, devh, roll);
}

// ---- image properties ----

#define SETS(function, type)                                                                       \
    uvc_error_t function(uvc_device_handle_t *devh, type value)                                    \
    {                                                                                              \
        return control(__func__, devh, value);                                                     \
    }
#define GETS(function, type)                                                                       \
    uvc_error_t function(uvc_device_handle_t *devh, type *value, uvc_req_code req_code)            \
    {                                                                                              \
        return control(__func__, devh, value, req_code);                                           \
    }
GETS(uvc_get_brightness, int16_t)
SETS(uvc_set_brightness, int16_t)
GETS(uvc_get_contrast, uint16_t)
SETS(uvc_set_contrast, uint16_t)
GETS(uvc_get_saturation, uint16_t)
SETS(uvc_set_saturation, uint16_t)
GETS(uvc_get_sharpness, uint16_t)
SETS(uvc_set_sharpness, uint16_t)
GETS(uvc_get_gamma, uint16_t)
SETS(uvc_set_gamma, uint16_t)
GETS(uvc_get_white_balance_temperature, uint16_t)
SETS(uvc_set_white_balance_temperature, uint16_t)
SETS(uvc_set_white_balance_temperature_auto, uint8_t)
GETS(uvc_get_backlight_compensation, uint16_t)
SETS(uvc_set_backlight_compensation, uint16_t)
GETS(uvc_get_gain, uint16_t)
GETS(uvc_get_power_line_frequency, uint8_t)
SETS(uvc_set_power_line_frequency, uint8_t)
