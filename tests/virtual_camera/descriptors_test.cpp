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

// The configuration of a camera with these options.
Bytes configurationWith(std::initializer_list<std::pair<const char *, const char *>> options)
{
    CameraDescription description;
    for (const auto &[key, value] : options)
        EXPECT_EQ(applyOption(description, key, value), std::nullopt);
    return describeCamera(description).configuration;
}

bool contains(const Bytes &all, const Bytes &part)
{
    return std::search(all.begin(), all.end(), part.begin(), part.end()) != all.end();
}

constexpr std::uint8_t classInterface = 0x24;

// What leaves through the output terminal comes from here.
Bytes outputOf(std::uint8_t source)
{
    return { 9, classInterface, 3, outputTerminal, 0x01, 0x01, 0, source, 0 };
}

TEST(Descriptors, LeaveOutTheUnitsThatTheCameraLacks)
{
    const Bytes terminal{ 18, classInterface, 2, cameraTerminal };
    const Bytes connector{ 8, classInterface, 2, cameraTerminal, 0x01, 0x04 };
    const Bytes processing{ 12, classInterface, 5, processingUnit };

    const Bytes stick = configurationWith({ { "without", "camera_terminal" } });
    EXPECT_FALSE(contains(stick, terminal));
    EXPECT_TRUE(contains(stick, connector));
    EXPECT_TRUE(contains(stick, processing));

    const Bytes simple = configurationWith({ { "without", "processing_unit" } });
    EXPECT_TRUE(contains(simple, terminal));
    EXPECT_FALSE(contains(simple, processing));
    EXPECT_TRUE(contains(simple, outputOf(cameraTerminal)));
}

TEST(Descriptors, PutTheExtensionUnitBehindTheOthers)
{
    const Bytes plain = configurationWith({});
    EXPECT_TRUE(contains(plain, outputOf(processingUnit)));
    EXPECT_FALSE(contains(plain, { classInterface, 6, extensionUnit }));

    const Bytes extended = configurationWith({ { "with", "extension_unit" } });
    EXPECT_TRUE(contains(extended, { 26, classInterface, 6, extensionUnit }));
    // One control, one source, one byte of controls of which the first is there.
    EXPECT_TRUE(contains(extended, { 1, 1, processingUnit, 1, 0x01, 0 }));
    EXPECT_TRUE(contains(extended, outputOf(extensionUnit)));

    const Bytes alone =
        configurationWith({ { "with", "extension_unit" }, { "without", "processing_unit" } });
    EXPECT_TRUE(contains(alone, { 1, 1, cameraTerminal, 1, 0x01, 0 }));
}

TEST(Descriptors, AnnounceTheLens)
{
    CameraDescription description;
    description.lens.shortestFocalLength = 0x0102 / 100.0;
    description.lens.longestFocalLength = 0x0304 / 100.0;
    // The widest view magnifies once.
    EXPECT_TRUE(contains(describeCamera(description).configuration,
        { 18, classInterface, 2, cameraTerminal, 0x01, 0x02, 0, 0, 0x02, 0x01, 0x04, 0x03, 0x02,
            0x01, 3 }));
}

struct ReleaseRow
{
    const char *name;
    const char *option;
    std::uint8_t high; // of bcdUVC
    std::uint8_t low;
    std::uint8_t protocol;        // of both interfaces
    std::uint8_t processingBytes; // of the processing unit's descriptor
    std::uint8_t controlBytes;    // for its controls
};

class Release : public testing::TestWithParam<ReleaseRow>
{ };

TEST_P(Release, LaysTheDescriptorsOut)
{
    const ReleaseRow &row = GetParam();
    const Bytes all = configurationWith({ { "uvc", row.option } });
    EXPECT_TRUE(contains(all, { 13, classInterface, 1, row.low, row.high }));
    EXPECT_TRUE(contains(all, { 9, 4, 0, 0, 1, 0x0e, 1, row.protocol }));
    EXPECT_TRUE(contains(all, { 9, 4, 1, 0, 0, 0x0e, 2, row.protocol }));
    EXPECT_TRUE(contains(all,
        { row.processingBytes, classInterface, 5, processingUnit, cameraTerminal, 0, 0,
            row.controlBytes, 0x7b, 0x17 }));
}

INSTANTIATE_TEST_SUITE_P(OfTheVideoClass, Release,
    testing::Values(ReleaseRow{ "Uvc10", "1.0", 1, 0x00, 0, 11, 2 },
        ReleaseRow{ "Uvc11", "1.1", 1, 0x10, 0, 12, 2 },
        ReleaseRow{ "Uvc15", "1.5", 1, 0x50, 1, 13, 3 }),
    [](const auto &row) { return row.param.name; });

TEST(Descriptors, HaveThePictureEndpointInTheSecondSettingOnly)
{
    const InterfaceLayout layout = readLayout(configurationWith({}));
    ASSERT_NE(layout.find(streamingInterface, 0), nullptr);
    ASSERT_NE(layout.find(streamingInterface, 1), nullptr);
    EXPECT_TRUE(layout.find(streamingInterface, 0)->endpoints.empty());
    EXPECT_THAT(layout.find(streamingInterface, 1)->endpoints, ElementsAre(pictureEndpoint));
    EXPECT_EQ(layout.find(streamingInterface, 2), nullptr);
    // Isochronous and asynchronous, 1024 bytes in each microframe.
    EXPECT_TRUE(contains(configurationWith({}), { 7, 5, pictureEndpoint, 0x05, 0x00, 0x04, 1 }));
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
