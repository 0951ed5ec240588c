// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

#include "device/usb_device.h"
#include "device/uvc_edge.h"

namespace {

template<typename Value>
using Getter = uvc_error_t (*)(uvc_device_handle_t *, Value *, uvc_req_code);

// The libuvc status of a read of the current value; `*out` is written only on success. An answer
// without data counts as success in libuvc: the value is then 0.
template<typename Value>
int readCurrent(Getter<Value> getter, const uvc_edge::Handle &devh, long *out)
{
    Value value = 0;
    const int result = uvc_edge::request(getter, devh, &value, UVC_GET_CUR);
    if (result >= 0)
        *out = value;
    return result;
}

// Asks for one bound and stores what the scratch holds afterwards, answered or not: a bound that
// the camera will not tell shows the value read before it.
template<typename Value>
std::int64_t readInto(
    Value &scratch, Getter<Value> getter, const uvc_edge::Handle &devh, uvc_req_code code)
{
    uvc_edge::request(getter, devh, &scratch, code);
    return scratch;
}

template<typename Value>
void readRange(
    PropertyRecord &record, Getter<Value> getter, const uvc_edge::Handle &devh, Value &scratch)
{
    record.min = readInto(scratch, getter, devh, UVC_GET_MIN);
    record.max = readInto(scratch, getter, devh, UVC_GET_MAX);
    record.def = readInto(scratch, getter, devh, UVC_GET_DEF);
}

std::uint16_t low16(std::int64_t value) { return static_cast<std::uint16_t>(value & 0xffff); }

std::int16_t signed16(std::int64_t value) { return static_cast<std::int16_t>(low16(value)); }

std::uint8_t low8(int value) { return static_cast<std::uint8_t>(value & 0xff); }

} // namespace

// These four decide about the next OpenDevice: a camera whose picture cannot be read is not opened
// again until one of them succeeds.

bool USBDevice::GetBrightness(long *out)
{
    status = readCurrent(uvc_get_brightness, devh, out);
    return status >= 0;
}

bool USBDevice::GetBLC(long *out)
{
    status = readCurrent(uvc_get_backlight_compensation, devh, out);
    return status >= 0;
}

bool USBDevice::GetGamma(long *out)
{
    status = readCurrent(uvc_get_gamma, devh, out);
    return status >= 0;
}

bool USBDevice::GetContrast(long *out)
{
    status = readCurrent(uvc_get_contrast, devh, out);
    return status >= 0;
}

bool USBDevice::GetSaturation(long *out) { return readCurrent(uvc_get_saturation, devh, out) >= 0; }

bool USBDevice::GetSharpness(long *out) { return readCurrent(uvc_get_sharpness, devh, out) >= 0; }

bool USBDevice::GetWhiteBalance(long *out)
{
    return readCurrent(uvc_get_white_balance_temperature, devh, out) >= 0;
}

bool USBDevice::GetGain(long *out) { return readCurrent(uvc_get_gain, devh, out) >= 0; }

bool USBDevice::GetFlicker(long *out)
{
    return readCurrent(uvc_get_power_line_frequency, devh, out) >= 0;
}

bool USBDevice::SetBrightness(int value)
{
    return uvc_edge::request(uvc_set_brightness, devh, signed16(value)) >= 0;
}

bool USBDevice::SetBLC(int value)
{
    return uvc_edge::request(uvc_set_backlight_compensation, devh, low16(value)) >= 0;
}

bool USBDevice::SetGamma(int value)
{
    return uvc_edge::request(uvc_set_gamma, devh, low16(value)) >= 0;
}

bool USBDevice::SetContrast(int value)
{
    return uvc_edge::request(uvc_set_contrast, devh, low16(value)) >= 0;
}

bool USBDevice::SetSaturation(int value)
{
    return uvc_edge::request(uvc_set_saturation, devh, low16(value)) >= 0;
}

bool USBDevice::SetSharpness(int value)
{
    return uvc_edge::request(uvc_set_sharpness, devh, low16(value)) >= 0;
}

