// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

// Cameras that come late, are of another make, cannot be opened or read, or are unplugged.

#include <cerrno>

#include "console/console_state.h"
#include "tests/console/panel_fixture.h"
#include "tests/console/sheets.h"
#include "tests/support/uvc_call_recorder.h"

namespace {

using Names = std::vector<std::string>;
using CameraFaults = PanelTest;
using virtual_camera::DeviceDescription;

TEST_F(CameraFaults, CameraPluggedInLaterIsNeverOffered)
{
    plugIn(2);
    camera(2).unplug();
    start(2);
    camera(2).replug();
    choose(2);
    EXPECT_EQ(opensAndCloses(), Names());
    EXPECT_EQ(maxcam, 1);
    EXPECT_NE(Probe::noMoreCameraDialog(*window), nullptr);
}

TEST_F(CameraFaults, OtherMakesAreNotCountedButTakeAPosition)
{
    plugIn({ DeviceDescription::ptzCamera(), DeviceDescription::otherCamera(),
        DeviceDescription::storage(), DeviceDescription::ptzCamera() });
    start(0);
    EXPECT_EQ(maxcam, 2);
    choose(2);
    EXPECT_EQ(opensAndCloses(), (Names{ "close", "open 1" }));
    EXPECT_EQ(sent(), allReads(2)) << "the second camera of any make";
}

TEST_F(CameraFaults, BothOpensRefusedIsStillACameraThatNoRequestReaches)
{
    plugIn(1);
    camera(1).refuseOpen(EACCES);
    makeWindow();
    uvc_call_recorder::clear();
    poll();
    EXPECT_EQ(opensAndCloses(), (Names{ "open 0 failed", "open 0 failed" }));
    EXPECT_EQ(usb_mode, 1);
    EXPECT_EQ(markedCamera(), 1);
    EXPECT_EQ(style(form().btn_mute), sheets::sign("no_mute"));
    EXPECT_EQ(form().v_brightness->text(), "0");

    uvc_call_recorder::clear();
    useEveryControl();
    EXPECT_EQ(uvc_call_recorder::names(), Names());

    camera(1).refuseOpen(0);
    choose(1);
    EXPECT_EQ(opensAndCloses(), Names{ "open 0" });
    EXPECT_EQ(sent(), allReads() + Requests{ "power_line_frequency 1" })
        << "the anti-flicker choice is written back";
}

TEST_F(CameraFaults, CameraThatCannotBeOpenedIsMarkedAndTheOldOneIsClosed)
{
    start(2);
    camera(2).refuseOpen(EACCES);
    const QString brightness = form().v_brightness->text();
    choose(2);
    EXPECT_EQ(opensAndCloses(), (Names{ "close", "open 1 failed" }));
    EXPECT_TRUE(becomesFree(1));
    EXPECT_EQ(markedCamera(), 2);
    EXPECT_EQ(form().v_brightness->text(), brightness);
    uvc_call_recorder::clear();
    useEveryControl();
    EXPECT_EQ(uvc_call_recorder::names(), Names());
    choose(1);
    EXPECT_EQ(opensAndCloses(), Names{ "open 0" }) << "nothing is open that could be closed";
    forgetSent();
}

TEST_F(CameraFaults, UnreadableBrightnessRefusesTheSecondOpenOfTheStart)
{
    plugIn(1);
    camera(1).stall(virtual_camera::Control::Brightness, virtual_camera::RequestCode::GetCur);
    makeWindow();
    uvc_call_recorder::clear();
    poll();
    EXPECT_EQ(opensAndCloses(), (Names{ "open 0", "close" }));
    EXPECT_EQ(usb_mode, 1);
    EXPECT_EQ(markedCamera(), 1);
    forgetSent();
    useEveryControl();
    EXPECT_EQ(sent(), Requests()) << "no camera is open";
    choose(1);
    EXPECT_EQ(opensAndCloses(), Names()) << "refused until a read succeeds";
}

TEST_F(CameraFaults, UnpluggedCameraCanBeUsedAndChosenAgainAndAgain)
{
    start(2);
    camera(1).unplug();
    for (int round = 0; round < 3; ++round) {
        useEveryControl();
        choose(1);
        EXPECT_EQ(markedCamera(), 1);
    }
    EXPECT_EQ(sent(), Requests());
    choose(2);
    EXPECT_EQ(opensAndCloses(), Names{ "open 1" });
    EXPECT_EQ(sent(), allReads(2) + Requests{ "cam2: power_line_frequency 1" });
    EXPECT_EQ(markedCamera(), 2);
}

} // namespace
