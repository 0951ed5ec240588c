// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT
#include "virtual_camera/camera/mechanics.h"

#include <algorithm>
#include <utility>

namespace virtual_camera {

namespace {

// Full speed: 120 and 90 degrees in a second, a whole zoom or focus travel in 2.5 seconds.
constexpr double panPerSecond = 120.0 * 3600;
constexpr double tiltPerSecond = 90.0 * 3600;
constexpr double lensTravelSeconds = 2.5;

double velocity(int direction, int speed, int fastest, double fullSpeed)
{
    return direction * fullSpeed * std::min(speed, fastest) / fastest;
}

double lensSpeed(const Axis &lens) { return lens.span() / lensTravelSeconds; }

Axis axisFor(const Range &range) { return { range.min, range.max, range.cur }; }

} // namespace

Mechanics::Mechanics(const CameraDescription &description, Clock clock)
    : m_clock(std::move(clock)), m_now(m_clock()),
      m_pan(axisFor(description.range(Control::PantiltAbsolute))),
      m_tilt(axisFor(description.tilt)), m_zoom(axisFor(description.range(Control::ZoomAbsolute))),
      m_focus(axisFor(description.range(Control::FocusAbsolute)))
{ }

void Mechanics::runPan(int direction, int speed)
{
    catchUp();
    m_pan.run(velocity(direction, speed, fastestPan, panPerSecond));
}

void Mechanics::runTilt(int direction, int speed)
{
    catchUp();
    m_tilt.run(velocity(direction, speed, fastestTilt, tiltPerSecond));
}

void Mechanics::runZoom(int direction, int speed)
{
    catchUp();
    m_zoom.run(velocity(direction, speed, fastestZoom, lensSpeed(m_zoom)));
}

void Mechanics::runFocus(int direction, int speed)
{
    catchUp();
    m_focus.run(velocity(direction, speed, fastestFocus, lensSpeed(m_focus)));
}

void Mechanics::travelPanTilt(std::int64_t pan, std::int64_t tilt)
{
    catchUp();
    m_pan.travel(pan, panPerSecond);
    m_tilt.travel(tilt, tiltPerSecond);
}

void Mechanics::travelZoom(std::int64_t zoom)
{
    catchUp();
    m_zoom.travel(zoom, lensSpeed(m_zoom));
}

void Mechanics::travelFocus(std::int64_t focus)
{
    catchUp();
    m_focus.travel(focus, lensSpeed(m_focus));
}

void Mechanics::travel(const Place &place)
{
    travelPanTilt(place.pan, place.tilt);
    travelZoom(place.zoom);
    travelFocus(place.focus);
}

void Mechanics::stop()
{
    catchUp();
    for (Axis *axis : { &m_pan, &m_tilt, &m_zoom, &m_focus })
        axis->stop();
}

void Mechanics::describe(CameraState &state)
{
    catchUp();
    state.pan = { m_pan.position(), m_pan.velocity() };
    state.tilt = { m_tilt.position(), m_tilt.velocity() };
    state.zoom = { m_zoom.position(), m_zoom.velocity() };
    state.zoomShare = m_zoom.share();
    state.focus = { m_focus.position(), m_focus.velocity() };
}

void Mechanics::catchUp()
{
    const std::chrono::microseconds now = m_clock();
    const double seconds = std::chrono::duration<double>(now - m_now).count();
    m_now = now;
    for (Axis *axis : { &m_pan, &m_tilt, &m_zoom, &m_focus })
        axis->advance(seconds);
}

} // namespace virtual_camera
