// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT
#include "virtual_camera/testbed/testbed.h"

#include "virtual_camera/umockdev/umockdev_bus.h"

#include <utility>

namespace virtual_camera {

namespace {

// libusb lists the device with the last name in /sys first. Names are compared as texts, so
// all ports of a testbed have the same number of digits.
int portsFor(int count) { return count <= 9 ? 9 : 99; }
int portFor(int number, int count) { return portsFor(count) + 1 - number; }

} // namespace

Testbed::Testbed(int cameras) : Testbed(DeviceDescription::ptzCameras(cameras)) { }

Testbed::Testbed(std::vector<DeviceDescription> devices, Clock clock, std::unique_ptr<Bus> bus)
    : m_log(std::make_shared<RequestLog>(clock ? clock : steadyClock()))
{
    const int count = static_cast<int>(devices.size());
    m_socket.bus = bus ? std::move(bus) : std::make_unique<UmockdevBus>(portsFor(count));
    const Clock time = clock ? std::move(clock) : steadyClock();
    for (int number = 1; number <= count; ++number) {
        DeviceDescription &description = devices[static_cast<std::size_t>(number - 1)];
        m_devices.push_back(std::unique_ptr<Device>(new Device(
            m_socket, number, portFor(number, count), std::move(description), time, m_log)));
    }
}

Testbed::~Testbed()
{
    {
        const std::lock_guard lock(m_socket.mutex);
        m_socket.bus.reset();
    }
    // A program may close its files even later, and the log outlives the one who reads it.
    m_log->setWriter(nullptr);
}

Device &Testbed::device(int number) { return *m_devices.at(static_cast<std::size_t>(number - 1)); }

int Testbed::openFiles() const
{
    int count = 0;
    for (const std::unique_ptr<Device> &device : m_devices)
        count += device->openFiles();
    return count;
}

std::string Testbed::rootDirectory() const { return m_socket.bus->rootDirectory(); }

} // namespace virtual_camera
