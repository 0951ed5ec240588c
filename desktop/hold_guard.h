// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QAbstractButton>
#include <QEvent>
#include <QHash>
#include <QPointer>
#include <QSet>
#include <QSlider>

#include <vector>

class QKeyEvent;
class QMouseEvent;

namespace desktop {

/// Knows what is held in a window, and releases it to the window exactly once when its real release
/// is lost. A real release that still arrives goes through.
///
/// - A key that was delivered to the window: released when the window loses the keyboard, and when
///   the release goes to another window, such as the list of a combo box. It is released under the
///   name under which it was pressed, even if the keyboard layout has changed since.
/// - A mouse button: released when the window leaves the screen, for another desktop too.
/// - A spring-back slider that an assistive program has moved: released with the mouse button.
///
/// A camera that answers more slowly than a key repeats leaves presses in the queue, and the
/// release behind them. A repeat that arrives when the key is already up on the X server is one of
/// these and is dropped; while the key is down, every repeat acts.
class HoldGuard : public QObject
{
public:
    /// A click on one of the `interrupters` releases everything before it does its work. The
    /// `springs` are the sliders that act until they are released.
    HoldGuard(QWidget &guarded, const std::vector<QAbstractButton *> &interrupters,
        const std::vector<QSlider *> &springs);

    /// Releases everything that is held.
    void releaseAll();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    bool dropPress(const QKeyEvent &press);
    bool takeRelease(const QKeyEvent &release, bool reachesWindow);
    void noteButton(QWidget *widget, const QMouseEvent &press);
    void sendRelease(int key);
    void releaseKeys();
    void releaseButton();

    QWidget &window;
    const bool everyReleaseIsReal;
    QHash<quint32, int> heldKeys;    ///< the key's place on the keyboard, and its Qt::Key
    QPointer<QWidget> pressedWidget; ///< holds the mouse
    Qt::MouseButton pressedButton = Qt::NoButton;
    QSet<QSlider *> movedSliders; ///< springs that were not released yet
};

} // namespace desktop
