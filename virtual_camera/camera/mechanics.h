// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT
#pragma once

#include "virtual_camera/camera/axis.h"
#include "virtual_camera/camera/camera_description.h"
#include "virtual_camera/camera/camera_state.h"

#include <chrono>
#include <functional>

namespace virtual_camera {

// Time since any fixed moment. Whoever makes a camera says what time it is.
using Clock = std::function<std::chrono::microseconds()>;

// The speed bytes of the relative controls that make a difference; faster ones run like the
// fastest, as the motors cannot do more.
constexpr int fastestPan = 24;
constexpr int fastestTilt = 20;
constexpr int fastestZoom = 7;
constexpr int fastestFocus = 7;

// The camera's four motors. A direction is -1, 0 or +1.
class Mechanics
{
public:
    Mechanics(const CameraDescription &description, Clock clock);

    void runPan(int direction, int speed);
    void runTilt(int direction, int speed);
    void runZoom(int direction, int speed);
    void runFocus(int direction, int speed);

    void travelPanTilt(std::int64_t pan, std::int64_t tilt);
    void travelZoom(std::int64_t zoom);
    void travelFocus(std::int64_t focus);
    void travel(const Place &place);
    void stop();

    // Fills in the motors' part.
    void describe(CameraState &state);

private:
    void catchUp();

    Clock m_clock;
    std::chrono::microseconds m_now;
    Axis m_pan;
    Axis m_tilt;
    Axis m_zoom;
    Axis m_focus;
};

} // namespace virtual_camera
