// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

// Opening and closing: which camera, when it is refused, and what a failure leaves behind.

#include "tests/device/camera_fixture.h"
#include "tests/device/operations.h"

#include <algorithm>
#include <cerrno>
#include <climits>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using virtual_camera::Control;
using virtual_camera::DeviceDescription;

using OneCamera = PluggedIn;

class ThreeCameras : public PluggedIn
{
protected:
    ThreeCameras() : PluggedIn(std::vector<DeviceDescription>(3)) { }
    // The number of the camera that takes a command now; 0 for none.
    int driven()
    {
        log().clear();
        device->StopMoveUp();
        const auto requests = log().requests();
        return requests.size() == 1 ? requests[0].device : 0;
    }
};

TEST_F(ThreeCameras, AreOpenedByTheirPlaceInTheList)
{
    for (const int index : { 2, 0, 1 }) {
        EXPECT_TRUE(device->OpenDevice("", index));
        EXPECT_EQ(driven(), index + 1);
        device->CloseDevice();
        EXPECT_EQ(driven(), 0);
    }
}

TEST_F(ThreeCameras, AreNotChosenByName)
{
    for (const char *name :
        { "0", "2", "Virtual PTZ Camera", "", static_cast<const char *>(nullptr) }) {
        EXPECT_TRUE(device->OpenDevice(name, 1));
        EXPECT_EQ(driven(), 2);
        device->CloseDevice();
    }
}

TEST_F(ThreeCameras, AreDrivenOneAtATimeTheLastOpened)
{
    ASSERT_TRUE(device->OpenDevice("", 0));
    ASSERT_TRUE(device->OpenDevice("", 2));
    EXPECT_EQ(driven(), 3);
    device->CloseDevice();
    EXPECT_EQ(driven(), 0);
}

TEST_F(ThreeCameras, KeepTheOpenOneWhenAnotherCannotBeOpened)
{
    ASSERT_TRUE(device->OpenDevice("", 0));
    camera(2).refuseOpen(EACCES);
    EXPECT_FALSE(device->OpenDevice("", 1));
    for (const int index : { 3, 4, 1000000, INT_MAX, -2, INT_MIN }) {
        EXPECT_FALSE(device->OpenDevice("", index)) << index;
        EXPECT_EQ(driven(), 1) << index;
    }
    device->CloseDevice();
    EXPECT_EQ(driven(), 0) << "the index of a failed open does not keep the camera open";
}

TEST_F(ThreeCameras, KeepTheOpenOneOnACloseAfterIndexMinusOne)
{
    ASSERT_TRUE(device->OpenDevice("", 0));
    EXPECT_FALSE(device->OpenDevice("", -1));
    device->CloseDevice();
    EXPECT_EQ(driven(), 1) << "-1 stands for never opened";
    ASSERT_FALSE(device->OpenDevice("", 7));
    device->CloseDevice();
    EXPECT_EQ(driven(), 0);
}

TEST_F(OneCamera, CanBeOpenedAgainAndAgain)
{
    for (int round = 0; round < 5; ++round) {
        ASSERT_TRUE(device->OpenDevice("0", 0)) << round;
        EXPECT_TRUE(device->StopFocus());
        device->CloseDevice();
    }
}

TEST_F(OneCamera, IsNotTouchedByACloseBeforeTheFirstOpen)
{
    log().clear();
    device->CloseDevice();
    EXPECT_THAT(log().all(), IsEmpty());
    EXPECT_TRUE(device->OpenDevice("0", 0));
}

TEST_F(OneCamera, IsClosedOnce)
{
    ASSERT_TRUE(device->OpenDevice("0", 0));
    device->CloseDevice();
    EXPECT_TRUE(wire::waitUntilClosed(log()));
    log().clear();
    device->CloseDevice();
    device->CloseDevice();
    EXPECT_THAT(log().all(), IsEmpty());
    EXPECT_TRUE(device->OpenDevice("0", 0));
    EXPECT_TRUE(device->StopFocus());
}

struct Refusal
{
    const char *name;
    void (*begin)(virtual_camera::Device &);
};

class RefusedOpen : public PluggedIn, public testing::WithParamInterface<Refusal>
{ };

TEST_P(RefusedOpen, AnswersFalseAndMayBeTriedAgain)
{
    GetParam().begin(camera());
    EXPECT_FALSE(device->OpenDevice("0", 0));
    EXPECT_FALSE(device->OpenDevice("0", 0));
    EXPECT_FALSE(device->StopFocus());
    camera().clearFaults();
    EXPECT_TRUE(device->OpenDevice("0", 0));
    EXPECT_TRUE(device->StopFocus());
}

INSTANTIATE_TEST_SUITE_P(Because, RefusedOpen,
    testing::Values(Refusal{ "ItIsNotAllowed", [](auto &camera) { camera.refuseOpen(EACCES); } },
        Refusal{ "ItIsBusy", [](auto &camera) { camera.refuseOpen(EBUSY); } },
        Refusal{ "AnotherProgramHoldsIt", [](auto &camera) { camera.refuseClaim(); } }),
    [](const auto &row) { return row.param.name; });

// ---- the list is taken once ----

TEST_F(OneCamera, ThatIsPluggedInLaterIsListedButNotOpened)
{
    camera().unplug();
    BaseDevice *const early = makeDevice();
    camera().replug();
    std::vector<DeviceInfo> list;
    EXPECT_TRUE(BaseDevice::EnumUSBDevices(list));
    EXPECT_EQ(list.size(), 1U);
    EXPECT_FALSE(early->OpenDevice("0", 0));
    EXPECT_TRUE(makeDevice()->OpenDevice("0", 0));
}

