// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

// The device node beneath plain system calls.

#include "virtual_camera/testbed/testbed.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <fcntl.h>
#include <filesystem>
#include <gmock/gmock.h>
#include <linux/usbdevice_fs.h>
#include <memory>
#include <poll.h>
#include <sys/ioctl.h>
#include <sys/socket.h>
#include <sys/un.h>
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

// How long a program with nothing to reap is kept; the least of some, as the machine may be busy.
template<typename Prepare>
std::chrono::steady_clock::duration vainReapTime(File &idle, Prepare prepare)
{
    auto least = std::chrono::steady_clock::duration::max();
    for (int i = 0; i < 20; ++i) {
        prepare();
        int error = 0;
        const auto start = std::chrono::steady_clock::now();
        EXPECT_EQ(idle.reap(error), nullptr);
        least = std::min(least, std::chrono::steady_clock::now() - start);
    }
    return least;
}

TEST(DeviceNode, SlowsAProgramDownThatReapsInVainTwiceInARow)
{
    Testbed bed(1);
    File busy;
    File idle;
    Transfer done = Transfer::deviceDescriptor();
    int error = 0;
    const auto oneAnswered = [&] {
        busy.reap(error);
        idle.reap(error);
        ASSERT_EQ(busy.call(USBDEVFS_SUBMITURB, done.urb.get()), 0);
        ASSERT_TRUE(idle.writable(20000));
    };
    EXPECT_LT(vainReapTime(idle, oneAnswered), 1ms);
    EXPECT_GE(vainReapTime(idle, [] { }), 1ms);
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

int openDescriptors()
{
    const auto all = std::filesystem::directory_iterator("/proc/self/fd");
    return static_cast<int>(std::distance(begin(all), end(all)));
}

TEST(DeviceNode, UsesNoFileDescriptorsUpWithEveryReplug)
{
    Testbed bed(1);
    const int before = openDescriptors();
    for (int i = 0; i < 20; ++i) {
        bed.device(1).unplug();
        bed.device(1).replug();
    }
    EXPECT_EQ(openDescriptors(), before);
}

TEST(DeviceNode, MayBePluggedByManyHandsAtOnce)
{
    Testbed bed(4);
    std::vector<std::thread> hands;
    for (int number = 1; number <= bed.size(); ++number) {
        hands.emplace_back([&device = bed.device(number)] {
            for (int i = 0; i < 10; ++i) {
                device.unplug();
                device.replug();
            }
        });
    }
    for (std::thread &hand : hands)
        hand.join();
    for (int number = 1; number <= bed.size(); ++number)
        EXPECT_TRUE(bed.device(number).pluggedIn());
    const File file("/dev/bus/usb/001/005");
}

TEST(DeviceNode, IsNotRefusedForWhatIsUnpluggedFromItsAddress)
{
    Testbed bed(2);
    bed.device(1).unplug();
    bed.device(2).unplug();
    bed.device(2).replug(bed.device(1).address());
    bed.device(1).refuseOpen(EACCES);
    const File file;
    bed.device(1).replug(40);
    EXPECT_EQ(open("/dev/bus/usb/001/040", O_RDWR | O_CLOEXEC), -1);
    EXPECT_EQ(errno, EACCES);
}

TEST(DeviceNode, WaitsForASlowCameraInOneCall)
{
    Testbed bed(1);
    File file;
    ASSERT_EQ(file.disconnectDriver(0), 0);
    std::array<std::uint8_t, 2> value{};
    usbdevfs_ctrltransfer transfer{ 0xa1, 0x81, 0x0200, 0x0200, 2, 50, value.data() };
    bed.device(1).delay(60s);
    EXPECT_EQ(file.call(USBDEVFS_CONTROL, &transfer), -ETIMEDOUT);
    EXPECT_THAT(bed.log().lines(), ElementsAre("cam1 GET_CUR brightness cancelled"));
    bed.device(1).delay(30ms);
    transfer.timeout = 20000;
    EXPECT_EQ(file.call(USBDEVFS_CONTROL, &transfer), 2);
}

// A program that is stopped in the middle of a system call: umockdev asks for its memory and gets
// no answer.
class StoppedProgram
{
public:
    StoppedProgram(const std::string &root, const char *path)
        : m_socket(socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0))
    {
        sockaddr_un address{};
        address.sun_family = AF_UNIX;
        (root + "/ioctl/" + path).copy(address.sun_path, sizeof address.sun_path - 1);
        EXPECT_EQ(connect(m_socket, reinterpret_cast<sockaddr *>(&address), sizeof address), 0);
    }
    ~StoppedProgram() { close(m_socket); }
    StoppedProgram(const StoppedProgram &) = delete;
    StoppedProgram &operator=(const StoppedProgram &) = delete;

    void claimInterface()
    {
        constexpr unsigned long makeCall = 1;
        constexpr unsigned long readMemory = 5;
        std::array<unsigned long, 3> message{ makeCall, USBDEVFS_CLAIMINTERFACE, 0x1000 };
        EXPECT_EQ(send(m_socket, message.data(), sizeof message, 0), ssize_t{ sizeof message });
        EXPECT_EQ(recv(m_socket, message.data(), sizeof message, 0), ssize_t{ sizeof message });
        EXPECT_EQ(message[0], readMemory);
    }

private:
    int m_socket;
};

TEST(DeviceNode, ServesOtherProgramsWhileOneIsStopped)
{
    Testbed bed(2);
    StoppedProgram stopped(bed.rootDirectory(), node);
    stopped.claimInterface();
    for (const char *path : { node, "/dev/bus/usb/001/003" }) {
        File file(path);
        EXPECT_EQ(file.call(USBDEVFS_GET_SPEED), 3);
        EXPECT_EQ(file.disconnectDriver(0), 0);
    }
    EXPECT_EQ(bed.device(1).state().value(Control::Brightness), 128);
    bed.device(1).unplug();
    bed.device(1).replug();
}

} // namespace
