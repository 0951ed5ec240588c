// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

// What the kernel does between programs and a camera.

#include "tests/virtual_camera/model_test_support.h"
#include "virtual_camera/usb/descriptors.h"
#include "virtual_camera/usbfs/usbfs_device.h"

#include <cerrno>
#include <gmock/gmock.h>
#include <vector>

using namespace virtual_camera;
using namespace std::chrono_literals;
using testing::ElementsAre;

namespace {

class UsbfsDeviceTest : public testing::Test
{
protected:
    UsbfsDeviceTest()
    {
        // Everything below needs the kernel's driver out of the way, but for the tests of that.
        first = kernel.openFile();
        second = kernel.openFile();
        log.clear();
    }

    void detachDrivers()
    {
        kernel.detachDriver(0);
        kernel.detachDriver(1);
    }
    Urb readBrightness(std::uint64_t address) const
    {
        Urb urb;
        urb.address = address;
        urb.request = getRequest(traits(Control::Brightness), RequestCode::GetCur);
        return urb;
    }
    Urb waitForStatus(std::uint64_t address) const
    {
        Urb urb;
        urb.address = address;
        urb.endpoint = statusEndpoint;
        return urb;
    }
    // Address and status of the next transfer that is done; {0, 0} when there is none.
    std::pair<std::uint64_t, int> reap(int file)
    {
        const std::unique_ptr<Urb> urb = kernel.reap(file);
        return urb ? std::pair(urb->address, urb->status) : std::pair(std::uint64_t{ 0 }, 0);
    }
    void runLater()
    {
        const auto due = std::move(scheduled);
        scheduled.clear();
        for (const auto &what : due)
            what.second();
    }

