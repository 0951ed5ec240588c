// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

// Which camera is driven: the one poll after the start, the five camera buttons and the notices.

#include "console/main_window.h"

#include <QDebug>
#include <QTimer>

#include <array>

#include "console/console_state.h"
#include "device/property_ranges.h"
#include "ui_main_window.h"
#include "widgets/no_device.h"
#include "widgets/no_mord_camera.h"
#include "widgets/notice_state.h"
#include "widgets/style_sheets.h"

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

// The poll runs once: cameras plugged in later are seen at the next start.
void MainWindow::TimerInit()
{
    if (!timer->isActive()) {
        timer->stop();
        return;
    }
    BaseDevice::Initial();
    const bool enumerated = BaseDevice::EnumUSBDevices(deviceList);
    // Cameras are numbered from 0.
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
        // Closes, opens and reads the first camera once more. Deliberate.
        Setting_Press(0);
        form->btn_mute->setStyleSheet(style_sheets::notMuted());
        // Even if both opens failed: what counts is that a camera is listed.
        usb_mode = 1;
        warn_exit();
    }
    timer->stop();
}

void MainWindow::Setting_Press(int flag)
{
    device->CloseDevice();
    BaseDevice::Initial();
    const QByteArray name = QString::number(flag, 10).toLatin1();
    if (!device->OpenDevice(name.constData(), flag))
        return;
    device->GetPropertyValues();
    takeRanges();
    showRanges();
}

void MainWindow::on_btn_cam1_clicked()
{
    if (maxcam == 0) {
        // No notice: the poll has shown the one that no camera is connected.
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

// Buttons 2 to 5. The button turns green even if the open fails. If the camera is missing, button 1
// turns green, even if there is no camera at all, and the open camera stays open.
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
    // This button alone first moves the white balance slider to the value of the camera being left.
    // Nothing is sent: the slider sends only when it is pressed or dragged.
    if (isCameraThere(2))
        form->slider_wb->setValue(cur_wb);
    chooseCamera(2, &MainWindow::cam2_warn);
}

void MainWindow::on_btn_cam3_clicked() { chooseCamera(3, &MainWindow::cam3_warn); }
void MainWindow::on_btn_cam4_clicked() { chooseCamera(4, &MainWindow::cam4_warn); }
void MainWindow::on_btn_cam5_clicked() { chooseCamera(5, &MainWindow::cam5_warn); }

// Every notice shown is a new one, and none is ever deleted.
void MainWindow::Warn_NoDev()
{
    recordPosition();
    noDeviceDialog = new NO_Device(nullptr);
    noDeviceDialog->setModal(false);
    noDeviceDialog->show();
}

void MainWindow::warn_exit()
{
    noDeviceDialog->setModal(false);
    noDeviceDialog->hide();
}

// Notices stack up, one for each press, and are dismissed one by one.
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
