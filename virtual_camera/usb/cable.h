// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT
#pragma once

#include "virtual_camera/camera/camera_model.h"
#include "virtual_camera/usb/faults.h"
#include "virtual_camera/usb/firmware.h"
#include "virtual_camera/usb/request_log.h"

#include <chrono>
#include <cstdint>
#include <deque>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <vector>

namespace virtual_camera {

/// The cable to one device: takes requests one after the other and gives the answers, late as those
/// of a slow camera and with its faults. Whoever uses it shares it. Any thread may call.
class Cable
{
public:
    struct Answered
    {
        std::uint64_t ticket = 0;
        LogRecord::Result result = LogRecord::Result::Ok;
        Bytes data; ///< what the host reads
    };

    /// The number is the device's in the log. Without a camera it is some other device. The clock
    /// is that of the delays.
    Cable(int number, std::unique_ptr<CameraModel> camera, Firmware firmware,
        std::shared_ptr<RequestLog> log, Clock clock);

    const Descriptors &descriptors() const { return m_firmware.descriptors(); }
    const InterfaceLayout &layout() const { return m_firmware.layout(); }

    // For the end in the computer. A file is a program's, from 1; it stands in the log.

    /// Puts the request last in the queue; the answer comes under this ticket.
    std::uint64_t send(int file, ControlRequest request);
    /// Takes a request back; false when it has been answered.
    bool cancel(std::uint64_t ticket);
    /// The answers that are due.
    std::vector<Answered> collect();
    /// How long until there is something to collect; nothing while no request waits.
    std::optional<std::chrono::microseconds> nextAnswer() const;
    /// Past the queue and without delay.
    Answered answerNow(int file, ControlRequest request);
    void opened(int file);
    void closed(int file);
    /// The bus resets the device, which is a power cycle to it.
    void reset(int file);
    /// The bell rings, on whatever thread, when faults have changed.
    void plugIn(std::function<void()> bell);
    /// No request that waits is answered any more, and the power is gone.
    void pullOut();

    // For the hand at the device.

    Faults faults() const;
    void changeFaults(const std::function<void(Faults &)> &how);
    bool claimRefused() const;
    int openError() const;
    /// Throws std::logic_error when it is no camera.
    void withCamera(const std::function<void(CameraModel &)> &what) const;
    int requestsUnderWay() const;
    int openFiles() const;
    void logEvent(LogRecord::Event event, int file = 0, int address = 0) const;

private:
    struct Waiting
    {
        std::uint64_t ticket = 0;
        int file = 0;
        ControlRequest request;
        std::chrono::microseconds submitted;
    };

    Answered perform(Waiting waiting);
    /// What a device does that gets power, is reset or configured.
    void switchOn();
    void logRequest(Waiting waiting, LogRecord::Result result) const;

    const int m_number;
    const std::shared_ptr<RequestLog> m_log;
    const Clock m_clock;

    mutable std::mutex m_mutex; // guards all that follows
    const std::unique_ptr<CameraModel> m_camera;
    Firmware m_firmware;
    Faults m_faults;
    std::deque<Waiting> m_queue;
    std::chrono::microseconds m_begun{ 0 }; // when the first of the queue came to the device
    std::uint64_t m_lastTicket = 0;
    int m_openFiles = 0;
    std::function<void()> m_bell;
};

} // namespace virtual_camera