    CameraOnTheBench camera;
    UsbDevice usb{ describeCamera({}), &camera.model };
    Faults faults;
    RequestLog log;
    std::vector<std::pair<std::chrono::milliseconds, std::function<void()>>> scheduled;
    UsbfsDevice kernel{ { 1, &usb, &faults, &log, "uvcvideo",
        [this](auto wait, auto what) { scheduled.emplace_back(wait, std::move(what)); } } };
    int first = 0;
    int second = 0;
};

using Reaped = std::pair<std::uint64_t, int>;

TEST_F(UsbfsDeviceTest, GivesEachFileItsOwnTransfersBack)
{
    detachDrivers();
    ASSERT_EQ(kernel.submit(first, waitForStatus(1)), 0);
    Urb onDevice;
    onDevice.address = 2;
    onDevice.request.requestType = 0x80;
    onDevice.request.request = 6;
    onDevice.request.value = 0x0100;
    onDevice.request.length = 18;
    ASSERT_EQ(kernel.submit(second, std::move(onDevice)), 0);
    EXPECT_TRUE(kernel.anythingToReap());
    EXPECT_EQ(reap(first), Reaped(0, 0));
    EXPECT_EQ(reap(second), Reaped(2, 0));
    EXPECT_EQ(reap(second), Reaped(0, 0));
    EXPECT_FALSE(kernel.anythingToReap());
}

TEST_F(UsbfsDeviceTest, KeepsInterfacesForWhoClaimedThem)
{
    EXPECT_EQ(kernel.claim(first, 0), -EBUSY);
    EXPECT_EQ(kernel.driver(0), "uvcvideo");
    EXPECT_EQ(kernel.detachDriver(0), 0);
    EXPECT_EQ(kernel.driver(0), "");
    EXPECT_EQ(kernel.detachDriver(0), -ENODATA);
    EXPECT_EQ(kernel.claim(first, 0), 0);
    EXPECT_EQ(kernel.claim(first, 0), 0);
    EXPECT_EQ(kernel.driver(0), "usbfs");
    EXPECT_EQ(kernel.claim(second, 0), -EBUSY);
    EXPECT_EQ(kernel.release(second, 0), -EINVAL);
    EXPECT_EQ(kernel.attachDriver(0), -EBUSY);
    EXPECT_EQ(kernel.release(first, 0), 0);
    EXPECT_EQ(kernel.claim(second, 0), 0);
    kernel.closeFile(second);
    EXPECT_EQ(kernel.attachDriver(0), 1);
    EXPECT_EQ(kernel.driver(0), "uvcvideo");
    EXPECT_EQ(kernel.claim(first, 2), -ENOENT);
}

TEST_F(UsbfsDeviceTest, RefusesControlsOfAnInterfaceThatAnotherHolds)
{
    EXPECT_EQ(kernel.submit(first, readBrightness(1)), -EBUSY);
    detachDrivers();
    EXPECT_EQ(kernel.claim(second, 0), 0);
    EXPECT_EQ(kernel.submit(first, readBrightness(1)), -EBUSY);
    EXPECT_EQ(kernel.submit(first, waitForStatus(2)), -EBUSY);
    EXPECT_EQ(kernel.submit(second, readBrightness(3)), 0);
    EXPECT_THAT(log.lines(), ElementsAre("cam1 GET_CUR brightness value=128 [80 00] ok"));
}

TEST_F(UsbfsDeviceTest, ClaimsAnInterfaceForAProgramThatJustUsesIt)
{
    detachDrivers();
    EXPECT_EQ(kernel.submit(first, readBrightness(1)), 0);
    EXPECT_EQ(kernel.claim(second, 0), -EBUSY);
}

TEST_F(UsbfsDeviceTest, LetsNobodyClaimWhenTheCameraIsHeld)
{
    faults.claimRefused = true;
    detachDrivers();
    EXPECT_EQ(kernel.claim(first, 0), -EBUSY);
    EXPECT_EQ(kernel.driver(0), "usbfs");
}

TEST_F(UsbfsDeviceTest, CancelsATransferThatIsWaiting)
{
    detachDrivers();
    ASSERT_EQ(kernel.submit(first, waitForStatus(1)), 0);
    EXPECT_EQ(kernel.discard(first, 9), -EINVAL);
    EXPECT_EQ(kernel.discard(second, 1), -EINVAL);
    EXPECT_EQ(kernel.discard(first, 1), 0);
    EXPECT_EQ(kernel.discard(first, 1), -EINVAL);
    EXPECT_EQ(reap(first), Reaped(1, -ENOENT));
}

TEST_F(UsbfsDeviceTest, CancelsARequestThatASlowCameraHasNotAnswered)
{
    detachDrivers();
    faults.delay = 1h;
    ASSERT_EQ(kernel.submit(first, readBrightness(1)), 0);
    EXPECT_EQ(kernel.requestsUnderWay(), 1);
    EXPECT_EQ(kernel.discard(first, 1), 0);
    runLater();
    EXPECT_EQ(reap(first), Reaped(1, -ENOENT));
    EXPECT_EQ(reap(first), Reaped(0, 0));
    EXPECT_THAT(log.lines(), ElementsAre("cam1 GET_CUR brightness cancelled"));
}

TEST_F(UsbfsDeviceTest, DoesNotKeepTheNextRequestWaitingForACancelledOne)
{
    detachDrivers();
    faults.delay = 1h;
    ASSERT_EQ(kernel.submit(first, readBrightness(1)), 0);
    ASSERT_EQ(kernel.discard(first, 1), 0);
    EXPECT_EQ(reap(first), Reaped(1, -ENOENT));
    faults.delay = 0ms;
    ASSERT_EQ(kernel.submit(first, readBrightness(2)), 0);
    EXPECT_EQ(reap(first), Reaped(2, 0));
}

TEST_F(UsbfsDeviceTest, DoesNotMistakeATransferForAnEarlierOneAtItsAddress)
{
    detachDrivers();
    faults.delay = 1h;
    ASSERT_EQ(kernel.submit(first, readBrightness(1)), 0);
    ASSERT_EQ(kernel.discard(first, 1), 0);
    EXPECT_EQ(reap(first), Reaped(1, -ENOENT));
    ASSERT_EQ(kernel.submit(first, readBrightness(1)), 0);
    ASSERT_EQ(scheduled.size(), 2U);
    scheduled[0].second();
    EXPECT_EQ(reap(first), Reaped(0, 0));
    scheduled[1].second();
    EXPECT_EQ(reap(first), Reaped(1, 0));
}

TEST_F(UsbfsDeviceTest, AnswersASlowCamerasRequestsOneAfterTheOther)
{
    detachDrivers();
    faults.delay = 1s;
    ASSERT_EQ(kernel.submit(first, readBrightness(1)), 0);
    ASSERT_EQ(kernel.submit(first, readBrightness(2)), 0);
    ASSERT_EQ(scheduled.size(), 2U);
    EXPECT_GE(scheduled[0].first, 1000ms);
    EXPECT_GT(scheduled[1].first, 1900ms);
    EXPECT_EQ(reap(first), Reaped(0, 0));
    runLater();
    EXPECT_EQ(reap(first), Reaped(1, 0));
    EXPECT_EQ(reap(first), Reaped(2, 0));
}

TEST_F(UsbfsDeviceTest, ReportsStallsAsABrokenPipe)
{
    detachDrivers();
    faults.stalled.insert({ Control::Brightness, std::nullopt });
    ASSERT_EQ(kernel.submit(first, readBrightness(1)), 0);
    EXPECT_EQ(reap(first), Reaped(1, -EPIPE));
}

TEST_F(UsbfsDeviceTest, ShutsDownWhatIsUnderWayWhenItIsUnplugged)
{
    detachDrivers();
    faults.delay = 1h;
    ASSERT_EQ(kernel.submit(first, waitForStatus(1)), 0);
    ASSERT_EQ(kernel.submit(first, readBrightness(2)), 0);
    kernel.unplug();
    EXPECT_TRUE(kernel.unplugged());
    EXPECT_EQ(reap(first), Reaped(1, -ESHUTDOWN));
    EXPECT_EQ(reap(first), Reaped(2, -ESHUTDOWN));
    runLater();
    EXPECT_EQ(reap(first), Reaped(0, 0));
    EXPECT_THAT(log.lines(), ElementsAre("cam1 GET_CUR brightness gone"));
}

TEST_F(UsbfsDeviceTest, ForgetsTheTransfersOfAFileThatIsClosed)
{
    detachDrivers();
    faults.delay = 1h;
    ASSERT_EQ(kernel.submit(first, readBrightness(1)), 0);
    kernel.closeFile(first);
    runLater();
    EXPECT_FALSE(kernel.anythingToReap());
    EXPECT_THAT(log.lines(), ElementsAre("cam1 GET_CUR brightness cancelled"));
}

TEST_F(UsbfsDeviceTest, KnowsItsEndpointsAndConfiguration)
{
    EXPECT_EQ(kernel.clearHalt(statusEndpoint), 0);
    EXPECT_EQ(kernel.clearHalt(0x7f), -ENOENT);
    EXPECT_EQ(kernel.clearHalt(0x181), -ENOENT);
    Urb elsewhere = waitForStatus(1);
    elsewhere.endpoint = 0x05;
    EXPECT_EQ(kernel.submit(first, std::move(elsewhere)), -ENOENT);
    EXPECT_EQ(kernel.setConfiguration(1), -EBUSY);
    detachDrivers();
    EXPECT_EQ(kernel.setConfiguration(1), 0);
    EXPECT_EQ(kernel.setConfiguration(2), -EINVAL);
}

TEST_F(UsbfsDeviceTest, SetsTheAlternatesThatInterfacesHave)
{
    detachDrivers();
    EXPECT_EQ(kernel.setInterface(first, 1, 1), 0);
    EXPECT_EQ(kernel.setInterface(first, 1, 2), -EPIPE);
    EXPECT_EQ(kernel.setInterface(first, 0, 1), -EPIPE);
    EXPECT_EQ(kernel.setInterface(first, 5, 0), -ENOENT);
}

} // namespace
