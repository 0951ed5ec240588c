// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

// What becomes of the form before the window is first shown.

#include "console/main_window.h"

#include <QCoreApplication>
#include <QIcon>

#include "console/console_state.h"
#include "ui_main_window.h"
#include "widgets/no_device.h"
#include "widgets/style_sheets.h"

namespace {

void setKeyFaces(const Ui::MainWindow &form)
{
    const struct
    {
        QPushButton *key;
        const char *picture;
    } faces[] = {
        { form.btn_af, "AF" },
        { form.btn_ai, "Framing" },
        { form.btn_push, "Push" },
        { form.btn_num0, "0" },
        { form.btn_num1, "1" },
        { form.btn_num2, "2" },
        { form.btn_num3, "3" },
        { form.btn_num4, "4" },
        { form.btn_num5, "5" },
        { form.btn_num6, "6" },
        { form.btn_num7, "7" },
        { form.btn_num8, "8" },
        { form.btn_num9, "9" },
        { form.btn_set, "Set" },
        { form.btn_clear, "Clear" },
        { form.btn_flip, "Flip" },
        { form.btn_home, "HOME" },
        { form.btn_mirror, "Mirror" },
    };
    for (const auto &face : faces)
        face.key->setStyleSheet(style_sheets::keyFace(QLatin1String(face.picture)));
}

} // namespace

void MainWindow::InitWindows()
{
    // The joystick has already read the screen's resolution; this affects only what comes later.
    QCoreApplication::setAttribute(Qt::AA_Use96Dpi, true);
    setFixedSize(width(), height());
    setWindowFlags(Qt::FramelessWindowHint);
    setAttribute(Qt::WA_TranslucentBackground, true);
    form->Win_Right->hide();
    right_flag = 0;
    topState = false;

    form->btn_mute->setStyleSheet(style_sheets::muted());
    form->btn_top->setStyleSheet(style_sheets::onTopAtStart());
    form->btn_min->setStyleSheet(style_sheets::invisible());
    form->btn_close->setStyleSheet(style_sheets::invisible());
    form->slider_focus->setEnabled(false); // the focus starts in automatic mode
    setKeyFaces(*form);
    form->btn_setting->setStyleSheet(style_sheets::invisible());
    form->btn_default->setStyleSheet(style_sheets::keyFace(QStringLiteral("Default")));
    form->btn_ok->setStyleSheet(style_sheets::keyFace(QStringLiteral("OK")));

    trayIcon = new QSystemTrayIcon(QIcon(QStringLiteral(":/img/min_img.ico")), this);
    trayIcon->setVisible(true);

    restLensSliders();
    showCameraButtons(0); // none is selected before the poll

    noDeviceDialog = new NO_Device(nullptr);
}
