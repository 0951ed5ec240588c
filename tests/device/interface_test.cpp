// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

// What stands behind the interface's binary layout: its slots, its records, its tables.

#include "device/property_ranges.h"
#include "device/usb_device.h"
#include "tests/device/camera_fixture.h"
#include "tests/device/operations.h"

#include <cstddef>
#include <cstring>

namespace {

using testing::Each;

static_assert(std::is_abstract_v<BaseDevice>);
static_assert(!std::has_virtual_destructor_v<BaseDevice>);
static_assert(!std::has_virtual_destructor_v<USBDevice>);
static_assert(std::is_base_of_v<BaseDevice, USBDevice>);
static_assert(std::is_convertible_v<USBDevice *, BaseDevice *>, "publicly derived");
static_assert(std::is_default_constructible_v<USBDevice>);
static_assert(!std::is_copy_constructible_v<USBDevice> && !std::is_copy_assignable_v<USBDevice>);
static_assert(!std::is_move_constructible_v<USBDevice> && !std::is_move_assignable_v<USBDevice>);

static_assert(USB == 0 && std::is_same_v<decltype(USB), DeviceType>);
static_assert(USBDevice::PRODUCT_ID_FILTER == 0x8888);

static_assert(std::is_same_v<decltype(DeviceInfo::index), std::int32_t>);
static_assert(std::is_same_v<decltype(DeviceInfo::name), std::string>);
static_assert(std::is_same_v<decltype(DeviceInfo::reserved), std::string>);

static_assert(PropertyWhiteBalance == 0 && PropertyBrightness == 8 && PropertySaturation == 9
    && PropertySharpness == 10 && PropertyFlicker == 12 && PropertyBacklight == 23
    && PropertyGamma == 24 && PropertyContrast == 25);

// The results as they are declared; a no-op of "result 0" is false.
static_assert(
    std::is_same_v<decltype(&BaseDevice::OpenDevice), bool (BaseDevice::*)(const char *, int)>);
static_assert(
    std::is_same_v<decltype(&BaseDevice::EnumUSBDevices), bool (*)(std::vector<DeviceInfo> &)>);
static_assert(
    std::is_same_v<decltype(&USBDevice::EnumDevices), bool (*)(std::vector<DeviceInfo> &)>);
static_assert(std::is_same_v<decltype(&BaseDevice::CreateDevice), BaseDevice *(*)(DeviceType)>);
static_assert(std::is_same_v<decltype(&BaseDevice::DeleteDevice), void (*)(BaseDevice *)>);

// What GCC and Clang store of a pointer to a virtual member function everywhere but on Windows: the
// offset of its slot, on most processors with the lowest bit set as a mark.
int slotOf(const Member &member)
{
    return std::visit(
        [](auto pointer) {
            std::ptrdiff_t offset = 0;
            std::memcpy(&offset, &pointer, sizeof offset);
            return static_cast<int>(offset / static_cast<std::ptrdiff_t>(sizeof(void *)));
        },
        member);
}

TEST(Interface, ItsOperationsTakeTheSlots0To83)
{
    ASSERT_EQ(operations().size(), 84U);
    for (int slot = 0; slot < 84; ++slot) {
        const Operation &operation = operations()[static_cast<std::size_t>(slot)];
        EXPECT_EQ(slotOf(operation.member), slot) << operation;
    }
}

TEST(Interface, ADevicePointerIsAnInterfacePointer)
{
    const BaseDevice *const device = makeDevice();
    EXPECT_EQ(dynamic_cast<const void *>(device), static_cast<const void *>(device))
        << "the interface is the object's first and only base";
}

TEST(Records, ADeviceInfoIsIndexNameReserved)
{
    const DeviceInfo info{ 3, "name", "reserved" };
    EXPECT_EQ(info.index, 3);
    EXPECT_EQ(info.name, "name");
    EXPECT_EQ(info.reserved, "reserved");
    EXPECT_EQ(DeviceInfo{}.reserved, "");
}

TEST(Records, APropertyRecordIsSixSigned64BitNumbersInOrder)
{
    ASSERT_EQ(sizeof(PropertyRecord), 6 * sizeof(std::int64_t));
    const PropertyRecord record{ 1, -2, 3, -4, 5, -6 };
    std::int64_t numbers[6];
    std::memcpy(numbers, &record, sizeof numbers);
    EXPECT_THAT(numbers, testing::ElementsAre(1, -2, 3, -4, 5, -6));
    EXPECT_EQ(record.min, 1);
    EXPECT_EQ(record.max, -2);
    EXPECT_EQ(record.step, 3);
    EXPECT_EQ(record.def, -4);
    EXPECT_EQ(record.cur, 5);
    EXPECT_EQ(record.flags, -6);
}

TEST(Interface, ANewDeviceHas26RecordsOfZeros)
{
    const BaseDevice *const device = makeDevice();
    EXPECT_EQ(device->props.size(), 26U);
    for (const PropertyRecord &record : device->props) {
        const std::int64_t numbers[] = { record.min, record.max, record.step, record.def,
            record.cur, record.flags };
        EXPECT_THAT(numbers, Each(0));
    }
}

// Filled before main() changes anything: what the program starts with.
const int rangesAtStart[] = { cur_brightness, min_brightness, max_brightness, default_brightness,
    step_brightness, cur_contrast, min_contrast, max_contrast, default_contrast, step_contrast,
    cur_saturation, min_saturation, max_saturation, default_saturation, step_saturation,
    cur_sharpness, min_sharpness, max_sharpness, default_sharpness, step_sharpness, cur_gamma,
    min_gamma, max_gamma, default_gamma, step_gamma, cur_wb, min_wb, max_wb, default_wb, step_wb,
    cur_blc, min_blc, max_blc, default_blc, step_blc, cur_fliker, min_fliker, max_fliker,
    default_fliker };

TEST(PropertyRanges, AreZeroAtStart)
{
    EXPECT_EQ(std::size(rangesAtStart), 39U);
    EXPECT_THAT(rangesAtStart, Each(0));
    static_assert(std::is_same_v<decltype(cur_brightness), std::int32_t>);
    static_assert(std::is_same_v<decltype(default_fliker), std::int32_t>);
}

} // namespace
