// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT
#include "virtual_camera/camera/camera_description.h"

#include "virtual_camera/camera/words.h"

#include <array>
#include <vector>

namespace virtual_camera {

CameraDescription::CameraDescription()
{
    supported.fill(true);
    // Pan and tilt are in seconds of arc, as the USB Video Class counts them.
    range(Control::PantiltAbsolute, 0) = { -170 * 3600, 170 * 3600, 0, 0, 3600 };
    range(Control::PantiltAbsolute, 1) = { -30 * 3600, 90 * 3600, 0, 0, 3600 };
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
    range(Control::ExtensionValue) = { 0, 0xffff, 0, 0, 1 };
}

Range &CameraDescription::range(Control control, std::size_t field)
{
    return control == Control::PantiltAbsolute && field == 1 ? tilt : ranges[indexOf(control)];
}

const Range &CameraDescription::range(Control control, std::size_t field) const
{
    return control == Control::PantiltAbsolute && field == 1 ? tilt : ranges[indexOf(control)];
}

bool CameraDescription::hasEntity(std::uint8_t entity) const
{
    switch (entity) {
    case cameraTerminal:
        return hasCameraTerminal;
    case processingUnit:
        return hasProcessingUnit;
    case extensionUnit:
        return hasExtensionUnit;
    default:
        return entity == outputTerminal;
    }
}

bool CameraDescription::supports(Control control) const
{
    return hasEntity(traits(control).entity) && supported[indexOf(control)];
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

Problem setVideoClass(std::uint16_t &release, std::string_view text)
{
    struct Named
    {
        std::string_view name;
        std::uint16_t release;
    };
    constexpr std::array<Named, 3> known{ { { "1.0", 0x0100 }, { "1.1", 0x0110 },
        { "1.5", 0x0150 } } };
    for (const Named &candidate : known) {
        if (candidate.name == text) {
            release = candidate.release;
            return std::nullopt;
        }
    }
    return "expected 1.0, 1.1 or 1.5";
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

Problem add(CameraDescription &description, std::string_view name)
{
    if (name != "extension_unit")
        return "expected extension_unit";
    description.hasExtensionUnit = true;
    return std::nullopt;
}

Problem setControlRange(
    CameraDescription &description, std::string_view key, std::string_view value)
{
    if (const std::optional<RangedField> found = findRange(key))
        return setRange(description.range(found->control, found->field),
            traits(found->control).fields[found->field], value);
    return findControl(key) != nullptr ? "this control has no range of its own (pan and tilt have)"
                                       : "there is no such option";
}

} // namespace

std::optional<RangedField> findRange(std::string_view name)
{
    if (name == "pan" || name == "tilt")
        return RangedField{ Control::PantiltAbsolute, name == "pan" ? 0U : 1U };
    const ControlTraits *control = findControl(name);
    if (control == nullptr || control->fields.size() != 1)
        return std::nullopt;
    return RangedField{ control->control, 0 };
}

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
    else if (key == "uvc")
        return setVideoClass(description.videoClass, value);
    else if (key == "without")
        return drop(description, value);
    else if (key == "with")
        return add(description, value);
    else
        return setControlRange(description, key, value);
    return std::nullopt;
}

} // namespace virtual_camera
