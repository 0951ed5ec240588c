// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

#include "desktop/hold_guard.h"

#include <QCoreApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QWindow>

#include <utility>

#include "desktop/x11.h"

namespace desktop {

namespace {

// Synthesised events have no scan code, nor has macOS; their keys are distinguished by name.
quint32 placeOf(const QKeyEvent &event)
{
    constexpr quint32 noPlace = 0x80000000U;
    return event.nativeScanCode() != 0 ? event.nativeScanCode()
                                       : noPlace | static_cast<quint32>(event.key());
}

} // namespace

HoldGuard::HoldGuard(QWidget &guarded, const std::vector<QAbstractButton *> &interrupters,
    const std::vector<QSlider *> &springs)
    : window(guarded), everyReleaseIsReal(detectAutoRepeat())
{
    for (const QAbstractButton *const button : interrupters)
        connect(button, &QAbstractButton::released, this, &HoldGuard::releaseAll);
    for (QSlider *const slider : springs) {
        connect(slider, &QSlider::sliderMoved, this, [=] { movedSliders.insert(slider); });
        connect(slider, &QSlider::sliderReleased, this, [=] { movedSliders.remove(slider); });
    }
    QCoreApplication::instance()->installEventFilter(this);
}

bool HoldGuard::eventFilter(QObject *watched, QEvent *event)
{
    auto *const widget = qobject_cast<QWidget *>(watched);
    const bool ours = widget && widget->window() == &window;
    switch (event->type()) {
    case QEvent::KeyPress:
        // A press that a focused button consumes never gets here.
        return watched == &window && dropPress(*static_cast<QKeyEvent *>(event));
    case QEvent::KeyRelease:
        return widget && takeRelease(*static_cast<QKeyEvent *>(event), ours);
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick: // the second press of two quick ones
        if (ours)
            noteButton(widget, *static_cast<QMouseEvent *>(event));
        break;
    case QEvent::MouseButtonRelease:
        if (static_cast<QMouseEvent *>(event)->buttons() == Qt::NoButton)
            pressedWidget.clear();
        break;
    case QEvent::FocusOut:
        if (watched == window.windowHandle())
            releaseKeys();
        break;
    case QEvent::Hide:
        if (watched == &window)
            releaseAll();
        break;
    case QEvent::Expose: // another desktop is shown: the window is off the screen but not hidden
        if (watched == window.windowHandle() && !window.windowHandle()->isExposed())
            releaseAll();
        break;
    default:
        break;
    }
    return false;
}

bool HoldGuard::dropPress(const QKeyEvent &press)
{
    const quint32 place = placeOf(press);
    if (heldKeys.contains(place))
        return !isKeyDown(place);
    // A repeat counts too: the window may have regained the focus while the key was down.
    heldKeys.insert(place, press.key());
    return false;
}

bool HoldGuard::takeRelease(const QKeyEvent &release, bool reachesWindow)
{
    const auto held = heldKeys.find(placeOf(release));
    if (held == heldKeys.end())
        return false;
    if (everyReleaseIsReal || !release.isAutoRepeat()) {
        const int key = *held;
        heldKeys.erase(held);
        sendRelease(key);
    }
    return reachesWindow;
}

// An ignored press goes on to the parent: its last receiver holds the mouse. A second button does
// not change that while the first is held.
void HoldGuard::noteButton(QWidget *widget, const QMouseEvent &press)
{
    if (press.buttons() != press.button())
        return;
    pressedWidget = widget;
    pressedButton = press.button();
}

void HoldGuard::sendRelease(int key)
{
    QKeyEvent release(QEvent::KeyRelease, key, Qt::NoModifier);
    QCoreApplication::sendEvent(&window, &release);
}

void HoldGuard::releaseKeys()
{
    for (const int key : std::exchange(heldKeys, {}))
        sendRelease(key);
}

void HoldGuard::releaseButton()
{
    QWidget *const widget = std::exchange(pressedWidget, nullptr);
    if (!widget)
        return;
    // Outside the widget, so that a push button is released without being clicked.
    const QPoint outside(-1, -1);
    QMouseEvent release(QEvent::MouseButtonRelease, outside, widget->mapToGlobal(outside),
        pressedButton, Qt::NoButton, Qt::NoModifier);
    QCoreApplication::sendEvent(widget, &release);
}

void HoldGuard::releaseAll()
{
    releaseKeys();
    releaseButton();
    for (QSlider *const slider : std::exchange(movedSliders, {}))
        emit slider->sliderReleased();
}

} // namespace desktop
