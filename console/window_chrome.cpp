// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

// What a title bar would do for this frameless window: dragging by the background, docking at the
// screen's edges, and its own background. No handler calls its base's.

#include "console/main_window.h"

#include <QApplication>
#include <QDesktopWidget>
#include <QMouseEvent>
#include <QPainter>
#include <QStyleOption>

#include "console/console_state.h"
#include "widgets/notice_state.h"

namespace {

// What stays on the screen of a docked window, and how far past the edge it stands when it has
// come back: still past it, so that it hides again when the pointer leaves.
constexpr int shownWhenDocked = 10;
constexpr int pastEdgeWhenBack = 10;

// Without the settings panel only the window's left 326 of 653 pixels are to be seen.
constexpr int visibleWidth = 326;
constexpr int transparentWidth = 653 - visibleWidth;
constexpr int hiddenLeftX = 9 - visibleWidth; // 9 of them stay, one less than elsewhere

// The whole desktop, not the screen that the window is on.
int desktopWidth() { return QApplication::desktop()->width(); }

} // namespace

// The no-camera notice places itself from here.
void MainWindow::recordPosition()
{
    const QPoint corner = mapToGlobal(QPoint(0, 0));
    main_position_x = corner.x();
    main_position_y = corner.y();
}

void MainWindow::mousePressEvent(QMouseEvent *event)
{
    if (event->button() != Qt::LeftButton)
        return;
    dragging = true;
    dragPosition = event->globalPos();
}

void MainWindow::mouseMoveEvent(QMouseEvent *event)
{
    if ((event->buttons() & Qt::LeftButton) && dragging) {
        move(pos() + event->globalPos() - dragPosition);
        dragPosition = event->globalPos();
    }
    recordPosition();
}

void MainWindow::mouseReleaseEvent(QMouseEvent *event)
{
    if (event->button() == Qt::LeftButton)
        dragging = false;
    recordPosition();
}

// Both handlers below read the place once and keep, in each move, the coordinate that the move is
// not about. In a corner the sideways move therefore takes back the one up or down.

void MainWindow::leaveEvent(QEvent * /*event*/)
{
    const QRect frame = geometry();
    const int rightEdge = desktopWidth() - shownWhenDocked;
    const bool whole = right_flag == 1;
    if (frame.y() < 0)
        move(frame.x(), shownWhenDocked - frame.height());
    if (frame.x() < 0)
        move(whole ? shownWhenDocked - frame.width() : hiddenLeftX, frame.y());
    if (frame.right() > (whole ? rightEdge : rightEdge + transparentWidth))
        move(rightEdge, frame.y());
}

void MainWindow::enterEvent(QEvent * /*event*/)
{
    const QRect frame = geometry();
    const int rightEdge = desktopWidth() - shownWhenDocked;
    const bool whole = right_flag == 1;
    const int hidden = whole ? 0 : transparentWidth;
    if (frame.y() < 0)
        move(frame.x(), -pastEdgeWhenBack);
    if (frame.x() < 0)
        move(-pastEdgeWhenBack, frame.y());
    // Flush with the right edge: the window, or the left panel when it is alone.
    if (frame.right() > rightEdge + hidden)
        move(desktopWidth() + hidden - frame.width(), frame.y());
}

// Makes a style sheet that is set on the window itself take effect; nothing else is drawn here.
void MainWindow::paintEvent(QPaintEvent * /*event*/)
{
    QStyleOption option;
    option.initFrom(this);
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    style()->drawPrimitive(QStyle::PE_Widget, &option, &painter, this);
}
