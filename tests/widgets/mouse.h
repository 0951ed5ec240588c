// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

// Mouse events for one widget, at any place: also at (0, 0), outside of the widget and between
// two pixels.
#pragma once

#include <QCoreApplication>
#include <QMouseEvent>
#include <QPointF>
#include <QWidget>

namespace mouse {

/// Delivers one event to the widget. `place` is in the widget's coordinates, `button` the one that
/// went down or up, `held` those that are down afterwards.
inline void send(QWidget *widget, QEvent::Type type, const QPointF &place, Qt::MouseButton button,
    Qt::MouseButtons held)
{
    const QPointF onScreen = place + QPointF(widget->mapToGlobal(QPoint(0, 0)));
    const QPointF inWindow = place + QPointF(widget->mapTo(widget->window(), QPoint(0, 0)));
    QMouseEvent event(type, place, inWindow, onScreen, button, held, Qt::NoModifier);
    QCoreApplication::sendEvent(widget, &event);
}

inline void press(QWidget *widget, const QPointF &place, Qt::MouseButton button = Qt::LeftButton)
{
    send(widget, QEvent::MouseButtonPress, place, button, button);
}

inline void move(QWidget *widget, const QPointF &place, Qt::MouseButtons held = Qt::LeftButton)
{
    send(widget, QEvent::MouseMove, place, Qt::NoButton, held);
}

inline void release(QWidget *widget, const QPointF &place, Qt::MouseButton button = Qt::LeftButton,
    Qt::MouseButtons stillHeld = Qt::NoButton)
{
    send(widget, QEvent::MouseButtonRelease, place, button, stillHeld);
}

} // namespace mouse
