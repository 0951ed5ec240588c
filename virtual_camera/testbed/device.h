// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT
#pragma once

#include "virtual_camera/camera/camera_state.h"
#include "virtual_camera/camera/mechanics.h"
#include "virtual_camera/camera/remote_order.h"
#include "virtual_camera/usb/bus.h"
#include "virtual_camera/usb/device_description.h"
#include "virtual_camera/usb/faults.h"
#include "virtual_camera/usb/request_log.h"

#include <functional>
#include <memory>
#include <mutex>
#include <optional>

namespace virtual_camera {

/// A device of a testbed, from the outside: what a hand at the cable or a broken firmware can do.
/// Everything is in force when the function returns. Any thread may call.
class Device
{
public:
    Device(const Device &) = delete;
    Device &operator=(const Device &) = delete;

    int number() const { return m_number; } ///< from 1, as in the log
    int address() const;                    ///< on the bus; the last one while unplugged
    bool pluggedIn() const;
    bool isCamera() const { return m_description.kind == DeviceDescription::Kind::Camera; }

    /// Transfers under way fail, then every call, then programs are told. Nothing when it is
    /// unplugged already.
    void unplug();
    /// At the same address, or at another one that is free. The camera is switched on: it remembers
    /// its presets and the ranges that were set, and nothing else. Nothing when it is plugged in
    /// already; throws std::invalid_argument for an address that is taken or out of 2 to
    /// 127 (1 is the root hub's).
    void replug(std::optional<int> address = std::nullopt);

    /// Control requests that a slow camera has not answered yet.
    int requestsUnderWay() const { return m_cable->requestsUnderWay(); }
    /// Files that programs have open on it, from before it was unplugged, too.
    int openFiles() const { return m_cable->openFiles(); }

    /// What the camera is doing now; only for cameras, as is what follows.
    CameraState state() const;
    CameraDescription description() const;
    /// The camera announces another range from now on, and the control takes its cur. The field
    /// tells tilt (1) from pan (0).
    void setRange(Control control, const Range &range, std::size_t field = 0);

    /// Moves the camera as a remote control does. Throws std::invalid_argument for a place out of
    /// range, a preset that is not stored, and a camera without power; then nothing moves.
    void go(const RemoteOrder &order);

    /// The fault is in force until it is taken back or replaced by one with the same effect and
    /// target.
    void add(const Fault &fault);
    /// Takes back all faults with this effect.
    void remove(Fault::Effect effect);
    /// All requests to the control stall, or only those with one code.
    void stall(Control control);
    void stall(Control control, RequestCode code);
    void stallEverything();
    /// Takes every stall back.
    void unstall();
    /// Answers about the control are cut to so many bytes, possibly none.
    void answerShort(Control control, std::size_t bytes);
    void answerFully();
    /// The camera takes so long for each request, also for those that wait already.
    void delay(std::chrono::milliseconds time);
    /// Opening fails with this errno (EACCES, EBUSY, ...); 0 lets it through again.
    void refuseOpen(int error);
    /// Opening works, but another program holds the interfaces.
    void refuseClaim(bool refuse = true);
    Faults faults() const { return m_cable->faults(); }
    void clearFaults();

private:
    friend class Testbed;
    /// The bus, and the lock for plugging.
    struct Socket
    {
        std::unique_ptr<Bus> bus;
        mutable std::mutex mutex;
    };
    Device(Socket &socket, int number, int port, DeviceDescription description, const Clock &clock,
        const std::shared_ptr<RequestLog> &log);
    void plugIn();
    void pullOut();
    void change(const std::function<void(Faults &)> &how);

    Socket &m_socket;
    const int m_number;
    const int m_port;
    const DeviceDescription m_description;
    const std::shared_ptr<Cable> m_cable;
    int m_address;
    bool m_pluggedIn = false;
};

} // namespace virtual_camera
