// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT
#include "virtual_camera/viewer/eye.h"

#include <algorithm>
#include <cmath>

namespace virtual_camera {

namespace {

constexpr double framingSeconds = 1.2;
constexpr double secondsByHand = 2; ///< after the last motion
constexpr double framedAngle = 24;  ///< the presenter from the head to the hips, in degrees

// Autofocus overshoots once or twice before it settles: a damped spring.
constexpr double springRate = 9; ///< per second
constexpr double damping = 0.3;
constexpr double settledError = 0.004;
constexpr double settledSpeed = 0.02;
constexpr double longestStep = 0.01; ///< seconds, for the spring to stay stable

double mix(double from, double to, double share) { return from + (to - from) * share; }

double eased(double share) { return share * share * (3 - 2 * share); }

} // namespace

void Eye::report(const View &view)
{
    const double focus = m_view.focus;
    if (m_reported.autoFocus && !view.autoFocus && m_known)
        m_focusOffset = focus - view.focus;
    if (view.autoFocus)
        m_focusOffset = 0;
    // The operator's hand comes first.
    if (m_known
        && (view.pan != m_reported.pan || view.tilt != m_reported.tilt
            || view.angle != m_reported.angle))
        m_byHand = secondsByHand;
    m_known = true;
    m_reported = view;
    m_view = view;
    m_view.focus = view.autoFocus ? focus : std::max(0.0, view.focus + m_focusOffset);
    frame(0);
}

void Eye::pass(double seconds)
{
    if (m_reported.framing)
        m_room.walk(seconds);
    frame(seconds);
    for (double left = seconds; left > 0 && m_reported.autoFocus; left -= longestStep)
        focus(std::min(left, longestStep));
}

bool Eye::busy() const
{
    if (!m_reported.powered)
        return false;
    const double wanted = 1 / m_room.distanceAt({ m_view.pan, -m_view.tilt });
    const bool focusing = m_reported.autoFocus && m_view.focus != wanted;
    return focusing || m_reported.framing || m_framed > 0;
}

void Eye::focus(double seconds)
{
    const double wanted = 1 / m_room.distanceAt({ m_view.pan, -m_view.tilt });
    const double error = wanted - m_view.focus;
    m_focusSpeed +=
        (springRate * springRate * error - 2 * damping * springRate * m_focusSpeed) * seconds;
    m_view.focus = std::max(0.0, m_view.focus + m_focusSpeed * seconds);
    if (std::abs(error) < settledError && std::abs(m_focusSpeed) < settledSpeed) {
        m_view.focus = wanted;
        m_focusSpeed = 0;
    }
}

void Eye::frame(double seconds)
{
    const double step = seconds / framingSeconds;
    m_byHand = std::max(0.0, m_byHand - seconds);
    const bool framing = m_reported.framing && m_byHand == 0;
    m_framed = std::clamp(m_framed + (framing ? step : -step), 0.0, 1.0);
    const double share = eased(m_framed);
    const QPointF presenter = m_room.presenter();
    m_view.pan = mix(m_reported.pan, presenter.x(), share);
    m_view.tilt = mix(m_reported.tilt, -presenter.y() - 3, share);
    m_view.angle = std::exp(mix(std::log(m_reported.angle), std::log(framedAngle), share));
}

} // namespace virtual_camera
