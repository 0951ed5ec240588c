// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

// How the camera moves, and what its vendor commands do.

#include "tests/virtual_camera/model_test_support.h"
#include "virtual_camera/camera/vendor_command.h"
#include "virtual_camera/camera/words.h"

#include <gmock/gmock.h>

using namespace virtual_camera;
using namespace std::chrono_literals;

namespace {

using Values = std::vector<std::int64_t>;

constexpr std::int64_t degree = 3600;

TEST(CameraMotion, PansUntilItIsStopped)
{
    CameraOnTheBench camera;
    camera.set(Control::PantiltRelative, { 1, 24, 0, 0 });
    camera.pass(1s);
    EXPECT_EQ(camera.model.state().place().pan, 120 * degree);
    EXPECT_EQ(camera.model.state().place().tilt, 0);
    EXPECT_TRUE(camera.model.state().moving());
    camera.set(Control::PantiltRelative, { 0, 0, 0, 0 });
    camera.pass(1s);
    EXPECT_EQ(camera.model.state().place().pan, 120 * degree);
    EXPECT_FALSE(camera.model.state().moving());
}

TEST(CameraMotion, RunsAtTheSpeedThatItWasGiven)
{
    for (const int speed : { 0, 1, 12, 21, 24 }) {
        CameraOnTheBench camera;
        camera.set(Control::PantiltRelative, { -1, speed, 0, 0 });
        camera.pass(1s);
        EXPECT_EQ(camera.model.state().place().pan, -speed * 5 * degree) << speed;
    }
}

TEST(CameraMotion, CannotRunFasterThanItsMotors)
{
    CameraOnTheBench camera;
    camera.set(Control::PantiltRelative, { 1, 255, 1, 255 });
    camera.pass(500ms);
    EXPECT_EQ(camera.model.state().place().pan, 60 * degree);
    EXPECT_EQ(camera.model.state().place().tilt, 45 * degree);
}

TEST(CameraMotion, StopsOneAxisWhenOnlyTheOtherIsAskedFor)
{
    CameraOnTheBench camera;
    camera.set(Control::PantiltRelative, { 1, 12, 0, 0 });
    camera.pass(1s);
    camera.set(Control::PantiltRelative, { 0, 0, 1, 10 });
    camera.pass(1s);
    EXPECT_EQ(camera.model.state().place().pan, 60 * degree);
    EXPECT_EQ(camera.model.state().place().tilt, 45 * degree);
}

TEST(CameraMotion, EndsAtTheEnds)
{
    CameraOnTheBench camera(completeCamera());
    camera.set(Control::PantiltRelative, { 1, 24, -1, 20 });
    camera.set(Control::ZoomRelative, { 1, 1, 7 });
    camera.set(Control::FocusRelative, { -1, 7 });
    camera.pass(1min);
    const CameraState state = camera.model.state();
    EXPECT_EQ(state.place(), (Place{ 170 * degree, -30 * degree, 16384, 0 }));
    EXPECT_FALSE(state.moving());
}

TEST(CameraMotion, TravelsToAPlaceAndStaysThere)
{
    CameraOnTheBench camera;
    camera.set(Control::PantiltAbsolute, { 60 * degree, 0 });
    camera.pass(250ms);
    EXPECT_EQ(camera.model.state().place().pan, 30 * degree);
    camera.pass(10s);
    EXPECT_EQ(camera.model.state().place().pan, 60 * degree);
    EXPECT_FALSE(camera.model.state().moving());
}

TEST(CameraMotion, IsStoppedOnItsWayToAPlace)
{
    CameraOnTheBench camera;
    camera.set(Control::ZoomAbsolute, { 16384 });
    camera.pass(1250ms);
    camera.set(Control::ZoomRelative, { 0, 1, 5 });
    camera.pass(10s);
    EXPECT_EQ(camera.model.state().place().zoom, 8192);
}

TEST(CameraMotion, ReportsAPlaceOutsideItsRangeUntilItMoves)
{
    CameraDescription description;
    description.range(Control::ZoomAbsolute).cur = 0xffff;
    CameraOnTheBench camera(description);
    EXPECT_EQ(camera.read(Control::ZoomAbsolute), std::vector<std::int64_t>{ 0xffff });
    camera.set(Control::ZoomRelative, { 1, 1, 7 });
    camera.pass(1s);
    EXPECT_EQ(camera.model.state().place().zoom, 0xffff);
    camera.set(Control::ZoomRelative, { -1, 1, 7 });
    camera.pass(1min);
    EXPECT_EQ(camera.model.state().place().zoom, 0);
}

TEST(CameraMotion, ComesBackIntoARangeOfNothing)
{
    CameraDescription description;
    description.range(Control::ZoomAbsolute) = { 100, 100, 100, 900 };
    CameraOnTheBench camera(description);
    EXPECT_FALSE(camera.set(Control::ZoomAbsolute, { 100 }).stalled);
    camera.pass(1min);
    EXPECT_EQ(camera.model.state().place().zoom, 100);
}

TEST(CameraMotion, EndsWithThePower)
{
    CameraOnTheBench camera;
    camera.set(Control::PantiltRelative, { 1, 24, 0, 0 });
    camera.pass(100ms);
    camera.model.cutPower();
    camera.pass(1min);
    EXPECT_EQ(camera.model.state().place().pan, 12 * degree);
}

// What a remote control asks; a test that misspells it fails.
RemoteOrder order(std::string_view words)
{
    RemoteOrder read;
    EXPECT_EQ(readRemoteOrder(read, splitWords(words)), std::nullopt) << words;
    return read;
}

TEST(RemoteControl, SendsTheCameraToAPlaceAtFullSpeed)
{
    CameraOnTheBench camera;
    EXPECT_FALSE(camera.model.go(order("pan=216000 tilt=324000 zoom=16384 focus=0")));
    camera.pass(250ms);
    EXPECT_EQ(camera.read(Control::PantiltRelative), (Values{ 1, 24, 1, 20 }));
    camera.pass(1min);
    EXPECT_EQ(camera.model.state().place(), (Place{ 60 * degree, 90 * degree, 16384, 0 }));
}

TEST(RemoteControl, LeavesOtherMotorsAlone)
{
    CameraOnTheBench camera;
    camera.set(Control::PantiltRelative, { 1, 1, 0, 0 });
    EXPECT_FALSE(camera.model.go(order("zoom=100")));
    camera.pass(1s);
    EXPECT_EQ(camera.model.state().place(), (Place{ 5 * degree, 0, 100, 2048 }));
    EXPECT_NE(camera.model.state().pan.velocity, 0);
}

struct KeyRow
{
    const char *words;
    Values pantilt;
    Values zoom;
    Values focus;
};

class RemoteKey : public testing::TestWithParam<KeyRow>
{ };

TEST_P(RemoteKey, DrivesUntilItIsStopped)
{
    CameraOnTheBench camera(completeCamera());
    camera.model.go(order("zoom=5000"));
    camera.pass(1min);
    EXPECT_FALSE(camera.model.go(order(GetParam().words)));
    camera.pass(100ms);
    EXPECT_EQ(camera.read(Control::PantiltRelative), GetParam().pantilt);
    EXPECT_EQ(camera.read(Control::ZoomRelative), GetParam().zoom);
    EXPECT_EQ(camera.read(Control::FocusRelative), GetParam().focus);
    EXPECT_FALSE(camera.model.go(order("stop")));
    EXPECT_FALSE(camera.model.state().moving());
}

INSTANTIATE_TEST_SUITE_P(Each, RemoteKey,
    testing::Values(KeyRow{ "left", { -1, 24, 0, 0 }, { 0, 0, 0 }, { 0, 0 } },
        KeyRow{ "right=1", { 1, 1, 0, 0 }, { 0, 0, 0 }, { 0, 0 } },
        KeyRow{ "up", { 0, 0, 1, 20 }, { 0, 0, 0 }, { 0, 0 } },
        KeyRow{ "down=7", { 0, 0, -1, 7 }, { 0, 0, 0 }, { 0, 0 } },
        KeyRow{ "in=3", { 0, 0, 0, 0 }, { 1, 0, 3 }, { 0, 0 } },
        KeyRow{ "out", { 0, 0, 0, 0 }, { -1, 0, 7 }, { 0, 0 } },
        KeyRow{ "near", { 0, 0, 0, 0 }, { 0, 0, 0 }, { 1, 7 } },
        KeyRow{ "far=2", { 0, 0, 0, 0 }, { 0, 0, 0 }, { -1, 2 } },
        KeyRow{ "left=255 down in=1", { -1, 24, -1, 20 }, { 1, 0, 1 }, { 0, 0 } }));

TEST(RemoteControl, RecallsPresetsAndGoesHome)
{
    CameraOnTheBench camera;
    camera.model.go(order("pan=36000 zoom=1000"));
    camera.pass(1min);
    EXPECT_TRUE(camera.vendor(20 + 3));
    EXPECT_FALSE(camera.model.go(order("home")));
    camera.pass(1min);
    EXPECT_EQ(camera.model.state().place(), (Place{ 0, 0, 0, 2048 }));
    EXPECT_FALSE(camera.model.go(order("preset=3")));
    camera.pass(1min);
    EXPECT_EQ(camera.model.state().place(), (Place{ 10 * degree, 0, 1000, 2048 }));
}

TEST(RemoteControl, CannotSendTheCameraElsewhere)
{
    CameraOnTheBench camera;
    for (const char *words : { "pan=3600 tilt=327600", "pan=3600 zoom=-1", "pan=3600 focus=4096",
             "left zoom=-1", "preset=4" }) {
        EXPECT_TRUE(camera.model.go(order(words))) << words;
        EXPECT_FALSE(camera.model.state().moving()) << words;
    }
}

struct DriveRow
{
    const char *name;
    Control control;
    Values asked;
    Values answered; // while the motors run
};

class RelativeControl : public testing::TestWithParam<DriveRow>
{
protected:
    Values now() { return camera.read(GetParam().control); }

