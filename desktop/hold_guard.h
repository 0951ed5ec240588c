// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QAbstractButton>
#include <QEvent>
#include <QHash>
#include <QPointer>
#include <QSlider>
#include <QTimer>

#include <vector>

class QKeyEvent;
class QMouseEvent;

namespace desktop {

/// Moves the slider that gets it as a short push by the user does.
class NudgeEvent : public QEvent
{
public:
    static constexpr Type type = static_cast<Type>(QEvent::User + 1);
    explicit NudgeEvent(int position) : QEvent(type), value(position) { }
    const int value;
};

/// Knows what is held in a window, and releases it to the window exactly once when its real release
/// is lost.
///
/// - A key that was delivered to the window: released when the window loses the keyboard, and when
///   the release goes to another window, such as the list of a combo box. It is released under the
///   name under which it was pressed, whatever the keyboard layout says by then.
/// - A mouse button: released when the window leaves the screen, for another desktop too.
/// - A slider that was nudged: released a fifth of a second later.
///
/// A camera that answers more slowly than a key repeats leaves presses in the queue, and the
/// release behind them. A repeat that arrives when the X server has the key up already is one of
/// these, so it is dropped and the release comes next; while the key is down, every repeat acts.
class HoldGuard : public QObject
{
public:
    /// A click on one of the `interrupters` releases everything before it does its work.
    HoldGuard(QWidget &window, const std::vector<QAbstractButton *> &interrupters);

    /// Releases everything that is held.
    void releaseAll();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    bool dropPress(const QKeyEvent &press);
    bool takeRelease(const QKeyEvent &release, bool reachesWindow);
    void noteButton(QWidget *widget, const QMouseEvent &press);
    void nudge(QSlider *slider, int value);
    void sendRelease(int key);
    void releaseKeys();
    void releaseButton();
    void endNudge();

    QWidget &window;
    const bool everyReleaseIsReal;
    QHash<quint32, int> heldKeys;    ///< the key's place on the keyboard, and its Qt::Key
    QPointer<QWidget> pressedWidget; ///< holds the mouse
    Qt::MouseButton pressedButton = Qt::NoButton;
    QPointer<QSlider> nudged;
    QTimer nudgeEnd;
};

} // namespace desktop
