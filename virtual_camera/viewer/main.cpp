// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT
#include <QApplication>
#include <QTimer>

#include <cstdio>

#include "virtual_camera/viewer/camera_link.h"
#include "virtual_camera/viewer/view_window.h"

int main(int argc, char *argv[])
{
    QApplication application(argc, argv);
    const QStringList arguments = QApplication::arguments();
    if (arguments.size() != 2 || arguments[1] == QLatin1String("--help")) {
        const bool help = arguments.value(1) == QLatin1String("--help");
        std::fputs(
            "Usage: virtual-camera-view SOCKET\n"
            "Shows what the cameras of a running virtual-camera see. SOCKET is the path that it\n"
            "was given with --control.\n",
            help ? stdout : stderr);
        return help ? 0 : 2;
    }
    virtual_camera::CameraLink link;
    virtual_camera::ViewWindow window(link);
    int status = 0;
    QObject::connect(&link, &virtual_camera::CameraLink::ended, [&](const QString &reason) {
        status = link.cameras().empty() ? 1 : 0;
        if (status != 0)
            std::fprintf(stderr, "virtual-camera-view: %s\n", qPrintable(reason));
        QCoreApplication::exit(status);
    });
    QObject::connect(&link, &virtual_camera::CameraLink::described, &window, &QWidget::show);
    // From within the event loop, which is what ended() leaves.
    QTimer::singleShot(0, &link, [&] { link.follow(arguments[1]); });
    return QApplication::exec();
}
