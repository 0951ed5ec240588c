// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

/// What BaseDevice::CreateDevice can make. USB is the only value that yields a device.
enum DeviceType : int { USB = 0 };

/// One camera that enumeration found.
struct DeviceInfo
{
    /// Position among the accepted cameras, from 0; the number to pass to OpenDevice.
    std::int32_t index = 0;
    /// The camera's USB product string; empty when it reports none.
    std::string name;
    /// Always empty.
    std::string reserved;
};

/// Range and value of one image property, in the camera's own units.
struct PropertyRecord
{
    std::int64_t min = 0;
    std::int64_t max = 0;
    std::int64_t step = 0; ///< never filled: no resolution is asked for
    std::int64_t def = 0;
    std::int64_t cur = 0;
    std::int64_t flags = 0; ///< 1 once the record has been filled
};

/// Index into BaseDevice::props. The other 18 records are never touched.
enum PropertyId : int {
    PropertyWhiteBalance = 0, ///< colour temperature
    PropertyBrightness = 8,
    PropertySaturation = 9,
    PropertySharpness = 10,
    PropertyFlicker = 12,   ///< power line frequency: 0 off, 1 50 Hz, 2 60 Hz
    PropertyBacklight = 23, ///< backlight compensation
    PropertyGamma = 24,
    PropertyContrast = 25,
    PropertyCount = 26,
};

/// A camera. The window holds one pointer of this type and knows nothing of what stands behind it.
///
/// Operations block until the camera answers or the request times out. They return whether the
/// request succeeded; false when nothing was sent. Nothing is retried or logged. All run on the GUI
/// thread.
///
/// The order of the virtual operations is the binary interface and is kept, and so is the absence
/// of a virtual destructor: devices live until the process ends. The number at the end of each line
/// is the operation's slot.
///
/// Speeds are camera units, 1 to 255, higher is faster; the panel goes up to 21 in pan and 14 in
/// tilt, and stays at 1 in zoom and focus. Only the low 8 bits reach the camera, so 256 arrives as
/// 0. A camera that was started moves until it is stopped.
class BaseDevice
{
public:
    /// Hook before each enumeration and each open. Does nothing.
    static void Initial();

    /// Hook without a caller. Does nothing.
    static void Release();

    /// Lists the accepted cameras; see USBDevice::EnumDevices.
    static bool EnumUSBDevices(std::vector<DeviceInfo> &list);

    /// A new, independent device with its own libuvc context and camera list; null for any type
    /// but USB.
    static BaseDevice *CreateDevice(DeviceType type);

    /// Frees the object's storage and nothing else: the camera is not closed and the libuvc
    /// context not ended. Null does nothing.
    static void DeleteDevice(BaseDevice *device);

    // ---- connection ----

    /// Opens the camera at `index` (from 0) in the list taken when the device was made. `name` is
    /// not used. False, without an attempt, while the last read of brightness, gamma, contrast or
    /// backlight compensation had failed. An open camera is not closed first.
    virtual bool OpenDevice(const char *name, int index) = 0; // 0
    /// Closes the camera. Before the first OpenDevice it does nothing.
    virtual void CloseDevice() = 0; // 1

    // ---- pan and tilt: relative pan/tilt control; each request carries its own axis and zero for
    // the other, so the second axis of a diagonal is a request of its own ----

    /// Tilt +1 (up) at `speed`. Always false: the camera's answer is discarded.
    virtual bool StartMoveUp(int speed) = 0; // 2
    /// Pan 0, tilt 0, both speeds 0: stops both axes, whichever was started.
    virtual bool StopMoveUp() = 0; // 3
    /// Tilt -1 (down) at `speed`.
    virtual bool StartMoveDown(int speed) = 0; // 4
    /// The same request as StopMoveUp.
    virtual bool StopMoveDown() = 0; // 5
    /// Pan -1 (left) at `speed`.
    virtual bool StartMoveLeft(int speed) = 0; // 6
    /// The same request as StopMoveUp.
    virtual bool StopMoveLeft() = 0; // 7
    /// Pan +1 (right) at `speed`.
    virtual bool StartMoveRight(int speed) = 0; // 8
    /// The same request as StopMoveUp.
    virtual bool StopMoveRight() = 0; // 9

    // ---- focus ----