bool USBDevice::SetWhiteBalance(int value)
{
    return uvc_edge::request(uvc_set_white_balance_temperature, devh, low16(value)) >= 0;
}

bool USBDevice::SetWhiteBalanceAuto(int value)
{
    return uvc_edge::request(uvc_set_white_balance_temperature_auto, devh, low8(value)) >= 0;
}

bool USBDevice::SetFlicker(int value)
{
    return uvc_edge::request(uvc_set_power_line_frequency, devh, low8(value)) >= 0;
}

bool USBDevice::OpenBLC() { return SetBLC(1); }
bool USBDevice::CloseBLC() { return SetBLC(0); }

bool USBDevice::GetPropertyValues()
{
    struct Row
    {
        PropertyId id;
        bool (BaseDevice::*current)(long *);
        Getter<std::uint16_t> bounds; // null for brightness, the one signed property
    };
    static constexpr Row rows[] = {
        { PropertyBacklight, &BaseDevice::GetBLC, uvc_get_backlight_compensation },
        { PropertyGamma, &BaseDevice::GetGamma, uvc_get_gamma },
        { PropertyContrast, &BaseDevice::GetContrast, uvc_get_contrast },
        { PropertySaturation, &BaseDevice::GetSaturation, uvc_get_saturation },
        { PropertyBrightness, &BaseDevice::GetBrightness, nullptr },
        { PropertySharpness, &BaseDevice::GetSharpness, uvc_get_sharpness },
        { PropertyWhiteBalance, &BaseDevice::GetWhiteBalance, uvc_get_white_balance_temperature },
    };
    std::uint16_t scratch = 0;
    std::int16_t signedScratch = 0;
    for (const Row &row : rows) {
        PropertyRecord &record = props.at(row.id);
        record.flags = 1;
        long current = 0;
        if ((this->*row.current)(&current))
            record.cur = current;
        if (row.bounds)
            readRange(record, row.bounds, devh, scratch);
        else
            readRange(record, uvc_get_brightness, devh, signedScratch);
    }

    std::uint8_t byteScratch = 0;
    PropertyRecord &flicker = props.at(PropertyFlicker);
    flicker.flags = 1;
    flicker.cur = readInto(byteScratch, uvc_get_power_line_frequency, devh, UVC_GET_CUR);
    readRange(flicker, uvc_get_power_line_frequency, devh, byteScratch);
    return true;
}

bool USBDevice::SetDefaultValues()
{
    uvc_edge::request(uvc_set_brightness, devh, signed16(props.at(PropertyBrightness).def));
    uvc_edge::request(uvc_set_saturation, devh, low16(props.at(PropertySaturation).def));
    uvc_edge::request(uvc_set_sharpness, devh, low16(props.at(PropertySharpness).def));
    return true;
}

bool USBDevice::GetRGain(long * /*out*/) { return false; }
bool USBDevice::GetBGain(long * /*out*/) { return false; }
bool USBDevice::GetAE(long * /*out*/) { return false; }
bool USBDevice::GetShutter(long * /*out*/) { return false; }
bool USBDevice::GetIris(long * /*out*/) { return false; }
bool USBDevice::GetAEBright(long * /*out*/) { return false; }
bool USBDevice::GetWDR(long * /*out*/) { return false; }
bool USBDevice::GetWDRLevel(long * /*out*/) { return false; }
bool USBDevice::SetRGain(int /*value*/) { return false; }
bool USBDevice::SetBGain(int /*value*/) { return false; }
bool USBDevice::SetAE(int /*value*/) { return false; }
bool USBDevice::SetShutter(int /*value*/) { return false; }
bool USBDevice::SetIris(int /*value*/) { return false; }
bool USBDevice::SetAEBright(int /*value*/) { return false; }
bool USBDevice::SetWDR(int /*value*/) { return false; }
bool USBDevice::SetWDRLevel(int /*value*/) { return false; }
