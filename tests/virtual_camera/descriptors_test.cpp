// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

// What devices say of themselves.

#include "virtual_camera/usb/descriptors.h"
#include "virtual_camera/usb/device_description.h"
#include "virtual_camera/usb/firmware.h"

#include <algorithm>
#include <gmock/gmock.h>

using namespace virtual_camera;
using testing::ElementsAre;

namespace {

ControlRequest askFor(std::uint16_t value, std::uint16_t length)
{
    ControlRequest request;
    request.requestType = 0x80;
    request.request = 6;
    request.value = value;
    request.length = length;
    return request;
}

TEST(StringDescriptor, HoldsTextInSixteenBits)
{
    EXPECT_THAT(stringDescriptor("A"), ElementsAre(4, 3, 'A', 0));
    EXPECT_THAT(stringDescriptor("\xc3\xa4"), ElementsAre(4, 3, 0xe4, 0));
    EXPECT_THAT(stringDescriptor("\xe6\x91\x84"), ElementsAre(4, 3, 0x44, 0x64));
    EXPECT_THAT(stringDescriptor("\xf0\x9f\x8e\xa5"), ElementsAre(6, 3, 0x3c, 0xd8, 0xa5, 0xdf));
}

TEST(StringDescriptor, ReplacesWhatIsNoUtf8)
{
    for (const char *bad : { "\xff", "\x80", "\xc3", "\xe6\x91", "\xc0\x80", "\xed\xa0\x80" }) {
        const Bytes bytes = stringDescriptor(bad);
        ASSERT_GE(bytes.size(), 4U);
        EXPECT_EQ(bytes[2], 0xfd);
        EXPECT_EQ(bytes[3], 0xff);
    }
    EXPECT_THAT(stringDescriptor("\xc3("
                                 "B"),
        ElementsAre(8, 3, 0xfd, 0xff, '(', 0, 'B', 0));
}

TEST(StringDescriptor, IsCutWhereUsbEnds)
{
    EXPECT_EQ(stringDescriptor(std::string(126, 'x')).size(), 254U);
    EXPECT_EQ(stringDescriptor(std::string(5000, 'x')).size(), 254U);
    // No half of a character is left at the end.
    EXPECT_EQ(stringDescriptor(std::string(125, 'x') + "\xf0\x9f\x8e\xa5").size(), 252U);
}

TEST(Descriptors, NameTheCamera)
{
    const Descriptors camera = describeCamera({});
    ASSERT_EQ(camera.device.size(), 18U);
    EXPECT_EQ(camera.device[10] | camera.device[11] << 8, 0x8888);
    EXPECT_EQ(camera.device[15], 2);
    CameraDescription nameless;
    nameless.product.clear();
    EXPECT_EQ(describeCamera(nameless).device[15], 0);
}

TEST(Descriptors, AnnounceTheirOwnLength)
{
    for (const Descriptors &device : { describeCamera({}), describeStorage() }) {
        const Bytes &all = device.configuration;
        EXPECT_EQ(static_cast<std::size_t>(all[2] | all[3] << 8), all.size());
        std::size_t at = 0;
        while (at < all.size() && all[at] >= 2)
            at += all[at];
        EXPECT_EQ(at, all.size());
    }
}

TEST(Descriptors, AnnounceOnlyTheControlsThatTheCameraHas)
{
    CameraDescription description;
    const Bytes complete = describeCamera(description).configuration;
    description.supported[indexOf(Control::Brightness)] = false;
    const Bytes poorer = describeCamera(description).configuration;
    ASSERT_EQ(complete.size(), poorer.size());
    int changed = 0;
    for (std::size_t i = 0; i < complete.size(); ++i) {
        if (complete[i] != poorer[i]) {
            ++changed;
            EXPECT_EQ(complete[i] & ~poorer[i], 0x01);
        }
    }
    EXPECT_EQ(changed, 1);
}

TEST(Descriptors, LeaveOutTheUnitsThatTheCameraLacks)
{
    const auto lacking = [](const char *unit) {
        CameraDescription description;
        applyOption(description, "without", unit);
        return describeCamera(description).configuration;
    };
    constexpr std::uint8_t classInterface = 0x24;
    const auto contains = [](const Bytes &all, const Bytes &part) {
        return std::search(all.begin(), all.end(), part.begin(), part.end()) != all.end();
    };
    const Bytes terminal{ 18, classInterface, 2, cameraTerminal };
    const Bytes connector{ 8, classInterface, 2, cameraTerminal, 0x01, 0x04 };
    const Bytes processing{ 12, classInterface, 5, processingUnit };

    const Bytes stick = lacking("camera_terminal");
    EXPECT_FALSE(contains(stick, terminal));
    EXPECT_TRUE(contains(stick, connector));
    EXPECT_TRUE(contains(stick, processing));

    const Bytes simple = lacking("processing_unit");
    EXPECT_TRUE(contains(simple, terminal));
    EXPECT_FALSE(contains(simple, processing));
    // What leaves through the output terminal comes straight from the camera.
    EXPECT_TRUE(contains(
        simple, { 9, classInterface, 3, outputTerminal, 0x01, 0x01, 0, cameraTerminal, 0 }));
}

TEST(Firmware, TellsItsDescriptorsAsFarAsIsAskedFor)
{
    Firmware device(describeCamera({}));
    EXPECT_EQ(device.answer(askFor(0x0100, 8)).data.size(), 8U);
    EXPECT_EQ(device.answer(askFor(0x0100, 255)).data.size(), 18U);
    EXPECT_EQ(device.answer(askFor(0x0200, 4096)).data, device.descriptors().configuration);
    EXPECT_TRUE(device.answer(askFor(0x0201, 4096)).stalled);
    EXPECT_EQ(device.answer(askFor(0x0302, 255)).data, stringDescriptor("Virtual PTZ Camera"));
    EXPECT_TRUE(device.answer(askFor(0x0304, 255)).stalled);
    EXPECT_TRUE(device.answer(askFor(0x0f00, 255)).stalled);
}

TEST(Firmware, RefusesVideoRequestsWhenItIsNoCamera)
{
    Firmware device(describeStorage());
    ControlRequest request;
    request.requestType = 0xa1;
    request.request = 0x81;
    request.length = 2;
    EXPECT_TRUE(device.answer(request).stalled);
}

} // namespace
