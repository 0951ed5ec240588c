// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

// Cameras that do not answer: how long a request is waited for. libusb's answers are made up here,
// so that no test has to wait.

#include "tests/device/camera_fixture.h"
#include "tests/device/libusb_calls.h"

#include <libusb.h>

namespace {

using libusb_calls::answer;
using libusb_calls::limits;
using testing::Each;
using testing::ElementsAre;
using virtual_camera::DeviceDescription;

class Hang : public PluggedIn
{
protected:
    Hang() : PluggedIn(std::vector<DeviceDescription>(2)) { }
    void SetUp() override
    {
        ASSERT_TRUE(device->OpenDevice("0", 0));
        limits.clear();
    }
    void TearDown() override
    {
        answer.reset();
        PluggedIn::TearDown();
    }
    // The limit of one request that libusb answers like this.
    unsigned limitOf(std::optional<int> libusbAnswers)
    {
        limits.clear();
        answer = libusbAnswers;
        EXPECT_EQ(device->StopZoom(), !libusbAnswers);
        answer.reset();
        EXPECT_EQ(limits.size(), 1U) << "nothing is tried twice";
        return limits.at(0);
    }
    void choose(int index)
    {
        device->CloseDevice();
        ASSERT_TRUE(device->OpenDevice("", index));
    }
};

TEST_F(Hang, EndsAfter5SecondsThenAfter1UntilTheCameraAnswers)
{
    for (const auto recovery : { std::optional<int>(), std::optional<int>(LIBUSB_ERROR_PIPE) }) {
        EXPECT_EQ(limitOf(LIBUSB_ERROR_TIMEOUT), 5000U);
        EXPECT_EQ(limitOf(LIBUSB_ERROR_TIMEOUT), 1000U);
        EXPECT_EQ(limitOf(LIBUSB_ERROR_IO), 1000U);
        EXPECT_EQ(limitOf(recovery), 1000U) << "an error of the bus is no answer";
        EXPECT_EQ(limitOf({}), 5000U);
    }
}

TEST_F(Hang, IsTheCamerasOwnAndOutlastsItsClose)
{
    limitOf(LIBUSB_ERROR_TIMEOUT);
    choose(1);
    EXPECT_EQ(limitOf(LIBUSB_ERROR_TIMEOUT), 5000U);
    choose(0);
    EXPECT_EQ(limitOf({}), 1000U);
    EXPECT_EQ(limitOf({}), 5000U);
    choose(1);
    EXPECT_EQ(limitOf({}), 1000U);
}

TEST_F(Hang, EndsWithTheCameraThatIsUnplugged)
{
    limitOf(LIBUSB_ERROR_TIMEOUT);
    device->CloseDevice();
    camera().unplug();
    camera().replug(camera().address() + 10);
    device = makeDevice();
    for (const int index : { 0, 1 }) {
        ASSERT_TRUE(device->OpenDevice("", index));
        EXPECT_EQ(limitOf({}), 5000U);
        device->CloseDevice();
    }
}

TEST_F(Hang, TakesTheReadsOfAStart36SecondsAtTheMost)
{
    answer = LIBUSB_ERROR_TIMEOUT;
    device->GetPropertyValues();
    ASSERT_EQ(limits.size(), 32U);
    EXPECT_EQ(limits[0], 5000U);
    limits.erase(limits.begin());
    EXPECT_THAT(limits, Each(1000U));
    device->CloseDevice();
    EXPECT_FALSE(device->OpenDevice("0", 0)) << "the second open of the start is not tried";
}

TEST_F(Hang, LeavesLimitsThatAreSetAsTheyAre)
{
    libusb_context *context = nullptr;
    libusb_init(&context);
    libusb_device_handle *const handle = libusb_open_device_with_vid_pid(context, 0xf055, 0x8888);
    ASSERT_NE(handle, nullptr);
    answer = LIBUSB_ERROR_TIMEOUT;
    limits.clear();
    unsigned char data = 0;
    EXPECT_EQ(libusb_control_transfer(handle, 0xa1, 0x86, 0x0f00, 0x0100, &data, 1, 250),
        LIBUSB_ERROR_TIMEOUT);
    EXPECT_THAT(limits, ElementsAre(250U));
    EXPECT_EQ(limitOf({}), 5000U) << "such a request says nothing about libuvc's";
    libusb_close(handle);
    libusb_exit(context);
}

} // namespace
