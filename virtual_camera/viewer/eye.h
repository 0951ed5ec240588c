// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT
#pragma once

#include "virtual_camera/viewer/room.h"
#include "virtual_camera/viewer/view.h"

namespace virtual_camera {

/// What a camera does by itself between the commands that it gets: it focuses, and it frames the
/// presenter. Time passes only where it is told to, so that a picture can be had of any moment.
class Eye
{
public:
    /// Takes over what the camera reports. Autofocus and framing start from where they are, and
    /// manual focus from where autofocus has left it. While the motors move, and for two seconds
    /// after, framing gives way to them.
    void report(const View &view);

    /// Lets time pass, in seconds.
    void pass(double seconds);

    /// True while passing time changes the picture.
    bool busy() const;

    const View &view() const { return m_view; }
    const Room &room() const { return m_room; }

private:
    void focus(double seconds);
    void frame(double seconds);

    Room m_room;
    View m_reported;
    View m_view;
    bool m_known = false;     ///< something was reported
    double m_focusSpeed = 0;  ///< dioptres per second
    double m_focusOffset = 0; ///< from the reported place to where autofocus has left the lens
    double m_byHand = 0;      ///< seconds for which the motors point, not the framing
    double m_framed = 0;      ///< 0: where the motors point, 1: on the presenter
};

} // namespace virtual_camera