class OtherDevicesFirst : public PluggedIn
{
protected:
    OtherDevicesFirst()
        : PluggedIn({ DeviceDescription::storage(), DeviceDescription::otherCamera(),
            DeviceDescription::ptzCamera(), DeviceDescription::storage(),
            DeviceDescription::ptzCamera() })
    { }
};

TEST_F(OtherDevicesFirst, ShiftWhatIsOpenedAgainstWhatIsListed)
{
    std::vector<DeviceInfo> list;
    ASSERT_TRUE(BaseDevice::EnumUSBDevices(list));
    ASSERT_EQ(list.size(), 2U);
    EXPECT_EQ(list[0].index, 0);
    EXPECT_EQ(list[1].index, 1);
    log().clear();
    // What is no camera at all does not count; a camera of another make does.
    const std::pair<int, int> rows[] = { { 0, 2 }, { 1, 3 }, { 2, 5 } };
    for (const auto &[index, number] : rows) {
        log().clear();
        ASSERT_TRUE(device->OpenDevice("", index));
        device->StopMoveUp();
        EXPECT_THAT(received(number), testing::SizeIs(1)) << index;
        EXPECT_THAT(received(), testing::SizeIs(1)) << index;
        device->CloseDevice();
    }
    EXPECT_FALSE(device->OpenDevice("", 3));
}

// ---- reads that decide about the next open ----

struct Read
{
    const char *name;
    bool (BaseDevice::*get)(long *);
    Control control;
};

const Read governing[] = {
    { "Brightness", &BaseDevice::GetBrightness, Control::Brightness },
    { "Gamma", &BaseDevice::GetGamma, Control::Gamma },
    { "Contrast", &BaseDevice::GetContrast, Control::Contrast },
    { "BLC", &BaseDevice::GetBLC, Control::BacklightCompensation },
};
const Read others[] = {
    { "Saturation", &BaseDevice::GetSaturation, Control::Saturation },
    { "Sharpness", &BaseDevice::GetSharpness, Control::Sharpness },
    { "WhiteBalance", &BaseDevice::GetWhiteBalance, Control::WhiteBalanceTemperature },
    { "Gain", &BaseDevice::GetGain, Control::Gain },
    { "Flicker", &BaseDevice::GetFlicker, Control::PowerLineFrequency },
    { "Zoom", &BaseDevice::GetZoom, Control::ZoomAbsolute },
    { "Focus", &BaseDevice::GetFocus, Control::FocusAbsolute },
};

class FailedRead : public OpenCamera, public testing::WithParamInterface<Read>
{
protected:
    bool read(const Read &read)
    {
        long out = 0;
        return (device->*read.get)(&out);
    }
    void SetUp() override
    {
        OpenCamera::SetUp();
        camera().stall(GetParam().control);
        EXPECT_FALSE(read(GetParam()));
        log().clear();
    }
};
using FailedGoverningRead = FailedRead;
using FailedOtherRead = FailedRead;

TEST_P(FailedGoverningRead, KeepsTheNextOpenFromTheCamera)
{
    for (int round = 0; round < 3; ++round) {
        EXPECT_FALSE(device->OpenDevice("0", 0));
        EXPECT_EQ(wire::opens(log()), 0);
    }
    device->CloseDevice();
    EXPECT_FALSE(device->OpenDevice("0", 0)) << "a close changes nothing";
    EXPECT_EQ(wire::opens(log()), 0);
}

TEST_P(FailedGoverningRead, LeavesTheOpenCameraInUse)
{
    EXPECT_FALSE(device->OpenDevice("0", 0));
    EXPECT_TRUE(device->StopMoveUp());
    device->CloseDevice();
    EXPECT_FALSE(device->StopMoveUp()) << "it was the open camera that was closed";
}

TEST_P(FailedGoverningRead, IsMadeGoodByAnyOfTheFour)
{
    for (const Read &good : governing) {
        camera().unstall();
        EXPECT_TRUE(read(good)) << good.name;
        device->CloseDevice();
        EXPECT_TRUE(device->OpenDevice("0", 0)) << good.name;
        camera().stall(GetParam().control);
        EXPECT_FALSE(read(GetParam()));
        EXPECT_FALSE(device->OpenDevice("0", 0));
    }
}

TEST_P(FailedGoverningRead, IsNotMadeGoodByAnythingElse)
{
    camera().unstall();
    for (const Read &other : others)
        EXPECT_TRUE(read(other)) << other.name;
    for (const Operation &operation : operations()) {
        const bool reads = std::any_of(std::begin(governing), std::end(governing),
            [&](const Read &each) { return operation.member == Member(each.get); });
        if (operation.slot > 1 && !reads
            && operation.member != Member(&BaseDevice::GetPropertyValues))
            call(*device, operation.member, operation.argument);
    }
    EXPECT_FALSE(device->OpenDevice("0", 0));
}

TEST_P(FailedGoverningRead, IsMadeGoodByAShortAnswer)
{
    // A short answer is a success to libuvc, and so it is here.
    camera().unstall();
    camera().answerShort(GetParam().control, 1);
    EXPECT_TRUE(read(GetParam()));
    device->CloseDevice();
    EXPECT_TRUE(device->OpenDevice("0", 0));
}

TEST_P(FailedOtherRead, DoesNotKeepTheNextOpenFromTheCamera)
{
    device->CloseDevice();
    EXPECT_TRUE(device->OpenDevice("0", 0));
    EXPECT_GT(wire::opens(log()), 0);
}

std::string nameOf(const testing::TestParamInfo<Read> &row) { return row.param.name; }
INSTANTIATE_TEST_SUITE_P(Of, FailedGoverningRead, testing::ValuesIn(governing), nameOf);
INSTANTIATE_TEST_SUITE_P(Of, FailedOtherRead, testing::ValuesIn(others), nameOf);

} // namespace
