// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT
#pragma once

#include "virtual_camera/camera/camera_state.h"
#include "virtual_camera/camera/mechanics.h"
#include "virtual_camera/usb/device_description.h"
#include "virtual_camera/usb/faults.h"
#include "virtual_camera/usb/request_log.h"

#include <atomic>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace virtual_camera {

class EmulatedBus;

// A device of a testbed, from the outside: what a hand at the cable or a broken firmware can do.
// Everything is in force when the function returns. Any thread may call.
class Device
{
public:
    ~Device();
    Device(const Device &) = delete;
    Device &operator=(const Device &) = delete;

    int number() const;  // from 1, as in the log
    int address() const; // on the bus; the last one while unplugged
    bool pluggedIn() const;
    bool isCamera() const;

    // Transfers under way fail, then every call, then programs are told. Nothing when it is
    // unplugged already.
    void unplug();
    // At the same address, or at another one that is free. The camera has stopped moving and
    // remembers everything else. Nothing when it is plugged in already; throws
    // std::invalid_argument for an address that is taken or out of 1 to 127.
    void replug(std::optional<int> address = std::nullopt);

    // Control requests that a slow camera has not answered yet.
    int requestsUnderWay() const;
    // Files that programs have open on it, from before it was unplugged, too.
    int openFiles() const;

    // What the camera is doing now; only for cameras, as is what follows.
    CameraState state() const;
    CameraDescription description() const;
    // The camera announces another range from now on, and the control takes its cur.
    void setRange(Control control, const Range &range);

    // All requests to the control stall, or only those with one code.
    void stall(Control control);
    void stall(Control control, RequestCode code);
    void stallEverything();
    // Takes every stall back.
    void unstall();
    // Answers about the control are cut to so many bytes, possibly none.
    void answerShort(Control control, std::size_t bytes);
    void answerFully();
    // The camera takes so long for each request.
    void delay(std::chrono::milliseconds time);
    // Opening fails with this errno (EACCES, EBUSY, ...); 0 lets it through again.
    void refuseOpen(int error);
    // Opening works, but another program holds the interfaces.
    void refuseClaim(bool refuse = true);
    Faults faults() const;
    void clearFaults();

private:
    friend class Testbed;
    struct Inside;
    explicit Device(std::unique_ptr<Inside> inside);
    void change(const std::function<void(Faults &)> &how);

    std::unique_ptr<Inside> m_inside;
};

// Devices on an emulated bus, for the programs that run beneath umockdev's preload library: this
// one, if it does, and those that it starts. One testbed at a time in a process.
class Testbed
{
public:
    // So many cameras, alike but for their serial numbers.
    explicit Testbed(int cameras = 1);
    // The devices are plugged in so that libusb lists them in this order.
    explicit Testbed(std::vector<DeviceDescription> devices, Clock clock = {});
    ~Testbed();
    Testbed(const Testbed &) = delete;
    Testbed &operator=(const Testbed &) = delete;

    int size() const { return static_cast<int>(m_devices.size()); }
    // Counted from 1, as in the log. Throws std::out_of_range.
    Device &device(int number);
    RequestLog &log() { return m_log; }
    const RequestLog &log() const { return m_log; }
    // Files that programs have open on the devices, those that were unplugged too.
    int openFiles() const;
    // Where the emulated /sys and /dev are.
    std::string rootDirectory() const;

private:
    std::unique_ptr<EmulatedBus> m_bus;
    RequestLog m_log;
    std::vector<std::unique_ptr<Device>> m_devices;
};

// A clock that stands until it is told to go on, for tests that do not want to wait for motors.
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
