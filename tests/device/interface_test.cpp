// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

// What stands behind the interface's binary layout: its slots, its records, its tables.

#include "device/property_ranges.h"
#include "device/usb_device.h"
#include "tests/device/camera_fixture.h"
#include "tests/device/operations.h"

#include <dlfcn.h>
#include <elf.h>
#include <link.h>

#include <cstddef>
#include <cstring>
#include <set>

namespace {

using testing::Each;

static_assert(std::is_abstract_v<BaseDevice>);
static_assert(!std::has_virtual_destructor_v<BaseDevice>);
static_assert(!std::has_virtual_destructor_v<USBDevice>);
static_assert(std::is_base_of_v<BaseDevice, USBDevice>);
static_assert(std::is_convertible_v<USBDevice *, BaseDevice *>, "publicly derived");
static_assert(std::is_default_constructible_v<USBDevice>);

static_assert(static_cast<int>(DeviceType::USB) == 0);
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

class Interface : public PluggedIn
{
protected:
    Interface() : PluggedIn(std::vector<virtual_camera::DeviceDescription>{}) { }
};

TEST_F(Interface, ItsOperationsTakeTheSlots0To83)
{
    ASSERT_EQ(operations().size(), 84U);
    std::set<int> slots;
    for (const Operation &operation : operations()) {
        EXPECT_EQ(slotOf(operation.member), operation.slot) << operation.name;
        slots.insert(slotOf(operation.member));
    }
    EXPECT_EQ(slots.size(), 84U);
    EXPECT_EQ(*slots.begin(), 0) << "no destructor stands before the first operation";
    EXPECT_EQ(*slots.rbegin(), 83);
}

TEST_F(Interface, ItsTableHoldsNothingElse)
{
    // The program's own symbol table tells how large the virtual table is: the operations, and
    // before them the offset to the object's start and the type's description.
    Dl_info where{};
    void *extra = nullptr;
    void **table = nullptr;
    std::memcpy(&table, device, sizeof table);
    ASSERT_NE(dladdr1(table, &where, &extra, RTLD_DL_SYMENT), 0);
    ASSERT_STREQ(where.dli_sname, "_ZTV9USBDevice");
    EXPECT_EQ(static_cast<const ElfW(Sym) *>(extra)->st_size, (2 + 84) * sizeof(void *));
}

TEST_F(Interface, ADevicePointerIsAnInterfacePointer)
{
    EXPECT_EQ(dynamic_cast<void *>(device), static_cast<void *>(device))
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

TEST_F(Interface, ANewDeviceHas26RecordsOfZeros)
{
    EXPECT_EQ(device->props.size(), 26U);
    for (const PropertyRecord &record : device->props) {
        const std::int64_t numbers[] = { record.min, record.max, record.step, record.def,
            record.cur, record.flags };
        EXPECT_THAT(numbers, Each(0));
    }
}

// Filled before main() changes anything: what the program starts with.
const std::vector<int> rangesAtStart{
    cur_brightness,
    min_brightness,
    max_brightness,
    default_brightness,
    step_brightness,
    cur_contrast,
    min_contrast,
    max_contrast,
    default_contrast,
    step_contrast,
    cur_saturation,
    min_saturation,
    max_saturation,
    default_saturation,
    step_saturation,
    cur_sharpness,
    min_sharpness,
    max_sharpness,
    default_sharpness,
    step_sharpness,
    cur_gamma,
    min_gamma,
    max_gamma,
    default_gamma,
    step_gamma,
    cur_wb,
    min_wb,
    max_wb,
    default_wb,
    step_wb,
    cur_blc,
    min_blc,
    max_blc,
    default_blc,
    step_blc,
    cur_fliker,
    min_fliker,
    max_fliker,
    default_fliker,
};

TEST(PropertyRanges, AreZeroAtStart)
{
    EXPECT_EQ(rangesAtStart.size(), 39U);
    EXPECT_THAT(rangesAtStart, Each(0));
    static_assert(std::is_same_v<decltype(cur_brightness), std::int32_t>);
    static_assert(std::is_same_v<decltype(default_fliker), std::int32_t>);
}

} // namespace
