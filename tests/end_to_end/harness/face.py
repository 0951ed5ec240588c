# Copyright (c) 2026 The PTZ panel developers
# SPDX-License-Identifier: MIT

"""Where every control of the panel is, in pixels from the window's top left corner, as the forms have
it."""

import xml.etree.ElementTree
from collections import namedtuple
from pathlib import Path

_FORMS = Path(__file__).resolve().parents[3] / "forms"
_CONTROLS = ("QPushButton", "QSlider", "QLineEdit", "QComboBox", "RockerHandle")

Rectangle = namedtuple("Rectangle", "x y width height")


def _places(widget, left=0, top=0):
    """The place of each named widget in this one."""
    for inner in widget.findall("widget"):
        numbers = inner.find("property[@name='geometry']/rect")
        at = Rectangle(*(int(number.text) for number in numbers)) if numbers is not None \
            else Rectangle(0, 0, 0, 0)
        at = at._replace(x=left + at.x, y=top + at.y)
        yield inner.get("class"), inner.get("name"), at
        yield from _places(inner, at.x, at.y)


def _form(name):
    window = xml.etree.ElementTree.parse(_FORMS / f"{name}.ui").getroot().find("widget")
    width, height = (int(window.find(f"property[@name='geometry']/rect/{side}").text)
                     for side in ("width", "height"))
    return width, height, {
        name: place for kind, name, place in _places(window) if kind in _CONTROLS}


WIDTH, HEIGHT, CONTROLS = _form("main_window")
CONTROLS["joystick"] = CONTROLS.pop("widget")
NOTICE_WIDTH, NOTICE_HEIGHT, NO_CAMERA_NOTICE = _form("no_device")
MISSING_CAMERA_NOTICE = _form("no_mord_camera")[2]

LEFT_PANEL_WIDTH = 326
"""What is to be seen of the window while the settings panel is hidden."""

BACKGROUND = (116, 300)
"""A place of the left panel that no control takes, between two columns of keys: the window is
dragged by it."""
NOTICE_BACKGROUND = (163, 20)

SETTINGS = [name.removeprefix("v_") for name in CONTROLS if name.startswith("v_")]
"""The properties of the settings panel."""

BUTTONS = [name for name in CONTROLS if name.startswith("btn_")]

OPERATED = [name for name in CONTROLS if not name.startswith("v_")]
"""All but the boxes that show values."""


def centre(rectangle):
    return rectangle.x + rectangle.width // 2, rectangle.y + rectangle.height // 2
