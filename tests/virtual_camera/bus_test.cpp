// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

// The emulated bus beneath libusb and beneath plain system calls.

#include "virtual_camera/testbed/testbed.h"

#include <array>
#include <cerrno>
#include <fcntl.h>
#include <gmock/gmock.h>
#include <libusb.h>
#include <linux/usbdevice_fs.h>
#include <memory>
#include <poll.h>
#include <sys/ioctl.h>
#include <thread>
#include <unistd.h>

using namespace virtual_camera;
using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

constexpr char node[] = "/dev/bus/usb/001/002";

// An open device node and what the kernel would be asked.
class File
{
public:
    explicit File(const char *path = node) : m_descriptor(open(path, O_RDWR | O_CLOEXEC))
    {
        EXPECT_GE(m_descriptor, 0);
    }
    ~File() { close(m_descriptor); }
    File(const File &) = delete;
    File &operator=(const File &) = delete;

    // 0 or more, or a negative errno.
    int call(unsigned long request, void *argument = nullptr)
    {
        const int result = ioctl(m_descriptor, request, argument);
        return result < 0 ? -errno : result;
    }
    usbdevfs_urb *reap(int &error)
    {
        void *urb = nullptr;
        error = call(USBDEVFS_REAPURBNDELAY, &urb);
        return static_cast<usbdevfs_urb *>(urb);
    }
    bool writable(int milliseconds)
    {
        pollfd wanted{ m_descriptor, POLLOUT, 0 };
        return poll(&wanted, 1, milliseconds) == 1 && (wanted.revents & POLLOUT) != 0;
    }
    int disconnectDriver(int interfaceNumber)
    {
        usbdevfs_ioctl wanted{ interfaceNumber, USBDEVFS_DISCONNECT, nullptr };
        return call(USBDEVFS_IOCTL, &wanted);
    }

private:
    int m_descriptor;
};

// A transfer that lives as long as the test.
struct Transfer
{
    Transfer(unsigned char type, unsigned char endpoint, std::vector<std::uint8_t> bytes)
        : buffer(std::move(bytes))
    {
        urb->type = type;
        urb->endpoint = endpoint;
        urb->buffer = buffer.data();
        urb->buffer_length = static_cast<int>(buffer.size());
    }
    static Transfer brightness()
    {
        return { USBDEVFS_URB_TYPE_CONTROL, 0, { 0xa1, 0x81, 0, 2, 0, 2, 2, 0, 0xee, 0xee } };
    }
    static Transfer deviceDescriptor()
    {
        return { USBDEVFS_URB_TYPE_CONTROL, 0, { 0x80, 6, 0, 1, 0, 0, 4, 0, 0, 0, 0, 0 } };
    }
    static Transfer status()
    {
        return { USBDEVFS_URB_TYPE_INTERRUPT, 0x81, std::vector<std::uint8_t>(16) };
    }
    std::vector<std::uint8_t> buffer;
    std::unique_ptr<usbdevfs_urb> urb = std::make_unique<usbdevfs_urb>();
};

TEST(DeviceNode, GivesATransferBackWhereItCameFrom)
{
    Testbed bed(1);
    File file;
    ASSERT_EQ(file.disconnectDriver(0), 0);
    Transfer transfer = Transfer::brightness();
    ASSERT_EQ(file.call(USBDEVFS_SUBMITURB, transfer.urb.get()), 0);
    int error = 0;
    ASSERT_EQ(file.reap(error), transfer.urb.get());
    EXPECT_EQ(error, 0);
    EXPECT_EQ(transfer.urb->status, 0);
    EXPECT_EQ(transfer.urb->actual_length, 2);
    EXPECT_THAT(transfer.buffer, ElementsAre(0xa1, 0x81, 0, 2, 0, 2, 2, 0, 128, 0));
    EXPECT_EQ(file.reap(error), nullptr);
    EXPECT_EQ(error, -EAGAIN);
}

