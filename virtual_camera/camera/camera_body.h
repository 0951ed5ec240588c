// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT
#pragma once

#include "virtual_camera/camera/camera_description.h"
#include "virtual_camera/camera/camera_state.h"
#include "virtual_camera/camera/mechanics.h"
#include "virtual_camera/camera/remote_order.h"

#include <optional>
#include <string>
#include <vector>

namespace virtual_camera {

/// The camera inside its housing: motors, switches, values and presets. Takes values that have
/// been checked already. Not locked: one thread at a time.
class CameraBody
{
public:
    /// Switched on.
    CameraBody(CameraDescription description, Clock clock);

    const CameraDescription &description() const { return m_description; }
    CameraState state();
    /// The numbers that GET_CUR answers. Of a relative control: what the motor does now.
    std::vector<std::int64_t> current(const ControlTraits &control);
    /// The control is in the hands of an automatic: focus, and colour temperature.
    bool isAutomatic(Control control) const;

    void apply(const ControlTraits &control, const std::vector<std::int64_t> &values);
    /// Moves the motors, whether or not focus is automatic. Returns what is wrong with the order;
    /// then nothing moves.
    std::optional<std::string> go(const RemoteOrder &order);
    /// Another range from now on, and the control takes the value cur; of what moves, the motors
    /// keep their ends and their place until the camera is switched on again.
    void setRange(Control control, const Range &range, std::size_t field);

    /// The motors stop where they are.
    void cutPower();
    /// Everything is as described but the presets, which are kept.
    void switchOn();

private:
    void applyVendorCommand(int code);
    Place home() const;
    const Range &motorRange(Mechanics::Motor motor) const;
    /// The control has this value now, and what it switches is switched.
    void store(Control control, std::int64_t value);

    CameraDescription m_description;
    Clock m_clock;
    Mechanics m_mechanics;
    CameraState m_state;
    bool m_digitalZoom = false; // as last asked for; the lens does the same with and without
};

} // namespace virtual_camera
