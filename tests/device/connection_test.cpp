// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

// Opening and closing: which camera, when it is refused, and what a failure leaves behind.

#include "tests/device/camera_fixture.h"

#include <cerrno>
#include <climits>

namespace {

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

TEST_F(OneCamera, IsNotTouchedByACloseBeforeTheFirstOpen)
{
    log().clear();
    device->CloseDevice();
    EXPECT_THAT(log().all(), IsEmpty());
    EXPECT_TRUE(device->OpenDevice("0", 0));
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

// ---- a failed read of brightness, gamma, contrast or backlight compensation ----

TEST_F(ThreeCameras, AreNotOpenedAfterAFailedReadUntilOneSucceeds)
{
    ASSERT_TRUE(device->OpenDevice("", 0));
    camera().stall(Control::Brightness);
    long out = 0;
    EXPECT_FALSE(device->GetBrightness(&out));
    for (const int index : { 0, 1, -1 })
        EXPECT_FALSE(device->OpenDevice("", index));
    EXPECT_EQ(driven(), 1);
    // A short answer is a success to libuvc, and so it is here.
    camera().unstall();
    camera().answerShort(Control::Brightness, 1);
    EXPECT_TRUE(device->GetBrightness(&out));
    EXPECT_TRUE(device->OpenDevice("", 1));
}

TEST_F(ThreeCameras, AreClosedAfterARefusedOpenOfIndexMinusOne)
{
    ASSERT_TRUE(device->OpenDevice("", 0));
    camera().stall(Control::Brightness);
    long out = 0;
    EXPECT_FALSE(device->GetBrightness(&out));
    EXPECT_FALSE(device->OpenDevice("", -1));
    device->CloseDevice();
    EXPECT_EQ(driven(), 0) << "an open that is refused leaves no index";
    EXPECT_FALSE(device->OpenDevice("", 0)) << "a close changes nothing";
}

} // namespace
