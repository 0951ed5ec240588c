// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QHash>
#include <QMainWindow>
#include <QPoint>
#include <QSystemTrayIcon>

#include <vector>

#include "device/base_device.h"

class NO_Device;
class NO_Mord_Camera;
class QSlider;
class QTimer;

namespace Ui {
class MainWindow;
}

/// The control panel: one frameless, translucent window of 653 × 436 pixels. The left panel drives
/// the camera; the right panel, shown on request, holds the image settings.
///
/// Slots named on_<object>_<signal> are connected by name when the form is built; connecting one
/// again would send each command twice. The sections below stand in the order of the slots'
/// declaration, which is fixed; each names the source file that holds its functions.
class MainWindow : public QMainWindow
{
    Q_OBJECT

public:
    /// Builds the form, makes the device object (which takes the list of the cameras plugged in)
    /// and starts the poll that opens the first camera half a second later. lifecycle.cpp
    explicit MainWindow(QWidget *parent = nullptr);

    /// Frees the form's record. The camera is not closed and no command is sent: the device and
    /// the notices end with the process.
    ~MainWindow() override;

    MainWindow(const MainWindow &) = delete;
    MainWindow &operator=(const MainWindow &) = delete;

protected:
    // window_chrome.cpp: a left-button drag on the background moves the window.
    void mousePressEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;

    // pan_tilt.cpp: arrows move, digits recall presets, T and W zoom, F, M and P switch framing.
    void keyPressEvent(QKeyEvent *event) override;
    void keyReleaseEvent(QKeyEvent *event) override;

    // window_chrome.cpp: a window past a screen edge slides in when the pointer comes and almost
    // out when it goes.
    void enterEvent(QEvent *event) override;
    void leaveEvent(QEvent *event) override;

    // The order of the slots, event handlers among them, is part of the class's interface.
public slots:
    // lifecycle.cpp
    /// Does again what the constructor does: a new timer, both notices on top, a new device.
    /// Nothing calls it.
    void InitValue();
    /// Turns the form into the window at start. initial_appearance.cpp
    void InitWindows();
    /// Starts the poll and connects the sliders and the joystick.
    void InitConnect();
    /// Does nothing; nothing calls it.
    void InitUSBGuid();
    /// False: every native event goes on to the toolkit.
    bool nativeEvent(const QByteArray &eventType, void *message, long *result) override;
    /// Lets the style paint the window's own background. window_chrome.cpp
    void paintEvent(QPaintEvent *event) override;
    /// A double click on the tray icon brings the window back; every other use is ignored.
    void on_activatedSysTrayIcon(QSystemTrayIcon::ActivationReason reason);

    // pan_tilt.cpp
    /// Sends the requests of one joystick direction (0 to 8, a 3 × 3 grid in reading order, 4 =
    /// stop) at the given camera speeds; anything else sends nothing.
    void MoveEvent(BaseDevice *camera, int direction, int panSpeed, int tiltSpeed);
    /// The joystick reports a direction.
    void MovePlace(int num);
    /// The joystick reports a pan speed level, 0 to 7.
    void SpeedX(int num);
    /// The joystick reports a tilt speed level, 0 to 7.
    void SpeedY(int num);

    // lens_sliders.cpp
    void zoomchanged();
    void zoomstop();
    void focuschanged();
    void focusstop();

    // function_buttons.cpp
    void on_btn_mute_clicked();
    void on_btn_top_clicked();
    void on_btn_min_clicked();
    void on_btn_close_clicked();
    void on_btn_af_clicked();
    void on_btn_ai_clicked();
    void on_btn_push_clicked();

    // keypad.cpp
    void on_btn_num1_clicked();
    void on_btn_num2_clicked();
    void on_btn_num3_clicked();
    void on_btn_num4_clicked();
    void on_btn_num5_clicked();
    void on_btn_num6_clicked();
    void on_btn_num7_clicked();
    void on_btn_num8_clicked();
    void on_btn_num9_clicked();
    void on_btn_set_clicked();
    void on_btn_num0_clicked();
    void on_btn_clear_clicked();

    // function_buttons.cpp
    void on_btn_flip_clicked();
    void on_btn_home_clicked();
    void on_btn_mirror_clicked();

    // camera_selection.cpp
    void on_btn_cam1_clicked();
    void on_btn_cam2_clicked();
    void on_btn_cam3_clicked();
    void on_btn_cam4_clicked();
    void on_btn_cam5_clicked();

