// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT
#pragma once

#include "virtual_camera/camera/control_table.h"
#include "virtual_camera/camera/lens.h"

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace virtual_camera {

/// What a camera says about one of its values. Nothing here is checked against anything else: a
/// camera may well announce a minimum above its maximum, or stand outside its own range.
struct Range
{
    std::int64_t min = 0;
    std::int64_t max = 0;
    std::int64_t def = 0; ///< what GET_DEF answers
    std::int64_t cur = 0; ///< the value when the camera is switched on
    std::int64_t res = 1;

    /// A camera whose range is upside down does not know what to refuse.
    bool takes(std::int64_t value) const { return min > max || (value >= min && value <= max); }
};

/// Everything that makes one camera differ from another.
struct CameraDescription
{
    CameraDescription();

    std::uint16_t vendorId = 0xf055;
    std::uint16_t productId = 0x8888;
    std::uint16_t deviceRelease = 0x0100;
    // UTF-8; an empty text means that the camera has no such string.
    std::string manufacturer = "Virtual Optics";
    std::string product = "Virtual PTZ Camera";
    std::string serial = "000001";

    /// The release of the USB Video Class that it speaks, as in bcdUVC: 0x0100, 0x0110 or 0x0150.
    std::uint16_t videoClass = 0x0110;

    /// The range of each control that has one; tilt has its own beside pan's, which stands under
    /// PantiltAbsolute.
    std::array<Range, controlCount> ranges;
    Range tilt;
    Lens lens;

    /// A control that is not supported is not announced, and every request to it stalls.
    std::array<bool, controlCount> supported;
    // A capture stick has a connector in place of the camera terminal, and a simple camera may come
    // without a processing unit. The unit's controls go with it.
    bool hasCameraTerminal = true;
    bool hasProcessingUnit = true;
    bool hasExtensionUnit = false;

    /// The range of one of the control's fields: of pan (0) and tilt (1), else of the only one.
    Range &range(Control control, std::size_t field = 0);
    const Range &range(Control control, std::size_t field = 0) const;
    bool hasEntity(std::uint8_t entity) const;
    bool supports(Control control) const;
};

/// A number that has a range: a control, or one of the two in pantilt_absolute.
struct RangedField
{
    Control control;
    std::size_t field;
};
/// "pan", "tilt", or the name of a control that has one field. Empty for every other name.
std::optional<RangedField> findRange(std::string_view name);

/// Changes the description as one option says, for example key "product", value "Big hall", or
/// key "brightness", value "-64:64:0:12". Returns what is wrong with the option, in words, and
/// then leaves the description as it was.
std::optional<std::string> applyOption(
    CameraDescription &description, std::string_view key, std::string_view value);

} // namespace virtual_camera
