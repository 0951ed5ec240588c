// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

// Driving with the keyboard and the joystick. A motion goes on until it is stopped; every stop
// below stops both axes.

#include "console/main_window.h"

#include <QKeyEvent>

#include "console/console_state.h"
#include "ui_main_window.h"
#include "widgets/style_sheets.h"

namespace {

// Fixed speeds.
constexpr int keyPanSpeed = 21;
constexpr int keyTiltSpeed = 14;
constexpr int keyZoomSpeed = 1;

// The joystick's levels are 0 to 7: at most the speeds of the keys.
constexpr int panSpeedPerLevel = 3;
constexpr int tiltSpeedPerLevel = 2;

} // namespace

// Every press acts, auto-repeat included, whatever its modifiers.
void MainWindow::keyPressEvent(QKeyEvent *event)
{
    if (usb_mode != 0)
        pressKey(event->key());
    QMainWindow::keyPressEvent(event);
}

void MainWindow::pressKey(int key)
{
    if (key >= Qt::Key_0 && key <= Qt::Key_9) {
        // Always a recall: the keypad's modes do not apply, and stay armed.
        device->CallPreset(static_cast<unsigned char>(key - Qt::Key_0));
        return;
    }
    switch (key) {
    case Qt::Key_F:
        device->OpenAI();
        form->btn_ai->setStyleSheet(style_sheets::framing());
        break;
    case Qt::Key_M:
    case Qt::Key_P:
        device->CloseAI();
        form->btn_ai->setStyleSheet(style_sheets::manualFraming());
        break;
    case Qt::Key_T:
        device->StartZoomTele(keyZoomSpeed);
        break;
    case Qt::Key_W:
        device->StartZoomWide(keyZoomSpeed);
        break;
    case Qt::Key_Left:
        device->StartMoveLeft(keyPanSpeed);
        break;
    case Qt::Key_Right:
        device->StartMoveRight(keyPanSpeed);
        break;
    case Qt::Key_Up:
        device->StartMoveUp(keyTiltSpeed);
        break;
    case Qt::Key_Down:
        device->StartMoveDown(keyTiltSpeed);
        break;
    default:
        break;
    }
}

void MainWindow::keyReleaseEvent(QKeyEvent *event)
{
    if (usb_mode != 0)
        releaseKey(event->key());
    QMainWindow::keyReleaseEvent(event);
}

// One chain of stops, entered at a different link by each key. All pan and tilt stops are the same
// request.
void MainWindow::releaseKey(int key)
{
    switch (key) {
    case Qt::Key_Up:
        device->StopMoveUp();
        [[fallthrough]];
    case Qt::Key_Down:
        device->StopMoveDown();
        [[fallthrough]];
    case Qt::Key_Left:
        device->StopMoveLeft();
        [[fallthrough]];
    case Qt::Key_Right:
        device->StopMoveRight();
        [[fallthrough]];
    case Qt::Key_T:
    case Qt::Key_W:
        device->StopZoom();
        break;
    default:
        break;
    }
}

// The joystick reports every 100 ms, changed or not; only a change is sent. Without a camera the
// values are stored as well.

void MainWindow::MovePlace(int num)
{
    if (num == place)
        return;
    place = num;
    driveReported();
}

void MainWindow::SpeedX(int num)
{
    if (num == speedX)
        return;
    speedX = num;
    driveReported();
}

void MainWindow::SpeedY(int num)
{
    if (num == speedY)
        return;
    speedY = num;
    driveReported();
}

void MainWindow::driveReported()
{
    if (usb_mode != 0)
        MoveEvent(device, place, speedX * panSpeedPerLevel, speedY * tiltSpeedPerLevel);
}

void MainWindow::MoveEvent(BaseDevice *camera, int direction, int panSpeed, int tiltSpeed)
{
    if (usb_mode == 0)
        return;
    switch (direction) {
    case 0:
        camera->StartMoveLeft(panSpeed);
        camera->StartMoveUp(tiltSpeed);
        break;
    case 1:
        camera->StartMoveUp(tiltSpeed);
        break;
    case 2:
        camera->StartMoveRight(panSpeed);
        camera->StartMoveUp(tiltSpeed);
        break;
    case 3:
        camera->StartMoveLeft(panSpeed);
        break;
    case 4:
        camera->StopMoveUp();
        camera->StopMoveDown();
        camera->StopMoveLeft();
        camera->StopMoveRight();
        break;
    case 5:
        camera->StartMoveRight(panSpeed);
        break;
    case 6:
        camera->StartMoveLeft(panSpeed);
        camera->StartMoveDown(tiltSpeed);
        break;
    case 7:
        camera->StartMoveDown(tiltSpeed);
        break;
    case 8:
        // The one diagonal with tilt before pan. Each request carries its own axis and zero for the
        // other, so the order is behaviour.
        camera->StartMoveDown(tiltSpeed);
        camera->StartMoveRight(panSpeed);
        break;
    default:
        break;
    }
}
