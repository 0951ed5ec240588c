// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QElapsedTimer>
#include <QHash>
#include <QObject>
#include <QPointer>
#include <QWidget>

#include <optional>

class QKeyEvent;
class QMouseEvent;

namespace desktop {

/// Sees to it that what the user starts by holding something stops when it is let go, however that
/// happens, and gives the window the keyboard.
///
/// - A held key that repeats as release and press is still down: those releases are asked away or
///   dropped, and the camera does not stutter.
/// - When the window loses the keyboard or is hidden while a key is held, the release goes to
///   nobody: the window gets it from here, and the camera stops. So it does when the release goes
///   to another window of the panel, such as the list of a combo box.
/// - When the window is hidden, by another desktop too, while a mouse button is held on the
///   joystick or a slider, that release is lost too, and is handed over likewise.
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
    struct HeldKey
    {
        int name;            ///< Qt::Key, under which it was pressed
        ulong pressedAt = 0; ///< by the clock that dates the events
    };

    void noteTime(quint32 eventTime);
    void notePress(const QKeyEvent &event);
    void noteButton(QWidget *widget, const QMouseEvent &press);
    void noteRelease(const QKeyEvent &event, bool reachesWindow);
    bool isOverdue(const QKeyEvent &press) const;
    void sendRelease(int key);
    void releaseKeys();
    void releaseButton();

    QWidget &window;
    bool releasesAreReal = false;      ///< also those that the toolkit takes for repeats
    QHash<quint32, HeldKey> heldKeys;  ///< by the key's place on the keyboard
    QElapsedTimer clock;               ///< our own
    std::optional<quint32> leastAhead; ///< of the clock that dates the events, in milliseconds
    QPointer<QWidget> pressedWidget;   ///< holds the mouse
    Qt::MouseButton pressedButton = Qt::NoButton;
};

} // namespace desktop
