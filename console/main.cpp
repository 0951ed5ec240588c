// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

#include <QApplication>

#include "console/main_window.h"
#include "desktop/accessible_choices.h"
#include "desktop/accessible_sliders.h"
#include "desktop/desktop_fit.h"
#include "desktop/hold_guard.h"
#include "desktop/slider_steps.h"
#include "desktop/termination.h"

int main(int argc, char *argv[])
{
    desktop::fillStandardStreams();
    desktop::prepare();
    QCoreApplication::setAttribute(Qt::AA_EnableHighDpiScaling, true);
    QApplication application(argc, argv);
    desktop::installAccessibleSliders();
    MainWindow window;
    desktop::labelChoices(window);
    desktop::fitSliders(window);
    const desktop::HoldGuard guard(window);
    window.show();
    return QApplication::exec();
}
