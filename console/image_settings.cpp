// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

// The settings panel: seven sliders with their value boxes, the anti-flicker choice, default and
// OK. Slider positions are camera values; nothing is scaled.

#include "console/main_window.h"

#include <array>

#include "console/console_state.h"
#include "device/property_ranges.h"
#include "ui_main_window.h"

using Form = Ui::MainWindow;

// One row of the panel.
struct MainWindow::ImageProperty
{
    PropertyId id;
    QSlider *Form::*slider;
    QLineEdit *Form::*box;
    bool (BaseDevice::*setter)(int);
    int &cur;
    int &min;
    int &max;
    int &def;
    int &step;

    static const ImageProperty backlight;
    static const ImageProperty gamma;
    static const ImageProperty contrast;
    static const ImageProperty saturation;
    static const ImageProperty brightness;
    static const ImageProperty sharpness;
    static const ImageProperty whiteBalance;

    // In the order in which the panel is filled.
    static const std::array<const ImageProperty *, 7> rows;
};

const MainWindow::ImageProperty MainWindow::ImageProperty::backlight = { PropertyBacklight,
    &Form::slider_blc, &Form::v_blc, &BaseDevice::SetBLC, //
    cur_blc, min_blc, max_blc, default_blc, step_blc };
const MainWindow::ImageProperty MainWindow::ImageProperty::gamma = { PropertyGamma,
    &Form::slider_gamma, &Form::v_gamma, &BaseDevice::SetGamma, //
    cur_gamma, min_gamma, max_gamma, default_gamma, step_gamma };
const MainWindow::ImageProperty MainWindow::ImageProperty::contrast = { PropertyContrast,
    &Form::slider_contrast, &Form::v_contrast, &BaseDevice::SetContrast, //
    cur_contrast, min_contrast, max_contrast, default_contrast, step_contrast };
const MainWindow::ImageProperty MainWindow::ImageProperty::saturation = { PropertySaturation,
    &Form::slider_saturation, &Form::v_saturation, &BaseDevice::SetSaturation, //
    cur_saturation, min_saturation, max_saturation, default_saturation, step_saturation };
const MainWindow::ImageProperty MainWindow::ImageProperty::brightness = { PropertyBrightness,
    &Form::slider_brightness, &Form::v_brightness, &BaseDevice::SetBrightness, //
    cur_brightness, min_brightness, max_brightness, default_brightness, step_brightness };
const MainWindow::ImageProperty MainWindow::ImageProperty::sharpness = { PropertySharpness,
    &Form::slider_sharpness, &Form::v_sharpness, &BaseDevice::SetSharpness, //
    cur_sharpness, min_sharpness, max_sharpness, default_sharpness, step_sharpness };
const MainWindow::ImageProperty MainWindow::ImageProperty::whiteBalance = { PropertyWhiteBalance,
    &Form::slider_wb, &Form::v_wb, &BaseDevice::SetWhiteBalance, //
    cur_wb, min_wb, max_wb, default_wb, step_wb };

const std::array<const MainWindow::ImageProperty *, 7> MainWindow::ImageProperty::rows = {
    &backlight, &gamma, &contrast, &saturation, &brightness, &sharpness, &whiteBalance
};

void MainWindow::on_btn_setting_clicked()
{
    if (usb_mode == 0) {
        form->Win_Right->setEnabled(false); // for good: nothing enables it again
    } else if (right_flag == 1) {
        form->Win_Right->setVisible(false);
        right_flag = 0;
    } else if (right_flag == 0) {
        form->Win_Right->setVisible(true);
        right_flag = 1;
    }
}

// The values were sent while they were dragged; OK only closes the panel.
void MainWindow::on_btn_ok_clicked()
{
    form->Win_Right->setVisible(false);
    right_flag = 0;
}

void MainWindow::takeRanges()
{
    for (const ImageProperty *const row : ImageProperty::rows) {
        const PropertyRecord &record = device->props.at(row->id);
        row->cur = static_cast<int>(record.cur);
        row->min = static_cast<int>(record.min);
        row->max = static_cast<int>(record.max);
        row->def = static_cast<int>(record.def);
        row->step = 0; // not the record's: a click beside the handle must not move the slider
    }
    const PropertyRecord &flicker = device->props.at(PropertyFlicker);
    cur_fliker = static_cast<int>(flicker.cur);
    min_fliker = static_cast<int>(flicker.min);
    max_fliker = static_cast<int>(flicker.max);
    default_fliker = static_cast<int>(flicker.def);
}

