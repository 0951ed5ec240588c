// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

// Every widget of the main window's form, in the order of creation: a later sibling lies above an
// earlier one.
#pragma once

#include <QRect>
#include <QWidget>

#include <vector>

#include "ui_main_window.h"

namespace form_tables {

struct Font
{
    const char *family; ///< null for the toolkit's default
    int pointSize;
    bool bold;
    bool kerning;
};

constexpr const Font *noFont = nullptr; ///< the form sets no font
constexpr Font comboFont{ nullptr, 12, true, true };
constexpr Font valueFont{ "Arial Narrow", 12, true, true };
constexpr Font panelButtonFont{ "Arial Narrow", 10, true, true };
constexpr Font keyFont{ "Arial Narrow", 10, true, true };
constexpr Font cameraFont{ "AvantGarde CE", 10, false, false };

constexpr const char *none = "";
constexpr const char *grayText = "color: rgb(205, 205, 205);";
constexpr const char *valueBox = "background-color: rgb(90, 89, 89);\ncolor: rgb(255, 255, 255);\n"
                                 "border-radius:3px;qproperty-alignment:AlignHCenter;";
constexpr const char *settingSlider =
    "QSlider::groove:horizontal {\n"
    "    border-image: url(:/img/slider_bg.png) 1 1;\n"
    "    background-attachment;\n"
    "    border-width: 1 1;\n"
    "    height:5px; \n"
    "}\n"
    "\n"
    "QSlider::handle:horizontal {\n"
    "     border: 0px ;                           \n"
    "     border-image:  url(:/img/slider_button.png);\n"
    "    background-attachment;    \n"
    "     width: 24px;                               \n"
    "     margin: -5px 0px -5px -2px;\n"
    "\n"
    "} \n"
    "\n"
    "QSlider::sub-page:horizontal {\n"
    "    background: qlineargradient(spread:pad, x1:0, y1:1, x2:0, y2:0, stop:0 #cacaca,  "
    "stop:1 #ffffff); \n"
    "}";
constexpr const char *focusSlider = "QSlider::groove:vertical  {\n"
                                    "        height: 120px;\n"
                                    "        background: transparent       \n"
                                    "}\n"
                                    "QSlider::handle:vertical  {\n"
                                    "        image: url(:/img/slider_af.png);\n"
                                    "}";
constexpr const char *zoomSlider = "QSlider::groove:vertical  {\n"
                                   "        height: 120px;\n"
                                   "        background: transparent       \n"
                                   "}\n"
                                   "QSlider::handle:vertical  {\n"
                                   "        image: url(:/img/slider_af.png);\n"
                                   "        background-attachment: ;\n"
                                   "}";
constexpr const char *windowSheet = "#Win_Left{\n"
                                    "\tbackground-image: url(:/img/background.png);\n"
                                    "\tborder: 2px solid gray ;\n"
                                    "\tbackground-repeat:no-repeat;\n"
                                    "\tbackground-position:center; \n"
                                    "\tborder-radius: 32px;\n"
                                    "}\n"
                                    "\n"
                                    "#Win_Right{\n"
                                    "\tbackground-image: url(:/img/setting_background.png);\n"
                                    "\tborder: 2px solid gray ;\n"
                                    "\tbackground-repeat:no-repeat;\n"
                                    "\tbackground-position:center; \n"
                                    "\tborder-radius: 32px;\n"
                                    "}\n";

constexpr const char *button = "QPushButton";
constexpr const char *slider = "QSlider";
constexpr const char *lineEdit = "QLineEdit";

struct Row
{
    const QWidget *widget; ///< the form's pointer of that name
    const char *name;
    const char *className;
    QRect geometry;
    const Font *font;
    const char *styleSheet;
    const char *accessibleName;
};

/// The form's pointer and, from the same word, the object name.
#define ROW(name) form.name, #name

inline std::vector<Row> leftPanel(const Ui::MainWindow &form)
{
    // clang-format off
    return {
        { ROW(btn_push), button, { 224, 198, 70, 26 }, &keyFont, grayText, "Stop automatic framing" },
        { ROW(label_ptz), "QLabel", { 42, 56, 116, 116 }, noFont, none, none },
        { ROW(btn_mirror), button, { 224, 342, 70, 26 }, &keyFont, grayText, "Mirror picture" },
        { ROW(btn_ai), button, { 129, 198, 70, 26 }, &keyFont, grayText, "Automatic framing" },
        { ROW(btn_num3), button, { 224, 226, 70, 26 }, &keyFont, grayText, "Preset 3" },
        { ROW(btn_num4), button, { 33, 255, 70, 26 }, &keyFont, grayText, "Preset 4" },
        { ROW(btn_cam3), button, { 132, 386, 63, 52 }, &cameraFont, none, "Camera 3" },
        { ROW(btn_num9), button, { 224, 284, 70, 26 }, &keyFont, grayText, "Preset 9" },
        { ROW(btn_num1), button, { 33, 226, 70, 26 }, &keyFont, grayText, "Preset 1" },
        { ROW(btn_cam1), button, { -1, 386, 74, 52 }, &cameraFont, none, "Camera 1" },
        { ROW(btn_set), button, { 33, 312, 70, 26 }, &keyFont, grayText, "Store next preset" },
        { ROW(btn_num2), button, { 129, 226, 70, 26 }, &keyFont, grayText, "Preset 2" },
        { ROW(btn_num8), button, { 129, 284, 70, 26 }, &keyFont, grayText, "Preset 8" },
        { ROW(btn_cam4), button, { 193, 386, 63, 52 }, &cameraFont, none, "Camera 4" },
        { ROW(btn_min), button, { 248, 6, 25, 20 }, noFont, none, "Minimise" },
        { ROW(btn_clear), button, { 224, 312, 70, 26 }, &keyFont, grayText, "Clear next preset" },
        { ROW(btn_home), button, { 129, 342, 70, 26 }, &keyFont, grayText, "Home position" },
        { ROW(btn_mute), button, { 184, 12, 20, 13 }, noFont, none, "Mute sound" },
        { ROW(btn_setting), button, { 295, 360, 21, 21 }, noFont, none, "Settings" },
        { ROW(slider_focus), slider, { 278, 50, 22, 120 }, noFont, focusSlider, "Focus" },
        { ROW(btn_close), button, { 280, 6, 25, 20 }, noFont, none, "Close" },
        { ROW(btn_cam2), button, { 71, 386, 63, 52 }, &cameraFont, none, "Camera 2" },
        { ROW(btn_num0), button, { 129, 312, 70, 26 }, &keyFont, grayText, "Preset 0" },
        { ROW(slider_zoom), slider, { 226, 50, 22, 120 }, noFont, zoomSlider, "Zoom" },
        { ROW(btn_top), button, { 218, 10, 17, 17 }, noFont, none, "Keep notices on top" },
        { ROW(btn_cam5), button, { 254, 386, 74, 52 }, &cameraFont, none, "Camera 5" },
        { ROW(btn_num6), button, { 224, 255, 70, 26 }, &keyFont, grayText, "Preset 6" },
        { ROW(btn_af), button, { 33, 198, 70, 26 }, &keyFont, grayText, "Focus mode" },
        { ROW(widget), "RockerHandle", { 42, 56, 116, 116 }, noFont, none, "Joystick" },
        { ROW(btn_flip), button, { 33, 342, 70, 26 }, &keyFont, grayText, "Flip picture" },
        { ROW(btn_num5), button, { 129, 255, 70, 26 }, &keyFont, grayText, "Preset 5" },
        { ROW(btn_num7), button, { 33, 284, 70, 26 }, &keyFont, grayText, "Preset 7" },
    };
    // clang-format on
}

inline std::vector<Row> rightPanel(const Ui::MainWindow &form)
{
    // clang-format off
    return {
        { ROW(cb_fliker), "QComboBox", { 230, 330, 65, 22 }, &comboFont, none, "Anti-flicker" },
        { ROW(slider_blc), slider, { 95, 32, 149, 22 }, noFont, settingSlider, "Backlight compensation" },
        { ROW(slider_contrast), slider, { 95, 117, 149, 22 }, noFont, settingSlider, "Contrast" },
        { ROW(v_blc), lineEdit, { 280, 32, 40, 22 }, &valueFont, valueBox, 
            "Backlight compensation value" },
        { ROW(v_saturation), lineEdit, { 280, 160, 40, 22 }, &valueFont, valueBox, "Saturation value" },
        { ROW(slider_sharpness), slider, { 95, 246, 149, 22 }, noFont, settingSlider, "Sharpness" },
        { ROW(v_gamma), lineEdit, { 280, 74, 40, 22 }, &valueFont, valueBox, "Gamma value" },
        { ROW(btn_ok), button, { 175, 398, 88, 25 }, &panelButtonFont, grayText, "OK" },
        { ROW(v_contrast), lineEdit, { 280, 117, 40, 22 }, &valueFont, valueBox, "Contrast value" },
        { ROW(slider_gamma), slider, { 95, 74, 149, 22 }, noFont, settingSlider, "Gamma" },
        { ROW(v_brightness), lineEdit, { 280, 202, 40, 22 }, &valueFont, valueBox, "Brightness value" },
        { ROW(slider_brightness), slider, { 95, 202, 149, 22 }, noFont, settingSlider, "Brightness" },
        { ROW(v_wb), lineEdit, { 280, 289, 40, 22 }, &valueFont, valueBox, "White balance value" },
        { ROW(slider_wb), slider, { 95, 289, 149, 22 }, noFont, settingSlider, "White balance" },
        { ROW(btn_default), button, { 62, 398, 88, 25 }, &panelButtonFont, grayText, "Default settings" },
        { ROW(slider_saturation), slider, { 95, 160, 149, 22 }, noFont, settingSlider, "Saturation" },
        { ROW(v_sharpness), lineEdit, { 280, 246, 40, 22 }, &valueFont, valueBox, "Sharpness value" },
    };
    // clang-format on
}

#undef ROW

} // namespace form_tables
