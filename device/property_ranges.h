// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

// The open camera's image properties as the settings panel shows them: current value, range,
// default and step of each, in the camera's own units. Process-wide, 0 at start. The settings
// panel writes them right after the camera was read, and the current value while the user drags;
// the steps are always 0. GUI thread only.
#pragma once

// NOLINTBEGIN(cppcoreguidelines-avoid-non-const-global-variables): shared by name, by design.

// Brightness
extern int cur_brightness;
extern int min_brightness;
extern int max_brightness;
extern int default_brightness;
extern int step_brightness;

// Contrast
extern int cur_contrast;
extern int min_contrast;
extern int max_contrast;
extern int default_contrast;
extern int step_contrast;

// Saturation
extern int cur_saturation;
extern int min_saturation;
extern int max_saturation;
extern int default_saturation;
extern int step_saturation;

// Sharpness
extern int cur_sharpness;
extern int min_sharpness;
extern int max_sharpness;
extern int default_sharpness;
extern int step_sharpness;

// Gamma
extern int cur_gamma;
extern int min_gamma;
extern int max_gamma;
extern int default_gamma;
extern int step_gamma;

// White balance temperature
extern int cur_wb;
extern int min_wb;
extern int max_wb;
extern int default_wb;
extern int step_wb;

// Backlight compensation
extern int cur_blc;
extern int min_blc;
extern int max_blc;
extern int default_blc;
extern int step_blc;

// Anti-flicker (power line frequency): 0 off, 1 50 Hz, 2 60 Hz. It has no step.
extern int cur_fliker;
extern int min_fliker;
extern int max_fliker;
extern int default_fliker;

// NOLINTEND(cppcoreguidelines-avoid-non-const-global-variables)