// Writes nothing to the camera, with one exception: a change of the anti-flicker choice sends the
// camera its own value.
void MainWindow::showRanges()
{
    for (const ImageProperty *const row : ImageProperty::rows) {
        QSlider *const slider = form.get()->*row->slider;
        // Saturation gets its value before its range. At the first load it is clamped to the 99 of
        // the form while the box beside it shows the camera's value; later loads find the range
        // set.
        const bool valueFirst = row == &ImageProperty::saturation;
        if (valueFirst)
            slider->setValue(row->cur);
        slider->setMinimum(row->min);
        slider->setMaximum(row->max);
        slider->setPageStep(row->step);
        if (!valueFirst)
            slider->setValue(row->cur);
    }
    for (const ImageProperty *const row : ImageProperty::rows)
        showValue(*row, row->cur);
    form->cb_fliker->setCurrentIndex(cur_fliker);
}

void MainWindow::showValue(const ImageProperty &row, int value)
{
    (form.get()->*row.box)->setText(QString::number(value, 10));
}

void MainWindow::sendValue(const ImageProperty &row, int value)
{
    if (usb_mode == 1)
        (device->*row.setter)(value);
}

// Sends one request for each movement.
void MainWindow::adjustProperty(const ImageProperty &row, int position)
{
    row.cur = position;
    showValue(row, position);
    sendValue(row, position);
}

// Pressing the handle sends the slider's value again, moved or not.
void MainWindow::resendProperty(const ImageProperty &row)
{
    QSlider *const slider = form.get()->*row.slider;
    row.cur = slider->value();
    slider->setValue(row.cur);
    showValue(row, row.cur);
    sendValue(row, row.cur);
}

// White balance alone stores its value twice. Deliberate.
void MainWindow::on_slider_wb_sliderMoved(int position)
{
    cur_wb = position;
    showValue(ImageProperty::whiteBalance, position);
    cur_wb = position;
    sendValue(ImageProperty::whiteBalance, position);
}

void MainWindow::on_slider_blc_sliderMoved(int position)
{
    adjustProperty(ImageProperty::backlight, position);
}

void MainWindow::on_slider_gamma_sliderMoved(int position)
{
    adjustProperty(ImageProperty::gamma, position);
}

void MainWindow::on_slider_contrast_sliderMoved(int position)
{
    adjustProperty(ImageProperty::contrast, position);
}

void MainWindow::on_slider_saturation_sliderMoved(int position)
{
    adjustProperty(ImageProperty::saturation, position);
}

void MainWindow::on_slider_brightness_sliderMoved(int position)
{
    adjustProperty(ImageProperty::brightness, position);
}

void MainWindow::on_slider_sharpness_sliderMoved(int position)
{
    adjustProperty(ImageProperty::sharpness, position);
}

void MainWindow::on_slider_wb_sliderPressed() { resendProperty(ImageProperty::whiteBalance); }
void MainWindow::on_slider_gamma_sliderPressed() { resendProperty(ImageProperty::gamma); }
void MainWindow::on_slider_contrast_sliderPressed() { resendProperty(ImageProperty::contrast); }
void MainWindow::on_slider_saturation_sliderPressed() { resendProperty(ImageProperty::saturation); }
void MainWindow::on_slider_brightness_sliderPressed() { resendProperty(ImageProperty::brightness); }
void MainWindow::on_slider_sharpness_sliderPressed() { resendProperty(ImageProperty::sharpness); }
void MainWindow::on_slider_blc_sliderPressed() { resendProperty(ImageProperty::backlight); }

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

// Leaves the cur_ values as they are: the next press or drag of a slider updates its own.
void MainWindow::on_btn_default_clicked()
{
    for (const ImageProperty *const row : ImageProperty::rows)
        (form.get()->*row->slider)->setValue(row->def);
    form->cb_fliker->setCurrentIndex(default_fliker);
    for (const ImageProperty *const row : ImageProperty::rows)
        showValue(*row, row->def);
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
    device->SetWhiteBalanceAuto(0);
}
