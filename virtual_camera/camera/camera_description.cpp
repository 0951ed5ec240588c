// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT
#include "virtual_camera/camera/camera_description.h"

#include "virtual_camera/camera/words.h"

#include <charconv>
#include <vector>

namespace virtual_camera {

CameraDescription::CameraDescription()
{
    supported.fill(true);
    // Pan and tilt are in seconds of arc, as the USB Video Class counts them.
    range(Control::PantiltAbsolute) = { -170 * 3600, 170 * 3600, 0, 0, 3600 };
    tilt = { -30 * 3600, 90 * 3600, 0, 0, 3600 };
    range(Control::ZoomAbsolute) = { 0, 16384, 0, 0, 1 };
    range(Control::FocusAbsolute) = { 0, 4095, 2048, 2048, 1 };
    range(Control::FocusAuto) = { 0, 1, 1, 1, 1 };
    // The firmware takes what is written here as a command, whatever the number.
    range(Control::RollAbsolute) = { -32768, 32767, 0, 0, 1 };
    range(Control::Brightness) = { 0, 255, 128, 128, 1 };
    range(Control::Contrast) = { 0, 255, 128, 128, 1 };
    range(Control::Saturation) = { 0, 255, 128, 128, 1 };
    range(Control::Sharpness) = { 0, 15, 7, 7, 1 };
    range(Control::Gamma) = { 100, 500, 220, 220, 1 };
    range(Control::WhiteBalanceTemperature) = { 2800, 6500, 4600, 4600, 10 };
    range(Control::WhiteBalanceTemperatureAuto) = { 0, 1, 0, 0, 1 };
    range(Control::BacklightCompensation) = { 0, 10, 0, 0, 1 };
    range(Control::Gain) = { 0, 255, 32, 32, 1 };
    range(Control::PowerLineFrequency) = { 0, 2, 1, 1, 1 };
}

bool CameraDescription::supports(Control control) const
{
    const bool hasUnit =
        traits(control).entity == cameraTerminal ? hasCameraTerminal : hasProcessingUnit;
    return hasUnit && supported[indexOf(control)];
}

std::optional<std::int64_t> parseNumber(std::string_view text)
{
    const bool negative = !text.empty() && text.front() == '-';
    if (negative)
        text.remove_prefix(1);
    const bool hexadecimal = text.substr(0, 2) == "0x" || text.substr(0, 2) == "0X";
    if (hexadecimal)
        text.remove_prefix(2);
    // A second sign would be taken by from_chars.
    if (text.empty() || text.front() == '-')
        return std::nullopt;
    std::int64_t number = 0;
    const auto [end, error] =
        std::from_chars(text.data(), text.data() + text.size(), number, hexadecimal ? 16 : 10);
    if (error != std::errc{} || end != text.data() + text.size())
        return std::nullopt;
    return negative ? -number : number;
}

namespace {

using Problem = std::optional<std::string>;

Problem setRange(Range &range, const Field &field, std::string_view text)
{
    const std::vector<std::string_view> parts = split(text, ':');
    if (parts.size() != 4 && parts.size() != 5)
        return "expected min:max:default:current[:step]";
    Range wanted = range;
    std::int64_t *const slots[] = { &wanted.min, &wanted.max, &wanted.def, &wanted.cur,
        &wanted.res };
    for (std::size_t i = 0; i < parts.size(); ++i) {
        const std::optional<std::int64_t> number = parseNumber(parts[i]);
        if (!number)
            return "'" + std::string(parts[i]) + "' is not a number";
        if (*number < field.lowest() || *number > field.highest())
            return std::string(parts[i]) + " is outside " + std::to_string(field.lowest()) + ".."
                + std::to_string(field.highest());
        *slots[i] = *number;
    }
    range = wanted;
    return std::nullopt;
}

Problem setId(std::uint16_t &id, std::string_view text)
{
    const std::optional<std::int64_t> number = parseNumber(text);
    if (!number || *number < 0 || *number > 0xffff)
        return "expected a number from 0 to 0xffff";
    id = static_cast<std::uint16_t>(*number);
    return std::nullopt;
}

Problem drop(CameraDescription &description, std::string_view name)
{
    if (name == "camera_terminal")
        description.hasCameraTerminal = false;
    else if (name == "processing_unit")
        description.hasProcessingUnit = false;
    else if (const ControlTraits *control = findControl(name))
        description.supported[indexOf(control->control)] = false;
    else
        return "no control or unit is called '" + std::string(name) + "'";
    return std::nullopt;
}

Problem setControlRange(
    CameraDescription &description, std::string_view key, std::string_view value)
{
    const ControlTraits &pantilt = traits(Control::PantiltAbsolute);
    if (key == "pan")
        return setRange(description.range(Control::PantiltAbsolute), pantilt.fields[0], value);
    if (key == "tilt")
        return setRange(description.tilt, pantilt.fields[1], value);
    const ControlTraits *control = findControl(key);
    if (control == nullptr)
        return "there is no such option";
    if (control->fields.size() != 1)
        return "this control has no range of its own (pan and tilt have)";
    return setRange(description.range(control->control), control->fields[0], value);
}

} // namespace

std::optional<std::string> applyOption(
    CameraDescription &description, std::string_view key, std::string_view value)
{
    if (key == "product")
        description.product = value;
    else if (key == "manufacturer")
        description.manufacturer = value;
    else if (key == "serial")
        description.serial = value;
    else if (key == "vendor-id")
        return setId(description.vendorId, value);
    else if (key == "product-id")
        return setId(description.productId, value);
    else if (key == "without")
        return drop(description, value);
    else
        return setControlRange(description, key, value);
    return std::nullopt;
}

} // namespace virtual_camera
