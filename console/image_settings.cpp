// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

// The settings panel: seven sliders with their value boxes, the anti-flicker choice, default and
// OK. Slider positions are camera values; nothing is scaled.

#include "console/main_window.h"

#include <algorithm>
#include <array>

#include "console/console_state.h"
#include "device/property_ranges.h"
#include "ui_main_window.h"

// One row of the panel.
struct MainWindow::ImageProperty
{
    PropertyId id;
    QSlider *Ui::MainWindow::*slider;
    QLineEdit *Ui::MainWindow::*box;
    bool (BaseDevice::*setter)(int);
    int &cur;
    int &min;
    int &max;
    int &def;
    int &step;

    // In the order in which the camera is read and the panel is filled.
    static const std::array<ImageProperty, 7> rows;

    static const ImageProperty &of(PropertyId wanted)
    {
        return *std::find_if(rows.begin(), rows.end(),
            [wanted](const ImageProperty &row) { return row.id == wanted; });
    }
};

#define PTZ_IMAGE_PROPERTY(id, name, setter)                                                       \
    {                                                                                              \
        id, &Ui::MainWindow::slider_##name, &Ui::MainWindow::v_##name, &BaseDevice::setter,        \
            cur_##name, min_##name, max_##name, default_##name, step_##name                        \
    }

const std::array<MainWindow::ImageProperty, 7> MainWindow::ImageProperty::rows = { {
    PTZ_IMAGE_PROPERTY(PropertyBacklight, blc, SetBLC),
    PTZ_IMAGE_PROPERTY(PropertyGamma, gamma, SetGamma),
    PTZ_IMAGE_PROPERTY(PropertyContrast, contrast, SetContrast),
    PTZ_IMAGE_PROPERTY(PropertySaturation, saturation, SetSaturation),
    PTZ_IMAGE_PROPERTY(PropertyBrightness, brightness, SetBrightness),
    PTZ_IMAGE_PROPERTY(PropertySharpness, sharpness, SetSharpness),
    PTZ_IMAGE_PROPERTY(PropertyWhiteBalance, wb, SetWhiteBalance),
} };

#undef PTZ_IMAGE_PROPERTY

void MainWindow::on_btn_setting_clicked()
{
    if (usb_mode == 0) {
        // For good: nothing enables the panel again.
        form->Win_Right->setEnabled(false);
    } else if (right_flag == 1) {
        form->Win_Right->setVisible(false);
        right_flag = 0;
    } else if (right_flag == 0) {
        form->Win_Right->setVisible(true);
        right_flag = 1;
    }
}

