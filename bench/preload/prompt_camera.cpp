// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

// Preloaded: stands for libuvc with one camera that answers everything at once. What is then
// measured is the program above libuvc and nothing else.

#include "record.h"

#include <libuvc/libuvc.h>

#include <cstdlib>

namespace {

// Never looked into by those who hold a pointer to it.
char object = 0;

template<typename Type> Type *something() { return reinterpret_cast<Type *>(&object); }

uvc_error_t setting()
{
    record::noteSetting();
    return UVC_SUCCESS;
}

// Each pixel that a slider of the panel travels is another value.
template<typename Value> uvc_error_t reading(Value *value, uvc_req_code code)
{
    record::noteReading();
    if (code == UVC_GET_MIN)
        *value = 0;
    else
        *value = code == UVC_GET_MAX ? 250 : 120;
    return UVC_SUCCESS;
}

} // namespace

uvc_error_t uvc_init(uvc_context_t **ctx, libusb_context * /*usb*/)
{
    *ctx = something<uvc_context_t>();
    return UVC_SUCCESS;
}

void uvc_exit(uvc_context_t * /*ctx*/) { }

uvc_error_t uvc_get_device_list(uvc_context_t * /*ctx*/, uvc_device_t ***list)
{
    *list = static_cast<uvc_device_t **>(std::calloc(2, sizeof(uvc_device_t *)));
    **list = something<uvc_device_t>();
    return UVC_SUCCESS;
}

void uvc_free_device_list(uvc_device_t **list, uint8_t /*unref*/) { std::free(list); }

uvc_error_t uvc_get_device_descriptor(uvc_device_t * /*dev*/, uvc_device_descriptor_t **desc)
{
    *desc = static_cast<uvc_device_descriptor_t *>(std::calloc(1, sizeof(uvc_device_descriptor_t)));
    (*desc)->idProduct = 0x8888;
    return UVC_SUCCESS;
}

void uvc_free_device_descriptor(uvc_device_descriptor_t *desc) { std::free(desc); }

uvc_error_t uvc_find_device(
    uvc_context_t * /*ctx*/, uvc_device_t **dev, int /*vid*/, int /*pid*/, const char * /*sn*/)
{
    *dev = something<uvc_device_t>();
    return UVC_SUCCESS;
}

uvc_error_t uvc_open(uvc_device_t * /*dev*/, uvc_device_handle_t **devh)
{
    *devh = something<uvc_device_handle_t>();
    return UVC_SUCCESS;
}

void uvc_close(uvc_device_handle_t * /*devh*/) { }

const uvc_input_terminal_t *uvc_get_camera_terminal(uvc_device_handle_t * /*devh*/)
{
    return something<uvc_input_terminal_t>();
}

const uvc_processing_unit_t *uvc_get_processing_units(uvc_device_handle_t * /*devh*/)
{
    return something<uvc_processing_unit_t>();
}

#define SETTING(name, ...)                                                                         \
    uvc_error_t name(uvc_device_handle_t * /*devh*/, __VA_ARGS__) { return setting(); }
SETTING(uvc_set_pantilt_rel, int8_t, uint8_t, int8_t, uint8_t)
SETTING(uvc_set_pantilt_abs, int32_t, int32_t)
SETTING(uvc_set_zoom_rel, int8_t, uint8_t, uint8_t)
SETTING(uvc_set_zoom_abs, uint16_t)
SETTING(uvc_set_focus_rel, int8_t, uint8_t)
SETTING(uvc_set_roll_abs, int16_t)
SETTING(uvc_set_brightness, int16_t)
SETTING(uvc_set_contrast, uint16_t)
SETTING(uvc_set_saturation, uint16_t)
SETTING(uvc_set_sharpness, uint16_t)
SETTING(uvc_set_gamma, uint16_t)
SETTING(uvc_set_white_balance_temperature, uint16_t)
SETTING(uvc_set_white_balance_temperature_auto, uint8_t)
SETTING(uvc_set_backlight_compensation, uint16_t)
SETTING(uvc_set_power_line_frequency, uint8_t)

#define READING(name, Value)                                                                       \
    uvc_error_t name(uvc_device_handle_t * /*devh*/, Value *value, uvc_req_code code)              \
    {                                                                                              \
        return reading(value, code);                                                               \
    }
READING(uvc_get_brightness, int16_t)
READING(uvc_get_contrast, uint16_t)
READING(uvc_get_saturation, uint16_t)
READING(uvc_get_sharpness, uint16_t)
READING(uvc_get_gamma, uint16_t)
READING(uvc_get_gain, uint16_t)
READING(uvc_get_white_balance_temperature, uint16_t)
READING(uvc_get_backlight_compensation, uint16_t)
READING(uvc_get_power_line_frequency, uint8_t)
READING(uvc_get_zoom_abs, uint16_t)
READING(uvc_get_focus_abs, uint16_t)
