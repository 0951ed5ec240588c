// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

#include "tests/console/process_state.h"

#include <QCoreApplication>

#include "console/console_state.h"
#include "device/property_ranges.h"
#include "widgets/notice_state.h"
#include "widgets/rocker_handle.h"

namespace {

void resetConsole() { usb_mode = maxcam = right_flag = PressFlag = WhiteBalanceAutoflag = 0; }

void resetNotices()
{
    main_position_x = main_position_y = main2_position_x = main2_position_y = 0;
    TopFlag = Top2Flag = 0;
}

void resetRanges()
{
    cur_brightness = min_brightness = max_brightness = default_brightness = step_brightness = 0;
    cur_contrast = min_contrast = max_contrast = default_contrast = step_contrast = 0;
    cur_saturation = min_saturation = max_saturation = default_saturation = step_saturation = 0;
    cur_sharpness = min_sharpness = max_sharpness = default_sharpness = step_sharpness = 0;
    cur_gamma = min_gamma = max_gamma = default_gamma = step_gamma = 0;
    cur_wb = min_wb = max_wb = default_wb = step_wb = 0;
    cur_blc = min_blc = max_blc = default_blc = step_blc = 0;
    cur_fliker = min_fliker = max_fliker = default_fliker = 0;
}

} // namespace

void resetProcessState()
{
    resetConsole();
    resetNotices();
    resetRanges();
    lastTiltLevel = 0;
    // Every window sets this one; a joystick made later would no longer see 72 dots per inch.
    QCoreApplication::setAttribute(Qt::AA_Use96Dpi, false);
}
