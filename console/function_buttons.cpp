// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

// The camera's function buttons: five switches and two one-shot commands.

#include "console/main_window.h"

#include "console/console_state.h"
#include "ui_main_window.h"
#include "widgets/style_sheets.h"

using Form = Ui::MainWindow;

// A switch with two states. The camera does not report its state, so the button keeps the one
// requested last, even without a camera.
struct MainWindow::Toggle
{
    bool MainWindow::*state = nullptr;
    bool (BaseDevice::*commandWhenTrue)() = nullptr; ///< sent by a click that finds the state true
    bool (BaseDevice::*commandWhenFalse)() = nullptr;
    QPushButton *Form::*button = nullptr;
    QString (*faceWhenTrue)() = nullptr; ///< null: the face never changes
    QString (*faceWhenFalse)() = nullptr;

    static const Toggle mute;
    static const Toggle focus;
    static const Toggle framing;
    static const Toggle flip;
    static const Toggle mirror;
};

// Starts with the muted face, so the first click changes only the camera.
const MainWindow::Toggle MainWindow::Toggle::mute = { &MainWindow::muteState, //
    &BaseDevice::OpenMute, &BaseDevice::CloseMute,                            //
    &Form::btn_mute, style_sheets::muted, style_sheets::notMuted };
const MainWindow::Toggle MainWindow::Toggle::focus = { &MainWindow::afState, //
    &BaseDevice::SetFocusAuto, &BaseDevice::SetFocusManual,                  //
    &Form::btn_af, style_sheets::autoFocus, style_sheets::manualFocus };
// The keys F, M and P change this button's face but not its state, on which the next click acts.
const MainWindow::Toggle MainWindow::Toggle::framing = { &MainWindow::aiState, //
    &BaseDevice::OpenAI, &BaseDevice::CloseAI,                                 //
    &Form::btn_ai, style_sheets::framing, style_sheets::manualFraming };
const MainWindow::Toggle MainWindow::Toggle::flip = { &MainWindow::flipState, //
    &BaseDevice::OpenFlip, &BaseDevice::CloseFlip };
const MainWindow::Toggle MainWindow::Toggle::mirror = { &MainWindow::mirrorState, //
    &BaseDevice::OpenMirror, &BaseDevice::CloseMirror };

void MainWindow::toggle(const Toggle &which)
{
    const bool was = this->*which.state;
    if (const auto face = was ? which.faceWhenTrue : which.faceWhenFalse)
        (form.get()->*which.button)->setStyleSheet(face());
    this->*which.state = !was;
    send(was ? which.commandWhenTrue : which.commandWhenFalse);
}

void MainWindow::send(bool (BaseDevice::*command)())
{
    if (usb_mode == 1)
        (device->*command)();
}

void MainWindow::on_btn_mute_clicked() { toggle(Toggle::mute); }
void MainWindow::on_btn_ai_clicked() { toggle(Toggle::framing); }
void MainWindow::on_btn_flip_clicked() { toggle(Toggle::flip); }
void MainWindow::on_btn_mirror_clicked() { toggle(Toggle::mirror); }

// The focus slider works in manual focus only, with or without a camera.
void MainWindow::on_btn_af_clicked()
{
    toggle(Toggle::focus);
    form->slider_focus->setEnabled(afState);
}

void MainWindow::on_btn_home_clicked() { send(&BaseDevice::HomePosition); }

// Framing off, not a focus push. The framing button keeps its state and face.
void MainWindow::on_btn_push_clicked() { send(&BaseDevice::CloseAI); }
