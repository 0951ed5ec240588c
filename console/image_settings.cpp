// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

// The settings panel: seven sliders with their value boxes, the anti-flicker choice, default and
// OK. Slider positions are camera values; nothing is scaled.

#include "console/main_window.h"

#include <QStringList>

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

    static const std::array<ImageProperty, 7> rows;
};

namespace {

// In the order in which the panel is filled.
enum Row : std::size_t {
    Backlight,
    Gamma,
    Contrast,
    Saturation,
    Brightness,
    Sharpness,
    WhiteBalance
};

} // namespace

const std::array<MainWindow::ImageProperty, 7> MainWindow::ImageProperty::rows = { {
    { PropertyBacklight, &Form::slider_blc, &Form::v_blc, &BaseDevice::SetBLC, //
        cur_blc, min_blc, max_blc, default_blc, step_blc },
    { PropertyGamma, &Form::slider_gamma, &Form::v_gamma, &BaseDevice::SetGamma, //
        cur_gamma, min_gamma, max_gamma, default_gamma, step_gamma },
    { PropertyContrast, &Form::slider_contrast, &Form::v_contrast, &BaseDevice::SetContrast,
        cur_contrast, min_contrast, max_contrast, default_contrast, step_contrast },
    { PropertySaturation, &Form::slider_saturation, &Form::v_saturation,
        &BaseDevice::SetSaturation, //
        cur_saturation, min_saturation, max_saturation, default_saturation, step_saturation },
    { PropertyBrightness, &Form::slider_brightness, &Form::v_brightness,
        &BaseDevice::SetBrightness, //
        cur_brightness, min_brightness, max_brightness, default_brightness, step_brightness },
    { PropertySharpness, &Form::slider_sharpness, &Form::v_sharpness, &BaseDevice::SetSharpness,
        cur_sharpness, min_sharpness, max_sharpness, default_sharpness, step_sharpness },
    { PropertyWhiteBalance, &Form::slider_wb, &Form::v_wb, &BaseDevice::SetWhiteBalance, //
        cur_wb, min_wb, max_wb, default_wb, step_wb },
} };

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
    for (const ImageProperty &row : ImageProperty::rows) {
        const PropertyRecord &record = device->props.at(row.id);
        row.cur = static_cast<int>(record.cur);
        row.min = static_cast<int>(record.min);
        row.max = static_cast<int>(record.max);
        row.def = static_cast<int>(record.def);
        row.step = 0; // not the record's. Page step 0: a left click in the groove does nothing
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
    for (const ImageProperty &row : ImageProperty::rows) {
        QSlider *const slider = form.get()->*row.slider;
        // Saturation gets its value before its range. At the first load it is clamped to the 99 of
        // the form while the box beside it shows the camera's value; later loads find the range
        // set.
        const bool valueFirst = row.id == PropertySaturation;
        if (valueFirst)
            slider->setValue(row.cur);
        slider->setMinimum(row.min);
        slider->setMaximum(row.max);
        slider->setPageStep(row.step);
        if (!valueFirst)
            slider->setValue(row.cur);
    }
    for (const ImageProperty &row : ImageProperty::rows)
        showValue(row, row.cur);
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
void MainWindow::adjust(std::size_t index, int position)
{
    const ImageProperty &row = ImageProperty::rows.at(index);
    row.cur = position;
    showValue(row, position);
    sendValue(row, position);
}

// Pressing the handle sends the slider's value again, moved or not.
void MainWindow::resend(std::size_t index)
{
    const ImageProperty &row = ImageProperty::rows.at(index);
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
    showValue(ImageProperty::rows[WhiteBalance], position);
    cur_wb = position;
    sendValue(ImageProperty::rows[WhiteBalance], position);
}

void MainWindow::on_slider_blc_sliderMoved(int position) { adjust(Backlight, position); }
void MainWindow::on_slider_gamma_sliderMoved(int position) { adjust(Gamma, position); }
void MainWindow::on_slider_contrast_sliderMoved(int position) { adjust(Contrast, position); }
void MainWindow::on_slider_saturation_sliderMoved(int position) { adjust(Saturation, position); }
void MainWindow::on_slider_brightness_sliderMoved(int position) { adjust(Brightness, position); }
void MainWindow::on_slider_sharpness_sliderMoved(int position) { adjust(Sharpness, position); }

void MainWindow::on_slider_wb_sliderPressed() { resend(WhiteBalance); }
void MainWindow::on_slider_gamma_sliderPressed() { resend(Gamma); }
void MainWindow::on_slider_contrast_sliderPressed() { resend(Contrast); }
void MainWindow::on_slider_saturation_sliderPressed() { resend(Saturation); }
void MainWindow::on_slider_brightness_sliderPressed() { resend(Brightness); }
void MainWindow::on_slider_sharpness_sliderPressed() { resend(Sharpness); }
void MainWindow::on_slider_blc_sliderPressed() { resend(Backlight); }

void MainWindow::on_cb_fliker_currentTextChanged(const QString & /*arg1*/)
{
    const QStringList byFrequency = { QStringLiteral("OFF"), QStringLiteral("50HZ"),
        QStringLiteral("60HZ") }; // 0, 1 and 2 on the wire
    const int frequency = byFrequency.indexOf(form->cb_fliker->currentText());
    if (frequency >= 0 && usb_mode == 1)
        device->SetFlicker(frequency);
}

// Leaves the cur_ values as they are: the next press or drag of a slider updates its own.
void MainWindow::on_btn_default_clicked()
{
    for (const ImageProperty &row : ImageProperty::rows)
        (form.get()->*row.slider)->setValue(row.def);
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
    device->SetWhiteBalanceAuto(0);
}
