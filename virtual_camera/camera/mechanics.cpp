// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT
#include "virtual_camera/camera/mechanics.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace virtual_camera {

namespace {

using Motor = Mechanics::Motor;

constexpr double panPerSecond = 120.0 * 3600; // seconds of arc
constexpr double tiltPerSecond = 90.0 * 3600;
constexpr double lensTravelSeconds = 2.5;

Axis axisFor(const Range &range) { return { range.min, range.max, range.cur }; }

int fastest(Motor motor)
{
    constexpr std::array<int, 4> speeds{ fastestPan, fastestTilt, fastestZoom, fastestFocus };
    return speeds[static_cast<std::size_t>(motor)];
}

} // namespace

Mechanics::Mechanics(const CameraDescription &description, Clock clock)
    : m_clock(std::move(clock)), m_now(m_clock()),
      m_axes{ axisFor(description.range(Control::PantiltAbsolute, 0)),
          axisFor(description.range(Control::PantiltAbsolute, 1)),
          axisFor(description.range(Control::ZoomAbsolute)),
          axisFor(description.range(Control::FocusAbsolute)) }
{ }

double Mechanics::fullSpeed(Motor motor)
{
    switch (motor) {
    case Motor::Pan:
        return panPerSecond;
    case Motor::Tilt:
        return tiltPerSecond;
    default:
        return axis(motor).span() / lensTravelSeconds;
    }
}

void Mechanics::run(Motor motor, Drive drive)
{
    catchUp();
    const int speed = std::min(drive.speed, fastest(motor));
    axis(motor).run(drive.direction * fullSpeed(motor) * speed / fastest(motor));
}

void Mechanics::travel(Motor motor, std::int64_t target)
{
    catchUp();
    axis(motor).travel(target, fullSpeed(motor));
}

void Mechanics::travel(const Place &place)
{
    travel(Motor::Pan, place.pan);
    travel(Motor::Tilt, place.tilt);
    travel(Motor::Zoom, place.zoom);
    travel(Motor::Focus, place.focus);
}

void Mechanics::stop(Motor motor)
{
    catchUp();
    axis(motor).stop();
}

void Mechanics::stop()
{
    catchUp();
    for (Axis &each : m_axes)
        each.stop();
}

AxisState Mechanics::state(Motor motor)
{
    catchUp();
    return { axis(motor).position(), axis(motor).velocity() };
}

double Mechanics::share(Motor motor)
{
    catchUp();
    return axis(motor).share();
}

Drive Mechanics::drive(Motor motor)
{
    catchUp();
    const double velocity = axis(motor).velocity();
    if (velocity == 0)
        return {};
    const double share = std::abs(velocity) / fullSpeed(motor);
    return { velocity > 0 ? 1 : -1, static_cast<int>(std::lround(share * fastest(motor))) };
}

void Mechanics::catchUp()
{
    const std::chrono::microseconds now = m_clock();
    const double seconds = std::chrono::duration<double>(now - m_now).count();
    m_now = now;
    for (Axis &each : m_axes)
        each.advance(seconds);
}

} // namespace virtual_camera