    CameraOnTheBench camera{ completeCamera() };
};

TEST_P(RelativeControl, AnswersWhatTheMotorsDoNow)
{
    const auto &[name, control, asked, answered] = GetParam();
    const Values atRest(answered.size());
    EXPECT_EQ(now(), atRest);
    camera.set(control, asked);
    camera.pass(10ms);
    EXPECT_EQ(now(), answered);
    camera.set(control, atRest);
    EXPECT_EQ(now(), atRest);
}

INSTANTIATE_TEST_SUITE_P(Of, RelativeControl,
    testing::Values(DriveRow{ "Pan", Control::PantiltRelative, { 1, 21, 0, 0 }, { 1, 21, 0, 0 } },
        DriveRow{ "PanAndTilt", Control::PantiltRelative, { -1, 1, 1, 19 }, { -1, 1, 1, 19 } },
        DriveRow{ "TooFast", Control::PantiltRelative, { 1, 255, -1, 255 }, { 1, 24, -1, 20 } },
        DriveRow{ "WithoutSpeed", Control::PantiltRelative, { 1, 0, -1, 0 }, { 0, 0, 0, 0 } },
        DriveRow{ "Zoom", Control::ZoomRelative, { 1, 0, 3 }, { 1, 0, 3 } },
        DriveRow{ "ZoomAtItsEnd", Control::ZoomRelative, { -1, 0, 7 }, { 0, 0, 0 } },
        DriveRow{ "Focus", Control::FocusRelative, { -1, 9 }, { -1, 7 } }),
    [](const auto &row) { return row.param.name; });

TEST(RelativeControls, StandStillAtTheEnd)
{
    CameraOnTheBench camera;
    camera.set(Control::PantiltRelative, { 1, 24, 1, 1 });
    camera.pass(2s);
    EXPECT_EQ(camera.read(Control::PantiltRelative), (Values{ 0, 0, 1, 1 }));
}

TEST(RelativeControls, RememberWhetherDigitalZoomWasAskedFor)
{
    CameraOnTheBench camera;
    camera.set(Control::ZoomRelative, { 0, 1, 5 });
    EXPECT_EQ(camera.read(Control::ZoomRelative), (Values{ 0, 1, 0 }));
}

TEST(RelativeControls, CountAJourneyAsADriveAtFullSpeed)
{
    CameraOnTheBench camera;
    camera.set(Control::ZoomAbsolute, { 16384 });
    camera.pass(100ms);
    EXPECT_EQ(camera.read(Control::ZoomRelative), (Values{ 1, 0, 7 }));
}

struct SwitchCase
{
    int on;
    int off;
    bool CameraState::*member;
};

class VendorSwitch : public testing::TestWithParam<SwitchCase>
{ };

TEST_P(VendorSwitch, GoesOnAndOff)
{
    CameraOnTheBench camera;
    const SwitchCase &test = GetParam();
    EXPECT_TRUE(camera.vendor(test.off));
    EXPECT_FALSE(camera.model.state().*test.member);
    EXPECT_TRUE(camera.vendor(test.on));
    EXPECT_TRUE(camera.model.state().*test.member);
    EXPECT_TRUE(camera.vendor(test.off));
    EXPECT_FALSE(camera.model.state().*test.member);
}

INSTANTIATE_TEST_SUITE_P(Codes, VendorSwitch,
    testing::Values(SwitchCase{ 0, 1, &CameraState::mirror },
        SwitchCase{ 2, 3, &CameraState::flip }, SwitchCase{ 5, 4, &CameraState::mute },
        SwitchCase{ 6, 7, &CameraState::autoFocus }, SwitchCase{ 10, 11, &CameraState::menu },
        SwitchCase{ 16, 17, &CameraState::framing }, SwitchCase{ 18, 19, &CameraState::freeze }));

TEST(VendorCommands, DoNothingToACameraThatIsSwitchedOn)
{
    CameraOnTheBench camera;
    const CameraState state = camera.model.state();
    EXPECT_FALSE(
        state.mirror || state.flip || state.mute || state.menu || state.framing || state.freeze);
    EXPECT_TRUE(state.autoFocus);
}

TEST(VendorCommands, StoreRecallAndClearPresets)
{
    CameraOnTheBench camera;
    camera.set(Control::PantiltAbsolute, { 10 * degree, 20 * degree });
    camera.set(Control::ZoomAbsolute, { 1000 });
    camera.pass(1min);
    EXPECT_TRUE(camera.vendor(20 + 3));
    EXPECT_EQ(camera.model.state().presets.at(3), (Place{ 10 * degree, 20 * degree, 1000, 2048 }));

    camera.vendor(8);
    camera.pass(1min);
    EXPECT_EQ(camera.model.state().place(), (Place{ 0, 0, 0, 2048 }));

    EXPECT_TRUE(camera.vendor(100 + 3));
    camera.pass(1min);
    EXPECT_EQ(camera.model.state().place(), (Place{ 10 * degree, 20 * degree, 1000, 2048 }));

    EXPECT_TRUE(camera.vendor(60 + 3));
    EXPECT_TRUE(camera.model.state().presets.empty());
    camera.vendor(8);
    camera.pass(1min);
    EXPECT_TRUE(camera.vendor(100 + 3));
    camera.pass(1min);
    EXPECT_EQ(camera.model.state().place(), (Place{ 0, 0, 0, 2048 }));
}

TEST(VendorCommands, AreTakenEvenWhenTheyMeanNothing)
{
    CameraOnTheBench camera;
    for (const int code : { -32768, -1, 9, 12, 15, 300, 4464, 32767 }) {
        EXPECT_TRUE(camera.vendor(code)) << code;
        EXPECT_FALSE(camera.model.state().moving()) << code;
    }
}

TEST(VendorCommands, HaveWords)
{
    EXPECT_EQ(decodeVendorCommand(5).words(), "mute on");
    EXPECT_EQ(decodeVendorCommand(4).words(), "mute off");
    EXPECT_EQ(decodeVendorCommand(29).words(), "store preset 9");
    EXPECT_EQ(decodeVendorCommand(63).words(), "clear preset 3");
    EXPECT_EQ(decodeVendorCommand(300).words(), "recall preset 200");
    EXPECT_EQ(decodeVendorCommand(9).words(), "unknown command");
    EXPECT_EQ(decodeVendorCommand(-1).words(), "unknown command");
}

} // namespace
