// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

namespace virtual_camera {

/// Request codes of the USB Video Class. The kernel's constants stay out of the headers, as libuvc
/// has enumerators of the same names.
enum class RequestCode : std::uint8_t {
    SetCur = 0x01,
    GetCur = 0x81,
    GetMin = 0x82,
    GetMax = 0x83,
    GetRes = 0x84,
    GetLen = 0x85,
    GetInfo = 0x86,
    GetDef = 0x87
};

/// "SET_CUR", "GET_CUR", ...; empty for a code that is none of these.
std::string_view requestCodeName(std::uint8_t code);
/// Upper and lower case are alike.
std::optional<RequestCode> requestCodeFromName(std::string_view name);

// Terminals and units of the camera's control interface.
constexpr std::uint8_t cameraTerminal = 1;
constexpr std::uint8_t processingUnit = 2;
constexpr std::uint8_t outputTerminal = 3;
constexpr std::uint8_t extensionUnit = 4;

constexpr std::uint8_t controlInterface = 0;
constexpr std::uint8_t streamingInterface = 1;

/// Every control that a camera can have, in the order of control_table.cpp.
enum class Control : std::uint8_t {
    PantiltAbsolute,
    PantiltRelative,
    ZoomAbsolute,
    ZoomRelative,
    FocusAbsolute,
    FocusRelative,
    FocusAuto,
    RollAbsolute,
    Brightness,
    Contrast,
    Saturation,
    Sharpness,
    Gamma,
    WhiteBalanceTemperature,
    WhiteBalanceTemperatureAuto,
    BacklightCompensation,
    Gain,
    PowerLineFrequency,
    ExtensionValue
};
constexpr std::size_t controlCount = 19;

constexpr std::size_t indexOf(Control control) { return static_cast<std::size_t>(control); }

/// One number within a control's bytes.
struct Field
{
    const char *name;
    std::uint8_t size;
    bool isSigned;
    std::int64_t lowest() const;
    std::int64_t highest() const;
};

struct ControlTraits
{
    enum class Kind : std::uint8_t {
        Value,    ///< one number with a range
        Switch,   ///< 0 or 1; has no range to ask for
        Position, ///< like Value, but the camera takes time to get there
        Motion    ///< directions and speeds; the camera moves until it is stopped
    };

    Control control;
    const char *name; ///< as logs and commands spell it: "zoom_absolute"
    std::uint8_t entity;
    std::uint8_t selector;
    std::uint8_t announcedBit; ///< in the entity's bmControls
    Kind kind;
    std::vector<Field> fields;

    std::size_t length() const; ///< bytes of the control's value
    /// The value changes without a SET_CUR to this control: motors move, and a vendor command
    /// switches the focus.
    bool changesByItself() const;
};

const std::vector<ControlTraits> &allControls();
const ControlTraits &traits(Control control);
/// Null when the entity has no such control.
const ControlTraits *findControl(std::uint8_t entity, std::uint8_t selector);
const ControlTraits *findControl(std::string_view name);

/// The numbers in a control's bytes, in field order. The bytes must be as many as the control has.
std::vector<std::int64_t> decodeFields(const ControlTraits &control, const std::uint8_t *bytes);
std::vector<std::uint8_t> encodeFields(
    const ControlTraits &control, const std::vector<std::int64_t> &values);

} // namespace virtual_camera
