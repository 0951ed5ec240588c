// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <libuvc/libuvc.h>

#include "device/base_device.h"
#include "device/uvc_edge.h"

/// A USB Video Class camera, driven through libuvc: every operation is one control request on the
/// handle that OpenDevice stored. The operations are documented in BaseDevice.
///
/// A device is never torn down in the running program: its context and list end with the process.
// NOLINTNEXTLINE(cppcoreguidelines-virtual-class-destructor): it would take a slot.
class USBDevice : public BaseDevice
{
public:
    /// Cameras with any other USB product id are not accepted, whoever made them.
    static constexpr int PRODUCT_ID_FILTER = 0x8888;

    /// Opens a libuvc context and takes the list of all UVC devices now plugged in. Cameras that
    /// are plugged in later can be enumerated but not opened by this device.
    USBDevice();

    // A copy would go on using a handle that the original has closed.
    USBDevice(const USBDevice &) = delete;
    USBDevice &operator=(const USBDevice &) = delete;

    /// Fills `list` with the accepted cameras now plugged in, numbered from 0 in libuvc's order.
    /// Writes "one: init success" and "one: get list success" to standard output on the way.
    /// False when libuvc cannot start or cannot list; no camera is true with an empty list.
    ///
    /// The numbers count accepted cameras only, whereas OpenDevice counts every UVC device: they
    /// agree while no other UVC device stands before an accepted camera.
    static bool EnumDevices(std::vector<DeviceInfo> &list);

    // usb_connection.cpp
    bool OpenDevice(const char *name, int index) override;
    void CloseDevice() override;
    bool GetDeviceInfo() override;

    // usb_motion.cpp
    bool StartMoveUp(int speed) override;
    bool StopMoveUp() override;
    bool StartMoveDown(int speed) override;
    bool StopMoveDown() override;
    bool StartMoveLeft(int speed) override;
    bool StopMoveLeft() override;
    bool StartMoveRight(int speed) override;
    bool StopMoveRight() override;
    bool StartFocusNear(int speed) override;
    bool StartFocusFar(int speed) override;
    bool StopFocus() override;
    bool StartZoomTele(int speed) override;
    bool StartZoomWide(int speed) override;
    bool StopZoom() override;
    bool GetZoom(long *out) override;
    bool GetFocus(long *out) override;
    bool SetZoom0() override;
    bool SetP0() override;
    bool SetT0() override;

    // usb_vendor_commands.cpp
    bool SetFocusManual() override;
    bool SetFocusAuto() override;
    bool SetFocusPush() override;
    bool OpenPower() override;
    bool ClosePower() override;
    bool OpenMute() override;
    bool CloseMute() override;
    bool OpenFlip() override;
    bool CloseFlip() override;
    bool OpenMirror() override;
    bool CloseMirror() override;
    bool OpenMenu() override;
    bool CloseMenu() override;
    bool HomePosition() override;
    bool OpenFreeze() override;
    bool CloseFreeze() override;
    bool OpenAI() override;
    bool CloseAI() override;
    bool PushWB() override;
    bool PushMF() override;
    bool ClearPreset(unsigned char preset) override;
    bool SetPreset(unsigned char preset) override;
    bool CallPreset(unsigned char preset) override;
    bool SetGain(int value) override;

    // usb_image_properties.cpp
    bool SetDefaultValues() override;
    bool OpenBLC() override;
    bool CloseBLC() override;
    bool GetBrightness(long *out) override;
    bool SetBrightness(int value) override;
    bool GetBLC(long *out) override;
    bool SetBLC(int value) override;
    bool GetGamma(long *out) override;
    bool SetGamma(int value) override;
    bool GetContrast(long *out) override;
    bool SetContrast(int value) override;
    bool GetSaturation(long *out) override;
    bool SetSaturation(int value) override;
    bool GetSharpness(long *out) override;
    bool SetSharpness(int value) override;
    bool GetWhiteBalance(long *out) override;
    bool SetWhiteBalance(int value) override;
    bool SetWhiteBalanceAuto(int value) override;
    bool GetGain(long *out) override;
    bool GetFlicker(long *out) override;
    bool SetFlicker(int value) override;
    bool GetPropertyValues() override;
    bool GetRGain(long *out) override;
    bool GetBGain(long *out) override;
    bool GetAE(long *out) override;
    bool GetShutter(long *out) override;
    bool GetIris(long *out) override;
    bool GetAEBright(long *out) override;
    bool GetWDR(long *out) override;
    bool GetWDRLevel(long *out) override;
    bool SetRGain(int value) override;
    bool SetBGain(int value) override;
    bool SetAE(int value) override;
    bool SetShutter(int value) override;
    bool SetIris(int value) override;
    bool SetAEBright(int value) override;
    bool SetWDR(int value) override;
    bool SetWDRLevel(int value) override;

private:
    bool movePanTilt(int pan, int panSpeed, int tilt, int tiltSpeed);
    bool moveFocus(int sign, int speed);
    bool moveZoom(int sign, int speed);
    bool sendVendorCommand(int code);

    uvc_edge::Handle devh; ///< the camera last opened, closed or not; null before
    /// Negative: OpenDevice refuses. -1 when the list could not be taken; afterwards the libuvc
    /// status of the last read of brightness, gamma, contrast or backlight compensation.
    std::int32_t status = 0;
    uvc_device_t **devList = nullptr; ///< every UVC device present at construction
    uvc_context_t *ctx = nullptr;
    std::int32_t openIndex = -1; ///< index given to the last OpenDevice; -1 before the first
};
