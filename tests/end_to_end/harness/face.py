# Copyright (c) 2026 The PTZ panel developers
# SPDX-License-Identifier: MIT

"""Where every control of the panel is, in pixels from the window's top left corner."""

from collections import namedtuple

Rectangle = namedtuple("Rectangle", "x y width height")

WIDTH, HEIGHT = 653, 436
LEFT_PANEL_WIDTH = 326
"""What is to be seen of the window while the settings panel is hidden."""

BACKGROUND = (116, 300)
"""A place of the left panel that no control takes, between two columns of keys: the window is
dragged by it."""

NOTICE_WIDTH, NOTICE_HEIGHT = 326, 187
NOTICE_BACKGROUND = (163, 20)

_KEYS = (
    ("btn_af", "btn_ai", "btn_push"),
    ("btn_num1", "btn_num2", "btn_num3"),
    ("btn_num4", "btn_num5", "btn_num6"),
    ("btn_num7", "btn_num8", "btn_num9"),
    ("btn_set", "btn_num0", "btn_clear"),
    ("btn_flip", "btn_home", "btn_mirror"),
)

CONTROLS = {
    name: Rectangle(x, y, 70, 26)
    for names, y in zip(_KEYS, (198, 226, 255, 284, 312, 342))
    for name, x in zip(names, (33, 129, 224))
}
CONTROLS |= {
    "btn_mute": Rectangle(184, 12, 20, 13),
    "btn_top": Rectangle(218, 10, 17, 17),
    "btn_min": Rectangle(248, 6, 25, 20),
    "btn_close": Rectangle(280, 6, 25, 20),
    "btn_setting": Rectangle(295, 360, 21, 21),
    "btn_cam1": Rectangle(-1, 386, 74, 52),
    "btn_cam2": Rectangle(71, 386, 63, 52),
    "btn_cam3": Rectangle(132, 386, 63, 52),
    "btn_cam4": Rectangle(193, 386, 63, 52),
    "btn_cam5": Rectangle(254, 386, 74, 52),
    "joystick": Rectangle(42, 56, 116, 116),
    "slider_zoom": Rectangle(226, 50, 22, 120),
    "slider_focus": Rectangle(278, 50, 22, 120),
}

SETTINGS = {"blc": 32, "gamma": 74, "contrast": 117, "saturation": 160, "brightness": 202,
            "sharpness": 246, "wb": 289}
"""The rows of the settings panel, by the property that each holds, from top to bottom."""

for _property, _y in SETTINGS.items():
    CONTROLS[f"slider_{_property}"] = Rectangle(LEFT_PANEL_WIDTH + 95, _y, 149, 22)
    CONTROLS[f"v_{_property}"] = Rectangle(LEFT_PANEL_WIDTH + 280, _y, 40, 22)
CONTROLS |= {
    "cb_fliker": Rectangle(LEFT_PANEL_WIDTH + 230, 330, 65, 22),
    "btn_default": Rectangle(LEFT_PANEL_WIDTH + 62, 398, 88, 25),
    "btn_ok": Rectangle(LEFT_PANEL_WIDTH + 175, 398, 88, 25),
}

NO_CAMERA_NOTICE = {"btn_quit": Rectangle(32, 144, 80, 23), "btn_ok": Rectangle(214, 144, 80, 23)}
MISSING_CAMERA_NOTICE = {"btn_ok": Rectangle(124, 144, 80, 23)}

BUTTONS = [name for name in CONTROLS if name.startswith("btn_")]


OPERATED = [name for name in CONTROLS if not name.startswith("v_")]
"""All but the boxes that show values."""


def centre(rectangle):
    return rectangle.x + rectangle.width // 2, rectangle.y + rectangle.height // 2
