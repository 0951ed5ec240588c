// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

#include "device/usb_device.h"
#include "device/uvc_edge.h"

using uvc_edge::CameraTerminal;
using uvc_edge::get;
using uvc_edge::set;

bool USBDevice::movePanTilt(int pan, int panSpeed, int tilt, int tiltSpeed)
{
    return set(devh, CameraTerminal, uvc_set_pantilt_rel, pan, panSpeed, tilt, tiltSpeed);
}

bool USBDevice::moveFocus(int sign, int speed)
{
    return set(devh, CameraTerminal, uvc_set_focus_rel, sign, speed);
}

bool USBDevice::moveZoom(int sign, int speed)
{
    constexpr int digitalZoom = 1;
    return set(devh, CameraTerminal, uvc_set_zoom_rel, sign, digitalZoom, speed);
}

bool USBDevice::StartMoveUp(int speed)
{
    movePanTilt(0, 0, +1, speed);
    return false; // required, whatever the camera answered
}

bool USBDevice::StartMoveDown(int speed) { return movePanTilt(0, 0, -1, speed); }
bool USBDevice::StartMoveLeft(int speed) { return movePanTilt(-1, speed, 0, 0); }
bool USBDevice::StartMoveRight(int speed) { return movePanTilt(+1, speed, 0, 0); }

bool USBDevice::StopMoveUp() { return movePanTilt(0, 0, 0, 0); }
bool USBDevice::StopMoveDown() { return movePanTilt(0, 0, 0, 0); }
bool USBDevice::StopMoveLeft() { return movePanTilt(0, 0, 0, 0); }
bool USBDevice::StopMoveRight() { return movePanTilt(0, 0, 0, 0); }

bool USBDevice::StartFocusNear(int speed) { return moveFocus(+1, speed); }
bool USBDevice::StartFocusFar(int speed) { return moveFocus(-1, speed); }
bool USBDevice::StopFocus() { return moveFocus(0, 0); }

bool USBDevice::StartZoomTele(int speed) { return moveZoom(+1, speed); }
bool USBDevice::StartZoomWide(int speed) { return moveZoom(-1, speed); }

// Speed 5 is required.
bool USBDevice::StopZoom() { return moveZoom(0, 5); }

bool USBDevice::GetZoom(long *out) { return get(devh, CameraTerminal, uvc_get_zoom_abs, out); }
bool USBDevice::GetFocus(long *out) { return get(devh, CameraTerminal, uvc_get_focus_abs, out); }

bool USBDevice::SetZoom0() { return set(devh, CameraTerminal, uvc_set_zoom_abs, 0); }
bool USBDevice::SetP0() { return set(devh, CameraTerminal, uvc_set_pantilt_abs, 0, 0); }
bool USBDevice::SetT0() { return set(devh, CameraTerminal, uvc_set_pantilt_abs, 0, 0); }