    /// Vendor command 7: manual focus.
    virtual bool SetFocusManual() = 0; // 10
    /// Vendor command 6: automatic focus.
    virtual bool SetFocusAuto() = 0; // 11
    /// Sends nothing; false.
    virtual bool SetFocusPush() = 0; // 12
    /// Relative focus control, +1 at `speed`.
    virtual bool StartFocusNear(int speed) = 0; // 13
    /// Relative focus control, -1 at `speed`.
    virtual bool StartFocusFar(int speed) = 0; // 14
    /// Relative focus control, 0 at speed 0.
    virtual bool StopFocus() = 0; // 15

    // ---- zoom; the digital-zoom flag is always set ----

    /// Relative zoom control, +1 at `speed`.
    virtual bool StartZoomTele(int speed) = 0; // 16
    /// Relative zoom control, -1 at `speed`.
    virtual bool StartZoomWide(int speed) = 0; // 17
    /// Relative zoom control, 0 at speed 5.
    virtual bool StopZoom() = 0; // 18

    // ---- positions ----

    /// Current focal length, 0 to 65535. On failure `*out` keeps its value, as in every getter.
    virtual bool GetZoom(long *out) = 0; // 19
    /// Current focus position, 0 to 65535.
    virtual bool GetFocus(long *out) = 0; // 20
    /// Absolute zoom control, 0.
    virtual bool SetZoom0() = 0; // 21
    /// Absolute pan/tilt control, pan 0 and tilt 0.
    virtual bool SetP0() = 0; // 22
    /// The same request as SetP0: the control sets both axes at once.
    virtual bool SetT0() = 0; // 23

    // ---- camera functions: vendor commands, written to the roll (absolute) control ----

    /// Sends nothing; false.
    virtual bool OpenPower() = 0; // 24
    /// Sends nothing; false.
    virtual bool ClosePower() = 0; // 25
    /// Vendor command 5: the camera's sound off. On is the higher code only here.
    virtual bool OpenMute() = 0; // 26
    /// Vendor command 4: the camera's sound on.
    virtual bool CloseMute() = 0; // 27
    /// Vendor command 2: picture upside down.
    virtual bool OpenFlip() = 0; // 28
    /// Vendor command 3: picture upright.
    virtual bool CloseFlip() = 0; // 29
    /// Vendor command 0: mirrors the picture, left to right.
    virtual bool OpenMirror() = 0; // 30
    /// Vendor command 1: mirror off.
    virtual bool CloseMirror() = 0; // 31
    /// Vendor command 10: shows the camera's on-screen menu.
    virtual bool OpenMenu() = 0; // 32
    /// Vendor command 11: hides the camera's on-screen menu.
    virtual bool CloseMenu() = 0; // 33
    /// Vendor command 8: the camera goes to its home position.
    virtual bool HomePosition() = 0; // 34
    /// Vendor command 18: freezes the picture.
    virtual bool OpenFreeze() = 0; // 35
    /// Vendor command 19: unfreezes the picture.
    virtual bool CloseFreeze() = 0; // 36
    /// Vendor command 16: automatic framing on.
    virtual bool OpenAI() = 0; // 37
    /// Vendor command 17: automatic framing off.
    virtual bool CloseAI() = 0; // 38

    /// Sends the default of brightness, saturation and sharpness, in this order, from `props`.
    /// The other properties are left alone. Always true.
    virtual bool SetDefaultValues() = 0; // 39

    /// Sends nothing; false.
    virtual bool PushWB() = 0; // 40
    /// Sends nothing; false.
    virtual bool PushMF() = 0; // 41
    /// Backlight compensation control, 1.
    virtual bool OpenBLC() = 0; // 42
    /// Backlight compensation control, 0.
    virtual bool CloseBLC() = 0; // 43

    // ---- presets: vendor commands; any byte is accepted, the panel uses 0 to 9 ----

    /// Vendor command preset + 60: forgets the preset.
    virtual bool ClearPreset(unsigned char preset) = 0; // 44
    /// Vendor command preset + 20: stores the current position.
    virtual bool SetPreset(unsigned char preset) = 0; // 45
    /// Vendor command preset + 100: the camera goes to the preset.
    virtual bool CallPreset(unsigned char preset) = 0; // 46

