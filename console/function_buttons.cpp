// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

// The function buttons: camera-side switches, one-shot commands, and the window's own three.

#include "console/main_window.h"

#include <QCoreApplication>

#include "console/console_state.h"
#include "console/style_sheets.h"
#include "ui_main_window.h"
#include "widgets/notice_state.h"

namespace {

using Command = bool (BaseDevice::*)();

} // namespace

// A switch with two states. The camera does not tell its own, so the button keeps the last one
// that was asked for, also without a camera. A style sheet that is null leaves the button's face.
struct MainWindow::Toggle
{
    bool MainWindow::*state;
    QPushButton *Ui::MainWindow::*button;
    // For a state that was true, and for one that was false.
    QString (*faceWhenTrue)();
    QString (*faceWhenFalse)();
    Command commandWhenTrue;
    Command commandWhenFalse;
};

void MainWindow::toggle(const Toggle &which)
{
    const bool was = this->*which.state;
    if (const auto face = was ? which.faceWhenTrue : which.faceWhenFalse)
        (form->*which.button)->setStyleSheet(face());
    this->*which.state = !was;
    if (const Command command = was ? which.commandWhenTrue : which.commandWhenFalse)
        send(command);
}

void MainWindow::send(bool (BaseDevice::*command)())
{
    if (usb_mode == 1)
        (device->*command)();
}

// At the start the button wears the muted face and the first click mutes: the face tells what the
// camera was last told.
void MainWindow::on_btn_mute_clicked()
{
    toggle({ &MainWindow::muteState, &Ui::MainWindow::btn_mute, style_sheets::muted,
        style_sheets::notMuted, &BaseDevice::OpenMute, &BaseDevice::CloseMute });
}

// Decides about the notices made from now on; the panel itself is never kept on top.
void MainWindow::on_btn_top_clicked()
{
    toggle({ &MainWindow::topState, &Ui::MainWindow::btn_top, style_sheets::onTop,
        style_sheets::notOnTop, nullptr, nullptr });
    TopFlag = Top2Flag = topState ? 0 : 1;
}

void MainWindow::on_btn_min_clicked()
{
    hide();
    // Once more with every press. Coming back is the same whether it is asked for once or twice.
    connect(trayIcon, SIGNAL(activated(QSystemTrayIcon::ActivationReason)), this,
        SLOT(on_activatedSysTrayIcon(QSystemTrayIcon::ActivationReason)));
    trayIcon->setVisible(true);
}

void MainWindow::on_btn_close_clicked()
{
    trayIcon->setVisible(false);
    QCoreApplication::exit(0);
}

// The focus slider works in manual focus only, camera or not.
void MainWindow::on_btn_af_clicked()
{
    toggle({ &MainWindow::afState, &Ui::MainWindow::btn_af, style_sheets::autoFocus,
        style_sheets::manualFocus, &BaseDevice::SetFocusAuto, &BaseDevice::SetFocusManual });
    form->slider_focus->setEnabled(afState);
}

// The keys F, M and P change this button's face but not its state: the next click acts on the
// state.
void MainWindow::on_btn_ai_clicked()
{
    toggle({ &MainWindow::aiState, &Ui::MainWindow::btn_ai, style_sheets::framing,
        style_sheets::manualFraming, &BaseDevice::OpenAI, &BaseDevice::CloseAI });
}

// Framing off, not a focus push; why is not recorded. The framing button keeps its state and face.
void MainWindow::on_btn_push_clicked() { send(&BaseDevice::CloseAI); }

void MainWindow::on_btn_flip_clicked()
{
    toggle({ &MainWindow::flipState, nullptr, nullptr, nullptr, &BaseDevice::OpenFlip,
        &BaseDevice::CloseFlip });
}

void MainWindow::on_btn_home_clicked() { send(&BaseDevice::HomePosition); }

void MainWindow::on_btn_mirror_clicked()
{
    toggle({ &MainWindow::mirrorState, nullptr, nullptr, nullptr, &BaseDevice::OpenMirror,
        &BaseDevice::CloseMirror });
}
