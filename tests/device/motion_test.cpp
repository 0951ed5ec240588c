// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

// Pan, tilt, zoom and focus beyond the plain requests: what becomes of odd speeds, what is read,
// and what the camera does.

#include "tests/device/camera_fixture.h"

#include <climits>

namespace {

using testing::ElementsAre;
using virtual_camera::Control;

using Motion = OpenCamera;
using Start = bool (BaseDevice::*)(int);

struct StartRow
{
    const char *name;
    Start start;
    wire::Control control;
    wire::Bytes bytes;
    std::size_t speedAt; // where among the bytes the speed is
    bool result;
};

class StartOperation : public OpenCamera, public testing::WithParamInterface<StartRow>
{ };

TEST_P(StartOperation, SendsTheLow8BitsOfTheSpeed)
{
    const StartRow &row = GetParam();
    const std::pair<int, std::uint8_t> speeds[] = { { 0, 0 }, { 1, 1 }, { 255, 255 }, { 256, 0 },
        { 277, 21 }, { 300, 44 }, { -1, 255 }, { -256, 0 }, { INT_MAX, 255 }, { INT_MIN, 0 } };
    for (const auto &[speed, sent] : speeds) {
        log().clear();
        EXPECT_EQ((device->*row.start)(speed), row.result) << speed;
        wire::Bytes bytes = row.bytes;
        bytes[row.speedAt] = sent;
        EXPECT_THAT(received(), ElementsAre(wire::set(row.control, bytes))) << speed;
    }
}

INSTANTIATE_TEST_SUITE_P(OnTheWire, StartOperation,
    testing::Values(
        StartRow{ "Up", &BaseDevice::StartMoveUp, wire::pantiltRelative, { 0, 0, 1, 0 }, 3, false },
        StartRow{
            "Down", &BaseDevice::StartMoveDown, wire::pantiltRelative, { 0, 0, 0xff, 0 }, 3, true },
        StartRow{
            "Left", &BaseDevice::StartMoveLeft, wire::pantiltRelative, { 0xff, 0, 0, 0 }, 1, true },
        StartRow{
            "Right", &BaseDevice::StartMoveRight, wire::pantiltRelative, { 1, 0, 0, 0 }, 1, true },
        StartRow{ "Near", &BaseDevice::StartFocusNear, wire::focusRelative, { 1, 0 }, 1, true },
        StartRow{ "Far", &BaseDevice::StartFocusFar, wire::focusRelative, { 0xff, 0 }, 1, true },
        StartRow{ "Tele", &BaseDevice::StartZoomTele, wire::zoomRelative, { 1, 1, 0 }, 2, true },
        StartRow{
            "Wide", &BaseDevice::StartZoomWide, wire::zoomRelative, { 0xff, 1, 0 }, 2, true }),
    [](const auto &row) { return row.param.name; });

TEST_F(Motion, UpAnswersFalseAlthoughTheCameraTookIt)
{
    EXPECT_FALSE(device->StartMoveUp(5));
    EXPECT_GT(camera().state().tilt.velocity, 0);
}

TEST_F(Motion, RunsUntilItIsStopped)
{
    device->StartMoveRight(5);
    EXPECT_GT(camera().state().pan.velocity, 0);
    device->StopMoveUp();
    EXPECT_EQ(camera().state().pan.velocity, 0) << "each stop stops both axes";

    device->StartMoveLeft(5);
    EXPECT_LT(camera().state().pan.velocity, 0);
    device->StopMoveLeft();
    device->StartMoveDown(5);
    EXPECT_LT(camera().state().tilt.velocity, 0);
    device->StopMoveRight();
    EXPECT_EQ(camera().state().tilt.velocity, 0);
}

TEST_F(Motion, TheSecondAxisReplacesTheFirst)
{
    device->StartMoveRight(5);
    device->StartMoveDown(5);
    EXPECT_EQ(camera().state().pan.velocity, 0);
    EXPECT_LT(camera().state().tilt.velocity, 0);
}

TEST_F(Motion, OfTheLensEndsWithItsStop)
{
    device->StartZoomTele(3);
    EXPECT_GT(camera().state().zoom.velocity, 0);
    device->StopZoom();
    EXPECT_EQ(camera().state().zoom.velocity, 0);
    device->StartFocusNear(3);
    EXPECT_NE(camera().state().focus.velocity, 0);
    device->StopFocus();
    EXPECT_EQ(camera().state().focus.velocity, 0);
}

struct PositionRow
{
    const char *name;
    bool (BaseDevice::*get)(long *);
    Control control;
};

class PositionOf : public testing::TestWithParam<PositionRow>
{ };

TEST_P(PositionOf, TheLensIsReadWithoutASign)
{
    for (const long position : { 0L, 1L, 0x1234L, 0x8000L, 0xffffL }) {
        auto description = tolerantCamera();
        description.range(GetParam().control).cur = position;
        virtual_camera::Testbed testbed(
            { virtual_camera::DeviceDescription::ptzCamera(description) });
        BaseDevice *const device = makeDevice();
        ASSERT_TRUE(device->OpenDevice("0", 0));
        long out = -1;
        EXPECT_TRUE((device->*GetParam().get)(&out));
        EXPECT_EQ(out, position);
        device->CloseDevice();
    }
}

INSTANTIATE_TEST_SUITE_P(Getters, PositionOf,
    testing::Values(PositionRow{ "Zoom", &BaseDevice::GetZoom, Control::ZoomAbsolute },
        PositionRow{ "Focus", &BaseDevice::GetFocus, Control::FocusAbsolute }),
    [](const auto &row) { return row.param.name; });

} // namespace
