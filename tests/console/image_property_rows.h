// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

// The seven sliders of the settings panel with everything that belongs to each, in the order in
// which the panel is filled.
#pragma once

#include <QLineEdit>
#include <QSlider>

#include <string>
#include <vector>

#include "console/main_window.h"
#include "device/property_ranges.h"
#include "ui_main_window.h"
#include "virtual_camera/camera/control_table.h"

struct ImageProperty
{
    const char *name; ///< also in the camera's log
    virtual_camera::Control control;
    PropertyId id;
    QSlider *Ui::MainWindow::*slider;
    QLineEdit *Ui::MainWindow::*box;
    int &cur;
    int &min;
    int &max;
    int &def;
    int &step;
    void (MainWindow::*moved)(int);
    void (MainWindow::*pressed)();

    /// What the camera gets when the property is set.
    std::string written(int value) const { return name + (' ' + std::to_string(value)); }
};

inline const std::vector<ImageProperty> &imageProperties()
{
    using virtual_camera::Control;
    using W = MainWindow;
    using F = Ui::MainWindow;
    static const std::vector<ImageProperty> rows = {
        { "backlight_compensation", Control::BacklightCompensation, PropertyBacklight,
            &F::slider_blc, &F::v_blc, cur_blc, min_blc, max_blc, default_blc, step_blc,
            &W::on_slider_blc_sliderMoved, &W::on_slider_blc_sliderPressed },
        { "gamma", Control::Gamma, PropertyGamma, &F::slider_gamma, &F::v_gamma, cur_gamma,
            min_gamma, max_gamma, default_gamma, step_gamma, &W::on_slider_gamma_sliderMoved,
            &W::on_slider_gamma_sliderPressed },
        { "contrast", Control::Contrast, PropertyContrast, &F::slider_contrast, &F::v_contrast,
            cur_contrast, min_contrast, max_contrast, default_contrast, step_contrast,
            &W::on_slider_contrast_sliderMoved, &W::on_slider_contrast_sliderPressed },
        { "saturation", Control::Saturation, PropertySaturation, &F::slider_saturation,
            &F::v_saturation, cur_saturation, min_saturation, max_saturation, default_saturation,
            step_saturation, &W::on_slider_saturation_sliderMoved,
            &W::on_slider_saturation_sliderPressed },
        { "brightness", Control::Brightness, PropertyBrightness, &F::slider_brightness,
            &F::v_brightness, cur_brightness, min_brightness, max_brightness, default_brightness,
            step_brightness, &W::on_slider_brightness_sliderMoved,
            &W::on_slider_brightness_sliderPressed },
        { "sharpness", Control::Sharpness, PropertySharpness, &F::slider_sharpness, &F::v_sharpness,
            cur_sharpness, min_sharpness, max_sharpness, default_sharpness, step_sharpness,
            &W::on_slider_sharpness_sliderMoved, &W::on_slider_sharpness_sliderPressed },
        { "white_balance_temperature", Control::WhiteBalanceTemperature, PropertyWhiteBalance,
            &F::slider_wb, &F::v_wb, cur_wb, min_wb, max_wb, default_wb, step_wb,
            &W::on_slider_wb_sliderMoved, &W::on_slider_wb_sliderPressed },
    };
    return rows;
}
