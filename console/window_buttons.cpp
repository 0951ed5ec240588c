// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

// The window's own buttons: minimise to the tray and back, close, and notices on top.

#include "console/main_window.h"

#include <QCoreApplication>

#include "ui_main_window.h"
#include "widgets/notice_state.h"
#include "widgets/style_sheets.h"

void MainWindow::on_btn_min_clicked()
{
    hide();
    // Connects anew on every press; restoring the window twice does no harm.
    connect(trayIcon, SIGNAL(activated(QSystemTrayIcon::ActivationReason)), this,
        SLOT(on_activatedSysTrayIcon(QSystemTrayIcon::ActivationReason)));
    trayIcon->setVisible(true);
}

void MainWindow::on_activatedSysTrayIcon(QSystemTrayIcon::ActivationReason reason)
{
    if (reason == QSystemTrayIcon::DoubleClick)
        showNormal();
}

void MainWindow::on_btn_close_clicked()
{
    trayIcon->setVisible(false);
    QCoreApplication::exit(0);
}

// Applies to notices created from now on; the panel itself never stays on top.
void MainWindow::on_btn_top_clicked()
{
    form->btn_top->setStyleSheet(topState ? style_sheets::onTop() : style_sheets::notOnTop());
    TopFlag = Top2Flag = topState ? 1 : 0;
    topState = !topState;
}
