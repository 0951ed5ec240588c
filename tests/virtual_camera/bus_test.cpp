// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

// The emulated bus beneath libusb and beneath plain system calls: /sys, uevents, /dev, hot-unplug.

#include "virtual_camera/testbed/testbed.h"

#include <array>
#include <atomic>
#include <cerrno>
#include <cstdio>
#include <dirent.h>
#include <fcntl.h>
#include <filesystem>
#include <gmock/gmock.h>
#include <libusb.h>
#include <linux/netlink.h>
#include <map>
#include <memory>
#include <sstream>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <thread>
#include <unistd.h>

using namespace virtual_camera;
using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

constexpr char node[] = "/dev/bus/usb/001/002";

std::string fileText(const std::string &path)
{
    const std::unique_ptr<std::FILE, int (*)(std::FILE *)> file(
        std::fopen(path.c_str(), "r"), std::fclose);
    std::array<char, 1024> text{};
    if (!file || std::fgets(text.data(), text.size(), file.get()) == nullptr)
        return "(none)";
    return text.data();
}

TEST(Sysfs, ShowsADeviceAndItsInterfacesBelowTheRootHub)
{
    Testbed bed(1);
    const std::string devices = "/sys/bus/usb/devices/";
    const std::pair<const char *, const char *> expected[] = {
        { "1-9/dev", "189:1\n" },
        { "1-9/devnum", "2\n" },
        { "1-9/devpath", "9\n" },
        { "1-9/bNumInterfaces", " 2\n" },
        { "1-9/bMaxPower", "500mA\n" },
        { "1-9/idProduct", "8888\n" },
        { "1-9:1.0/bInterfaceClass", "0e\n" },
        { "1-9:1.0/bNumEndpoints", "01\n" },
        { "1-9:1.1/bInterfaceSubClass", "02\n" },
        { "1-9:1.1/bNumEndpoints", "00\n" },
        { "usb1/bDeviceClass", "09\n" },
        { "usb1/devnum", "1\n" },
        { "usb1/1-9/serial", "000001\n" },
        { "1-0:1.0/bInterfaceClass", "09\n" },
    };
    for (const auto &[name, text] : expected)
        EXPECT_EQ(fileText(devices + name), text) << name;
    EXPECT_EQ(fileText("/sys/dev/char/189:1/product"), "Virtual PTZ Camera\n");
    struct stat status{};
    ASSERT_EQ(stat(node, &status), 0);
    EXPECT_EQ(status.st_rdev, makedev(189, 1));
    bed.device(1).unplug();
    for (const char *gone : { "1-9", "1-9:1.0", "usb1/1-9" })
        EXPECT_EQ(access((devices + gone).c_str(), F_OK), -1) << gone;
}

// What a program that listens to udev gets.
class Listener
{
public:
    Listener() : m_socket(socket(AF_NETLINK, SOCK_RAW | SOCK_CLOEXEC, NETLINK_KOBJECT_UEVENT))
    {
        sockaddr_nl address{};
        address.nl_family = AF_NETLINK;
        EXPECT_EQ(bind(m_socket, reinterpret_cast<sockaddr *>(&address), sizeof address), 0);
    }
    ~Listener() { close(m_socket); }
    Listener(const Listener &) = delete;
    Listener &operator=(const Listener &) = delete;

    // The properties of the next event; empty when there is none.
    std::map<std::string, std::string> next()
    {
        std::array<char, 8192> buffer{};
        const ssize_t size = recv(m_socket, buffer.data(), buffer.size(), MSG_DONTWAIT);
        constexpr std::size_t header = 40;
        std::map<std::string, std::string> properties;
        if (size < static_cast<ssize_t>(header))
            return properties;
        std::istringstream text(
            std::string(buffer.data() + header, static_cast<std::size_t>(size) - header));
        for (std::string line; std::getline(text, line, '\0');)
            properties[line.substr(0, line.find('='))] = line.substr(line.find('=') + 1);
        return properties;
    }

private:
    int m_socket;
};

