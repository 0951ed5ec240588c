// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

// What a title bar would do for this frameless window: dragging by the background and docking at
// the screen's edges. And its own background. No handler calls its base's.

#include "console/main_window.h"

#include <QApplication>
#include <QDesktopWidget>
#include <QMouseEvent>
#include <QPainter>
#include <QStyleOption>

#include "console/console_state.h"
#include "ui_main_window.h"
#include "widgets/notice_state.h"

namespace {

// A docked window keeps a strip on the screen. Without the settings panel the strip at the left
// edge is one pixel narrower.
constexpr int strip = 10;
constexpr int leftPanelStrip = 9;
// A window that has slid back in is still past the edge, so that it docks again on the next leave.
constexpr int pastEdge = 10;

// Of the whole desktop, not of the screen that the window is on.
int desktopWidth() { return QApplication::desktop()->width(); }

} // namespace

// The no-camera notice is placed from here.
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

// The width of the window's right part that is transparent.
int MainWindow::transparentWidth() const { return right_flag == 1 ? 0 : form->Win_Right->width(); }

// Both handlers read the geometry once, and each move keeps the other coordinate as it was read. In
// a corner the sideways move therefore undoes the vertical one.

void MainWindow::leaveEvent(QEvent * /*event*/)
{
    const QRect frame = geometry();
    const int dockedLeft =
        right_flag == 1 ? strip - width() : leftPanelStrip - form->Win_Left->width();
    const int dockedRight = desktopWidth() - strip;
    if (frame.y() < 0)
        move(frame.x(), strip - frame.height());
    if (frame.x() < 0)
        move(dockedLeft, frame.y());
    if (frame.right() - transparentWidth() > dockedRight)
        move(dockedRight, frame.y());
}

void MainWindow::enterEvent(QEvent * /*event*/)
{
    const QRect frame = geometry();
    const int dockedRight = desktopWidth() - strip;
    if (frame.y() < 0)
        move(frame.x(), -pastEdge);
    if (frame.x() < 0)
        move(-pastEdge, frame.y());
    // The visible part ends flush with the right edge.
    if (frame.right() - transparentWidth() > dockedRight)
        move(desktopWidth() + transparentWidth() - frame.width(), frame.y());
}

// Makes a style sheet set on the window itself take effect.
void MainWindow::paintEvent(QPaintEvent * /*event*/)
{
    QStyleOption option;
    option.initFrom(this);
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    style()->drawPrimitive(QStyle::PE_Widget, &option, &painter, this);
}
