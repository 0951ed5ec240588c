// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

#include "widgets/no_device.h"

#include <QCoreApplication>

#include "ui_no_device.h"
#include "widgets/notice_state.h"
#include "widgets/notice_window.h"
#include "widgets/style_sheets.h"

NO_Device::NO_Device(QWidget *parent)
    : QDialog(parent), dialogForm(std::make_unique<Ui::NO_Device>())
{
    dialogForm->setupUi(this);
    notice_window::setUp(this, QPoint(main_position_x, main_position_y), TopFlag == 1);
    dialogForm->btn_quit->setStyleSheet(style_sheets::keyFace(QStringLiteral("Quit")));
    dialogForm->btn_ok->setStyleSheet(style_sheets::keyFace(QStringLiteral("OK")));
}

NO_Device::~NO_Device() = default;

void NO_Device::mousePressEvent(QMouseEvent *event)
{
    notice_window::dragPress(event, &lastGlobalPos, &pressed);
}

void NO_Device::mouseReleaseEvent(QMouseEvent *event)
{
    notice_window::dragRelease(event, &pressed);
}

void NO_Device::mouseMoveEvent(QMouseEvent *event)
{
    notice_window::dragMove(this, event, &lastGlobalPos, pressed);
}

void NO_Device::on_btn_quit_clicked() { QCoreApplication::exit(0); }

void NO_Device::on_btn_ok_clicked() { hide(); }
