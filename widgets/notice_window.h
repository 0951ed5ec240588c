// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

// What both notices share: a small picture in a draggable window. Each class has its own members
// and event handlers, so they share functions, not a base class.
#pragma once

class QDialog;
class QMouseEvent;
class QPoint;

namespace notice_window {

/// Makes a built form a frameless, translucent window of fixed size, half its own size to the
/// right of and below `mainTopLeft` (screen coordinates), above all other windows if `onTop`.
void setUp(QDialog *notice, const QPoint &mainTopLeft, bool onTop);

/// Starts a drag with the left button.
void dragPress(const QMouseEvent *event, QPoint *lastGlobalPos, bool *pressed);
/// Moves the notice by the pointer's last step while the left button is held.
void dragMove(QDialog *notice, const QMouseEvent *event, QPoint *lastGlobalPos, bool pressed);
/// Ends the drag.
void dragRelease(const QMouseEvent *event, bool *pressed);

} // namespace notice_window
