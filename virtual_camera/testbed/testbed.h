// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT
#pragma once

#include "virtual_camera/testbed/device.h"

#include <atomic>
#include <memory>
#include <string>
#include <vector>

namespace virtual_camera {

/// Devices on an emulated bus, for the programs that run beneath umockdev's preload library: this
/// one, if it does, and those that it starts. One testbed at a time in a process.
class Testbed
{
public:
    /// So many cameras, alike but for their serial numbers.
    explicit Testbed(int cameras = 1);
    /// The devices are plugged in so that libusb lists them in this order.
    explicit Testbed(std::vector<DeviceDescription> devices, Clock clock = {},
        std::unique_ptr<Bus> bus = nullptr); ///< null: umockdev's
    ~Testbed();
    Testbed(const Testbed &) = delete;
    Testbed &operator=(const Testbed &) = delete;

    int size() const { return static_cast<int>(m_devices.size()); }
    /// Counted from 1, as in the log. Throws std::out_of_range.
    Device &device(int number);
    RequestLog &log() { return *m_log; }
    const RequestLog &log() const { return *m_log; }
    /// Files that programs have open on the devices, those that were unplugged too.
    int openFiles() const;
    /// Where the emulated /sys and /dev are.
    std::string rootDirectory() const;

private:
    Device::Socket m_socket;
    std::shared_ptr<RequestLog> m_log;
    std::vector<std::unique_ptr<Device>> m_devices;
};

/// A clock that stands until it is told to go on, for tests that do not want to wait for motors.
class ManualClock
{
public:
    Clock clock() const
    {
        return [time = m_time] { return std::chrono::microseconds(time->load()); };
    }
    void advance(std::chrono::microseconds by) { *m_time += by.count(); }

private:
    std::shared_ptr<std::atomic<std::int64_t>> m_time =
        std::make_shared<std::atomic<std::int64_t>>(0);
};

} // namespace virtual_camera
