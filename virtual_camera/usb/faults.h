// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT
#pragma once

#include "virtual_camera/camera/control_request.h"
#include "virtual_camera/camera/control_table.h"
#include "virtual_camera/usb/log_record.h"

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <random>
#include <string>
#include <vector>

namespace virtual_camera {

/// Which requests a fault is about.
struct FaultTarget
{
    enum class Kind : std::uint8_t {
        Controls,    ///< every request of the USB Video Class
        OneControl,  ///< those to one control
        Descriptors, ///< reads of descriptors, which programs send for strings
        Stops        ///< relative controls set to stand still
    };

    Kind kind = Kind::Controls;
    Control control = Control::PantiltAbsolute;
    std::optional<RequestCode> code; ///< of a control: only SET_CUR, only GET_CUR, ...

    bool matches(const ControlRequest &request) const;
};

/// When a fault strikes, counting the requests that it is about from the moment it was set.
struct FaultSchedule
{
    enum class Kind : std::uint8_t {
        Always,
        At,    ///< only the request with this number, from 1
        Every, ///< each request whose number is a multiple
        Share  ///< this many percent of them, drawn by the seed
    };

    Kind kind = Kind::Always;
    unsigned number = 0;
    std::uint32_t seed = 1;
};

/// Something that a device does wrong with a request.
struct Fault
{
    enum class Effect : std::uint8_t {
        Stall,
        Short,         ///< the answer is cut to so many bytes
        Long,          ///< the answer is filled up with zeros to so many bytes
        Wrong,         ///< every bit of the answer is inverted
        ProtocolError, ///< garbage on the wire, EPROTO; the camera never sees the request
        NoResponse,    ///< silence on the wire, ETIME; likewise
        LoseStop       ///< the request is acknowledged, but the motor runs on
    };

    Effect effect = Effect::Stall;
    FaultTarget target;
    FaultSchedule schedule;
    std::size_t bytes = 0; ///< for Short and Long

    /// Whether it strikes this request, which counts if the fault is about it.
    bool strikes(const ControlRequest &request);

private:
    unsigned m_seen = 0;
    std::minstd_rand m_random; // the same numbers wherever it is compiled
};

/// "stall", "short", "lose-stop": the words of the control commands.
const char *faultWord(Fault::Effect effect);
/// What the fault is about, how and when, as in a control command: "gamma GET_MIN at 3".
std::string faultText(const Fault &fault);

/// What becomes of one request.
struct Damage
{
    /// The device gives no answer, but this.
    std::optional<LogRecord::Result> instead;
    bool stopLost = false;
    bool inverted = false;
    std::optional<std::size_t> shortened; ///< to so many bytes
    std::optional<std::size_t> lengthened;

    /// Spoils an answer to a host that asked for so many bytes, and says what came of it. More than
    /// it asked for is babble, of which the host keeps what it has room for.
    LogRecord::Result spoil(Bytes &answer, std::size_t asked) const;
};

/// What is wrong with a device at the moment.
struct Faults
{
    std::vector<Fault> requests;
    /// How long the device takes for each request, one after the other.
    std::chrono::milliseconds delay{ 0 };
    /// Another program holds the device: no interface can be claimed.
    bool claimRefused = false;
    /// errno with which opening the device fails (EACCES, EBUSY, ...); 0 when it does not.
    int openError = 0;

    /// A fault with the same effect and target takes the place of the earlier one.
    void add(Fault fault);
    void remove(Fault::Effect effect);
    /// What becomes of a request that arrives now.
    Damage strike(const ControlRequest &request);
};

} // namespace virtual_camera
