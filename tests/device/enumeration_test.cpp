// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

// The list of accepted cameras and what is written to standard output on the way.

#include "device/usb_device.h"
#include "tests/device/camera_fixture.h"

#include <cerrno>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using virtual_camera::CameraDescription;
using virtual_camera::DeviceDescription;
using virtual_camera::Testbed;

using Devices = std::vector<DeviceDescription>;

// What one enumeration answers and writes.
struct Enumeration
{
    bool result = false;
    std::string output;
    std::vector<DeviceInfo> list;

    explicit Enumeration(bool (*enumerate)(std::vector<DeviceInfo> &) = BaseDevice::EnumUSBDevices)
        : list{ { 7, "left over", "from before" } }
    {
        testing::internal::CaptureStdout();
        result = enumerate(list);
        output = testing::internal::GetCapturedStdout();
    }
    std::vector<std::string> names() const
    {
        std::vector<std::string> all;
        for (const DeviceInfo &info : list)
            all.push_back(info.name);
        return all;
    }
};

constexpr char bothLines[] = "one: init success\none: get list success\n";

DeviceDescription named(const std::string &product)
{
    CameraDescription description;
    description.product = product;
    return DeviceDescription::ptzCamera(description);
}

DeviceDescription withIds(std::uint16_t vendor, std::uint16_t product)
{
    CameraDescription description;
    description.vendorId = vendor;
    description.productId = product;
    return DeviceDescription::ptzCamera(description);
}

void expectNumberedFromZero(const std::vector<DeviceInfo> &list)
{
    for (std::size_t i = 0; i < list.size(); ++i) {
        EXPECT_EQ(list[i].index, static_cast<std::int32_t>(i));
        EXPECT_EQ(list[i].reserved, "");
    }
}

struct Row
{
    const char *name;
    Devices devices;
    std::vector<std::string> listed;
};

class ListOf : public testing::TestWithParam<Row>
{ };

TEST_P(ListOf, HoldsTheAcceptedCamerasInOrder)
{
    const Testbed testbed(GetParam().devices);
    for (const auto enumerate : { BaseDevice::EnumUSBDevices, USBDevice::EnumDevices }) {
        const Enumeration found(enumerate);
        EXPECT_TRUE(found.result);
        EXPECT_EQ(found.output, bothLines);
        EXPECT_THAT(found.names(), testing::ElementsAreArray(GetParam().listed));
        expectNumberedFromZero(found.list);
    }
}

const DeviceDescription other = DeviceDescription::otherCamera();
const DeviceDescription stick = DeviceDescription::storage();

INSTANTIATE_TEST_SUITE_P(Devices, ListOf,
    testing::Values(Row{ "NothingAtAll", {}, {} }, Row{ "NoCamera", { stick, stick }, {} },
        Row{ "AnotherMake", { other }, {} }, Row{ "OneCamera", { named("A") }, { "A" } },
        Row{ "FiveCameras", { named("A"), named("B"), named("C"), named("D"), named("E") },
            { "A", "B", "C", "D", "E" } },
        Row{ "OtherBefore", { other, named("A"), named("B") }, { "A", "B" } },
        Row{ "OtherBetween", { named("A"), other, stick, other, named("B") }, { "A", "B" } },
        Row{ "OtherAfter", { named("A"), named("B"), other }, { "A", "B" } },
        Row{ "OtherEverywhere", { stick, other, named("A"), other, named("B"), other },
            { "A", "B" } },
        Row{ "AlikeCameras", { named("A"), named("A") }, { "A", "A" } }),
    [](const auto &row) { return row.param.name; });

struct IdRow
{
    const char *name;
    std::uint16_t vendor;
    std::uint16_t product;
    bool accepted;
};

class Ids : public testing::TestWithParam<IdRow>
{ };

TEST_P(Ids, DecideByTheProductAlone)
{
    const Testbed testbed(Devices{ withIds(GetParam().vendor, GetParam().product) });
    EXPECT_THAT(Enumeration().list, testing::SizeIs(GetParam().accepted ? 1 : 0));
}

INSTANTIATE_TEST_SUITE_P(OfADevice, Ids,
    testing::Values(IdRow{ "Accepted", 0xf055, 0x8888, true },
        IdRow{ "AnotherVendor", 0x0001, 0x8888, true },
        IdRow{ "VendorLikeTheProduct", 0x8888, 0x8887, false },
        IdRow{ "OneMore", 0xf055, 0x8889, false }, IdRow{ "LowByteOnly", 0xf055, 0x0088, false },
        IdRow{ "SignedTwin", 0xf055, 0x7777, false }),
    [](const auto &row) { return row.param.name; });

TEST(Names, AreWhatLibuvcReadsOfTheProductString)
{
    const std::string longName(100, 'x');
    const Testbed testbed(Devices{ named("Hall 2, left"), named(""), named("K\xc3\xa4mera"),
        named(longName), named("\xe6\x91\x84\xe5\x83\x8f") });
    EXPECT_THAT(Enumeration().names(),
        ElementsAre("Hall 2, left", "", // none is an empty name
            "K?mera",                   // one mark for each character outside ASCII
            std::string(63, 'x'),       // longer ones are cut
            "??"));
}

TEST(Names, AreEmptyOfCamerasThatMayNotBeOpened)
{
    for (const int error : { EACCES, EBUSY }) {
        Testbed testbed(Devices{ named("A"), named("B") });
        testbed.device(1).refuseOpen(error);
        const Enumeration found;
        EXPECT_TRUE(found.result);
        EXPECT_THAT(found.names(), ElementsAre("", "B"));
        expectNumberedFromZero(found.list);
    }
}

TEST(List, IsOfNowEachTime)
{
    Testbed testbed(Devices{ named("A"), named("B"), named("C") });
    EXPECT_THAT(Enumeration().names(), ElementsAre("A", "B", "C"));
    testbed.device(2).unplug();
    const Enumeration fewer;
    EXPECT_THAT(fewer.names(), ElementsAre("A", "C"));
    expectNumberedFromZero(fewer.list);
    testbed.device(2).replug();
    EXPECT_THAT(Enumeration().names(), ElementsAre("A", "B", "C"));
    for (const int number : { 1, 2, 3 })
        testbed.device(number).unplug();
    EXPECT_THAT(Enumeration().names(), IsEmpty());
}

class WhileACameraIsOpen : public OpenCamera
{ };

TEST_F(WhileACameraIsOpen, ItIsListedAndStaysOpen)
{
    device->StartMoveLeft(5);
    log().clear();
    EXPECT_THAT(Enumeration().list, testing::SizeIs(1));
    EXPECT_THAT(received(), IsEmpty()) << "listing asks no control";
    EXPECT_TRUE(device->StopMoveLeft());
}

} // namespace