TEST(DeviceNode, IsWritableOnlyWhenThereIsSomethingToReap)
{
    Testbed bed(1);
    File file;
    ASSERT_EQ(file.disconnectDriver(0), 0);
    EXPECT_FALSE(file.writable(0));
    Transfer waiting = Transfer::status();
    ASSERT_EQ(file.call(USBDEVFS_SUBMITURB, waiting.urb.get()), 0);
    EXPECT_FALSE(file.writable(0));
    Transfer done = Transfer::brightness();
    ASSERT_EQ(file.call(USBDEVFS_SUBMITURB, done.urb.get()), 0);
    EXPECT_TRUE(file.writable(20000));
    int error = 0;
    EXPECT_EQ(file.reap(error), done.urb.get());
    EXPECT_FALSE(file.writable(0));
    EXPECT_EQ(file.call(USBDEVFS_DISCARDURB, waiting.urb.get()), 0);
    EXPECT_TRUE(file.writable(20000));
    EXPECT_EQ(file.reap(error), waiting.urb.get());
    EXPECT_EQ(waiting.urb->status, -ENOENT);
}

TEST(DeviceNode, WakesAProgramThatWaitsForASlowCamera)
{
    Testbed bed(1);
    File file;
    ASSERT_EQ(file.disconnectDriver(0), 0);
    bed.device(1).delay(30ms);
    Transfer transfer = Transfer::brightness();
    ASSERT_EQ(file.call(USBDEVFS_SUBMITURB, transfer.urb.get()), 0);
    EXPECT_TRUE(file.writable(20000));
    int error = 0;
    EXPECT_EQ(file.reap(error), transfer.urb.get());
}

TEST(DeviceNode, WaitsInABlockingReap)
{
    Testbed bed(1);
    File file;
    ASSERT_EQ(file.disconnectDriver(0), 0);
    bed.device(1).delay(30ms);
    Transfer transfer = Transfer::brightness();
    ASSERT_EQ(file.call(USBDEVFS_SUBMITURB, transfer.urb.get()), 0);
    void *reaped = nullptr;
    EXPECT_EQ(file.call(USBDEVFS_REAPURB, &reaped), 0);
    EXPECT_EQ(reaped, transfer.urb.get());
}

TEST(DeviceNode, KeepsTheFilesOfOneCameraApart)
{
    Testbed bed(1);
    File first;
    File second;
    ASSERT_EQ(first.disconnectDriver(0), 0);
    Transfer waiting = Transfer::status();
    Transfer descriptor = Transfer::deviceDescriptor();
    ASSERT_EQ(first.call(USBDEVFS_SUBMITURB, waiting.urb.get()), 0);
    ASSERT_EQ(second.call(USBDEVFS_SUBMITURB, descriptor.urb.get()), 0);
    int error = 0;
    EXPECT_EQ(first.reap(error), nullptr);
    EXPECT_EQ(error, -EAGAIN);
    EXPECT_EQ(second.reap(error), descriptor.urb.get());
    unsigned interfaceNumber = 0;
    EXPECT_EQ(second.call(USBDEVFS_CLAIMINTERFACE, &interfaceNumber), -EBUSY);
    EXPECT_EQ(first.call(USBDEVFS_RELEASEINTERFACE, &interfaceNumber), 0);
    EXPECT_EQ(second.call(USBDEVFS_CLAIMINTERFACE, &interfaceNumber), 0);
}

TEST(DeviceNode, RefusesNonsense)
{
    Testbed bed(1);
    File file;
    EXPECT_EQ(file.call(USBDEVFS_ALLOC_STREAMS, nullptr), -ENOTTY);
    struct Nonsense
    {
        unsigned char type;
        unsigned char endpoint;
        std::vector<std::uint8_t> bytes;
    };
    for (const Nonsense &bad : { Nonsense{ USBDEVFS_URB_TYPE_CONTROL, 0, { 0x80, 6, 0, 1 } },
             Nonsense{ USBDEVFS_URB_TYPE_CONTROL, 0, { 0x80, 6, 0, 1, 0, 0, 255, 0, 0 } },
             Nonsense{ USBDEVFS_URB_TYPE_CONTROL, 0, {} },
             Nonsense{ USBDEVFS_URB_TYPE_CONTROL, 5, { 0x80, 6, 0, 1, 0, 0, 0, 0 } },
             Nonsense{ USBDEVFS_URB_TYPE_BULK, 0, { 0, 0 } } }) {
        const Transfer transfer(bad.type, bad.endpoint, bad.bytes);
        EXPECT_EQ(file.call(USBDEVFS_SUBMITURB, transfer.urb.get()), -EINVAL);
    }
    Transfer negative = Transfer::brightness();
    negative.urb->buffer_length = -1;
    EXPECT_EQ(file.call(USBDEVFS_SUBMITURB, negative.urb.get()), -EINVAL);
    negative.urb->buffer_length = 1 << 30;
    EXPECT_EQ(file.call(USBDEVFS_SUBMITURB, negative.urb.get()), -EINVAL);
    EXPECT_EQ(file.call(USBDEVFS_DISCARDURB, negative.urb.get()), -EINVAL);
    EXPECT_THAT(bed.log().requests(), IsEmpty());
}

