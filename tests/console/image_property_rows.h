// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

// The seven sliders of the settings panel, in the order in which the panel is filled.
#pragma once

#include <string>
#include <vector>

#include "device/property_ranges.h"
#include "virtual_camera/camera/control_table.h"

struct ImageProperty
{
    const char *name;   ///< in the camera's log
    const char *widget; ///< "slider_" and "v_" before it are the object names
    virtual_camera::Control control;
    int &cur;
    int &min;
    int &max;
    int &def;
    int &step;

    /// What the camera gets when the property is set.
    std::string written(int value) const { return name + (' ' + std::to_string(value)); }
};

inline const std::vector<ImageProperty> &imageProperties()
{
    using virtual_camera::Control;
    static const std::vector<ImageProperty> rows = {
        { "backlight_compensation", "blc", Control::BacklightCompensation, //
            cur_blc, min_blc, max_blc, default_blc, step_blc },
        { "gamma", "gamma", Control::Gamma, //
            cur_gamma, min_gamma, max_gamma, default_gamma, step_gamma },
        { "contrast", "contrast", Control::Contrast, //
            cur_contrast, min_contrast, max_contrast, default_contrast, step_contrast },
        { "saturation", "saturation", Control::Saturation, //
            cur_saturation, min_saturation, max_saturation, default_saturation, step_saturation },
        { "brightness", "brightness", Control::Brightness, //
            cur_brightness, min_brightness, max_brightness, default_brightness, step_brightness },
        { "sharpness", "sharpness", Control::Sharpness, //
            cur_sharpness, min_sharpness, max_sharpness, default_sharpness, step_sharpness },
        { "white_balance_temperature", "wb", Control::WhiteBalanceTemperature, //
            cur_wb, min_wb, max_wb, default_wb, step_wb },
    };
    return rows;
}
