// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

// Runs a command beside a USB device that answers every request with zeros: the least that an
// emulated device can do, straight on umockdev.

#include <umockdev.h>

#include <array>
#include <cerrno>
#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <linux/usbdevice_fs.h>
#include <string>
#include <sys/ioctl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

const char *const device = R"(P: /devices/pci0000:00/0000:00:14.0/usb1/1-1
N: bus/usb/001/002
E: DEVNAME=/dev/bus/usb/001/002
E: DEVTYPE=usb_device
E: SUBSYSTEM=usb
E: BUSNUM=001
E: DEVNUM=002
E: MAJOR=189
E: MINOR=1
A: busnum=1
A: devnum=2
A: speed=480
A: idVendor=1209
A: idProduct=8888
A: bConfigurationValue=1
H: descriptors=12010002000000400912888800010000000109021200010100803209040000000e010000
)";

UMockdevIoctlData *submitted = nullptr;
UMockdevIoctlData *buffer = nullptr;

int submit(UMockdevIoctlData *argument)
{
    submitted = umockdev_ioctl_data_resolve(argument, 0, sizeof(usbdevfs_urb), nullptr);
    const auto *urb = reinterpret_cast<const usbdevfs_urb *>(submitted->data);
    buffer = umockdev_ioctl_data_resolve(
        submitted, offsetof(usbdevfs_urb, buffer), static_cast<gsize>(urb->buffer_length), nullptr);
    return 0;
}

int reap(UMockdevIoctlData *argument)
{
    if (!submitted)
        return EAGAIN;
    constexpr int setupSize = 8;
    std::array<guint8, 2> zeros{};
    std::array<int, 1> length{ zeros.size() };
    umockdev_ioctl_data_update(buffer, setupSize, zeros.data(), zeros.size());
    umockdev_ioctl_data_update(submitted, offsetof(usbdevfs_urb, actual_length),
        reinterpret_cast<guint8 *>(length.data()), sizeof length);
    UMockdevIoctlData *const slot =
        umockdev_ioctl_data_resolve(argument, 0, sizeof(void *), nullptr);
    umockdev_ioctl_data_set_ptr(slot, 0, submitted);
    g_object_unref(slot);
    g_object_unref(buffer);
    g_object_unref(submitted);
    submitted = nullptr;
    return 0;
}

gboolean onIoctl(UMockdevIoctlBase * /*handler*/, UMockdevIoctlClient *client, void * /*unused*/)
{
    int error = 0;
    switch (umockdev_ioctl_client_get_request(client)) {
    case USBDEVFS_SUBMITURB:
        error = submit(umockdev_ioctl_client_get_arg(client));
        break;
    case USBDEVFS_REAPURBNDELAY:
        error = reap(umockdev_ioctl_client_get_arg(client));
        break;
    default:
        error = ENOTTY;
    }
    umockdev_ioctl_client_complete(client, error == 0 ? 0 : -1, error);
    return TRUE;
}

} // namespace

int main(int /*argc*/, char *argv[])
{
    UMockdevTestbed *const testbed = umockdev_testbed_new();
    UMockdevIoctlBase *const handler = umockdev_ioctl_base_new();
    g_signal_connect(handler, "handle-ioctl", G_CALLBACK(onIoctl), nullptr);
    GError *error = nullptr;
    if (!umockdev_testbed_add_from_string(testbed, device, &error)
        || !umockdev_testbed_attach_ioctl(testbed, "/dev/bus/usb/001/002", handler, &error)) {
        std::fprintf(stderr, "%s\n", error->message);
        return 1;
    }
    const pid_t child = fork();
    if (child == 0) {
        const std::string root = umockdev_testbed_get_root_dir(testbed);
        setenv("UMOCKDEV_DIR", root.c_str(), 1);
        setenv("LD_PRELOAD", "libumockdev-preload.so.0", 1);
        execvp(argv[1], argv + 1);
        _exit(127);
    }
    int status = 0;
    waitpid(child, &status, 0);
    g_object_unref(testbed);
    return WIFEXITED(status) ? WEXITSTATUS(status) : 1;
}
