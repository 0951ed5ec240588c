// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

// Functions for which the USB Video Class has no control. Their code is written to the roll
// (absolute) control, which these cameras never use for rolling; the firmware takes the number as
// a command. The codes are the contract with the camera.

#include "device/usb_device.h"
#include "device/uvc_edge.h"

namespace {

enum VendorCommand : int {
    MirrorOn = 0,
    MirrorOff = 1,
    FlipOn = 2,
    FlipOff = 3,
    MuteOff = 4, // the one switch whose off comes first
    MuteOn = 5,
    FocusAutomatic = 6,
    FocusManual = 7,
    GoHome = 8,
    MenuOn = 10,
    MenuOff = 11,
    FramingOn = 16,
    FramingOff = 17,
    FreezeOn = 18,
    FreezeOff = 19,
    StorePreset = 20,   // plus the preset's number
    ForgetPreset = 60,  // plus the preset's number
    RecallPreset = 100, // plus the preset's number
};

} // namespace

bool USBDevice::sendVendorCommand(int code)
{
    return uvc_edge::set(devh, uvc_edge::CameraTerminal, uvc_set_roll_abs, code);
}

bool USBDevice::OpenMirror() { return sendVendorCommand(MirrorOn); }
bool USBDevice::CloseMirror() { return sendVendorCommand(MirrorOff); }
bool USBDevice::OpenFlip() { return sendVendorCommand(FlipOn); }
bool USBDevice::CloseFlip() { return sendVendorCommand(FlipOff); }
bool USBDevice::OpenMute() { return sendVendorCommand(MuteOn); }
bool USBDevice::CloseMute() { return sendVendorCommand(MuteOff); }
bool USBDevice::SetFocusAuto() { return sendVendorCommand(FocusAutomatic); }
bool USBDevice::SetFocusManual() { return sendVendorCommand(FocusManual); }
bool USBDevice::HomePosition() { return sendVendorCommand(GoHome); }
bool USBDevice::OpenMenu() { return sendVendorCommand(MenuOn); }
bool USBDevice::CloseMenu() { return sendVendorCommand(MenuOff); }
bool USBDevice::OpenAI() { return sendVendorCommand(FramingOn); }
bool USBDevice::CloseAI() { return sendVendorCommand(FramingOff); }
bool USBDevice::OpenFreeze() { return sendVendorCommand(FreezeOn); }
bool USBDevice::CloseFreeze() { return sendVendorCommand(FreezeOff); }
bool USBDevice::SetPreset(unsigned char preset) { return sendVendorCommand(StorePreset + preset); }

bool USBDevice::ClearPreset(unsigned char preset)
{
    return sendVendorCommand(ForgetPreset + preset);
}

bool USBDevice::CallPreset(unsigned char preset)
{
    return sendVendorCommand(RecallPreset + preset);
}

// A command, not the gain control of the processing unit, from which the gain is read.
bool USBDevice::SetGain(int value) { return sendVendorCommand(value); }

bool USBDevice::SetFocusPush() { return false; }
bool USBDevice::OpenPower() { return false; }
bool USBDevice::ClosePower() { return false; }
bool USBDevice::PushWB() { return false; }
bool USBDevice::PushMF() { return false; }