// Everything was sent while it was dragged; OK only closes the panel.
void MainWindow::on_btn_ok_clicked()
{
    form->Win_Right->setVisible(false);
    right_flag = 0;
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

void MainWindow::takeRanges()
{
    for (const ImageProperty &row : ImageProperty::rows) {
        const PropertyRecord &record = device->props.at(row.id);
        row.cur = static_cast<int>(record.cur);
        row.min = static_cast<int>(record.min);
        row.max = static_cast<int>(record.max);
        row.def = static_cast<int>(record.def);
        // Not the record's: with a step of 0 a click beside a slider's handle does not move it.
        row.step = 0;
    }
    const PropertyRecord &flicker = device->props.at(PropertyFlicker);
    cur_fliker = static_cast<int>(flicker.cur);
    min_fliker = static_cast<int>(flicker.min);
    max_fliker = static_cast<int>(flicker.max);
    default_fliker = static_cast<int>(flicker.def);
}

// Nothing is written to the camera here, except that a change of the anti-flicker choice writes
// the camera's own value back to it.
void MainWindow::showRanges()
{
    for (const ImageProperty &row : ImageProperty::rows) {
        QSlider *const slider = form->*row.slider;
        // Saturation takes its value before its range: at the first load the slider cannot go
        // beyond the 99 of the form, while the box beside it tells the true value. Every later
        // load finds the range set.
        if (row.id == PropertySaturation)
            slider->setValue(row.cur);
        slider->setMinimum(row.min);
        slider->setMaximum(row.max);
        slider->setPageStep(row.step);
        if (row.id != PropertySaturation)
            slider->setValue(row.cur);
    }
    for (const ImageProperty &row : ImageProperty::rows)
        showValue(row, row.cur);
    form->cb_fliker->setCurrentIndex(cur_fliker);
}

void MainWindow::showValue(const ImageProperty &row, int value)
{
    (form->*row.box)->setText(QString::number(value, 10));
}

void MainWindow::sendValue(const ImageProperty &row, int value)
{
    if (usb_mode == 1)
        (device->*row.setter)(value);
}

// The slider is dragged: one request for each movement.
void MainWindow::adjustProperty(PropertyId id, int position)
{
    const ImageProperty &row = ImageProperty::of(id);
    row.cur = position;
    showValue(row, position);
    sendValue(row, position);
}

// The handle is grabbed: the camera gets the value that the slider shows, moved or not.
void MainWindow::resendProperty(PropertyId id)
{
    const ImageProperty &row = ImageProperty::of(id);
    QSlider *const slider = form->*row.slider;
    row.cur = slider->value();
    slider->setValue(row.cur);
    showValue(row, row.cur);
    sendValue(row, row.cur);
}

void MainWindow::on_slider_wb_sliderMoved(int position)
{
    const ImageProperty &row = ImageProperty::of(PropertyWhiteBalance);
    row.cur = position;
    showValue(row, position);
    // White balance alone is noted a second time, once it is shown: the button of camera 2 reads
    // it back from here.
    row.cur = position;
    sendValue(row, position);
}

void MainWindow::on_slider_blc_sliderMoved(int position)
{
    adjustProperty(PropertyBacklight, position);
}

void MainWindow::on_slider_gamma_sliderMoved(int position)
{
    adjustProperty(PropertyGamma, position);
}

void MainWindow::on_slider_contrast_sliderMoved(int position)
{
    adjustProperty(PropertyContrast, position);
}

void MainWindow::on_slider_saturation_sliderMoved(int position)
{
    adjustProperty(PropertySaturation, position);
}

void MainWindow::on_slider_brightness_sliderMoved(int position)
{
    adjustProperty(PropertyBrightness, position);
}

void MainWindow::on_slider_sharpness_sliderMoved(int position)
{
    adjustProperty(PropertySharpness, position);
}

void MainWindow::on_slider_wb_sliderPressed() { resendProperty(PropertyWhiteBalance); }
void MainWindow::on_slider_gamma_sliderPressed() { resendProperty(PropertyGamma); }
void MainWindow::on_slider_contrast_sliderPressed() { resendProperty(PropertyContrast); }
void MainWindow::on_slider_saturation_sliderPressed() { resendProperty(PropertySaturation); }
void MainWindow::on_slider_brightness_sliderPressed() { resendProperty(PropertyBrightness); }
void MainWindow::on_slider_sharpness_sliderPressed() { resendProperty(PropertySharpness); }
void MainWindow::on_slider_blc_sliderPressed() { resendProperty(PropertyBacklight); }

void MainWindow::on_cb_fliker_currentTextChanged(const QString & /*arg1*/)
{
    const QString choice = form->cb_fliker->currentText();
    int frequency = -1;
    if (choice == QLatin1String("50HZ"))
        frequency = 1;
    else if (choice == QLatin1String("60HZ"))
        frequency = 2;
    else if (choice == QLatin1String("OFF"))
        frequency = 0;
    if (frequency >= 0 && usb_mode == 1)
        device->SetFlicker(frequency);
}

// The current values (cur_…) stay as they were: a slider brings its own up to date when it is next
// grabbed.
void MainWindow::on_btn_default_clicked()
{
    for (const ImageProperty &row : ImageProperty::rows)
        (form->*row.slider)->setValue(row.def);
    form->cb_fliker->setCurrentIndex(default_fliker);
    for (const ImageProperty &row : ImageProperty::rows)
        showValue(row, row.def);
    if (usb_mode != 1)
        return;
    device->SetWhiteBalance(default_wb);
    device->SetBLC(default_blc);
    device->SetGamma(default_gamma);
    device->SetContrast(default_contrast);
    device->SetSaturation(default_saturation);
    device->SetBrightness(default_brightness);
    device->SetSharpness(default_sharpness);
    device->SetFlicker(default_fliker);
    // Last: the default colour temperature holds only while the camera does not choose its own.
    device->SetWhiteBalanceAuto(0);
}
