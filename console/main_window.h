// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QHash>
#include <QMainWindow>
#include <QPoint>
#include <QSystemTrayIcon>

#include <memory>
#include <vector>

#include "device/base_device.h"

class NO_Device;
class NO_Mord_Camera;
class QSlider;
class QTimer;

namespace Ui {
class MainWindow;
}

/// The control panel: one frameless, translucent window. The left panel drives the camera; the
/// right panel, shown on request, holds the image settings.
///
/// Slots named on_<object>_<signal> are connected by name when the form is built; connecting one
/// again would send each command twice. Each section below names the source file that defines it.
class MainWindow : public QMainWindow
{
    Q_OBJECT

public:
    /// Builds the form, creates the device, which lists the cameras, and starts the poll that opens
    /// the first one half a second later. main_window.cpp
    explicit MainWindow(QWidget *parent = nullptr);

    /// Closes no camera and sends nothing: the device and the notices end with the process.
    ~MainWindow() override;

    MainWindow(const MainWindow &) = delete;
    MainWindow &operator=(const MainWindow &) = delete;

    /// The widgets by object name, for what fits them to the desktop.
    const Ui::MainWindow &widgets() const { return *form; }

protected:
    // window_chrome.cpp: dragging the background with the left button moves the window.
    void mousePressEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;

    // pan_tilt.cpp: arrows move, digits recall presets, T and W zoom, F, M and P switch framing.
    void keyPressEvent(QKeyEvent *event) override;
    void keyReleaseEvent(QKeyEvent *event) override;

    // window_chrome.cpp: a window past a screen edge slides in when the pointer enters it and
    // almost out when the pointer leaves.
    void enterEvent(QEvent *event) override;
    void leaveEvent(QEvent *event) override;

    // The order of the slots, event handlers among them, is part of the class's interface.
public slots:
    // main_window.cpp
    /// Repeats part of the constructor: a new timer, both notices on top, a new device. Never
    /// called.
    void InitValue();
    /// Turns the form into the window as it first appears. initial_appearance.cpp
    void InitWindows();
    /// Starts the poll and connects the sliders and the joystick.
    void InitConnect();
    /// Does nothing. Never called.
    void InitUSBGuid();
    /// Always false: the toolkit handles every native event.
    bool nativeEvent(const QByteArray &eventType, void *message, long *result) override;
    /// Lets the style paint the window's own background. window_chrome.cpp
    void paintEvent(QPaintEvent *event) override;
    /// A double click on the tray icon restores the window. window_buttons.cpp
    void on_activatedSysTrayIcon(QSystemTrayIcon::ActivationReason reason);

    // pan_tilt.cpp
    /// Sends the requests of a joystick direction, 0 to 8 (a 3 × 3 grid in reading order, 4 stops),
    /// at these camera speeds. Any other number sends nothing.
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

    // function_buttons.cpp; on top, minimise and close: window_buttons.cpp
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
    /// The one poll, half a second after the start: opens the first camera or shows the no-camera
    /// notice.
    void TimerInit();
    /// Closes the open camera, opens camera `flag` (from 0) and shows its image properties. If the
    /// open fails, the settings panel keeps what it shows.
    void Setting_Press(int flag);
    /// Shows a notice that no camera is connected.
    void Warn_NoDev();
    /// Each shows a notice that the chosen camera does not exist.
    void cam2_warn();
    void cam3_warn();
    void cam4_warn();
    void cam5_warn();
    /// Hides the no-camera notice. Called by the poll; no signal is connected to it.
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
    friend class MainWindowProbe; // gives the tests access to the members below
    struct Toggle;                // a switch of the camera: function_buttons.cpp
    struct Lens;                  // what a lens slider drives: lens_sliders.cpp
    struct ImageProperty;         // a row of the settings panel: image_settings.cpp

    // pan_tilt.cpp
    void pressKey(int key);
    void releaseKey(int key);
    void driveReported();

    // lens_sliders.cpp
    void restLensSliders();
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
    void adjust(std::size_t index, int position);
    void resend(std::size_t index);

    // window_chrome.cpp
    void recordPosition();
    int transparentWidth() const;

    QPoint dragPosition; ///< the pointer's global position at the last step of a window drag
    QHash<int, QObject *> objectTable; ///< unused
    bool dragging = false;   ///< the left button was pressed on the background and is held
    bool afState = false;    ///< manual focus is selected
    bool aiState = false;    ///< automatic framing is off
    bool topState = false;   ///< notices do not stay on top
    bool muteState = true;   ///< the next click mutes
    int setArmed = 0;        ///< 1: the next digit stores a preset
    int clearArmed = 0;      ///< 1: the next digit clears a preset
    bool flipState = true;   ///< the next click turns flip on
    bool mirrorState = true; ///< the next click turns mirror on
    std::vector<DeviceInfo> deviceList;   ///< what the poll found
    BaseDevice *device = nullptr;         ///< kept until the process ends
    QTimer *timer = nullptr;              ///< the start-up poll
    QTimer *spareTimer = nullptr;         ///< never started
    int place = 0;                        ///< last direction reported by the joystick
    int speedX = 0;                       ///< last pan level reported by the joystick
    int speedY = 0;                       ///< last tilt level reported by the joystick
    std::unique_ptr<Ui::MainWindow> form; ///< the widgets, by object name
    QSystemTrayIcon *trayIcon = nullptr;
    NO_Device *noDeviceDialog = nullptr;
    NO_Mord_Camera *noMoreCameraDialog = nullptr;
};
