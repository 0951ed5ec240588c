// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT
#include "virtual_camera/camera/axis.h"

#include <algorithm>
#include <cmath>

namespace virtual_camera {

Axis::Axis(std::int64_t min, std::int64_t max, std::int64_t position)
    : m_min(static_cast<double>(std::min(min, max))),
      m_max(static_cast<double>(std::max(min, max))), m_position(static_cast<double>(position)),
      m_span(std::max(m_max, m_position) - std::min(m_min, m_position))
{ }

double Axis::share() const
{
    return m_max > m_min ? std::clamp((m_position - m_min) / (m_max - m_min), 0.0, 1.0) : 0.0;
}

void Axis::run(double velocity)
{
    m_target.reset();
    m_velocity = velocity;
}

void Axis::travel(std::int64_t target, double speed)
{
    m_target = std::clamp(static_cast<double>(target), m_min, m_max);
    m_velocity = *m_target == m_position ? 0 : std::copysign(speed, *m_target - m_position);
}

void Axis::stop() { run(0); }

void Axis::advance(double seconds)
{
    if (!moving())
        return;
    const double end = m_target.value_or(m_velocity > 0 ? m_max : m_min);
    const double next = m_position + m_velocity * seconds;
    const bool arrived = m_velocity > 0 ? next >= end : next <= end;
    if (!arrived) {
        m_position = next;
        return;
    }
    const bool beyondEnd = m_velocity > 0 ? m_position > end : m_position < end;
    if (!beyondEnd)
        m_position = end;
    stop();
}

} // namespace virtual_camera
