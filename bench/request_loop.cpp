// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

// Reads the first camera's brightness over and over and prints the nanoseconds of each request.

#include <libusb.h>

#include <array>
#include <chrono>
#include <cstdio>
#include <cstdlib>

namespace {

// Of the virtual camera.
constexpr std::uint16_t brightness = 0x0200;
constexpr std::uint16_t processingUnit = 0x0200;

libusb_device_handle *openFirstCamera()
{
    libusb_device **list = nullptr;
    const ssize_t count = libusb_get_device_list(nullptr, &list);
    for (ssize_t i = 0; i < count; ++i) {
        libusb_device_descriptor descriptor{};
        libusb_device_handle *handle = nullptr;
        if (libusb_get_device_descriptor(list[i], &descriptor) == 0
            && descriptor.idProduct == 0x8888 && libusb_open(list[i], &handle) == 0)
            return handle;
    }
    return nullptr;
}

} // namespace

int main(int argc, char *argv[])
{
    const int requests = argc > 1 ? std::atoi(argv[1]) : 1;
    libusb_init(nullptr);
    libusb_device_handle *const camera = openFirstCamera();
    if (!camera)
        return 1;
    libusb_set_auto_detach_kernel_driver(camera, 1);
    libusb_claim_interface(camera, 0);
    for (int i = 0; i < requests; ++i) {
        std::array<unsigned char, 2> value{};
        const auto start = std::chrono::steady_clock::now();
        const int got = libusb_control_transfer(
            camera, 0xa1, 0x81, brightness, processingUnit, value.data(), value.size(), 1000);
        const auto taken = std::chrono::steady_clock::now() - start;
        if (got != static_cast<int>(value.size()))
            return 1;
        std::printf("%lld\n",
            static_cast<long long>(
                std::chrono::duration_cast<std::chrono::nanoseconds>(taken).count()));
    }
    return 0;
}