TEST(DeviceNode, KnowsDriversSpeedAndCapabilities)
{
    Testbed bed(1);
    File file;
    usbdevfs_getdriver driver{};
    driver.interface = 1;
    EXPECT_EQ(file.call(USBDEVFS_GETDRIVER, &driver), 0);
    EXPECT_STREQ(driver.driver, "uvcvideo");
    usbdevfs_disconnect_claim claim{};
    claim.interface = 1;
    EXPECT_EQ(file.call(USBDEVFS_DISCONNECT_CLAIM, &claim), 0);
    EXPECT_EQ(file.call(USBDEVFS_GETDRIVER, &driver), 0);
    EXPECT_STREQ(driver.driver, "usbfs");
    EXPECT_EQ(file.call(USBDEVFS_GET_SPEED), 3);
    std::uint32_t capabilities = 0;
    EXPECT_EQ(file.call(USBDEVFS_GET_CAPABILITIES, &capabilities), 0);
    EXPECT_NE(capabilities & USBDEVFS_CAP_REAP_AFTER_DISCONNECT, 0U);
    EXPECT_EQ(file.call(USBDEVFS_RESET), 0);
}

TEST(DeviceNode, CarriesAControlTransferInOneCall)
{
    Testbed bed(1);
    File file;
    ASSERT_EQ(file.disconnectDriver(0), 0);
    std::array<std::uint8_t, 2> value{};
    usbdevfs_ctrltransfer transfer{ 0xa1, 0x81, 0x0200, 0x0200, 2, 1000, value.data() };
    EXPECT_EQ(file.call(USBDEVFS_CONTROL, &transfer), 2);
    EXPECT_THAT(value, ElementsAre(128, 0));
    transfer.bRequestType = 0x21;
    transfer.bRequest = 0x01;
    value = { 5, 0 };
    EXPECT_EQ(file.call(USBDEVFS_CONTROL, &transfer), 2);
    EXPECT_EQ(bed.device(1).state().value(Control::Brightness), 5);
    transfer.wValue = 0x7f00;
    EXPECT_EQ(file.call(USBDEVFS_CONTROL, &transfer), -EPIPE);
}

TEST(DeviceNode, FailsInTheKernelsOrderWhenItIsUnplugged)
{
    Testbed bed(1);
    File file;
    ASSERT_EQ(file.disconnectDriver(0), 0);
    Transfer waiting = Transfer::status();
    ASSERT_EQ(file.call(USBDEVFS_SUBMITURB, waiting.urb.get()), 0);
    bed.device(1).unplug();
    Transfer late = Transfer::brightness();
    EXPECT_EQ(file.call(USBDEVFS_SUBMITURB, late.urb.get()), -ENODEV);
    int error = 0;
    EXPECT_TRUE(file.writable(20000));
    EXPECT_EQ(file.reap(error), waiting.urb.get());
    EXPECT_EQ(waiting.urb->status, -ESHUTDOWN);
    EXPECT_EQ(file.reap(error), nullptr);
    EXPECT_EQ(error, -ENODEV);
    unsigned interfaceNumber = 0;
    EXPECT_EQ(file.call(USBDEVFS_RELEASEINTERFACE, &interfaceNumber), -ENODEV);
    EXPECT_EQ(open(node, O_RDWR | O_CLOEXEC), -1);
    EXPECT_EQ(errno, ENOENT);

    // A camera that is plugged in again is a new device; the old file stays dead.
    bed.device(1).replug();
    EXPECT_EQ(file.call(USBDEVFS_SUBMITURB, late.urb.get()), -ENODEV);
    File fresh;
    ASSERT_EQ(fresh.disconnectDriver(0), 0);
    EXPECT_EQ(fresh.call(USBDEVFS_SUBMITURB, late.urb.get()), 0);
    EXPECT_EQ(fresh.reap(error), late.urb.get());
}

