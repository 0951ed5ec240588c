// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

#include "widgets/notice_window.h"

#include <QDialog>
#include <QMouseEvent>

namespace notice_window {

void setUp(QDialog *notice, const QPoint &mainTopLeft, bool onTop)
{
    notice->setWindowFlags(Qt::FramelessWindowHint);
    notice->setAttribute(Qt::WA_TranslucentBackground, true);
    // Escape on the only visible window must not end the program while the panel is in the tray.
    notice->setAttribute(Qt::WA_QuitOnClose, false);
    notice->setFixedSize(notice->width(), notice->height());
    notice->move(mainTopLeft.x() + notice->width() / 2, mainTopLeft.y() + notice->height() / 2);
    if (onTop)
        notice->setWindowFlags(Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint);
    else
        notice->setWindowFlags(Qt::FramelessWindowHint);
}

void dragPress(const QMouseEvent *event, QPoint *lastGlobalPos, bool *pressed)
{
    if (event->button() != Qt::LeftButton)
        return;
    *pressed = true;
    *lastGlobalPos = event->globalPos();
}

void dragMove(QDialog *notice, const QMouseEvent *event, QPoint *lastGlobalPos, bool pressed)
{
    if (!pressed || !event->buttons().testFlag(Qt::LeftButton))
        return;
    const QPoint globalPos = event->globalPos();
    notice->move(notice->pos() + globalPos - *lastGlobalPos);
    *lastGlobalPos = globalPos;
}

void dragRelease(const QMouseEvent *event, bool *pressed)
{
    if (event->button() == Qt::LeftButton)
        *pressed = false;
}

} // namespace notice_window
