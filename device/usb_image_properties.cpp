// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

#include "device/usb_device.h"
#include "device/uvc_edge.h"

using uvc_edge::get;
using uvc_edge::Getter;
using uvc_edge::ProcessingUnit;
using uvc_edge::set;

namespace {

// Requests one value and returns what the scratch holds afterwards, even if the request failed.
template<typename Value>
std::int64_t readInto(
    Value &scratch, Getter<Value> getter, const uvc_edge::Handle &devh, uvc_req_code code)
{
    uvc_edge::request(devh, ProcessingUnit, getter, &scratch, code);
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

} // namespace

// Through `status`, the results of these four decide whether the next OpenDevice may open.

bool USBDevice::GetBrightness(long *out)
{
    return get(devh, ProcessingUnit, uvc_get_brightness, out, &status);
}

bool USBDevice::GetBLC(long *out)
{
    return get(devh, ProcessingUnit, uvc_get_backlight_compensation, out, &status);
}

bool USBDevice::GetGamma(long *out)
{
    return get(devh, ProcessingUnit, uvc_get_gamma, out, &status);
}

bool USBDevice::GetContrast(long *out)
{
    return get(devh, ProcessingUnit, uvc_get_contrast, out, &status);
}

bool USBDevice::GetSaturation(long *out)
{
    return get(devh, ProcessingUnit, uvc_get_saturation, out);
}

bool USBDevice::GetSharpness(long *out)
{
    return get(devh, ProcessingUnit, uvc_get_sharpness, out);
}

bool USBDevice::GetWhiteBalance(long *out)
{
    return get(devh, ProcessingUnit, uvc_get_white_balance_temperature, out);
}

bool USBDevice::GetGain(long *out) { return get(devh, ProcessingUnit, uvc_get_gain, out); }

bool USBDevice::GetFlicker(long *out)
{
    return get(devh, ProcessingUnit, uvc_get_power_line_frequency, out);
}

bool USBDevice::SetBrightness(int value)
{
    return set(devh, ProcessingUnit, uvc_set_brightness, value);
}

bool USBDevice::SetBLC(int value)
{
    return set(devh, ProcessingUnit, uvc_set_backlight_compensation, value);
}

bool USBDevice::SetGamma(int value) { return set(devh, ProcessingUnit, uvc_set_gamma, value); }

bool USBDevice::SetContrast(int value)
{
    return set(devh, ProcessingUnit, uvc_set_contrast, value);
}

bool USBDevice::SetSaturation(int value)
{
    return set(devh, ProcessingUnit, uvc_set_saturation, value);
}

bool USBDevice::SetSharpness(int value)
{
    return set(devh, ProcessingUnit, uvc_set_sharpness, value);
}

bool USBDevice::SetWhiteBalance(int value)
{
    return set(devh, ProcessingUnit, uvc_set_white_balance_temperature, value);
}

bool USBDevice::SetWhiteBalanceAuto(int value)
{
    return set(devh, ProcessingUnit, uvc_set_white_balance_temperature_auto, value);
}

bool USBDevice::SetFlicker(int value)
{
    return set(devh, ProcessingUnit, uvc_set_power_line_frequency, value);
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
    set(devh, ProcessingUnit, uvc_set_brightness, props.at(PropertyBrightness).def);
    set(devh, ProcessingUnit, uvc_set_saturation, props.at(PropertySaturation).def);
    set(devh, ProcessingUnit, uvc_set_sharpness, props.at(PropertySharpness).def);
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