TEST(DeviceNode, OpensAgainAfterEveryRefusal)
{
    Testbed bed(1);
    for (const int reason : { EACCES, EBUSY, EIO }) {
        bed.device(1).refuseOpen(reason);
        EXPECT_EQ(open(node, O_RDWR | O_CLOEXEC), -1);
        EXPECT_EQ(errno, reason);
    }
    bed.device(1).unplug();
    bed.device(1).replug();
    EXPECT_EQ(open(node, O_RDWR | O_CLOEXEC), -1);
    bed.device(1).clearFaults();
    const File file;
}

int noteEvent(libusb_context *, libusb_device *device, libusb_hotplug_event event, void *list)
{
    static_cast<std::vector<std::pair<int, int>> *>(list)->emplace_back(
        event, libusb_get_device_address(device));
    return 0;
}

TEST(Libusb, HearsOfCamerasThatComeAndGo)
{
    Testbed bed(2);
    libusb_context *context = nullptr;
    ASSERT_EQ(libusb_init(&context), 0);
    std::vector<std::pair<int, int>> events;
    libusb_hotplug_callback_handle callback = 0;
    ASSERT_EQ(libusb_hotplug_register_callback(context,
                  LIBUSB_HOTPLUG_EVENT_DEVICE_ARRIVED | LIBUSB_HOTPLUG_EVENT_DEVICE_LEFT,
                  LIBUSB_HOTPLUG_NO_FLAGS, -1, -1, -1, noteEvent, &events, &callback),
        0);
    const auto waitFor = [&](std::size_t count) {
        const auto end = std::chrono::steady_clock::now() + 20s;
        while (events.size() < count && std::chrono::steady_clock::now() < end) {
            timeval longest{ 1, 0 };
            libusb_handle_events_timeout_completed(context, &longest, nullptr);
        }
    };
    bed.device(2).unplug();
    waitFor(1);
    bed.device(2).replug(40);
    waitFor(2);
    EXPECT_THAT(events,
        ElementsAre(std::pair<int, int>(LIBUSB_HOTPLUG_EVENT_DEVICE_LEFT, 3),
            std::pair<int, int>(LIBUSB_HOTPLUG_EVENT_DEVICE_ARRIVED, 40)));
    libusb_exit(context);
}

// Switched off: umockdev's preload library ends the process when a cable is pulled between its look
// at a device and its connection to it, in about one run of four on a busy machine. Run it by hand
// with --gtest_also_run_disabled_tests.
TEST(Libusb, DISABLED_SurvivesCablesThatArePulledAtAnyMoment)
{
    Testbed bed(2);
    libusb_context *context = nullptr;
    ASSERT_EQ(libusb_init(&context), 0);
    std::atomic<bool> enough = false;
    std::thread hand([&] {
        for (int i = 0; i < 25; ++i) {
            bed.device(1 + i % 2).unplug();
            bed.device(1 + i % 2).replug();
        }
        enough = true;
    });
    int answers = 0;
    while (!enough || answers == 0) {
        libusb_device_handle *handle = libusb_open_device_with_vid_pid(context, 0xf055, 0x8888);
        if (handle == nullptr)
            continue;
        libusb_set_auto_detach_kernel_driver(handle, 1);
        if (libusb_claim_interface(handle, 0) == 0) {
            std::array<unsigned char, 2> value{};
            int result = 0;
            for (int i = 0; i < 20 && result >= 0; ++i) {
                result = libusb_control_transfer(
                    handle, 0xa1, 0x81, 0x0200, 0x0200, value.data(), 2, 5000);
                answers += result == 2 ? 1 : 0;
                EXPECT_TRUE(result == 2 || result == LIBUSB_ERROR_NO_DEVICE) << result;
            }
        }
        libusb_close(handle);
    }
    hand.join();
    libusb_exit(context);
}

} // namespace
