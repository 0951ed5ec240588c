// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

// The commands on the roll control: their codes beyond the plain ones, and what the camera makes
// of them.

#include "tests/device/camera_fixture.h"

#include <climits>

namespace {

using testing::ElementsAre;
using virtual_camera::CameraState;

using VendorCommand = OpenCamera;

wire::Request command(int code)
{
    return wire::set(wire::rollAbsolute,
        { static_cast<std::uint8_t>(code & 0xff), static_cast<std::uint8_t>(code >> 8 & 0xff) });
}

TEST_F(VendorCommand, APresetIsItsNumberAndTheOffsetWhateverTheByte)
{
    for (int preset = 0; preset < 256; ++preset) {
        const auto byte = static_cast<unsigned char>(preset);
        log().clear();
        EXPECT_TRUE(device->SetPreset(byte));
        EXPECT_TRUE(device->ClearPreset(byte));
        EXPECT_TRUE(device->CallPreset(byte));
        EXPECT_THAT(received(),
            ElementsAre(command(preset + 20), command(preset + 60), command(preset + 100)))
            << preset;
    }
}

TEST_F(VendorCommand, TheGainIsNarrowedTo16Bits)
{
    const std::pair<int, int> rows[] = { { 0, 0 }, { 103, 103 }, { 32767, 32767 },
        { 32768, -32768 }, { 65535, -1 }, { 65536, 0 }, { 70000, 4464 }, { -1, -1 },
        { -32768, -32768 }, { -32769, 32767 }, { INT_MAX, -1 }, { INT_MIN, 0 } };
    for (const auto &[value, sent] : rows) {
        log().clear();
        EXPECT_TRUE(device->SetGain(value)) << value;
        EXPECT_THAT(received(), ElementsAre(command(sent))) << value;
    }
}

struct SwitchRow
{
    const char *name;
    bool (BaseDevice::*on)();
    bool (BaseDevice::*off)();
    bool CameraState::*state;
};

class Switch : public OpenCamera, public testing::WithParamInterface<SwitchRow>
{ };

TEST_P(Switch, GoesOnAndOff)
{
    const SwitchRow &row = GetParam();
    for (int round = 0; round < 2; ++round) {
        (device->*row.on)();
        EXPECT_TRUE(camera().state().*row.state);
        (device->*row.off)();
        EXPECT_FALSE(camera().state().*row.state);
    }
}

INSTANTIATE_TEST_SUITE_P(OnTheCamera, Switch,
    testing::Values(
        SwitchRow{ "Mute", &BaseDevice::OpenMute, &BaseDevice::CloseMute, &CameraState::mute },
        SwitchRow{ "Flip", &BaseDevice::OpenFlip, &BaseDevice::CloseFlip, &CameraState::flip },
        SwitchRow{
            "Mirror", &BaseDevice::OpenMirror, &BaseDevice::CloseMirror, &CameraState::mirror },
        SwitchRow{ "Menu", &BaseDevice::OpenMenu, &BaseDevice::CloseMenu, &CameraState::menu },
        SwitchRow{
            "Freeze", &BaseDevice::OpenFreeze, &BaseDevice::CloseFreeze, &CameraState::freeze },
        SwitchRow{ "Framing", &BaseDevice::OpenAI, &BaseDevice::CloseAI, &CameraState::framing },
        SwitchRow{ "AutoFocus", &BaseDevice::SetFocusAuto, &BaseDevice::SetFocusManual,
            &CameraState::autoFocus }),
    [](const auto &row) { return row.param.name; });

TEST_F(VendorCommand, PresetsAreStoredAndForgotten)
{
    device->SetPreset(4);
    EXPECT_EQ(camera().state().presets.count(4), 1U);
    device->ClearPreset(4);
    EXPECT_EQ(camera().state().presets.count(4), 0U);
}

TEST_F(VendorCommand, TheDeviceKeepsNoRecordOfSwitches)
{
    // The same twice is sent twice.
    device->OpenMute();
    device->OpenMute();
    EXPECT_THAT(received(), ElementsAre(command(5), command(5)));
}

} // namespace
