// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

// The calls into libuvc themselves: contexts and lists, failures before the bus, and that no call
// is made on what is not open.

#include "tests/device/camera_fixture.h"
#include "tests/support/uvc_call_recorder.h"

#include <climits>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using uvc_call_recorder::failOnDemand;
using virtual_camera::DeviceDescription;

// The calls since the last time.
std::vector<std::string> calls()
{
    std::vector<std::string> lines = uvc_call_recorder::calls();
    uvc_call_recorder::clear();
    return lines;
}

class Calls : public PluggedIn
{
protected:
    Calls() : PluggedIn(std::vector<DeviceDescription>(2)) { }
    void SetUp() override { uvc_call_recorder::clear(); }
    void TearDown() override
    {
        failOnDemand("");
        PluggedIn::TearDown();
    }
};

// ---- construction ----

TEST_F(Calls, ConstructionStartsLibuvcAndTakesTheList)
{
    makeDevice();
    EXPECT_THAT(
        calls(), ElementsAre("uvc_init(context1) = 0", "uvc_get_device_list(context1, list1) = 0"));
    EXPECT_EQ(wire::opens(log()), 0) << "no camera is opened for it";
}

TEST_F(Calls, ADeviceWithoutAContextRefusesToOpen)
{
    failOnDemand("uvc_init=-99");
    BaseDevice *const lame = makeDevice();
    failOnDemand("");
    EXPECT_THAT(calls(), ElementsAre("uvc_init() = -99")) << "no list is asked of no context";
    EXPECT_FALSE(lame->OpenDevice("", 0));
    lame->CloseDevice();
    EXPECT_THAT(calls(), IsEmpty());
}

TEST_F(Calls, ADeviceWithoutAListRefusesToOpen)
{
    failOnDemand("uvc_get_device_list=-1");
    BaseDevice *const lame = makeDevice();
    failOnDemand("");
    EXPECT_THAT(
        calls(), ElementsAre("uvc_init(context1) = 0", "uvc_get_device_list(context1) = -1"));
    for (const int index : { 0, 1, -1 })
        EXPECT_FALSE(lame->OpenDevice("", index));
    lame->CloseDevice();
    EXPECT_THAT(calls(), IsEmpty());
}

TEST_F(Calls, APositiveStatusIsASuccess)
{
    failOnDemand("*=1");
    BaseDevice *const made = makeDevice();
    std::vector<DeviceInfo> list;
    EXPECT_TRUE(BaseDevice::EnumUSBDevices(list));
    EXPECT_EQ(list.size(), 2U);
    EXPECT_TRUE(made->OpenDevice("", 1));
    made->CloseDevice();
}

// ---- enumeration ----

struct Enumerated
{
    bool result;
    std::string output;
    std::size_t size;
};
Enumerated enumerate()
{
    std::vector<DeviceInfo> list(3);
    testing::internal::CaptureStdout();
    const bool result = BaseDevice::EnumUSBDevices(list);
    return { result, testing::internal::GetCapturedStdout(), list.size() };
}

TEST_F(Calls, EnumerationEndsItsOwnContextAndUsesNoOther)
{
    ASSERT_TRUE(enumerate().result);
    EXPECT_THAT(calls(),
        ElementsAre("uvc_init(context1) = 0", "uvc_get_device_list(context1, list1) = 0",
            "uvc_get_device_descriptor(list1[0], descriptor1) = 0",
            "uvc_free_device_descriptor(descriptor1)",
            "uvc_get_device_descriptor(list1[1], descriptor2) = 0",
            "uvc_free_device_descriptor(descriptor2)", "uvc_free_device_list(list1, 1)",
            "uvc_exit(context1)"));
}

TEST_F(Calls, EnumerationOfNothingEndsItsContext)
{
    camera(1).unplug();
    camera(2).unplug();
    const Enumerated found = enumerate();
    EXPECT_TRUE(found.result);
    EXPECT_EQ(found.size, 0U);
    EXPECT_EQ(found.output, "one: init success\none: get list success\n");
    EXPECT_THAT(calls(),
        ElementsAre("uvc_init(context1) = 0", "uvc_get_device_list(context1, list1) = 0",
            "uvc_free_device_list(list1, 1)", "uvc_exit(context1)"));
}

TEST_F(Calls, EnumerationFailsSilentlyWithoutAContext)
{
    failOnDemand("uvc_init=-99");
    const Enumerated found = enumerate();
    EXPECT_FALSE(found.result);
    EXPECT_EQ(found.size, 0U);
    EXPECT_EQ(found.output, "");
    EXPECT_THAT(calls(), ElementsAre("uvc_init() = -99"));
}

TEST_F(Calls, EnumerationKeepsItsContextWhenTheListFails)
{
    failOnDemand("uvc_get_device_list=-1");
    const Enumerated found = enumerate();
    EXPECT_FALSE(found.result);
    EXPECT_EQ(found.size, 0U);
    EXPECT_EQ(found.output, "one: init success\n");
    EXPECT_THAT(
        calls(), ElementsAre("uvc_init(context1) = 0", "uvc_get_device_list(context1) = -1"));
}

TEST_F(Calls, ADeviceWithoutADescriptorIsPassedOver)
{
    failOnDemand("uvc_get_device_descriptor#1=-1");
    const Enumerated found = enumerate();
    EXPECT_TRUE(found.result);
    EXPECT_EQ(found.size, 1U);
}

// ---- open and close ----

TEST_F(Calls, OpeningIsOneCallAndClosingAnother)
{
    ASSERT_TRUE(device->OpenDevice("1", 1));
    EXPECT_TRUE(device->StopZoom());
    device->CloseDevice();
    EXPECT_THAT(calls(),
        ElementsAre("uvc_open(list1[1], handle1) = 0", "uvc_set_zoom_rel(handle1, 0, 1, 5) = 0",
            "uvc_close(handle1)"));
}

TEST_F(Calls, AnOpenCameraIsNotClosedByTheNextOpen)
{
    ASSERT_TRUE(device->OpenDevice("0", 0));
    ASSERT_TRUE(device->OpenDevice("1", 1));
    device->StopZoom();
    device->CloseDevice();
    EXPECT_THAT(calls(),
        ElementsAre("uvc_open(list1[0], handle1) = 0", "uvc_open(list1[1], handle2) = 0",
            "uvc_set_zoom_rel(handle2, 0, 1, 5) = 0", "uvc_close(handle2)"));
}

TEST_F(Calls, AnIndexOutsideTheListIsNotOpened)
{
    for (const int index : { 2, 3, 1000, INT_MAX, -1, -2, INT_MIN })
        EXPECT_FALSE(device->OpenDevice("", index)) << index;
    device->CloseDevice();
    EXPECT_THAT(calls(), IsEmpty());
}

TEST_F(Calls, ASecondCloseIsNotHandedOn)
{
    ASSERT_TRUE(device->OpenDevice("0", 0));
    device->CloseDevice();
    device->CloseDevice();
    EXPECT_THAT(calls(), ElementsAre("uvc_open(list1[0], handle1) = 0", "uvc_close(handle1)"));
}

} // namespace