TEST(Uevents, AnnounceADeviceOnceAndComplete)
{
    Testbed bed(1);
    bed.device(1).unplug();
    Listener listener;
    bed.device(1).replug();
    auto event = listener.next();
    EXPECT_EQ(event["ACTION"], "add");
    EXPECT_EQ(event["SUBSYSTEM"], "usb");
    EXPECT_EQ(event["DEVTYPE"], "usb_device");
    EXPECT_EQ("/dev/" + event["DEVNAME"], node);
    EXPECT_TRUE(std::filesystem::exists("/sys" + event["DEVPATH"] + "/descriptors"));
    EXPECT_THAT(listener.next(), IsEmpty());
    bed.device(1).unplug();
    EXPECT_EQ(listener.next()["ACTION"], "remove");
    EXPECT_THAT(listener.next(), IsEmpty());
}

TEST(Uevents, AreLostOnAListenerThatDoesNotRead)
{
    Testbed bed(1);
    Listener sleeping;
    for (int i = 0; i < 30; ++i) {
        bed.device(1).unplug();
        bed.device(1).replug();
    }
    EXPECT_EQ(sleeping.next()["ACTION"], "remove");
    Listener listener;
    bed.device(1).unplug();
    EXPECT_EQ(listener.next()["ACTION"], "remove");
}

// A device node of the computer's own, next to the emulated ones.
class OwnDevice
{
public:
    OwnDevice()
    {
        std::error_code error;
        std::filesystem::create_directories(m_folder, error);
        const int file = ::open(path(), O_CREAT | O_RDWR | O_CLOEXEC, 0600);
        m_made = file >= 0;
        if (m_made)
            ::close(file);
    }
    ~OwnDevice()
    {
        if (m_made)
            unlink(path());
        rmdir(m_folder);
        if (!m_hadFolder) {
            rmdir("/dev/bus/usb");
            rmdir("/dev/bus");
        }
    }
    OwnDevice(const OwnDevice &) = delete;
    OwnDevice &operator=(const OwnDevice &) = delete;

    bool made() const { return m_made; }
    static const char *path() { return "/dev/bus/usb/250/003"; }

private:
    const bool m_hadFolder = std::filesystem::exists("/dev/bus/usb");
    const char *m_folder = "/dev/bus/usb/250";
    bool m_made;
};

TEST(DeviceFolder, ShowsNothingOfTheComputersOwn)
{
    const OwnDevice own;
    if (!own.made())
        GTEST_SKIP() << "cannot make a device node: not root";
    ASSERT_EQ(access(own.path(), F_OK), 0);
    Testbed bed(1);
    const auto missing = [](int result) { return result == -1 && errno == ENOENT; };
    struct stat status{};
    EXPECT_TRUE(missing(open(own.path(), O_RDWR | O_CLOEXEC)));
    EXPECT_TRUE(missing(openat(AT_FDCWD, own.path(), O_RDWR | O_CLOEXEC)));
    EXPECT_TRUE(missing(access(own.path(), F_OK)));
    EXPECT_TRUE(missing(stat(own.path(), &status)));
    EXPECT_TRUE(missing(lstat(own.path(), &status)));
    EXPECT_TRUE(missing(fstatat(AT_FDCWD, own.path(), &status, 0)));
    EXPECT_EQ(fopen(own.path(), "r"), nullptr);
    EXPECT_EQ(opendir("/dev/bus/usb/250"), nullptr);
    EXPECT_EQ(stat(node, &status), 0);
    EXPECT_TRUE(S_ISCHR(status.st_mode));
    bed.device(1).unplug();
    EXPECT_TRUE(missing(stat(node, &status)));
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

TEST(Libusb, GetsAnswersAgainWhenACameraIsNotSlowAnyMore)
{
    Testbed bed(1);
    libusb_context *context = nullptr;
    ASSERT_EQ(libusb_init(&context), 0);
    libusb_device_handle *handle = libusb_open_device_with_vid_pid(context, 0xf055, 0x8888);
    ASSERT_NE(handle, nullptr);
    libusb_set_auto_detach_kernel_driver(handle, 1);
    ASSERT_EQ(libusb_claim_interface(handle, 0), 0);
    std::array<unsigned char, 2> value{};
    const auto ask = [&](unsigned timeout) {
        return libusb_control_transfer(
            handle, 0xa1, 0x81, 0x0200, 0x0200, value.data(), 2, timeout);
    };
    bed.device(1).delay(60s);
    EXPECT_EQ(ask(50), LIBUSB_ERROR_TIMEOUT);
    bed.device(1).clearFaults();
    EXPECT_EQ(ask(20000), 2);
    libusb_close(handle);
    libusb_exit(context);
}

TEST(Libusb, SurvivesCablesThatArePulledAtAnyMoment)
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
