// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

// What both notices do alike: a small picture in a window of its own that can be dragged. Their
// members and event handlers are fixed for each class, so this is shared by function.
#pragma once

class QDialog;
class QMouseEvent;
class QPoint;

namespace notice_window {

/// Makes a built form a frameless, translucent window of fixed size, half its own size to the
/// right of and below `mainTopLeft` (screen coordinates), above all other windows if `onTop`.
void setUp(QDialog *notice, const QPoint &mainTopLeft, bool onTop);

/// A drag starts when the left button goes down on the notice, beside its buttons.
void dragPress(const QMouseEvent *event, QPoint *lastGlobalPos, bool *pressed);
/// The notice follows the pointer from step to step while the left button is held.
void dragMove(QDialog *notice, const QMouseEvent *event, QPoint *lastGlobalPos, bool pressed);
/// The drag ends when the left button goes up.
void dragRelease(const QMouseEvent *event, bool *pressed);

} // namespace notice_window
