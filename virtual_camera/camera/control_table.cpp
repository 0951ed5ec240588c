// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT
#include "virtual_camera/camera/control_table.h"

#include "virtual_camera/camera/little_endian.h"

#include <algorithm>
#include <array>
#include <linux/usb/video.h>
#include <numeric>

namespace virtual_camera {

namespace {

struct NamedCode
{
    RequestCode code;
    std::string_view name;
};

static_assert(static_cast<int>(RequestCode::SetCur) == UVC_SET_CUR);
static_assert(static_cast<int>(RequestCode::GetCur) == UVC_GET_CUR);
static_assert(static_cast<int>(RequestCode::GetDef) == UVC_GET_DEF);

constexpr std::array<NamedCode, 8> requestCodes{ {
    { RequestCode::SetCur, "SET_CUR" },
    { RequestCode::GetCur, "GET_CUR" },
    { RequestCode::GetMin, "GET_MIN" },
    { RequestCode::GetMax, "GET_MAX" },
    { RequestCode::GetRes, "GET_RES" },
    { RequestCode::GetLen, "GET_LEN" },
    { RequestCode::GetInfo, "GET_INFO" },
    { RequestCode::GetDef, "GET_DEF" },
} };

} // namespace

std::string_view requestCodeName(std::uint8_t code)
{
    for (const NamedCode &known : requestCodes) {
        if (static_cast<std::uint8_t>(known.code) == code)
            return known.name;
    }
    return {};
}

std::optional<RequestCode> requestCodeFromName(std::string_view name)
{
    const auto sameLetters = [](char given, char known) {
        return given == known || (given >= 'a' && given <= 'z' && given - 'a' + 'A' == known);
    };
    for (const NamedCode &known : requestCodes) {
        if (std::equal(name.begin(), name.end(), known.name.begin(), known.name.end(), sameLetters))
            return known.code;
    }
    return std::nullopt;
}

std::int64_t Field::lowest() const { return isSigned ? -(std::int64_t{ 1 } << (8 * size - 1)) : 0; }

std::int64_t Field::highest() const
{
    return (std::int64_t{ 1 } << (isSigned ? 8 * size - 1 : 8 * size)) - 1;
}

std::size_t ControlTraits::length() const
{
    return std::accumulate(fields.begin(), fields.end(), std::size_t{ 0 },
        [](std::size_t sum, const Field &field) { return sum + field.size; });
}

bool ControlTraits::changesByItself() const
{
    return kind == Kind::Position || kind == Kind::Motion || control == Control::FocusAuto;
}

const std::vector<ControlTraits> &allControls()
{
    using Kind = ControlTraits::Kind;
    const std::vector<Field> oneByte{ { "value", 1, false } };
    const std::vector<Field> unsignedWord{ { "value", 2, false } };
    const std::vector<Field> signedWord{ { "value", 2, true } };
    const std::vector<Field> panAndTilt{ { "pan", 4, true }, { "tilt", 4, true } };
    const std::vector<Field> panAndTiltDrive{ { "pan", 1, true }, { "pan_speed", 1, false },
        { "tilt", 1, true }, { "tilt_speed", 1, false } };
    const std::vector<Field> zoomDrive{ { "zoom", 1, true }, { "digital", 1, false },
        { "speed", 1, false } };
    const std::vector<Field> focusDrive{ { "focus", 1, true }, { "speed", 1, false } };
    // clang-format off
    static const std::vector<ControlTraits> controls{
        {Control::PantiltAbsolute, "pantilt_absolute", cameraTerminal,
            UVC_CT_PANTILT_ABSOLUTE_CONTROL, 11, Kind::Position, panAndTilt},
        {Control::PantiltRelative, "pantilt_relative", cameraTerminal,
            UVC_CT_PANTILT_RELATIVE_CONTROL, 12, Kind::Motion, panAndTiltDrive},
        {Control::ZoomAbsolute, "zoom_absolute", cameraTerminal,
            UVC_CT_ZOOM_ABSOLUTE_CONTROL, 9, Kind::Position, unsignedWord},
        {Control::ZoomRelative, "zoom_relative", cameraTerminal,
            UVC_CT_ZOOM_RELATIVE_CONTROL, 10, Kind::Motion, zoomDrive},
        {Control::FocusAbsolute, "focus_absolute", cameraTerminal,
            UVC_CT_FOCUS_ABSOLUTE_CONTROL, 5, Kind::Position, unsignedWord},
        {Control::FocusRelative, "focus_relative", cameraTerminal,
            UVC_CT_FOCUS_RELATIVE_CONTROL, 6, Kind::Motion, focusDrive},
        {Control::FocusAuto, "focus_auto", cameraTerminal,
            UVC_CT_FOCUS_AUTO_CONTROL, 17, Kind::Switch, oneByte},
        {Control::RollAbsolute, "roll_absolute", cameraTerminal,
            UVC_CT_ROLL_ABSOLUTE_CONTROL, 13, Kind::Value, signedWord},
        {Control::Brightness, "brightness", processingUnit,
            UVC_PU_BRIGHTNESS_CONTROL, 0, Kind::Value, signedWord},
        {Control::Contrast, "contrast", processingUnit,
            UVC_PU_CONTRAST_CONTROL, 1, Kind::Value, unsignedWord},
        {Control::Saturation, "saturation", processingUnit,
            UVC_PU_SATURATION_CONTROL, 3, Kind::Value, unsignedWord},
        {Control::Sharpness, "sharpness", processingUnit,
            UVC_PU_SHARPNESS_CONTROL, 4, Kind::Value, unsignedWord},
        {Control::Gamma, "gamma", processingUnit,
            UVC_PU_GAMMA_CONTROL, 5, Kind::Value, unsignedWord},
        {Control::WhiteBalanceTemperature, "white_balance_temperature", processingUnit,
            UVC_PU_WHITE_BALANCE_TEMPERATURE_CONTROL, 6, Kind::Value, unsignedWord},
        {Control::WhiteBalanceTemperatureAuto, "white_balance_temperature_auto", processingUnit,
            UVC_PU_WHITE_BALANCE_TEMPERATURE_AUTO_CONTROL, 12, Kind::Switch, oneByte},
        {Control::BacklightCompensation, "backlight_compensation", processingUnit,
            UVC_PU_BACKLIGHT_COMPENSATION_CONTROL, 8, Kind::Value, unsignedWord},
        {Control::Gain, "gain", processingUnit,
            UVC_PU_GAIN_CONTROL, 9, Kind::Value, unsignedWord},
        {Control::PowerLineFrequency, "power_line_frequency", processingUnit,
            UVC_PU_POWER_LINE_FREQUENCY_CONTROL, 10, Kind::Value, oneByte},
        {Control::ExtensionValue, "extension_value", extensionUnit,
            0x01, 0, Kind::Value, unsignedWord},
    };
    // clang-format on
    return controls;
}

const ControlTraits &traits(Control control) { return allControls()[indexOf(control)]; }

const ControlTraits *findControl(std::uint8_t entity, std::uint8_t selector)
{
    for (const ControlTraits &control : allControls()) {
        if (control.entity == entity && control.selector == selector)
            return &control;
    }
    return nullptr;
}

const ControlTraits *findControl(std::string_view name)
{
    for (const ControlTraits &control : allControls()) {
        if (control.name == name)
            return &control;
    }
    return nullptr;
}

std::vector<std::int64_t> decodeFields(const ControlTraits &control, const std::uint8_t *bytes)
{
    std::vector<std::int64_t> values;
    for (const Field &field : control.fields) {
        values.push_back(field.isSigned
                ? readSigned(bytes, field.size)
                : static_cast<std::int64_t>(readUnsigned(bytes, field.size)));
        bytes += field.size;
    }
    return values;
}

std::vector<std::uint8_t> encodeFields(
    const ControlTraits &control, const std::vector<std::int64_t> &values)
{
    std::vector<std::uint8_t> bytes;
    for (std::size_t i = 0; i < control.fields.size(); ++i)
        append(bytes, values[i], control.fields[i].size);
    return bytes;
}

} // namespace virtual_camera
