// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QPointF>

#include <array>

class QPainter;

namespace virtual_camera {

/// The room that all virtual cameras look at: a conference room around the camera, drawn in degrees
/// (x: pan to the right, y: downwards, the horizon at 0), so that it is as sharp at tele as at
/// wide.
class Room
{
public:
    /// What stands at one distance. Farther layers are painted first.
    struct Layer
    {
        double distance; ///< metres
        void (Room::*paint)(QPainter &) const;
    };
    static const std::array<Layer, 3> layers;

    /// The distance of what stands at this place, in metres.
    double distanceAt(QPointF place) const;

    /// The presenter's head. The presenter walks when time passes, see walk().
    QPointF presenter() const;
    /// Moves the presenter along: a slow walk to and fro beside the table.
    void walk(double seconds);

private:
    void paintWalls(QPainter &painter) const;
    void paintPeople(QPainter &painter) const;
    void paintNear(QPainter &painter) const;

    double m_walked = 0; ///< seconds
};

} // namespace virtual_camera
