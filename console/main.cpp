// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

#include <QApplication>

#include "console/accessible_choices.h"
#include "console/accessible_sliders.h"
#include "console/desktop_fit.h"
#include "console/hold_guard.h"
#include "console/main_window.h"
#include "console/slider_steps.h"
#include "console/termination.h"

int main(int argc, char *argv[])
{
    termination::fillStandardStreams();
    desktop_fit::prepare();
    QCoreApplication::setAttribute(Qt::AA_EnableHighDpiScaling, true);
    QApplication application(argc, argv);
    accessible_sliders::install();
    MainWindow window;
    accessible_choices::label(window);
    desktop_fit::fitSliders(window);
    const desktop_fit::HoldGuard guard(window);
    window.show();
    return QApplication::exec();
}
