// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace virtual_camera {

/// What the firmware makes of a number written to the roll (absolute) control.
struct VendorCommand
{
    enum class Kind {
        Mirror,
        Flip,
        Mute,
        AutoFocus,
        Home,
        Menu,
        Framing,
        Freeze,
        StorePreset,
        ClearPreset,
        RecallPreset,
        Unknown
    };

    Kind kind = Kind::Unknown;
    bool on = false; ///< for those that are switched
    int preset = 0;  ///< for the three that deal with presets

    std::string words() const; ///< "flip on", "recall preset 3", "unknown command"
};

VendorCommand decodeVendorCommand(int code);

} // namespace virtual_camera
