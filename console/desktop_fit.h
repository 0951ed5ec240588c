// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

// The panel is laid out for a desktop whose logical resolution is 72 dots per inch, where a click
// on a button does not take the keyboard and a held key repeats without releases. What X11 and
// Wayland do otherwise is put right here and nowhere else.
#pragma once

#include <QElapsedTimer>
#include <QHash>
#include <QObject>
#include <QPointer>
#include <QWidget>

class QKeyEvent;
class QMouseEvent;

namespace desktop_fit {

/// Call before the application object is made. Sets, each only where the environment does not:
/// a logical resolution of 72 dots per inch, on which the joystick's bands and the lettering
/// depend, and X11 where an X server can be reached, because Wayland tells no window its place.
void prepare();

/// Makes the sliders of `window` mean what they show when they are moved without being held: by the
/// mouse wheel, or by a screen reader. Call once, after the form is built.
///
/// - A lens slider (vertical) would start the lens and never let go. It is let go for the user a
///   fifth of a second after the last step, so a step is a nudge.
/// - A settings slider (horizontal) would show a value that the camera never got. The step is
///   reported as a movement of the slider, and the camera gets the value.
void fitSliders(QWidget &window);

/// Sees to it that what the user starts by holding something stops when it is let go, however that
/// happens, and gives the window the keyboard.
///
/// - A held key repeats as release and press, 25 times a second; those releases are dropped. The
///   key is still down, and the camera must not stutter.
/// - When the window loses the keyboard or is hidden while a key is held, the release goes to
///   nobody: the window gets it from here, and the camera stops.
/// - When the window is hidden while a mouse button is held on the joystick or a slider, that
///   release is lost too, and is handed over likewise.
/// - A key that changes its meaning while it is held, by a switch of the keyboard layout, is let
///   go under the name under which it was pressed.
/// - When another camera is chosen while something is held, it is let go first: the release that
///   comes later would stop the other camera, and the first one would run on.
/// - A camera that answers more slowly than the key repeats leaves repeats waiting, and they would
///   drive it on long after the key is up. A repeat that comes late is dropped.
/// - When the process is ended from outside (SIGINT, SIGTERM, SIGHUP, the X server gone), whatever
///   is held is let go first. A signal then ends the process as if it had not been caught.
/// - When the panel is closed while a key is held, the key is let go first.
///
/// Make one after the window, before the window is shown. Closing the panel sends nothing else: the
/// guard goes before the window does.
class HoldGuard : public QObject
{
public:
    explicit HoldGuard(QWidget &guarded);
    ~HoldGuard() override;

    HoldGuard(const HoldGuard &) = delete;
    HoldGuard &operator=(const HoldGuard &) = delete;

    /// Lets go of everything that is held: the window gets a release of each key, the widget under
    /// the mouse button a release of that button.
    void releaseAll();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void notePress(const QKeyEvent &event);
    void noteButton(QWidget *widget, const QMouseEvent &press);
    void noteRelease(const QKeyEvent &event);
    bool isOverdue(const QKeyEvent &press) const;
    void sendRelease(int key);
    void releaseKeys();
    void releaseButton();
    void releaseSteps();

    QWidget &window;
    QHash<quint32, int> heldKeys;    ///< by the key's place on the keyboard
    ulong lastPressTime = 0;         ///< by the clock of the events, in milliseconds
    QElapsedTimer sinceLastPress;    ///< by our own
    QPointer<QWidget> pressedWidget; ///< holds the mouse
    Qt::MouseButton pressedButton = Qt::NoButton;
};

} // namespace desktop_fit
