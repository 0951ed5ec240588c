// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

#include <QApplication>

#include "console/main_window.h"
#include "desktop/accessibility.h"
#include "desktop/hold_guard.h"
#include "desktop/termination.h"
#include "desktop/x11.h"
#include "resources/img/scaled_pictures.h"
#include "ui_main_window.h"

int main(int argc, char *argv[])
{
    desktop::prepareStandardStreams();
    desktop::prepareEnvironment();
    QCoreApplication::setAttribute(Qt::AA_EnableHighDpiScaling, true);
    QApplication application(argc, argv);
    QApplication::setApplicationVersion(PTZ_VERSION);
    desktop::exposeSliders();
    MainWindow window;
    const Ui::MainWindow &form = window.widgets();
    fitPictures(*form.Win_Left, *form.Win_Right);
    desktop::labelChoice(*form.cb_fliker);
    desktop::HoldGuard guard(window,
        { form.btn_cam1, form.btn_cam2, form.btn_cam3, form.btn_cam4, form.btn_cam5 },
        { form.slider_zoom, form.slider_focus });
    const desktop::Termination termination([&guard] { guard.releaseAll(); });
    window.setFocus();
    window.show();
    return QApplication::exec();
}
