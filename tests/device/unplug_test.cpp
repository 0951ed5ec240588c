// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

// Cameras that are unplugged while they are open. libusb hears of it on a thread of its own, and
// only then does closing the camera become dangerous, so each test waits until it has heard.
//
// One testbed for all tests: libusb listens to the first that it finds. Each test pulls out a
// camera that no other needs.

#include "tests/device/camera_fixture.h"
#include "tests/device/libusb_calls.h"
#include "tests/device/operations.h"

#include <libusb.h>

#include <chrono>
#include <memory>
#include <thread>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using virtual_camera::DeviceDescription;

// A second view of the bus. libusb tells its contexts in the order of their making, so what this
// one knows, every device made before knows as well.
class Watcher
{
public:
    Watcher() { libusb_init(&m_context); }
    ~Watcher() { libusb_exit(m_context); }
    Watcher(const Watcher &) = delete;
    Watcher &operator=(const Watcher &) = delete;

    bool sees(int address) const
    {
        libusb_device **list = nullptr;
        const auto count = libusb_get_device_list(m_context, &list);
        bool found = false;
        for (auto i = decltype(count){ 0 }; i < count; ++i)
            found = found || libusb_get_device_address(list[i]) == address;
        libusb_free_device_list(list, 1);
        return found;
    }
    // False when libusb has still not heard of it after a time that only ends a failed test.
    bool waitUntil(int address, bool seen) const
    {
        const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(20);
        while (sees(address) != seen) {
            if (std::chrono::steady_clock::now() > end)
                return false;
            std::this_thread::yield();
        }
        return true;
    }

private:
    libusb_context *m_context = nullptr;
};

class Unplugged : public testing::Test
{
protected:
    static constexpr int cameras = 8;
    static void SetUpTestSuite()
    {
        testbed =
            std::make_unique<virtual_camera::Testbed>(std::vector<DeviceDescription>(cameras));
    }
    static void TearDownTestSuite() { testbed.reset(); }

    Unplugged() : device(makeDevice())
    {
        // The cameras that are still there, by their place in the device's list.
        for (int number = 1; number <= cameras; ++number) {
            if (testbed->device(number).pluggedIn())
                present.push_back(number);
        }
        testbed->log().clear();
    }
    void TearDown() override { device->CloseDevice(); }

    virtual_camera::Device &cameraAt(int index)
    {
        return testbed->device(present.at(static_cast<std::size_t>(index)));
    }
    void pullOut(int index)
    {
        const Watcher watcher;
        cameraAt(index).unplug();
        EXPECT_TRUE(watcher.waitUntil(cameraAt(index).address(), false));
    }
    void plugIn(int index)
    {
        const Watcher watcher;
        cameraAt(index).replug();
        EXPECT_TRUE(watcher.waitUntil(cameraAt(index).address(), true));
    }
    static wire::Requests received() { return wire::received(testbed->log()); }

    static std::unique_ptr<virtual_camera::Testbed> testbed;
    BaseDevice *device;
    std::vector<int> present;
};
std::unique_ptr<virtual_camera::Testbed> Unplugged::testbed;

TEST_F(Unplugged, ACameraMayBeChosenAgainThreeTimes)
{
    ASSERT_TRUE(device->OpenDevice("0", 0));
    pullOut(0);
    testbed->log().clear();
    for (int round = 0; round < 3; ++round) {
        device->CloseDevice();
        EXPECT_FALSE(device->OpenDevice("0", 0)) << round;
        EXPECT_FALSE(device->StopMoveUp());
    }
    expectAllRefused(*device);
    EXPECT_THAT(received(), IsEmpty());
}

TEST_F(Unplugged, ACameraMayBeUsedBeforeItIsClosed)
{
    ASSERT_TRUE(device->OpenDevice("0", 0));
    device->StartMoveLeft(5);
    pullOut(0);
    for (const Operation &operation : onAnOpenCamera())
        EXPECT_EQ(call(*device, operation).result, operation.refused) << operation;
    device->CloseDevice();
    expectAllRefused(*device);
}

TEST_F(Unplugged, AnotherCameraTakesOver)
{
    ASSERT_TRUE(device->OpenDevice("0", 0));
    pullOut(0);
    device->CloseDevice();
    ASSERT_TRUE(device->OpenDevice("1", 1));
    EXPECT_TRUE(device->OpenMute());
    EXPECT_TRUE(cameraAt(1).state().mute);
    device->CloseDevice();
    EXPECT_FALSE(device->OpenDevice("0", 0));
    ASSERT_TRUE(device->OpenDevice("1", 1));
    EXPECT_TRUE(device->CloseMute());
}

// The device's list is as old as the device: who comes back is listed, but cannot be opened.
TEST_F(Unplugged, ACameraThatComesBackIsForTheNextDevice)
{
    for (int round = 0; round < 3; ++round) {
        device = makeDevice();
        ASSERT_TRUE(device->OpenDevice("0", 0)) << round;
        EXPECT_TRUE(device->StopMoveUp());
        pullOut(0);
        EXPECT_FALSE(device->StopMoveUp());
        device->CloseDevice();
        EXPECT_FALSE(device->OpenDevice("0", 0));
        plugIn(0);
        EXPECT_FALSE(device->OpenDevice("0", 0));
    }
}

TEST_F(Unplugged, ACameraMayBeUnpluggedBeforeAnyCallThatClosesIt)
{
    std::vector<std::string> calls;
    for (std::size_t pulledBefore = 0; pulledBefore <= calls.size(); ++pulledBefore) {
        device = makeDevice();
        ASSERT_TRUE(device->OpenDevice("0", 0));
        calls.clear();
        libusb_calls::beforeClosing = [&](const std::string &call) {
            calls.push_back(call);
            if (calls.size() == pulledBefore)
                pullOut(0);
        };
        device->CloseDevice();
        libusb_calls::beforeClosing = nullptr;
        EXPECT_FALSE(device->StopFocus());
        if (pulledBefore != 0)
            plugIn(0);
    }
    EXPECT_THAT(calls,
        ElementsAre("libusb_release_interface", "libusb_attach_kernel_driver", "libusb_close"));
}

TEST_F(Unplugged, ARequestThatHangsEnds)
{
    ASSERT_TRUE(device->OpenDevice("0", 0));
    cameraAt(0).delay(std::chrono::hours(1));
    std::thread hand([this] {
        while (cameraAt(0).requestsUnderWay() == 0)
            std::this_thread::yield();
        pullOut(0);
    });
    long out = untouched;
    EXPECT_FALSE(device->GetContrast(&out));
    EXPECT_EQ(out, untouched);
    hand.join();
    device->CloseDevice();
    EXPECT_FALSE(device->OpenDevice("0", 0));
}

} // namespace
