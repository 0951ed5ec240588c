// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

#include "device/usb_device.h"
#include "device/uvc_edge.h"

namespace {

// What the camera receives of a speed.
std::uint8_t lowByte(int speed) { return static_cast<std::uint8_t>(speed & 0xff); }

std::int8_t direction(int sign) { return static_cast<std::int8_t>(sign); }

bool readPosition(uvc_error_t (*getter)(uvc_device_handle_t *, std::uint16_t *, uvc_req_code),
    const uvc_edge::Handle &devh, long *out)
{
    std::uint16_t position = 0;
    if (uvc_edge::request(getter, devh, &position, UVC_GET_CUR) < 0)
        return false;
    *out = position;
    return true;
}

} // namespace

bool USBDevice::movePanTilt(int pan, int panSpeed, int tilt, int tiltSpeed)
{
    return uvc_edge::request(uvc_set_pantilt_rel, devh, direction(pan), lowByte(panSpeed),
               direction(tilt), lowByte(tiltSpeed))
        >= 0;
}

bool USBDevice::moveFocus(int sign, int speed)
{
    return uvc_edge::request(uvc_set_focus_rel, devh, direction(sign), lowByte(speed)) >= 0;
}

bool USBDevice::moveZoom(int sign, int speed)
{
    constexpr std::uint8_t digitalZoom = 1;
    return uvc_edge::request(uvc_set_zoom_rel, devh, direction(sign), digitalZoom, lowByte(speed))
        >= 0;
}

bool USBDevice::StartMoveUp(int speed)
{
    movePanTilt(0, 0, +1, speed);
    return false; // whatever the camera answered; why is not recorded, and nobody asks
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

bool USBDevice::StopZoom()
{
    // A speed goes with the stop, although nothing moves. Why 5 is not recorded.
    return moveZoom(0, 5);
}

bool USBDevice::GetZoom(long *out) { return readPosition(uvc_get_zoom_abs, devh, out); }
bool USBDevice::GetFocus(long *out) { return readPosition(uvc_get_focus_abs, devh, out); }

bool USBDevice::SetZoom0() { return uvc_edge::request(uvc_set_zoom_abs, devh, 0) >= 0; }
bool USBDevice::SetP0() { return uvc_edge::request(uvc_set_pantilt_abs, devh, 0, 0) >= 0; }
bool USBDevice::SetT0() { return uvc_edge::request(uvc_set_pantilt_abs, devh, 0, 0) >= 0; }
