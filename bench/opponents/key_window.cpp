// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

// Turns the camera while an arrow key is held: the smallest program that does.

#include <QApplication>
#include <QKeyEvent>
#include <QWidget>

#include "camera.h"

namespace {

class Window : public QWidget
{
protected:
    void keyPressEvent(QKeyEvent *event) override
    {
        if (event->key() == Qt::Key_Right)
            uvc_set_pantilt_rel(m_camera, 1, 21, 0, 0);
    }

    void keyReleaseEvent(QKeyEvent *event) override
    {
        if (event->key() != Qt::Key_Right)
            return;
        uvc_set_pantilt_rel(m_camera, 0, 0, 0, 0);
        uvc_set_zoom_rel(m_camera, 0, 1, 5);
    }

private:
    uvc_device_handle_t *m_camera = openCamera();
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
