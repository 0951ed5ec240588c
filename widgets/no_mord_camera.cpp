// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

#include "widgets/no_mord_camera.h"

#include "ui_no_mord_camera.h"
#include "widgets/notice_state.h"
#include "widgets/notice_window.h"
#include "widgets/style_sheets.h"

NO_Mord_Camera::NO_Mord_Camera(QWidget *parent)
    : QDialog(parent), dialogForm(std::make_unique<Ui::NO_Mord_Camera>())
{
    dialogForm->setupUi(this);
    notice_window::setUp(this, QPoint(main2_position_x, main2_position_y), Top2Flag == 1);
    dialogForm->btn_ok->setStyleSheet(style_sheets::keyFace(QStringLiteral("OK")));
}

NO_Mord_Camera::~NO_Mord_Camera() = default;

void NO_Mord_Camera::mousePressEvent(QMouseEvent *event)
{
    notice_window::dragPress(event, &lastGlobalPos, &pressed);
}

void NO_Mord_Camera::mouseReleaseEvent(QMouseEvent *event)
{
    notice_window::dragRelease(event, &pressed);
}

void NO_Mord_Camera::mouseMoveEvent(QMouseEvent *event)
{
    notice_window::dragMove(this, event, &lastGlobalPos, pressed);
}

void NO_Mord_Camera::on_btn_ok_clicked() { hide(); }
