// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

// Driving with the keyboard and the joystick. A camera that was started moves until it is stopped;
// every stop below stops both axes.

#include "console/main_window.h"

#include <QKeyEvent>

#include "console/console_state.h"
#include "console/style_sheets.h"
#include "ui_main_window.h"

namespace {

// A key has no pressure: its speeds are fixed.
constexpr int keyPanSpeed = 21;
constexpr int keyTiltSpeed = 14;
constexpr int keyZoomSpeed = 1;

// What makes a camera speed of the joystick's levels, 0 to 7: 21 and 14 at the most, as the keys.
constexpr int panSpeedPerLevel = 3;
constexpr int tiltSpeedPerLevel = 2;

} // namespace

// Every key press that is delivered acts, whatever its modifiers, a repeated one too.
void MainWindow::keyPressEvent(QKeyEvent *event)
{
    if (usb_mode != 0)
        pressKey(event->key());
    QMainWindow::keyPressEvent(event);
}

void MainWindow::pressKey(int key)
{
    if (key >= Qt::Key_0 && key <= Qt::Key_9) {
        // The keypad's store and clear modes are not for the keyboard and stay armed.
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

// One chain of stops, entered at a different link by each key. All of its pan and tilt stops are
// the same request: a camera that stands is only told so again.
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

// The joystick reports ten times a second, changed or not; only a change is sent. What it reports
// while there is no camera is remembered all the same.

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
        // Tilt before pan, the one diagonal that goes this way round. The second request replaces
        // the first axis by zero, so the order decides which axis the camera follows.
        camera->StartMoveDown(tiltSpeed);
        camera->StartMoveRight(panSpeed);
        break;
    default:
        break;
    }
}
