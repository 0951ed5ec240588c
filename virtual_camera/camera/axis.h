// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <optional>

namespace virtual_camera {

/// One motor: it runs at a velocity until it is stopped, or travels to a place. It never runs past
/// its ends; one that stands outside of them (a camera may claim so) can only come back.
class Axis
{
public:
    Axis(std::int64_t min, std::int64_t max, std::int64_t position);

    /// Units per second, signed. Zero stops.
    void run(double velocity);
    /// At this many units per second, until it is there.
    void travel(std::int64_t target, double speed);
    void stop();
    /// Lets time pass.
    void advance(double seconds);

    double position() const { return m_position; }
    double velocity() const { return m_velocity; }
    bool moving() const { return m_velocity != 0; }
    /// The longest way that it may have to go: between its ends, or from where it stood at first.
    double span() const { return m_span; }
    /// How far it is from its lower to its upper end, from 0 to 1.
    double share() const;

private:
    double m_min;
    double m_max;
    double m_position;
    double m_span;
    double m_velocity = 0;
    std::optional<double> m_target;
};

} // namespace virtual_camera
