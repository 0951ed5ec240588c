// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

// What a camera remembers between requests: automatics, its last error, and what survives a power
// cycle.

#include "tests/virtual_camera/model_test_support.h"

#include <gmock/gmock.h>

using namespace virtual_camera;
using Values = std::vector<std::int64_t>;

namespace {

struct AutomaticRow
{
    const char *name;
    Control automatic;
    Control control;
    Values values;
    std::uint8_t info; // while the user has it
};

class Automatic : public testing::TestWithParam<AutomaticRow>
{
protected:
    bool takes(Control control, const Values &values)
    {
        return !camera.set(control, values).stalled;
    }
    Bytes info() { return camera.get(GetParam().control, RequestCode::GetInfo).data; }

    CameraOnTheBench camera;
};

TEST_P(Automatic, DisablesWhatItControls)
{
    const auto &[name, automatic, control, values, plainInfo] = GetParam();
    ASSERT_TRUE(takes(automatic, { 0 }));
    EXPECT_TRUE(takes(control, values));
    EXPECT_EQ(info(), Bytes{ plainInfo });

    ASSERT_TRUE(takes(automatic, { 1 }));
    EXPECT_EQ(info(), Bytes{ static_cast<std::uint8_t>(plainInfo | 0x04) });
    EXPECT_FALSE(takes(control, values));
    EXPECT_EQ(camera.model.lastError(), RequestError::WrongState);
    EXPECT_FALSE(camera.read(control).empty());

    ASSERT_TRUE(takes(automatic, { 0 }));
    EXPECT_TRUE(takes(control, values));
    EXPECT_EQ(info(), Bytes{ plainInfo });
}

INSTANTIATE_TEST_SUITE_P(Camera, Automatic,
    testing::Values(AutomaticRow{ "WhiteBalance", Control::WhiteBalanceTemperatureAuto,
                        Control::WhiteBalanceTemperature, { 3000 }, 0x03 },
        AutomaticRow{ "Focus", Control::FocusAuto, Control::FocusAbsolute, { 100 }, 0x0b },
        AutomaticRow{ "FocusMotion", Control::FocusAuto, Control::FocusRelative, { 1, 3 }, 0x0b },
        AutomaticRow{ "FocusStop", Control::FocusAuto, Control::FocusRelative, { 0, 0 }, 0x0b }),
    [](const auto &row) { return row.param.name; });

TEST(VendorCommand, SwitchesTheFocus)
{
    CameraOnTheBench camera;
    EXPECT_TRUE(camera.vendor(7));
    EXPECT_EQ(camera.read(Control::FocusAuto), Values{ 0 });
    EXPECT_FALSE(camera.set(Control::FocusRelative, { 1, 3 }).stalled);
    EXPECT_TRUE(camera.vendor(6));
    EXPECT_EQ(camera.read(Control::FocusAuto), Values{ 1 });
    EXPECT_FALSE(camera.model.state().moving()) << "the automatic took the lens over";
    EXPECT_TRUE(camera.set(Control::FocusRelative, { 1, 3 }).stalled);
}

ControlRequest errorCodeRequest()
{
    ControlRequest ask;
    ask.requestType = 0xa1;
    ask.request = 0x81;
    ask.value = 0x0200;
    ask.length = 1;
    return ask;
}

TEST(RequestErrorCode, TellsWhyTheCameraRefusedUntilItHasBeenAsked)
{
    CameraOnTheBench camera;
    const ControlRequest ask = errorCodeRequest();
    EXPECT_EQ(camera.model.answer(ask).data, (Bytes{ 0 }));
    EXPECT_TRUE(camera.set(Control::PowerLineFrequency, { 9 }).stalled);
    EXPECT_EQ(camera.model.answer(ask).data, (Bytes{ 4 }));
    EXPECT_EQ(camera.model.answer(ask).data, (Bytes{ 0 }));
}

TEST(RequestErrorCode, IsResetByTheNextRequestThatSucceeds)
{
    CameraOnTheBench camera;
    ControlRequest ask = errorCodeRequest();
    EXPECT_TRUE(camera.set(Control::PowerLineFrequency, { 9 }).stalled);
    EXPECT_FALSE(camera.set(Control::PowerLineFrequency, { 2 }).stalled);
    EXPECT_EQ(camera.model.answer(ask).data, (Bytes{ 0 }));
    ask.request = 0x01;
    EXPECT_TRUE(camera.model.answer(ask).stalled);
    ask = errorCodeRequest();
    ask.request = 0x86;
    EXPECT_EQ(camera.model.answer(ask).data, (Bytes{ 1 })) << "can only be read";
}

TEST(SwitchedOn, CameraIsAsDescribedButKeepsItsPresets)
{
    CameraDescription description;
    description.range(Control::Contrast).cur = 99;
    CameraOnTheBench camera(description);
    const CameraState fresh = camera.model.state();
    camera.vendor(7);
    camera.vendor(20 + 4);
    for (const int code : { 0, 2, 5, 10, 16, 18 })
        camera.vendor(code);
    camera.set(Control::Contrast, { 1 });
    camera.set(Control::WhiteBalanceTemperatureAuto, { 1 });
    camera.set(Control::PantiltRelative, { 1, 24, -1, 20 });
    camera.set(Control::ZoomRelative, { 1, 1, 7 });
    camera.set(Control::FocusRelative, { 1, 7 });
    camera.pass(std::chrono::milliseconds(100));
    EXPECT_TRUE(camera.set(Control::Gamma, { 1 }).stalled);

    camera.model.switchOn();
    camera.pass(std::chrono::seconds(1));
    const CameraState state = camera.model.state();
    EXPECT_FALSE(state.moving());
    EXPECT_EQ(state.place(), fresh.place());
    EXPECT_EQ(state.values, fresh.values);
    for (const auto on : { &CameraState::mirror, &CameraState::flip, &CameraState::mute,
             &CameraState::menu, &CameraState::framing, &CameraState::freeze,
             &CameraState::autoFocus, &CameraState::autoWhiteBalance })
        EXPECT_EQ(state.*on, fresh.*on);
    EXPECT_EQ(camera.read(Control::ZoomRelative), (Values{ 0, 0, 0 }));
    EXPECT_EQ(camera.model.lastError(), RequestError::None);
    EXPECT_EQ(state.presets.count(4), 1U);
}

TEST(SwitchedOn, CameraKeepsAnAnnouncedRange)
{
    CameraOnTheBench camera;
    camera.model.setRange(Control::Contrast, { 10, 20, 15, 12 });
    camera.set(Control::Contrast, { 20 });
    camera.model.switchOn();
    EXPECT_EQ(camera.read(Control::Contrast, RequestCode::GetMax), Values{ 20 });
    EXPECT_EQ(camera.read(Control::Contrast), Values{ 12 });
}

} // namespace
