// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

// The recorder as a finished program gets it: preloaded, and told by variables what to do.

#include "device/base_device.h"
#include "virtual_camera/testbed/testbed.h"

#include <gmock/gmock.h>

#include <cstdio>
#include <cstdlib>
#include <fstream>

namespace {

using testing::ElementsAre;

std::vector<std::string> linesOf(const char *path)
{
    std::ifstream file(path);
    std::vector<std::string> lines;
    for (std::string line; std::getline(file, line);)
        lines.push_back(line);
    return lines;
}

TEST(PreloadedRecorder, WritesEachCallAtOnceAndLetsFailWhatItIsTold)
{
    const char *const path = std::getenv("UVC_CALLS_FILE");
    ASSERT_NE(path, nullptr);
    std::remove(path);
    ASSERT_STREQ(std::getenv("UVC_CALLS_FAIL"), "uvc_init#3=-99,uvc_set_roll_abs=-4");

    const virtual_camera::Testbed testbed(1);
    static BaseDevice *const device = BaseDevice::CreateDevice(USB);
    static BaseDevice *const second = BaseDevice::CreateDevice(USB);
    EXPECT_NE(second, nullptr);
    std::vector<DeviceInfo> list;
    EXPECT_FALSE(BaseDevice::EnumUSBDevices(list));
    EXPECT_TRUE(device->OpenDevice("0", 0));
    EXPECT_TRUE(device->StartMoveLeft(21));
    EXPECT_FALSE(device->OpenMute());
    EXPECT_FALSE(device->CloseMute());
    long contrast = 0;
    EXPECT_TRUE(device->GetContrast(&contrast));
    EXPECT_EQ(contrast, 128);
    device->CloseDevice();
    EXPECT_TRUE(BaseDevice::EnumUSBDevices(list));

    EXPECT_THAT(linesOf(path),
        ElementsAre("uvc_init(context1) = 0", "uvc_get_device_list(context1, list1) = 0",
            "uvc_init(context2) = 0", "uvc_get_device_list(context2, list2) = 0",
            "uvc_init() = -99", "uvc_open(list1[0], handle1) = 0",
            "uvc_set_pantilt_rel(handle1, -1, 21, 0, 0) = 0", "uvc_set_roll_abs(handle1, 5) = -4",
            "uvc_set_roll_abs(handle1, 4) = -4", "uvc_get_contrast(handle1, GET_CUR) = 0",
            "uvc_close(handle1)", "uvc_init(context3) = 0",
            "uvc_get_device_list(context3, list3) = 0",
            "uvc_get_device_descriptor(list3[0], descriptor1) = 0",
            "uvc_free_device_descriptor(descriptor1)", "uvc_free_device_list(list3, 1)",
            "uvc_exit(context3)"));
}

} // namespace
