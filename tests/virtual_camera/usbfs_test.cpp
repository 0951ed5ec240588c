// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

// What the kernel does between programs and a camera.

#include "tests/virtual_camera/model_test_support.h"
#include "virtual_camera/usb/descriptors.h"
#include "virtual_camera/usbfs/usbfs.h"

#include <cerrno>
#include <gmock/gmock.h>
#include <vector>

using namespace virtual_camera;
using namespace std::chrono_literals;
using testing::ElementsAre;

namespace {

class UsbfsTest : public testing::Test
{
protected:
    UsbfsTest()
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
    // Lets the time pass and the answers arrive that are due.
    void pass(std::chrono::microseconds time)
    {
        clock.advance(time);
        kernel.collect();
    }
    void change(const std::function<void(Faults &)> &how)
    {
        cable->changeFaults(how);
        kernel.collect();
    }
    void delay(std::chrono::milliseconds time)
    {
        change([time](Faults &faults) { faults.delay = time; });
    }
    int submit(int file, Urb urb)
    {
        const int result = kernel.submit(file, std::move(urb));
        kernel.collect();
        return result;
    }

    ManualClock clock;
    std::shared_ptr<RequestLog> shared = std::make_shared<RequestLog>(clock.clock());
    RequestLog &log = *shared;
    std::shared_ptr<Cable> cable = makeCable();
    Usbfs kernel{ cable, "uvcvideo" };
    int first = 0;
    int second = 0;

private:
    std::shared_ptr<Cable> makeCable() const
    {
        auto camera = std::make_unique<CameraModel>(CameraDescription(), clock.clock());
        Firmware firmware(
            describeCamera({}), [model = camera.get()](const ControlRequest &request) {
                return model->answer(request);
            });
        return std::make_shared<Cable>(
            1, std::move(camera), std::move(firmware), shared, clock.clock());
    }
};

using Reaped = std::pair<std::uint64_t, int>;

TEST_F(UsbfsTest, GivesEachFileItsOwnTransfersBack)
{
    detachDrivers();
    ASSERT_EQ(submit(first, waitForStatus(1)), 0);
    Urb onDevice;
    onDevice.address = 2;
    onDevice.request.requestType = 0x80;
    onDevice.request.request = 6;
    onDevice.request.value = 0x0100;
    onDevice.request.length = 18;
    ASSERT_EQ(submit(second, std::move(onDevice)), 0);
    EXPECT_FALSE(kernel.anythingToReap(first));
    EXPECT_TRUE(kernel.anythingToReap(second));
    EXPECT_EQ(reap(first), Reaped(0, 0));
    EXPECT_EQ(reap(second), Reaped(2, 0));
    EXPECT_EQ(reap(second), Reaped(0, 0));
    EXPECT_FALSE(kernel.anythingToReap(second));
}

TEST_F(UsbfsTest, KeepsInterfacesForWhoClaimedThem)
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

TEST_F(UsbfsTest, RefusesControlsOfAnInterfaceThatAnotherHolds)
{
    EXPECT_EQ(submit(first, readBrightness(1)), -EBUSY);
    detachDrivers();
    EXPECT_EQ(kernel.claim(second, 0), 0);
    EXPECT_EQ(submit(first, readBrightness(1)), -EBUSY);
    EXPECT_EQ(submit(first, waitForStatus(2)), -EBUSY);
    EXPECT_EQ(submit(second, readBrightness(3)), 0);
    EXPECT_THAT(log.lines(), ElementsAre("cam1 GET_CUR brightness value=128 [80 00] ok"));
}

TEST_F(UsbfsTest, ClaimsAnInterfaceForAProgramThatJustUsesIt)
{
    detachDrivers();
    EXPECT_EQ(submit(first, readBrightness(1)), 0);
    EXPECT_EQ(kernel.claim(second, 0), -EBUSY);
}

TEST_F(UsbfsTest, LetsNobodyClaimWhenTheCameraIsHeld)
{
    change([](Faults &faults) { faults.claimRefused = true; });
    detachDrivers();
    EXPECT_EQ(kernel.claim(first, 0), -EBUSY);
    EXPECT_EQ(kernel.driver(0), "usbfs");
}

TEST_F(UsbfsTest, CancelsATransferThatIsWaiting)
{
    detachDrivers();
    ASSERT_EQ(submit(first, waitForStatus(1)), 0);
    EXPECT_EQ(kernel.discard(first, 9), -EINVAL);
    EXPECT_EQ(kernel.discard(second, 1), -EINVAL);
    EXPECT_EQ(kernel.discard(first, 1), 0);
    EXPECT_EQ(kernel.discard(first, 1), -EINVAL);
    EXPECT_EQ(reap(first), Reaped(1, -ENOENT));
}

TEST_F(UsbfsTest, CancelsARequestThatASlowCameraHasNotAnswered)
{
    detachDrivers();
    delay(1h);
    ASSERT_EQ(submit(first, readBrightness(1)), 0);
    EXPECT_EQ(cable->requestsUnderWay(), 1);
    EXPECT_EQ(kernel.discard(first, 1), 0);
    pass(2h);
    EXPECT_EQ(reap(first), Reaped(1, -ENOENT));
    EXPECT_EQ(reap(first), Reaped(0, 0));
    EXPECT_THAT(log.lines(), ElementsAre("cam1 GET_CUR brightness cancelled"));
}

TEST_F(UsbfsTest, DoesNotMistakeATransferForAnEarlierOneAtItsAddress)
{
    detachDrivers();
    delay(1h);
    ASSERT_EQ(submit(first, readBrightness(1)), 0);
    ASSERT_EQ(kernel.discard(first, 1), 0);
    EXPECT_EQ(reap(first), Reaped(1, -ENOENT));
    ASSERT_EQ(submit(first, readBrightness(1)), 0);
    pass(59min);
    EXPECT_EQ(reap(first), Reaped(0, 0));
    pass(1min);
    EXPECT_EQ(reap(first), Reaped(1, 0));
}

TEST_F(UsbfsTest, AnswersASlowCamerasRequestsOneAfterTheOther)
{
    detachDrivers();
    delay(1s);
    ASSERT_EQ(submit(first, readBrightness(1)), 0);
    ASSERT_EQ(submit(first, readBrightness(2)), 0);
    EXPECT_EQ(kernel.nextAnswer(), 1s);
    pass(999ms);
    EXPECT_EQ(reap(first), Reaped(0, 0));
    pass(1ms);
    EXPECT_EQ(reap(first), Reaped(1, 0));
    EXPECT_EQ(kernel.nextAnswer(), 1s);
    pass(1s);
    EXPECT_EQ(reap(first), Reaped(2, 0));
    EXPECT_EQ(kernel.nextAnswer(), std::nullopt);
}

TEST_F(UsbfsTest, AnswersWhatWaitsWhenTheCameraIsNotSlowAnyMore)
{
    detachDrivers();
    delay(60s);
    ASSERT_EQ(submit(first, readBrightness(1)), 0);
    ASSERT_EQ(submit(first, readBrightness(2)), 0);
    EXPECT_EQ(kernel.discard(first, 1), 0);
    EXPECT_EQ(reap(first), Reaped(1, -ENOENT));
    EXPECT_EQ(kernel.nextAnswer(), 60s);
    change([](Faults &faults) { faults = {}; });
    EXPECT_EQ(reap(first), Reaped(2, 0));
    ASSERT_EQ(submit(first, readBrightness(3)), 0);
    EXPECT_EQ(reap(first), Reaped(3, 0));
}

TEST_F(UsbfsTest, ReportsFaultsAsTheKernelDoes)
{
    struct Row
    {
        Fault::Effect effect;
        std::size_t bytes;
        int status;
        std::size_t transferred;
    };
    detachDrivers();
    for (const Row &row : { Row{ Fault::Effect::Stall, 0, -EPIPE, 0 },
             Row{ Fault::Effect::ProtocolError, 0, -EPROTO, 0 },
             Row{ Fault::Effect::NoResponse, 0, -ETIME, 0 },
             Row{ Fault::Effect::Long, 3, -EOVERFLOW, 2 }, Row{ Fault::Effect::Short, 1, 0, 1 },
             Row{ Fault::Effect::Wrong, 0, 0, 2 } }) {
        change([&row](Faults &faults) {
            Fault fault;
            fault.effect = row.effect;
            fault.bytes = row.bytes;
            faults = {};
            faults.add(fault);
        });
        ASSERT_EQ(submit(first, readBrightness(1)), 0);
        const std::unique_ptr<Urb> urb = kernel.reap(first);
        ASSERT_NE(urb, nullptr);
        EXPECT_EQ(urb->status, row.status) << faultWord(row.effect);
        EXPECT_EQ(urb->transferred, row.transferred) << faultWord(row.effect);
    }
}

TEST_F(UsbfsTest, ShutsDownWhatIsUnderWayWhenItIsUnplugged)
{
    detachDrivers();
    delay(1h);
    ASSERT_EQ(submit(first, waitForStatus(1)), 0);
    ASSERT_EQ(submit(first, readBrightness(2)), 0);
    kernel.unplug();
    EXPECT_TRUE(kernel.unplugged());
    EXPECT_EQ(reap(first), Reaped(1, -ESHUTDOWN));
    EXPECT_EQ(reap(first), Reaped(2, -ESHUTDOWN));
    pass(2h);
    EXPECT_EQ(reap(first), Reaped(0, 0));
    EXPECT_THAT(log.lines(), ElementsAre("cam1 GET_CUR brightness gone"));
}

TEST_F(UsbfsTest, ForgetsTheTransfersOfAFileThatIsClosed)
{
    detachDrivers();
    delay(1h);
    ASSERT_EQ(submit(first, readBrightness(1)), 0);
    kernel.closeFile(first);
    EXPECT_EQ(cable->requestsUnderWay(), 0);
    EXPECT_EQ(kernel.nextAnswer(), std::nullopt);
    EXPECT_THAT(log.lines(), ElementsAre("cam1 GET_CUR brightness cancelled"));
}

TEST_F(UsbfsTest, KnowsItsEndpointsAndConfiguration)
{
    EXPECT_EQ(kernel.clearHalt(first, 0x7f), -ENOENT);
    EXPECT_EQ(kernel.clearHalt(first, 0x181), -EINVAL);
    EXPECT_EQ(kernel.clearHalt(first, statusEndpoint), -EBUSY);
    Urb elsewhere = waitForStatus(1);
    elsewhere.endpoint = 0x05;
    EXPECT_EQ(submit(first, std::move(elsewhere)), -ENOENT);
    EXPECT_EQ(kernel.setConfiguration(first, 1), -EBUSY);
    detachDrivers();
    EXPECT_EQ(kernel.setConfiguration(first, 1), 0);
    EXPECT_EQ(kernel.setConfiguration(first, 2), -EINVAL);
    EXPECT_EQ(kernel.clearHalt(first, statusEndpoint), 0);
}

TEST_F(UsbfsTest, SetsTheAlternatesThatInterfacesHave)
{
    detachDrivers();
    EXPECT_EQ(kernel.setInterface(first, 1, 1), 0);
    EXPECT_EQ(kernel.setInterface(first, 1, 2), -EPIPE);
    EXPECT_EQ(kernel.setInterface(first, 0, 1), -EPIPE);
    EXPECT_EQ(kernel.setInterface(first, 5, 0), -ENOENT);
}

TEST_F(UsbfsTest, HasThePictureEndpointInItsAlternateSettingOnly)
{
    detachDrivers();
    Urb picture = waitForStatus(1);
    picture.endpoint = pictureEndpoint;
    EXPECT_EQ(submit(first, picture), -ENOENT);
    EXPECT_EQ(kernel.clearHalt(first, pictureEndpoint), -ENOENT);
    ASSERT_EQ(kernel.setInterface(first, 1, 1), 0);
    EXPECT_EQ(submit(first, picture), 0);
    EXPECT_EQ(kernel.clearHalt(first, pictureEndpoint), 0);
    ASSERT_EQ(kernel.setInterface(first, 1, 0), 0);
    EXPECT_EQ(reap(first), Reaped(1, -ENOENT));
    EXPECT_EQ(submit(first, picture), -ENOENT);
}

TEST_F(UsbfsTest, CancelsTheTransfersOfAnInterfaceThatIsReleased)
{
    detachDrivers();
    delay(1h);
    ASSERT_EQ(submit(first, waitForStatus(1)), 0);
    ASSERT_EQ(submit(first, readBrightness(2)), 0);
    ASSERT_EQ(kernel.claim(first, 1), 0);
    EXPECT_EQ(kernel.release(first, 1), 0);
    EXPECT_EQ(reap(first), Reaped(0, 0));
    EXPECT_EQ(kernel.release(first, 0), 0);
    EXPECT_EQ(reap(first), Reaped(1, -ENOENT));
    // A control request belongs to no interface.
    EXPECT_EQ(reap(first), Reaped(0, 0));
    pass(1h);
    EXPECT_EQ(reap(first), Reaped(2, 0));
}

TEST_F(UsbfsTest, PowerCyclesTheCameraWhenItIsReset)
{
    detachDrivers();
    ASSERT_EQ(kernel.setInterface(first, 1, 1), 0);
    const auto pan = setRequest(traits(Control::PantiltRelative), { 0x01, 0x01, 0x00, 0x00 });
    Urb run;
    run.address = 1;
    run.request = pan;
    ASSERT_EQ(submit(first, std::move(run)), 0);
    const auto moves = [this] {
        bool moving = false;
        cable->withCamera([&](CameraModel &camera) { moving = camera.state().moving(); });
        return moving;
    };
    ASSERT_TRUE(moves());
    log.clear();
    EXPECT_EQ(kernel.reset(first), 0);
    EXPECT_FALSE(moves());
    EXPECT_THAT(log.allLines(), ElementsAre("cam1 RESET file=1"));
    // The kernel restores the settings.
    Urb picture = waitForStatus(2);
    picture.endpoint = pictureEndpoint;
    EXPECT_EQ(submit(first, picture), 0);
}

TEST_F(UsbfsTest, SwitchesTheCameraOnAnewWhenItIsResetOrConfigured)
{
    detachDrivers();
    const auto brightness = [this] {
        std::int64_t value = 0;
        cable->withCamera(
            [&](CameraModel &camera) { value = camera.state().value(Control::Brightness); });
        return value;
    };
    const auto dim = [this] {
        cable->withCamera([](CameraModel &camera) {
            camera.answer(setRequest(traits(Control::Brightness), { 1, 0 }));
        });
    };
    dim();
    EXPECT_EQ(kernel.reset(first), 0);
    EXPECT_EQ(brightness(), 128);

    dim();
    ASSERT_EQ(brightness(), 1);
    Urb configure;
    configure.request.request = 9; // SET_CONFIGURATION
    configure.request.value = 1;
    EXPECT_EQ(submit(first, std::move(configure)), 0);
    EXPECT_EQ(brightness(), 128);

    dim();
    EXPECT_EQ(kernel.setConfiguration(first, 1), 0);
    EXPECT_EQ(brightness(), 128);
}

TEST_F(UsbfsTest, DatesTheLogByTheClockOfTheMotors)
{
    detachDrivers();
    pass(90s);
    ASSERT_EQ(submit(first, readBrightness(1)), 0);
    EXPECT_EQ(log.requests().at(0).time, 90s);
}

} // namespace
