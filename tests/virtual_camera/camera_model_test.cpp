// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

// What the camera answers to each request, and what it refuses.

#include "tests/virtual_camera/model_test_support.h"

#include <gmock/gmock.h>
#include <set>

using namespace virtual_camera;
using testing::ElementsAre;
using Kind = ControlTraits::Kind;
using Values = std::vector<std::int64_t>;

namespace {

std::string nameOf(const testing::TestParamInfo<ControlTraits> &info) { return info.param.name; }

class EveryControl : public testing::TestWithParam<ControlTraits>
{
protected:
    const ControlTraits &control() const { return GetParam(); }
    bool stalls(ControlRequest request) { return camera.model.answer(request).stalled; }
    // A value that the control takes and that differs from its first one.
    Values otherValues() const
    {
        switch (control().control) {
        case Control::PantiltAbsolute:
            return { 3600, -3600 };
        case Control::PantiltRelative:
            return { 1, 21, -1, 14 };
        case Control::ZoomRelative:
            return { 1, 1, 5 };
        case Control::FocusRelative:
            return { 1, 3 };
        case Control::FocusAuto:
            return { 0 };
        default:
            return { camera.model.description().range(control().control).max };
        }
    }

    CameraOnTheBench camera{ completeCamera() };
};

TEST_P(EveryControl, TellsItsLength)
{
    const Answer length = camera.get(control().control, RequestCode::GetLen);
    ASSERT_FALSE(length.stalled);
    EXPECT_EQ(length.data, (Bytes{ static_cast<std::uint8_t>(control().length()), 0 }));
}

TEST_P(EveryControl, TellsThatItCanBeReadAndWrittenAndWhetherItChangesByItself)
{
    const std::set<Control> changing{ Control::PantiltAbsolute, Control::PantiltRelative,
        Control::ZoomAbsolute, Control::ZoomRelative, Control::FocusAbsolute,
        Control::FocusRelative, Control::FocusAuto };
    const std::uint8_t autoupdate = changing.count(control().control) != 0 ? 0x08 : 0x00;
    EXPECT_EQ(camera.get(control().control, RequestCode::GetInfo).data,
        Bytes{ static_cast<std::uint8_t>(0x03 | autoupdate) });
}

TEST_P(EveryControl, TakesAValueAndTellsItAgain)
{
    ASSERT_FALSE(camera.set(control().control, otherValues()).stalled);
    if (control().kind == Kind::Position)
        camera.pass(std::chrono::minutes(1));
    EXPECT_EQ(camera.read(control().control), otherValues());
}

TEST_P(EveryControl, TellsItsRangeUnlessItIsASwitch)
{
    const auto known = [this](RequestCode code) {
        return !camera.get(control().control, code).stalled;
    };
    const bool ranged = control().kind != Kind::Switch;
    EXPECT_EQ(known(RequestCode::GetMin), ranged);
    EXPECT_EQ(known(RequestCode::GetMax), ranged);
    EXPECT_EQ(known(RequestCode::GetRes), ranged);
    EXPECT_TRUE(known(RequestCode::GetDef));
    EXPECT_TRUE(known(RequestCode::GetCur));
}

TEST_P(EveryControl, RefusesAWrongLength)
{
    Bytes bytes = encodeFields(control(), otherValues());
    bytes.push_back(0);
    EXPECT_TRUE(stalls(setRequest(control(), bytes)));
    bytes.resize(control().length() - 1);
    EXPECT_TRUE(stalls(setRequest(control(), bytes)));
    EXPECT_TRUE(stalls(setRequest(control(), {})));
    EXPECT_EQ(camera.model.lastError(), RequestError::InvalidRequest);
}

TEST_P(EveryControl, AnswersUpToAsManyBytesAsItIsAskedFor)
{
    for (const RequestCode code :
        { RequestCode::GetCur, RequestCode::GetInfo, RequestCode::GetLen, RequestCode::GetDef }) {
        ControlRequest read = getRequest(control(), code);
        const Bytes whole = camera.model.answer(read).data;
        for (std::size_t length = 0; length <= whole.size() + 2; ++length) {
            read.length = static_cast<std::uint16_t>(length);
            const Answer answer = camera.model.answer(read);
            EXPECT_FALSE(answer.stalled);
            EXPECT_EQ(answer.data,
                Bytes(whole.begin(),
                    whole.begin() + static_cast<std::ptrdiff_t>(std::min(length, whole.size()))));
        }
    }
}

TEST_P(EveryControl, RefusesUnknownRequestCodes)
{
    for (const int code : { 0x00, 0x02, 0x80, 0x88, 0xff }) {
        ControlRequest request = getRequest(control(), RequestCode::GetCur);
        request.request = static_cast<std::uint8_t>(code);
        EXPECT_TRUE(stalls(request)) << code;
        EXPECT_EQ(camera.model.lastError(), RequestError::InvalidRequest) << code;
    }
}

TEST_P(EveryControl, RefusesARequestInTheWrongDirection)
{
    ControlRequest write = setRequest(control(), encodeFields(control(), otherValues()));
    write.requestType = 0xa1;
    EXPECT_TRUE(stalls(write));
    ControlRequest read = getRequest(control(), RequestCode::GetCur);
    read.requestType = 0x21;
    EXPECT_TRUE(stalls(read));
}

TEST_P(EveryControl, RefusesWhatIsNotForItsInterface)
{
    for (const int type : { 0x20, 0x22, 0x41, 0x23, 0x61 }) {
        ControlRequest request = setRequest(control(), encodeFields(control(), otherValues()));
        request.requestType = static_cast<std::uint8_t>(type);
        EXPECT_TRUE(stalls(request)) << type;
    }
    ControlRequest request = getRequest(control(), RequestCode::GetCur);
    request.index = static_cast<std::uint16_t>(request.index | 2U);
    EXPECT_TRUE(stalls(request));
    EXPECT_EQ(camera.model.lastError(), RequestError::InvalidUnit);
}

TEST_P(EveryControl, RefusesADirtySelector)
{
    ControlRequest request = getRequest(control(), RequestCode::GetCur);
    request.value = static_cast<std::uint16_t>(request.value | 1U);
    EXPECT_TRUE(stalls(request));
    EXPECT_EQ(camera.model.lastError(), RequestError::InvalidControl);
}

TEST_P(EveryControl, IsNotThereWhenTheCameraLacksIt)
{
    CameraDescription description = completeCamera();
    description.supported[indexOf(control().control)] = false;
    CameraOnTheBench poorer(description);
    EXPECT_TRUE(poorer.get(control().control, RequestCode::GetCur).stalled);
    EXPECT_TRUE(poorer.set(control().control, otherValues()).stalled);
    EXPECT_EQ(poorer.model.lastError(), RequestError::InvalidControl);
}

INSTANTIATE_TEST_SUITE_P(Camera, EveryControl, testing::ValuesIn(allControls()), nameOf);

class EveryRangedValue : public EveryControl
{ };

TEST_P(EveryRangedValue, TellsItsDescriptionsRange)
{
    const Range &range = camera.model.description().range(control().control);
    EXPECT_EQ(camera.read(control().control, RequestCode::GetMin), Values{ range.min });
    EXPECT_EQ(camera.read(control().control, RequestCode::GetMax), Values{ range.max });
    EXPECT_EQ(camera.read(control().control, RequestCode::GetRes), Values{ range.res });
    EXPECT_EQ(camera.read(control().control, RequestCode::GetDef), Values{ range.def });
    EXPECT_EQ(camera.read(control().control), Values{ range.cur });
}

TEST_P(EveryRangedValue, RefusesWhatIsOutsideItsRange)
{
    const Range &range = camera.model.description().range(control().control);
    EXPECT_FALSE(camera.set(control().control, { range.min }).stalled);
    EXPECT_FALSE(camera.set(control().control, { range.max }).stalled);
    const Field &field = control().fields[0];
    if (range.max < field.highest()) {
        EXPECT_TRUE(camera.set(control().control, { range.max + 1 }).stalled);
        EXPECT_EQ(camera.model.lastError(), RequestError::OutOfRange);
    }
    if (range.min > field.lowest()) {
        EXPECT_TRUE(camera.set(control().control, { range.min - 1 }).stalled);
    }
    camera.pass(std::chrono::minutes(1));
    EXPECT_EQ(camera.read(control().control), Values{ range.max });
}

std::vector<ControlTraits> rangedValues()
{
    std::vector<ControlTraits> found;
    for (const ControlTraits &control : allControls()) {
        if (control.kind != Kind::Motion && control.kind != Kind::Switch
            && control.fields.size() == 1)
            found.push_back(control);
    }
    return found;
}
INSTANTIATE_TEST_SUITE_P(Camera, EveryRangedValue, testing::ValuesIn(rangedValues()), nameOf);

TEST(CameraModel, RefusesUnknownControlsOfEveryUnit)
{
    CameraOnTheBench camera;
    for (const int entity : { 0, 1, 2, 3 }) {
        for (const int selector : { 0x00, 0x10, 0x7f, 0xff }) {
            ControlRequest request = getRequest(traits(Control::Gamma), RequestCode::GetCur);
            request.index = static_cast<std::uint16_t>(entity << 8);
            request.value = static_cast<std::uint16_t>(selector << 8);
            EXPECT_TRUE(camera.model.answer(request).stalled) << entity << ' ' << selector;
            EXPECT_EQ(camera.model.lastError(), RequestError::InvalidControl);
        }
    }
    for (const int entity : { 4, 255 }) {
        ControlRequest request = getRequest(traits(Control::Gamma), RequestCode::GetCur);
        request.index = static_cast<std::uint16_t>(entity << 8);
        EXPECT_TRUE(camera.model.answer(request).stalled);
        EXPECT_EQ(camera.model.lastError(), RequestError::InvalidUnit);
    }
}

TEST(CameraModel, RefusesUnitsThatItLacks)
{
    CameraDescription description;
    description.hasCameraTerminal = false;
    description.hasProcessingUnit = false;
    CameraOnTheBench camera(description);
    for (const Control control :
        { Control::ZoomAbsolute, Control::Gamma, Control::ExtensionValue }) {
        EXPECT_TRUE(camera.get(control, RequestCode::GetCur).stalled);
        EXPECT_EQ(camera.model.lastError(), RequestError::InvalidUnit);
    }
}

TEST(CameraModel, KeepsTheSignOfBrightnessAndOnlyOfIt)
{
    CameraDescription description;
    description.range(Control::Brightness) = { -64, 64, -1, -64 };
    description.range(Control::Contrast) = { 0xffc0, 0xffff, 0xffc0, 0xffc0 };
    CameraOnTheBench camera(description);
    EXPECT_EQ(camera.get(Control::Brightness, RequestCode::GetMin).data, (Bytes{ 0xc0, 0xff }));
    EXPECT_EQ(camera.read(Control::Brightness), Values{ -64 });
    EXPECT_EQ(camera.get(Control::Contrast, RequestCode::GetMin).data, (Bytes{ 0xc0, 0xff }));
    EXPECT_EQ(camera.read(Control::Contrast), Values{ 65472 });
    EXPECT_FALSE(camera.set(Control::Brightness, { -63 }).stalled);
    EXPECT_TRUE(camera.set(Control::Brightness, { -65 }).stalled);
}

TEST(CameraModel, TellsAnyRangeThatItIsGiven)
{
    CameraDescription description;
    description.range(Control::Gamma) = { 300, 100, 500, 700, 3 };
    description.range(Control::Sharpness) = { 5, 5, 5, 5 };
    CameraOnTheBench camera(description);
    EXPECT_EQ(camera.read(Control::Gamma, RequestCode::GetMin), Values{ 300 });
    EXPECT_EQ(camera.read(Control::Gamma, RequestCode::GetMax), Values{ 100 });
    EXPECT_EQ(camera.read(Control::Gamma), Values{ 700 });
    EXPECT_FALSE(camera.set(Control::Gamma, { 9 }).stalled);
    EXPECT_FALSE(camera.set(Control::Sharpness, { 5 }).stalled);
    EXPECT_TRUE(camera.set(Control::Sharpness, { 6 }).stalled);
}

TEST(CameraModel, AnnouncesAnotherRangeWhenToldTo)
{
    CameraOnTheBench camera;
    camera.model.setRange(Control::Contrast, { 10, 20, 15, 99 });
    EXPECT_EQ(camera.read(Control::Contrast, RequestCode::GetMax), Values{ 20 });
    EXPECT_EQ(camera.read(Control::Contrast), Values{ 99 });
}

TEST(CameraModel, TakesNothingButDirectionsInMotions)
{
    CameraOnTheBench camera;
    for (const int wrong : { 2, -2, 127, -128 }) {
        EXPECT_TRUE(camera.set(Control::PantiltRelative, { wrong, 1, 0, 0 }).stalled) << wrong;
        EXPECT_TRUE(camera.set(Control::PantiltRelative, { 0, 0, wrong, 1 }).stalled) << wrong;
        EXPECT_TRUE(camera.set(Control::ZoomRelative, { wrong, 1, 5 }).stalled) << wrong;
        EXPECT_TRUE(camera.set(Control::FocusRelative, { wrong, 5 }).stalled) << wrong;
    }
    EXPECT_TRUE(camera.set(Control::ZoomRelative, { 1, 2, 5 }).stalled);
    EXPECT_FALSE(camera.model.state().moving());
}

TEST(CameraModel, TakesEverySpeedByte)
{
    CameraOnTheBench camera(completeCamera());
    for (int speed = 0; speed < 256; ++speed) {
        EXPECT_FALSE(camera.set(Control::PantiltRelative, { 1, speed, -1, speed }).stalled)
            << speed;
        EXPECT_FALSE(camera.set(Control::ZoomRelative, { -1, 1, speed }).stalled) << speed;
        EXPECT_FALSE(camera.set(Control::FocusRelative, { 1, speed }).stalled) << speed;
    }
}

TEST(CameraModel, RefusesPlacesThatItCannotReach)
{
    CameraOnTheBench camera;
    EXPECT_TRUE(camera.set(Control::PantiltAbsolute, { 170 * 3600 + 1, 0 }).stalled);
    EXPECT_TRUE(camera.set(Control::PantiltAbsolute, { 0, -30 * 3600 - 1 }).stalled);
    EXPECT_EQ(camera.model.lastError(), RequestError::OutOfRange);
    EXPECT_THAT(camera.read(Control::PantiltAbsolute, RequestCode::GetMin),
        ElementsAre(-170 * 3600, -30 * 3600));
    EXPECT_THAT(camera.read(Control::PantiltAbsolute, RequestCode::GetMax),
        ElementsAre(170 * 3600, 90 * 3600));
}

TEST(CameraModel, AnnouncesOtherRangesForPanAndTilt)
{
    CameraOnTheBench camera;
    camera.model.setRange(Control::PantiltAbsolute, { -10, 10, 0, 0 }, 0);
    camera.model.setRange(Control::PantiltAbsolute, { -20, 20, 0, 0 }, 1);
    EXPECT_THAT(camera.read(Control::PantiltAbsolute, RequestCode::GetMax), ElementsAre(10, 20));
    EXPECT_FALSE(camera.set(Control::PantiltAbsolute, { 10, -20 }).stalled);
    EXPECT_TRUE(camera.set(Control::PantiltAbsolute, { 11, 0 }).stalled);
    EXPECT_TRUE(camera.set(Control::PantiltAbsolute, { 0, 21 }).stalled);
}

TEST(CameraModel, SurvivesEveryPossibleSetupPacket)
{
    CameraOnTheBench camera;
    for (int type = 0; type < 256; ++type) {
        for (int code = 0; code < 256; ++code) {
            for (int selector = 0; selector < 18; ++selector) {
                for (const int index : { 0, 0x100, 0x200, 0x300, 1, 0x101, 0xffff }) {
                    for (const int length : { 0, 1, 2, 4, 64 }) {
                        ControlRequest request;
                        request.requestType = static_cast<std::uint8_t>(type);
                        request.request = static_cast<std::uint8_t>(code);
                        request.value = static_cast<std::uint16_t>(selector << 8);
                        request.index = static_cast<std::uint16_t>(index);
                        request.length = static_cast<std::uint16_t>(length);
                        const Answer answer = camera.model.answer(request);
                        ASSERT_LE(answer.data.size(), static_cast<std::size_t>(length));
                        ASSERT_TRUE(!answer.stalled || answer.data.empty());
                    }
                }
            }
            const bool standing = (type & 0x7f) <= 0x02 || (type & 0x7f) == 0x21;
            if (!standing)
                code += 50; // requests to nobody need not be tried one by one
        }
    }
}

} // namespace
