// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT
#include "virtual_camera/testbed/device_inside.h"

#include <utility>

namespace virtual_camera {

namespace {

std::chrono::microseconds steadyTime()
{
    return std::chrono::duration_cast<std::chrono::microseconds>(
        std::chrono::steady_clock::now().time_since_epoch());
}

// libusb lists the device with the last name in /sys first. Names are compared as texts, so
// all ports of a testbed have the same number of digits.
int portFor(int number, int count)
{
    constexpr int oneDigit = 9;
    return (count <= oneDigit ? 10 : 100) - number;
}

} // namespace

Testbed::Testbed(int count) : Testbed(DeviceDescription::ptzCameras(count)) { }

Testbed::Testbed(std::vector<DeviceDescription> devices, Clock clock)
    : m_bus(std::make_unique<EmulatedBus>())
{
    const Clock time = clock ? std::move(clock) : Clock(steadyTime);
    const int count = static_cast<int>(devices.size());
    for (int number = 1; number <= count; ++number) {
        auto inside = std::make_unique<Device::Inside>(*m_bus, m_log, number,
            portFor(number, count), std::move(devices[static_cast<std::size_t>(number - 1)]), time);
        inside->plugIn();
        m_devices.push_back(std::unique_ptr<Device>(new Device(std::move(inside))));
    }
}

Testbed::~Testbed()
{
    for (const std::unique_ptr<Device> &device : m_devices) {
        const std::lock_guard lock(device->m_inside->plugMutex);
        if (device->m_inside->plug)
            device->m_inside->pullOut();
    }
    // umockdev's thread ends with the bus; only then may the devices go.
    m_bus.reset();
}

Device &Testbed::device(int number) { return *m_devices.at(static_cast<std::size_t>(number - 1)); }

int Testbed::openFiles() const
{
    int count = 0;
    for (const std::unique_ptr<Device> &device : m_devices)
        count += device->openFiles();
    return count;
}

std::string Testbed::rootDirectory() const { return m_bus->rootDirectory(); }

} // namespace virtual_camera
