// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

// Which camera is driven: the one poll after the start, and the five camera buttons.

#include "console/main_window.h"

#include <QDebug>
#include <QTimer>

#include <array>

#include "console/console_state.h"
#include "console/style_sheets.h"
#include "device/property_ranges.h"
#include "ui_main_window.h"
#include "widgets/no_device.h"
#include "widgets/no_mord_camera.h"
#include "widgets/notice_state.h"

// Camera `selected` (1 to 5) green, the others black; 0 for all black.
void MainWindow::showCameraButtons(int selected)
{
    const std::array<QPushButton *, 5> buttons = { form->btn_cam1, form->btn_cam2, form->btn_cam3,
        form->btn_cam4, form->btn_cam5 };
    int number = 0;
    for (QPushButton *button : buttons) {
        ++number;
        button->setStyleSheet(style_sheets::cameraFace(number, number == selected));
    }
}

// The poll runs once: cameras that are plugged in later are seen at the next start.
void MainWindow::TimerInit()
{
    if (!timer->isActive()) {
        timer->stop();
        return;
    }
    BaseDevice::Initial();
    const bool enumerated = BaseDevice::EnumUSBDevices(deviceList);
    // The cameras are numbered from 0, so the last number tells how many there are.
    maxcam = enumerated && !deviceList.empty() ? deviceList.back().index + 1 : 0;

    if (maxcam == 0) {
        showCameraButtons(0);
        form->btn_mute->setStyleSheet(style_sheets::muted());
        if (!enumerated)
            qDebug("hello227");
        Warn_NoDev();
        usb_mode = 0;
    } else {
        recordPosition();
        on_btn_cam1_clicked();
        // The first camera is opened twice in a row: closed, opened and read once more.
        Setting_Press(0);
        form->btn_mute->setStyleSheet(style_sheets::notMuted());
        // Also when both opens failed: the list is what counts, and each control then finds out
        // for itself that nothing is open.
        usb_mode = 1;
        warn_exit();
    }
    timer->stop();
}

void MainWindow::on_btn_cam1_clicked()
{
    if (maxcam == 0) {
        // No notice here: the no-camera notice has said it.
        showCameraButtons(0);
        return;
    }
    Setting_Press(0);
    showCameraButtons(1);
}

namespace {

bool isCameraThere(int number)
{
    return static_cast<unsigned>(maxcam) >= static_cast<unsigned>(number);
}

} // namespace

// For the buttons 2 to 5. The green mark is set whether or not the open succeeded. When the camera
// is missing the mark goes back to camera 1, even if there is none at all, and the camera that was
// open stays open.
void MainWindow::chooseCamera(int number, void (MainWindow::*warnMissing)())
{
    if (isCameraThere(number)) {
        Setting_Press(number - 1);
        showCameraButtons(number);
    } else {
        (this->*warnMissing)();
        showCameraButtons(1);
    }
}

void MainWindow::on_btn_cam2_clicked()
{
    // Only this button first puts the white balance slider back to the value of the camera that is
    // being left. Nothing is sent: the slider speaks to the camera only when it is dragged.
    if (isCameraThere(2))
        form->slider_wb->setValue(cur_wb);
    chooseCamera(2, &MainWindow::cam2_warn);
}

void MainWindow::on_btn_cam3_clicked() { chooseCamera(3, &MainWindow::cam3_warn); }
void MainWindow::on_btn_cam4_clicked() { chooseCamera(4, &MainWindow::cam4_warn); }
void MainWindow::on_btn_cam5_clicked() { chooseCamera(5, &MainWindow::cam5_warn); }

// The notice that InitWindows made stays hidden; each notice shown is a new one, and an old one is
// never deleted.
void MainWindow::Warn_NoDev()
{
    recordPosition();
    noDeviceDialog = new NO_Device(nullptr);
    noDeviceDialog->setModal(false);
    noDeviceDialog->show();
}

// Notices stack up: each press of an empty position puts up one more, and each is dismissed by
// itself.
void MainWindow::warnMissingCamera()
{
    const QPoint corner = mapToGlobal(QPoint(0, 0));
    main2_position_x = corner.x();
    main2_position_y = corner.y();
    noMoreCameraDialog = new NO_Mord_Camera(nullptr);
    noMoreCameraDialog->setModal(false);
    noMoreCameraDialog->show();
}

void MainWindow::cam2_warn() { warnMissingCamera(); }
void MainWindow::cam3_warn() { warnMissingCamera(); }
void MainWindow::cam4_warn() { warnMissingCamera(); }
void MainWindow::cam5_warn() { warnMissingCamera(); }
