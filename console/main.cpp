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
    const bool scaled = desktop::scaleFactor() > 1;
    if (scaled)
        registerScaledPictures();
    desktop::exposeSliders();
    MainWindow window;
    const Ui::MainWindow &form = window.widgets();
    if (scaled) {
        drawBackgroundSharply(*form.Win_Left, QStringLiteral(":/img/background.png"));
        drawBackgroundSharply(*form.Win_Right, QStringLiteral(":/img/setting_background.png"));
    }
    desktop::HoldGuard guard(
        window, { form.btn_cam1, form.btn_cam2, form.btn_cam3, form.btn_cam4, form.btn_cam5 });
    desktop::labelChoice(*form.cb_fliker);
    const desktop::Termination termination([&guard] { guard.releaseAll(); });
    window.setFocus();
    window.show();
    return QApplication::exec();
}
