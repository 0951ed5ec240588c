// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

// The panel with a key held down from the moment a camera is there ("left", or another word for
// none). Says "ready" then and waits for its end.

#include <QApplication>
#include <QKeyEvent>
#include <QTimer>

#include <cstdio>
#include <cstring>

#include "console/console_state.h"
#include "console/main_window.h"
#include "desktop/hold_guard.h"
#include "desktop/termination.h"
#include "desktop/x11.h"

namespace {

void hold(MainWindow *window)
{
    QKeyEvent press(QEvent::KeyPress, Qt::Key_Left, Qt::NoModifier);
    QCoreApplication::sendEvent(window, &press);
}

} // namespace

int main(int argc, char *argv[])
{
    const bool left = argc > 1 && std::strcmp(argv[1], "left") == 0;
    desktop::prepareEnvironment();
    QApplication application(argc, argv);
    MainWindow window;
    desktop::HoldGuard guard(window, {}, {});
    const desktop::Termination termination([&guard] { guard.releaseAll(); });
    window.show();
    QTimer watch;
    QObject::connect(&watch, &QTimer::timeout, &window, [&] {
        if (usb_mode == 0)
            return;
        watch.stop();
        if (left)
            hold(&window);
        std::puts("ready");
        std::fflush(stdout);
    });
    watch.start(10);
    return QApplication::exec();
}
