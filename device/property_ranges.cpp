// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

#include "device/property_ranges.h"

// NOLINTBEGIN(cppcoreguidelines-avoid-non-const-global-variables)

int cur_brightness = 0;
int min_brightness = 0;
int max_brightness = 0;
int default_brightness = 0;
int step_brightness = 0;

int cur_contrast = 0;
int min_contrast = 0;
int max_contrast = 0;
int default_contrast = 0;
int step_contrast = 0;

int cur_saturation = 0;
int min_saturation = 0;
int max_saturation = 0;
int default_saturation = 0;
int step_saturation = 0;

int cur_sharpness = 0;
int min_sharpness = 0;
int max_sharpness = 0;
int default_sharpness = 0;
int step_sharpness = 0;

int cur_gamma = 0;
int min_gamma = 0;
int max_gamma = 0;
int default_gamma = 0;
int step_gamma = 0;

int cur_wb = 0;
int min_wb = 0;
int max_wb = 0;
int default_wb = 0;
int step_wb = 0;

int cur_blc = 0;
int min_blc = 0;
int max_blc = 0;
int default_blc = 0;
int step_blc = 0;

int cur_fliker = 0;
int min_fliker = 0;
int max_fliker = 0;
int default_fliker = 0;

// NOLINTEND(cppcoreguidelines-avoid-non-const-global-variables)
