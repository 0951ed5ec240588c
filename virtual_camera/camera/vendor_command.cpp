// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT
#include "virtual_camera/camera/vendor_command.h"

#include <array>

namespace virtual_camera {

namespace {

using Kind = VendorCommand::Kind;

struct Code
{
    int code;
    Kind kind;
    bool on;
    const char *words;
};

// Mute counts the other way round than its neighbours.
constexpr std::array<Code, 15> codes{ {
    { 0, Kind::Mirror, true, "mirror on" },
    { 1, Kind::Mirror, false, "mirror off" },
    { 2, Kind::Flip, true, "flip on" },
    { 3, Kind::Flip, false, "flip off" },
    { 4, Kind::Mute, false, "mute off" },
    { 5, Kind::Mute, true, "mute on" },
    { 6, Kind::AutoFocus, true, "automatic focus" },
    { 7, Kind::AutoFocus, false, "manual focus" },
    { 8, Kind::Home, true, "home position" },
    { 10, Kind::Menu, true, "menu on" },
    { 11, Kind::Menu, false, "menu off" },
    { 16, Kind::Framing, true, "automatic framing on" },
    { 17, Kind::Framing, false, "automatic framing off" },
    { 18, Kind::Freeze, true, "freeze on" },
    { 19, Kind::Freeze, false, "freeze off" },
} };

constexpr int firstStore = 20;
constexpr int firstClear = 60;
constexpr int firstRecall = 100;

} // namespace

VendorCommand decodeVendorCommand(int code)
{
    if (code >= firstRecall)
        return { Kind::RecallPreset, true, code - firstRecall };
    if (code >= firstClear)
        return { Kind::ClearPreset, false, code - firstClear };
    if (code >= firstStore)
        return { Kind::StorePreset, true, code - firstStore };
    for (const Code &known : codes) {
        if (known.code == code)
            return { known.kind, known.on, 0 };
    }
    return {};
}

std::string VendorCommand::words() const
{
    switch (kind) {
    case Kind::StorePreset:
        return "store preset " + std::to_string(preset);
    case Kind::ClearPreset:
        return "clear preset " + std::to_string(preset);
    case Kind::RecallPreset:
        return "recall preset " + std::to_string(preset);
    default:
        break;
    }
    for (const Code &known : codes) {
        if (known.kind == kind && known.on == on)
            return known.words;
    }
    return "unknown command";
}

} // namespace virtual_camera