    // ---- image properties: processing unit controls, in the camera's own units. Getters ask for
    // GET_CUR; setters send one SET_CUR with the low bits of the value that the control takes ----

    /// Brightness, -32768 to 32767. The result decides whether the next OpenDevice may open, as it
    /// does for backlight compensation, gamma and contrast.
    virtual bool GetBrightness(long *out) = 0; // 47
    /// Brightness, low 16 bits, signed.
    virtual bool SetBrightness(int value) = 0; // 48
    /// Backlight compensation, 0 to 65535; 0 is off.
    virtual bool GetBLC(long *out) = 0; // 49
    /// Backlight compensation, low 16 bits.
    virtual bool SetBLC(int value) = 0; // 50
    /// Gamma, 0 to 65535; 100 is a gamma of 1.
    virtual bool GetGamma(long *out) = 0; // 51
    /// Gamma, low 16 bits.
    virtual bool SetGamma(int value) = 0; // 52
    /// Contrast, 0 to 65535.
    virtual bool GetContrast(long *out) = 0; // 53
    /// Contrast, low 16 bits.
    virtual bool SetContrast(int value) = 0; // 54
    /// Saturation, 0 to 65535; 0 is grey.
    virtual bool GetSaturation(long *out) = 0; // 55
    /// Saturation, low 16 bits.
    virtual bool SetSaturation(int value) = 0; // 56
    /// Sharpness, 0 to 65535.
    virtual bool GetSharpness(long *out) = 0; // 57
    /// Sharpness, low 16 bits.
    virtual bool SetSharpness(int value) = 0; // 58
    /// White balance as a colour temperature in kelvin, 0 to 65535.
    virtual bool GetWhiteBalance(long *out) = 0; // 59
    /// White balance temperature, low 16 bits. A camera on automatic refuses it.
    virtual bool SetWhiteBalance(int value) = 0; // 60
    /// White balance: 1 automatic, 0 manual; low 8 bits.
    virtual bool SetWhiteBalanceAuto(int value) = 0; // 61
    /// Gain, 0 to 65535.
    virtual bool GetGain(long *out) = 0; // 62
    /// Writes the roll control, not the gain control: what arrives is a vendor command, the value
    /// narrowed to signed 16 bits.
    virtual bool SetGain(int value) = 0; // 63
    /// Power line frequency: 0 off, 1 50 Hz, 2 60 Hz.
    virtual bool GetFlicker(long *out) = 0; // 64
    /// Power line frequency, low 8 bits.
    virtual bool SetFlicker(int value) = 0; // 65
    /// Fills eight records of `props` with 32 reads: value, minimum, maximum and default of each.
    /// A minimum, maximum or default that cannot be read takes the last one that could be, of this
    /// or an earlier property, and 0 when there was none. Brightness is a chain of its own, and so
    /// is anti-flicker, whose current value belongs to it. Always true.
    virtual bool GetPropertyValues() = 0; // 66

    // ---- without a counterpart on the camera: nothing is sent, out-values stay as they are, false

    virtual bool GetDeviceInfo() = 0;        // 67
    virtual bool GetRGain(long *out) = 0;    // 68
    virtual bool GetBGain(long *out) = 0;    // 69
    virtual bool GetAE(long *out) = 0;       // 70
    virtual bool GetShutter(long *out) = 0;  // 71
    virtual bool GetIris(long *out) = 0;     // 72
    virtual bool GetAEBright(long *out) = 0; // 73
    virtual bool GetWDR(long *out) = 0;      // 74
    virtual bool GetWDRLevel(long *out) = 0; // 75
    virtual bool SetRGain(int value) = 0;    // 76
    virtual bool SetBGain(int value) = 0;    // 77
    virtual bool SetAE(int value) = 0;       // 78
    virtual bool SetShutter(int value) = 0;  // 79
    virtual bool SetIris(int value) = 0;     // 80
    virtual bool SetAEBright(int value) = 0; // 81
    virtual bool SetWDR(int value) = 0;      // 82
    virtual bool SetWDRLevel(int value) = 0; // 83

    /// Ranges and values of the image properties by PropertyId; all 0 until GetPropertyValues.
    std::array<PropertyRecord, PropertyCount> props{};

protected:
    BaseDevice() = default;
    ~BaseDevice() = default;
};
