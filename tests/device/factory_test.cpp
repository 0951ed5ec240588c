// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

// Making and deleting devices. This program counts its allocations.

#include "tests/device/camera_fixture.h"
#include "tests/support/uvc_call_recorder.h"

#include <climits>
#include <cstdlib>
#include <new>

namespace {

long allocations = 0;
long releases = 0;

void release(void *memory) noexcept
{
    releases += memory ? 1 : 0;
    std::free(memory);
}

} // namespace

void *operator new(std::size_t size)
{
    ++allocations;
    if (void *const memory = std::malloc(size))
        return memory;
    throw std::bad_alloc();
}
// Sanitizers have one of their own, whose memory this program's delete may not free.
void *operator new(std::size_t size, const std::nothrow_t & /*tag*/) noexcept
{
    ++allocations;
    return std::malloc(size);
}
void operator delete(void *memory) noexcept { release(memory); }
void operator delete(void *memory, std::size_t /*size*/) noexcept { release(memory); }

namespace {

using testing::IsEmpty;
using virtual_camera::DeviceDescription;

class Factory : public PluggedIn
{
protected:
    Factory() : PluggedIn(std::vector<DeviceDescription>(2)) { }
    void SetUp() override { uvc_call_recorder::clear(); }
};

TEST_F(Factory, MakesNothingOfAnyOtherType)
{
    for (const int type : { 1, 2, 3, -1, 255, 256, 0x10000, INT_MAX, INT_MIN }) {
        const long before = allocations;
        BaseDevice *const made = BaseDevice::CreateDevice(static_cast<DeviceType>(type));
        const long after = allocations;
        EXPECT_EQ(made, nullptr) << type;
        EXPECT_EQ(after, before) << type;
    }
    EXPECT_THAT(uvc_call_recorder::calls(), IsEmpty());
}

TEST_F(Factory, MakesADeviceOfItsOwnEachTime)
{
    BaseDevice *const first = makeDevice();
    BaseDevice *const second = makeDevice();
    ASSERT_NE(first, nullptr);
    ASSERT_NE(second, nullptr);
    EXPECT_NE(first, second);
    const auto calls = uvc_call_recorder::calls();
    ASSERT_EQ(calls.size(), 4U);
    EXPECT_NE(calls[0], calls[2]) << "a context of its own";
    EXPECT_NE(calls[1], calls[3]) << "a list of its own";

    ASSERT_TRUE(first->OpenDevice("", 0));
    EXPECT_FALSE(second->StopZoom()) << "what one has open, the other has not";
    ASSERT_TRUE(second->OpenDevice("", 1));
    log().clear();
    first->OpenMute();
    second->OpenFlip();
    EXPECT_THAT(log().requests(1), testing::SizeIs(1));
    EXPECT_THAT(log().requests(2), testing::SizeIs(1));
    first->GetPropertyValues();
    EXPECT_EQ(second->props[PropertyContrast].flags, 0);

    camera(1).stallEverything();
    long out = 0;
    EXPECT_FALSE(first->GetBrightness(&out));
    first->CloseDevice();
    EXPECT_TRUE(second->StopZoom());
    second->CloseDevice();
    EXPECT_FALSE(first->OpenDevice("", 0));
    EXPECT_TRUE(second->OpenDevice("", 0)) << "one's failed read does not bind the other";
    second->CloseDevice();
}

// libuvc may give one device the address of the handle that another has closed.
TEST_F(Factory, KeepsTheHandlesOfItsDevicesApart)
{
    BaseDevice *const first = makeDevice();
    BaseDevice *const second = makeDevice();
    for (int round = 0; round < 20; ++round) {
        ASSERT_TRUE(first->OpenDevice("", 0));
        first->CloseDevice();
        ASSERT_TRUE(second->OpenDevice("", 0));
        EXPECT_FALSE(first->StopZoom());
        first->CloseDevice();
        EXPECT_TRUE(second->StopZoom());
        second->CloseDevice();
    }
}

TEST_F(Factory, DeletesNothingForNull)
{
    const long before = releases;
    BaseDevice::DeleteDevice(nullptr);
    const long after = releases;
    EXPECT_EQ(after, before);
    EXPECT_THAT(uvc_call_recorder::calls(), IsEmpty());
}

TEST_F(Factory, DeletesTheStorageAloneAndLeavesTheCameraOpen)
{
    BaseDevice *const doomed = BaseDevice::CreateDevice(USB);
    ASSERT_TRUE(doomed->OpenDevice("", 0));
    doomed->StartMoveRight(5);
    uvc_call_recorder::clear();
    const long before = releases;
    BaseDevice::DeleteDevice(doomed);
    const long after = releases;
    EXPECT_EQ(after, before + 1);
    EXPECT_THAT(uvc_call_recorder::calls(), IsEmpty());
    EXPECT_GT(camera().state().pan.velocity, 0) << "no request reached the camera";
    EXPECT_FALSE(device->OpenDevice("", 0)) << "the camera is still held";
}

TEST_F(Factory, HooksDoNothing)
{
    const long before = allocations + releases;
    BaseDevice::Initial();
    BaseDevice::Release();
    const long after = allocations + releases;
    EXPECT_EQ(after, before);
    EXPECT_THAT(uvc_call_recorder::calls(), IsEmpty());
    log().clear();
    EXPECT_TRUE(device->OpenDevice("", 0));
    BaseDevice::Release();
    EXPECT_TRUE(device->StopZoom());
}

} // namespace
