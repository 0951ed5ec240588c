// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT
#include "virtual_camera/camera/control_table.h"

#include "virtual_camera/camera/little_endian.h"

#include <algorithm>
#include <array>
#include <numeric>

namespace virtual_camera {

namespace {

struct NamedCode
{
    RequestCode code;
    std::string_view name;
};

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

const std::vector<ControlTraits> &allControls()
{
    using Kind = ControlTraits::Kind;
    const Field byteValue{ "value", 1, false };
    const Field unsignedValue{ "value", 2, false };
    const Field signedValue{ "value", 2, true };
    // clang-format off
    static const std::vector<ControlTraits> controls{
        {Control::PantiltAbsolute, "pantilt_absolute", cameraTerminal, 0x0d, 11, Kind::Position,
            {{"pan", 4, true}, {"tilt", 4, true}}},
        {Control::PantiltRelative, "pantilt_relative", cameraTerminal, 0x0e, 12, Kind::Motion,
            {{"pan", 1, true}, {"pan_speed", 1, false}, {"tilt", 1, true}, {"tilt_speed", 1, false}}},
        {Control::ZoomAbsolute, "zoom_absolute", cameraTerminal, 0x0b, 9, Kind::Position, {unsignedValue}},
        {Control::ZoomRelative, "zoom_relative", cameraTerminal, 0x0c, 10, Kind::Motion,
            {{"zoom", 1, true}, {"digital", 1, false}, {"speed", 1, false}}},
        {Control::FocusAbsolute, "focus_absolute", cameraTerminal, 0x06, 5, Kind::Position, {unsignedValue}},
        {Control::FocusRelative, "focus_relative", cameraTerminal, 0x07, 6, Kind::Motion,
            {{"focus", 1, true}, {"speed", 1, false}}},
        {Control::FocusAuto, "focus_auto", cameraTerminal, 0x08, 17, Kind::Switch, {byteValue}},
        {Control::RollAbsolute, "roll_absolute", cameraTerminal, 0x0f, 13, Kind::Value, {signedValue}},
        {Control::Brightness, "brightness", processingUnit, 0x02, 0, Kind::Value, {signedValue}},
        {Control::Contrast, "contrast", processingUnit, 0x03, 1, Kind::Value, {unsignedValue}},
        {Control::Saturation, "saturation", processingUnit, 0x07, 3, Kind::Value, {unsignedValue}},
        {Control::Sharpness, "sharpness", processingUnit, 0x08, 4, Kind::Value, {unsignedValue}},
        {Control::Gamma, "gamma", processingUnit, 0x09, 5, Kind::Value, {unsignedValue}},
        {Control::WhiteBalanceTemperature, "white_balance_temperature", processingUnit, 0x0a, 6,
            Kind::Value, {unsignedValue}},
        {Control::WhiteBalanceTemperatureAuto, "white_balance_temperature_auto", processingUnit, 0x0b, 12,
            Kind::Switch, {byteValue}},
        {Control::BacklightCompensation, "backlight_compensation", processingUnit, 0x01, 8,
            Kind::Value, {unsignedValue}},
        {Control::Gain, "gain", processingUnit, 0x04, 9, Kind::Value, {unsignedValue}},
        {Control::PowerLineFrequency, "power_line_frequency", processingUnit, 0x05, 10, Kind::Value, {byteValue}},
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
