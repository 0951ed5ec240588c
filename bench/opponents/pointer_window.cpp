// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

// Follows the pointer while a button is held, and draws nothing.

#include <QApplication>
#include <QMouseEvent>
#include <QWidget>

namespace {

class Window : public QWidget
{
protected:
    void mousePressEvent(QMouseEvent *event) override { m_pointer = event->pos(); }
    void mouseMoveEvent(QMouseEvent *event) override { m_pointer = event->pos(); }

private:
    QPoint m_pointer;
};

} // namespace

int main(int argc, char *argv[])
{
    const QApplication application(argc, argv);
    Window window;
    window.setFixedSize(653, 436);
    window.show();
    return QApplication::exec();
}