    /// Shows or hides the settings panel. Without a camera it disables the panel for good.
    /// image_settings.cpp
    void on_btn_setting_clicked();

    // camera_selection.cpp
    /// The one poll, half a second after the start: opens the first camera or says that there is
    /// none.
    void TimerInit();
    /// Closes the open camera, opens number `flag` (from 0) and shows its image properties. When
    /// the open fails the panel keeps what it showed. image_settings.cpp
    void Setting_Press(int flag);
    /// Puts up the notice that no camera is connected.
    void Warn_NoDev();
    /// Each puts up the notice that this camera position is empty.
    void cam2_warn();
    void cam3_warn();
    void cam4_warn();
    void cam5_warn();
    /// Takes the no-camera notice down; the poll does so when it found a camera. No signal is
    /// connected to it. lifecycle.cpp
    void warn_exit();

    // image_settings.cpp
    void on_cb_fliker_currentTextChanged(const QString &arg1);
    void on_btn_default_clicked();
    void on_btn_ok_clicked();
    void on_slider_wb_sliderMoved(int position);
    void on_slider_blc_sliderMoved(int position);
    void on_slider_gamma_sliderMoved(int position);
    void on_slider_contrast_sliderMoved(int position);
    void on_slider_saturation_sliderMoved(int position);
    void on_slider_brightness_sliderMoved(int position);
    void on_slider_sharpness_sliderMoved(int position);
    void on_slider_wb_sliderPressed();
    void on_slider_gamma_sliderPressed();
    void on_slider_contrast_sliderPressed();
    void on_slider_saturation_sliderPressed();
    void on_slider_brightness_sliderPressed();
    void on_slider_sharpness_sliderPressed();
    void on_slider_blc_sliderPressed();

private:
    friend class MainWindowProbe; // the tests' window on the members below
    struct Toggle;                // a button with two states, function_buttons.cpp
    struct Lens;                  // what one of the two lens sliders drives, lens_sliders.cpp
    struct ImageProperty;         // one row of the settings panel, image_settings.cpp

    // pan_tilt.cpp
    void pressKey(int key);
    void releaseKey(int key);
    void driveReported();

    // lens_sliders.cpp
    void driveLens(const Lens &lens);
    void springBack(const Lens &lens);

    // function_buttons.cpp
    void toggle(const Toggle &which);
    void send(bool (BaseDevice::*command)());

    // keypad.cpp
    void pressDigit(unsigned char preset);

    // camera_selection.cpp
    void showCameraButtons(int selected);
    void chooseCamera(int number, void (MainWindow::*warnMissing)());
    void warnMissingCamera();

    // image_settings.cpp
    void takeRanges();
    void showRanges();
    void showValue(const ImageProperty &row, int value);
    void sendValue(const ImageProperty &row, int value);
    void adjustProperty(PropertyId id, int position);
    void resendProperty(PropertyId id);

    // window_chrome.cpp
    void recordPosition();

    QPoint dragPosition; ///< the pointer's global position at the last step of a window drag
    QHash<int, QObject *> objectTable;  ///< never filled or read
    bool dragging = false;              ///< the left button, pressed on the background, is held
    bool afState = false;               ///< manual focus is selected
    bool aiState = false;               ///< automatic framing is off
    bool topState = false;              ///< notices are not kept on top
    bool muteState = true;              ///< the next click mutes
    int setArmed = 0;                   ///< 1: the next digit stores a preset
    int clearArmed = 0;                 ///< 1: the next digit clears a preset
    bool flipState = true;              ///< the next click turns flip on
    bool mirrorState = true;            ///< the next click turns mirror on
    std::vector<DeviceInfo> deviceList; ///< what the start-up poll found
    BaseDevice *device = nullptr;       ///< the camera; kept until the process ends
    QTimer *timer = nullptr;            ///< the start-up poll
    QTimer *spareTimer = nullptr;       ///< never started
    int place = 0;                      ///< last direction that the joystick reported
    int speedX = 0;                     ///< last pan speed level that the joystick reported
    int speedY = 0;                     ///< last tilt speed level that the joystick reported
    Ui::MainWindow *form;               ///< the widgets, by object name
    QSystemTrayIcon *trayIcon = nullptr;
    NO_Device *noDeviceDialog = nullptr;
    NO_Mord_Camera *noMoreCameraDialog = nullptr;
};
