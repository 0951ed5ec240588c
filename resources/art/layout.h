// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

#pragma once

#include "resources/art/canvas.h"

#include <array>

// Where the widgets lie on their pictures, in pixels. The pictures show what the widgets do not
// paint themselves, so both must agree; a test compares these places with the forms.
namespace art {

struct Place
{
    const char *widget;
    int x;
    int y;
    int width;
    int height;

    double centreX() const { return x + width / 2.0; }
    double centreY() const { return y + height / 2.0; }
    Shape shape(double radius = 0.0) const { return box(x, y, width, height, radius); }
};

constexpr int panelHeight = 436;
constexpr int controlPanelWidth = 326;
constexpr int settingsPanelWidth = 327;
constexpr int noticeWidth = 326;
constexpr int noticeHeight = 187;
constexpr double cornerRadius = 32.0;

constexpr std::array<Place, 18> keys{ {
    { "btn_af", 33, 198, 70, 26 },
    { "btn_ai", 129, 198, 70, 26 },
    { "btn_push", 224, 198, 70, 26 },
    { "btn_num1", 33, 226, 70, 26 },
    { "btn_num2", 129, 226, 70, 26 },
    { "btn_num3", 224, 226, 70, 26 },
    { "btn_num4", 33, 255, 70, 26 },
    { "btn_num5", 129, 255, 70, 26 },
    { "btn_num6", 224, 255, 70, 26 },
    { "btn_num7", 33, 284, 70, 26 },
    { "btn_num8", 129, 284, 70, 26 },
    { "btn_num9", 224, 284, 70, 26 },
    { "btn_set", 33, 312, 70, 26 },
    { "btn_num0", 129, 312, 70, 26 },
    { "btn_clear", 224, 312, 70, 26 },
    { "btn_flip", 33, 342, 70, 26 },
    { "btn_home", 129, 342, 70, 26 },
    { "btn_mirror", 224, 342, 70, 26 },
} };

constexpr std::array<Place, 5> cameraButtons{ {
    { "btn_cam1", -1, 386, 74, 52 },
    { "btn_cam2", 71, 386, 63, 52 },
    { "btn_cam3", 132, 386, 63, 52 },
    { "btn_cam4", 193, 386, 63, 52 },
    { "btn_cam5", 254, 386, 74, 52 },
} };

constexpr Place minimise{ "btn_min", 248, 6, 25, 20 };
constexpr Place close{ "btn_close", 280, 6, 25, 20 };
constexpr Place setting{ "btn_setting", 295, 360, 21, 21 };
constexpr Place joystick{ "widget", 42, 56, 116, 116 };
constexpr Place zoom{ "slider_zoom", 226, 50, 22, 120 };
constexpr Place focus{ "slider_focus", 278, 50, 22, 120 };

constexpr std::array<Place, 7> settingSliders{ {
    { "slider_blc", 95, 32, 149, 22 },
    { "slider_gamma", 95, 74, 149, 22 },
    { "slider_contrast", 95, 117, 149, 22 },
    { "slider_saturation", 95, 160, 149, 22 },
    { "slider_brightness", 95, 202, 149, 22 },
    { "slider_sharpness", 95, 246, 149, 22 },
    { "slider_wb", 95, 289, 149, 22 },
} };

constexpr Place antiFlicker{ "cb_fliker", 230, 330, 65, 22 };
constexpr Place defaults{ "btn_default", 62, 398, 88, 25 };
constexpr Place settingsOk{ "btn_ok", 175, 398, 88, 25 };

constexpr Place noticeQuit{ "btn_quit", 32, 144, 80, 23 };
constexpr Place noticeOk{ "btn_ok", 214, 144, 80, 23 };
constexpr Place onlyNoticeOk{ "btn_ok", 124, 144, 80, 23 };

} // namespace art
