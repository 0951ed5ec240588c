// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

#include "tests/device/operations.h"

#include <cstring>
#include <ostream>

namespace {

using namespace wire;

// The commands that the firmware reads from the roll control, little-endian.
Requests command(std::uint8_t code) { return { set(rollAbsolute, { code, 0 }) }; }

// Value, minimum, maximum and default of one property.
void appendRange(Requests &requests, const Control &control)
{
    for (const auto &request :
        { getCur(control), getMin(control), getMax(control), getDef(control) })
        requests.push_back(request);
}

Requests allProperties()
{
    Requests requests;
    for (const Control &control : { backlight, gamma, contrast, saturation, brightness, sharpness,
             whiteBalance, powerLineFrequency })
        appendRange(requests, control);
    return requests;
}

// A row's middle: what only some operations have.
const Requests nothing;
const Requests stop{ set(pantiltRelative, { 0, 0, 0, 0 }) };
const Requests origin{ set(pantiltAbsolute, { 0, 0, 0, 0, 0, 0, 0, 0 }) };
const Requests defaults{ set(brightness, { 0, 0 }), set(saturation, { 0, 0 }),
    set(sharpness, { 0, 0 }) };

} // namespace

const std::vector<Operation> &operations()
{
    using B = BaseDevice;
    // clang-format off
    static const std::vector<Operation> all{
        { 0, "OpenDevice",        &B::OpenDevice,        0, nothing, true, false},
        { 1, "CloseDevice",       &B::CloseDevice,       0, nothing, false, false},
        { 2, "StartMoveUp",       &B::StartMoveUp,      21, {set(pantiltRelative, {0, 0, 1, 21})}, false, false},
        { 3, "StopMoveUp",        &B::StopMoveUp,        0, stop, true, false},
        { 4, "StartMoveDown",     &B::StartMoveDown,    22, {set(pantiltRelative, {0, 0, 0xff, 22})}, true, false},
        { 5, "StopMoveDown",      &B::StopMoveDown,      0, stop, true, false},
        { 6, "StartMoveLeft",     &B::StartMoveLeft,    23, {set(pantiltRelative, {0xff, 23, 0, 0})}, true, false},
        { 7, "StopMoveLeft",      &B::StopMoveLeft,      0, stop, true, false},
        { 8, "StartMoveRight",    &B::StartMoveRight,   24, {set(pantiltRelative, {1, 24, 0, 0})}, true, false},
        { 9, "StopMoveRight",     &B::StopMoveRight,     0, stop, true, false},
        {10, "SetFocusManual",    &B::SetFocusManual,    0, command(7), true, false},
        {11, "SetFocusAuto",      &B::SetFocusAuto,      0, command(6), true, false},
        {12, "SetFocusPush",      &B::SetFocusPush,      0, nothing, false, false},
        {13, "StartFocusNear",    &B::StartFocusNear,    5, {set(focusRelative, {1, 5})}, true, false},
        {14, "StartFocusFar",     &B::StartFocusFar,     6, {set(focusRelative, {0xff, 6})}, true, false},
        {15, "StopFocus",         &B::StopFocus,         0, {set(focusRelative, {0, 0})}, true, false},
        {16, "StartZoomTele",     &B::StartZoomTele,     3, {set(zoomRelative, {1, 1, 3})}, true, false},
        {17, "StartZoomWide",     &B::StartZoomWide,     4, {set(zoomRelative, {0xff, 1, 4})}, true, false},
        {18, "StopZoom",          &B::StopZoom,          0, {set(zoomRelative, {0, 1, 5})}, true, false},
        {19, "GetZoom",           &B::GetZoom,           0, {getCur(zoomAbsolute)}, true, false},
        {20, "GetFocus",          &B::GetFocus,          0, {getCur(focusAbsolute)}, true, false},
        {21, "SetZoom0",          &B::SetZoom0,          0, {set(zoomAbsolute, {0, 0})}, true, false},
        {22, "SetP0",             &B::SetP0,             0, origin, true, false},
        {23, "SetT0",             &B::SetT0,             0, origin, true, false},
        {24, "OpenPower",         &B::OpenPower,         0, nothing, false, false},
        {25, "ClosePower",        &B::ClosePower,        0, nothing, false, false},
        {26, "OpenMute",          &B::OpenMute,          0, command(5), true, false},
        {27, "CloseMute",         &B::CloseMute,         0, command(4), true, false},
        {28, "OpenFlip",          &B::OpenFlip,          0, command(2), true, false},
        {29, "CloseFlip",         &B::CloseFlip,         0, command(3), true, false},
        {30, "OpenMirror",        &B::OpenMirror,        0, command(0), true, false},
        {31, "CloseMirror",       &B::CloseMirror,       0, command(1), true, false},
        {32, "OpenMenu",          &B::OpenMenu,          0, command(10), true, false},
        {33, "CloseMenu",         &B::CloseMenu,         0, command(11), true, false},
        {34, "HomePosition",      &B::HomePosition,      0, command(8), true, false},
        {35, "OpenFreeze",        &B::OpenFreeze,        0, command(18), true, false},
        {36, "CloseFreeze",       &B::CloseFreeze,       0, command(19), true, false},
        {37, "OpenAI",            &B::OpenAI,            0, command(16), true, false},
        {38, "CloseAI",           &B::CloseAI,           0, command(17), true, false},
        {39, "SetDefaultValues",  &B::SetDefaultValues,  0, defaults, true, true},
        {40, "PushWB",            &B::PushWB,            0, nothing, false, false},
        {41, "PushMF",            &B::PushMF,            0, nothing, false, false},
        {42, "OpenBLC",           &B::OpenBLC,           0, {set(backlight, {1, 0})}, true, false},
        {43, "CloseBLC",          &B::CloseBLC,          0, {set(backlight, {0, 0})}, true, false},
        {44, "ClearPreset",       &B::ClearPreset,       3, command(63), true, false},
        {45, "SetPreset",         &B::SetPreset,         9, command(29), true, false},
        {46, "CallPreset",        &B::CallPreset,        0, command(100), true, false},
        {47, "GetBrightness",     &B::GetBrightness,     0, {getCur(brightness)}, true, false},
        {48, "SetBrightness",     &B::SetBrightness,   513, {set(brightness, {1, 2})}, true, false},
        {49, "GetBLC",            &B::GetBLC,            0, {getCur(backlight)}, true, false},
        {50, "SetBLC",            &B::SetBLC,          514, {set(backlight, {2, 2})}, true, false},
        {51, "GetGamma",          &B::GetGamma,          0, {getCur(gamma)}, true, false},
        {52, "SetGamma",          &B::SetGamma,        515, {set(gamma, {3, 2})}, true, false},
        {53, "GetContrast",       &B::GetContrast,       0, {getCur(contrast)}, true, false},
        {54, "SetContrast",       &B::SetContrast,     516, {set(contrast, {4, 2})}, true, false},
        {55, "GetSaturation",     &B::GetSaturation,     0, {getCur(saturation)}, true, false},
        {56, "SetSaturation",     &B::SetSaturation,   517, {set(saturation, {5, 2})}, true, false},
        {57, "GetSharpness",      &B::GetSharpness,      0, {getCur(sharpness)}, true, false},
        {58, "SetSharpness",      &B::SetSharpness,    518, {set(sharpness, {6, 2})}, true, false},
        {59, "GetWhiteBalance",   &B::GetWhiteBalance,   0, {getCur(whiteBalance)}, true, false},
        {60, "SetWhiteBalance",   &B::SetWhiteBalance, 519, {set(whiteBalance, {7, 2})}, true, false},
        {61, "SetWhiteBalanceAuto", &B::SetWhiteBalanceAuto, 1, {set(whiteBalanceAuto, {1})}, true, false},
        {62, "GetGain",           &B::GetGain,           0, {getCur(gain)}, true, false},
        {63, "SetGain",           &B::SetGain,         520, {set(rollAbsolute, {8, 2})}, true, false},
        {64, "GetFlicker",        &B::GetFlicker,        0, {getCur(powerLineFrequency)}, true, false},
        {65, "SetFlicker",        &B::SetFlicker,        2, {set(powerLineFrequency, {2})}, true, false},
        {66, "GetPropertyValues", &B::GetPropertyValues, 0, allProperties(), true, true},
        {67, "GetDeviceInfo",     &B::GetDeviceInfo,     0, nothing, false, false},
        {68, "GetRGain",          &B::GetRGain,          0, nothing, false, false},
        {69, "GetBGain",          &B::GetBGain,          0, nothing, false, false},
        {70, "GetAE",             &B::GetAE,             0, nothing, false, false},
        {71, "GetShutter",        &B::GetShutter,        0, nothing, false, false},
        {72, "GetIris",           &B::GetIris,           0, nothing, false, false},
        {73, "GetAEBright",       &B::GetAEBright,       0, nothing, false, false},
        {74, "GetWDR",            &B::GetWDR,            0, nothing, false, false},
        {75, "GetWDRLevel",       &B::GetWDRLevel,       0, nothing, false, false},
        {76, "SetRGain",          &B::SetRGain,          1, nothing, false, false},
        {77, "SetBGain",          &B::SetBGain,          1, nothing, false, false},
        {78, "SetAE",             &B::SetAE,             1, nothing, false, false},
        {79, "SetShutter",        &B::SetShutter,        1, nothing, false, false},
        {80, "SetIris",           &B::SetIris,           1, nothing, false, false},
        {81, "SetAEBright",       &B::SetAEBright,       1, nothing, false, false},
        {82, "SetWDR",            &B::SetWDR,            1, nothing, false, false},
        {83, "SetWDRLevel",       &B::SetWDRLevel,       1, nothing, false, false},
    };
    // clang-format on
    return all;
}
