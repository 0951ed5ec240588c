// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

#include "tests/device/operations.h"

#include <gtest/gtest.h>
#include <ostream>
#include <type_traits>

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

// One argument of an operation, by its type.
template<typename Type> Type argument([[maybe_unused]] int number, [[maybe_unused]] long *out)
{
    if constexpr (std::is_same_v<Type, long *>)
        return out;
    else if constexpr (std::is_same_v<Type, const char *>)
        return "";
    else
        return static_cast<Type>(number);
}

template<typename Result, typename... Types>
Outcome invoke(BaseDevice &device, Result (BaseDevice::*member)(Types...), int number)
{
    Outcome outcome{ false, untouched };
    if constexpr (std::is_void_v<Result>)
        (device.*member)(argument<Types>(number, &outcome.out)...);
    else
        outcome.result = (device.*member)(argument<Types>(number, &outcome.out)...);
    return outcome;
}

} // namespace

const std::vector<Operation> &operations()
{
    using B = BaseDevice;
    // clang-format off
    static const std::vector<Operation> all{
        {"OpenDevice",        &B::OpenDevice,        0, nothing, true, false},
        {"CloseDevice",       &B::CloseDevice,       0, nothing, false, false},
        {"StartMoveUp",       &B::StartMoveUp,      21, {set(pantiltRelative, {0, 0, 1, 21})}, false, false},
        {"StopMoveUp",        &B::StopMoveUp,        0, stop, true, false},
        {"StartMoveDown",     &B::StartMoveDown,    22, {set(pantiltRelative, {0, 0, 0xff, 22})}, true, false},
        {"StopMoveDown",      &B::StopMoveDown,      0, stop, true, false},
        {"StartMoveLeft",     &B::StartMoveLeft,    23, {set(pantiltRelative, {0xff, 23, 0, 0})}, true, false},
        {"StopMoveLeft",      &B::StopMoveLeft,      0, stop, true, false},
        {"StartMoveRight",    &B::StartMoveRight,   24, {set(pantiltRelative, {1, 24, 0, 0})}, true, false},
        {"StopMoveRight",     &B::StopMoveRight,     0, stop, true, false},
        {"SetFocusManual",    &B::SetFocusManual,    0, command(7), true, false},
        {"SetFocusAuto",      &B::SetFocusAuto,      0, command(6), true, false},
        {"SetFocusPush",      &B::SetFocusPush,      0, nothing, false, false},
        {"StartFocusNear",    &B::StartFocusNear,    5, {set(focusRelative, {1, 5})}, true, false},
        {"StartFocusFar",     &B::StartFocusFar,     6, {set(focusRelative, {0xff, 6})}, true, false},
        {"StopFocus",         &B::StopFocus,         0, {set(focusRelative, {0, 0})}, true, false},
        {"StartZoomTele",     &B::StartZoomTele,     3, {set(zoomRelative, {1, 1, 3})}, true, false},
        {"StartZoomWide",     &B::StartZoomWide,     4, {set(zoomRelative, {0xff, 1, 4})}, true, false},
        {"StopZoom",          &B::StopZoom,          0, {set(zoomRelative, {0, 1, 5})}, true, false},
        {"GetZoom",           &B::GetZoom,           0, {getCur(zoomAbsolute)}, true, false},
        {"GetFocus",          &B::GetFocus,          0, {getCur(focusAbsolute)}, true, false},
        {"SetZoom0",          &B::SetZoom0,          0, {set(zoomAbsolute, {0, 0})}, true, false},
        {"SetP0",             &B::SetP0,             0, origin, true, false},
        {"SetT0",             &B::SetT0,             0, origin, true, false},
        {"OpenPower",         &B::OpenPower,         0, nothing, false, false},
        {"ClosePower",        &B::ClosePower,        0, nothing, false, false},
        {"OpenMute",          &B::OpenMute,          0, command(5), true, false},
        {"CloseMute",         &B::CloseMute,         0, command(4), true, false},
        {"OpenFlip",          &B::OpenFlip,          0, command(2), true, false},
        {"CloseFlip",         &B::CloseFlip,         0, command(3), true, false},
        {"OpenMirror",        &B::OpenMirror,        0, command(0), true, false},
        {"CloseMirror",       &B::CloseMirror,       0, command(1), true, false},
        {"OpenMenu",          &B::OpenMenu,          0, command(10), true, false},
        {"CloseMenu",         &B::CloseMenu,         0, command(11), true, false},
        {"HomePosition",      &B::HomePosition,      0, command(8), true, false},
        {"OpenFreeze",        &B::OpenFreeze,        0, command(18), true, false},
        {"CloseFreeze",       &B::CloseFreeze,       0, command(19), true, false},
        {"OpenAI",            &B::OpenAI,            0, command(16), true, false},
        {"CloseAI",           &B::CloseAI,           0, command(17), true, false},
        {"SetDefaultValues",  &B::SetDefaultValues,  0, defaults, true, true},
        {"PushWB",            &B::PushWB,            0, nothing, false, false},
        {"PushMF",            &B::PushMF,            0, nothing, false, false},
        {"OpenBLC",           &B::OpenBLC,           0, {set(backlight, {1, 0})}, true, false},
        {"CloseBLC",          &B::CloseBLC,          0, {set(backlight, {0, 0})}, true, false},
        {"ClearPreset",       &B::ClearPreset,       3, command(63), true, false},
        {"SetPreset",         &B::SetPreset,         9, command(29), true, false},
        {"CallPreset",        &B::CallPreset,        0, command(100), true, false},
        {"GetBrightness",     &B::GetBrightness,     0, {getCur(brightness)}, true, false},
        {"SetBrightness",     &B::SetBrightness,   513, {set(brightness, {1, 2})}, true, false},
        {"GetBLC",            &B::GetBLC,            0, {getCur(backlight)}, true, false},
        {"SetBLC",            &B::SetBLC,          514, {set(backlight, {2, 2})}, true, false},
        {"GetGamma",          &B::GetGamma,          0, {getCur(gamma)}, true, false},
        {"SetGamma",          &B::SetGamma,        515, {set(gamma, {3, 2})}, true, false},
        {"GetContrast",       &B::GetContrast,       0, {getCur(contrast)}, true, false},
        {"SetContrast",       &B::SetContrast,     516, {set(contrast, {4, 2})}, true, false},
        {"GetSaturation",     &B::GetSaturation,     0, {getCur(saturation)}, true, false},
        {"SetSaturation",     &B::SetSaturation,   517, {set(saturation, {5, 2})}, true, false},
        {"GetSharpness",      &B::GetSharpness,      0, {getCur(sharpness)}, true, false},
        {"SetSharpness",      &B::SetSharpness,    518, {set(sharpness, {6, 2})}, true, false},
        {"GetWhiteBalance",   &B::GetWhiteBalance,   0, {getCur(whiteBalance)}, true, false},
        {"SetWhiteBalance",   &B::SetWhiteBalance, 519, {set(whiteBalance, {7, 2})}, true, false},
        {"SetWhiteBalanceAuto", &B::SetWhiteBalanceAuto, 1, {set(whiteBalanceAuto, {1})}, true, false},
        {"GetGain",           &B::GetGain,           0, {getCur(gain)}, true, false},
        {"SetGain",           &B::SetGain,         520, {set(rollAbsolute, {8, 2})}, true, false},
        {"GetFlicker",        &B::GetFlicker,        0, {getCur(powerLineFrequency)}, true, false},
        {"SetFlicker",        &B::SetFlicker,        2, {set(powerLineFrequency, {2})}, true, false},
        {"GetPropertyValues", &B::GetPropertyValues, 0, allProperties(), true, true},
        {"GetDeviceInfo",     &B::GetDeviceInfo,     0, nothing, false, false},
        {"GetRGain",          &B::GetRGain,          0, nothing, false, false},
        {"GetBGain",          &B::GetBGain,          0, nothing, false, false},
        {"GetAE",             &B::GetAE,             0, nothing, false, false},
        {"GetShutter",        &B::GetShutter,        0, nothing, false, false},
        {"GetIris",           &B::GetIris,           0, nothing, false, false},
        {"GetAEBright",       &B::GetAEBright,       0, nothing, false, false},
        {"GetWDR",            &B::GetWDR,            0, nothing, false, false},
        {"GetWDRLevel",       &B::GetWDRLevel,       0, nothing, false, false},
        {"SetRGain",          &B::SetRGain,          1, nothing, false, false},
        {"SetBGain",          &B::SetBGain,          1, nothing, false, false},
        {"SetAE",             &B::SetAE,             1, nothing, false, false},
        {"SetShutter",        &B::SetShutter,        1, nothing, false, false},
        {"SetIris",           &B::SetIris,           1, nothing, false, false},
        {"SetAEBright",       &B::SetAEBright,       1, nothing, false, false},
        {"SetWDR",            &B::SetWDR,            1, nothing, false, false},
        {"SetWDRLevel",       &B::SetWDRLevel,       1, nothing, false, false},
    };
    // clang-format on
    return all;
}

std::vector<Operation> onAnOpenCamera() { return { operations().begin() + 2, operations().end() }; }

std::ostream &operator<<(std::ostream &out, const Operation &operation)
{
    return out << operation.name << '(' << operation.argument << ')';
}

Outcome call(BaseDevice &device, const Operation &operation)
{
    return std::visit(
        [&](auto member) { return invoke(device, member, operation.argument); }, operation.member);
}

void expectAllRefused(BaseDevice &device)
{
    device.CloseDevice();
    for (const Operation &operation : onAnOpenCamera()) {
        const Outcome outcome = call(device, operation);
        EXPECT_EQ(outcome.result, operation.refused) << operation;
        EXPECT_EQ(outcome.out, untouched) << operation;
    }
}
