# Copyright (c) 2026 The PTZ panel developers
# SPDX-License-Identifier: MIT

"""Which picture a control shows, by its pixels on the screen."""

from pathlib import Path

from PIL import Image, ImageChops

from . import face

_FOLDER = Path(__file__).resolve().parents[3] / "resources" / "img"

# How far a channel may be off where half-transparent pixels were blended.
_TOLERANCE = 4

# These show their picture on the panel's background, the others on black.
_TRANSPARENT = ("btn_mute", "btn_top", "btn_cam")


def shows(panel, control, name):
    """Whether the control shows that picture of the program, in its middle."""
    rectangle = face.CONTROLS[control]
    picture = Image.open(_FOLDER / name).convert("RGBA")
    x = rectangle.x + rectangle.width // 2 - picture.width // 2
    y = rectangle.y + rectangle.height // 2 - picture.height // 2
    if control.startswith(_TRANSPARENT):
        backdrop = Image.open(_FOLDER / "background.png").convert("RGBA")
        backdrop = backdrop.crop((x, y, x + picture.width, y + picture.height))
    else:
        backdrop = Image.new("RGBA", picture.size, "black")
    expected = Image.alpha_composite(backdrop, picture).convert("RGB")
    shown = panel.desktop.screenshot(*panel.on_screen(x, y), *picture.size)
    difference = ImageChops.difference(expected, shown)
    return max(high for _, high in difference.getextrema()) <= _TOLERANCE


def settings_panel_shown(panel):
    """Whether the settings panel is to be seen, by a strip of it that holds no control."""
    strip = (20, 20, 90, 390)
    background = Image.open(_FOLDER / "setting_background.png").convert("RGBA").crop(strip)
    expected = Image.alpha_composite(Image.new("RGBA", background.size, "black"), background)
    shown = panel.desktop.screenshot(
        *panel.on_screen(face.LEFT_PANEL_WIDTH + strip[0], strip[1]), *background.size)
    difference = ImageChops.difference(expected.convert("RGB"), shown)
    return max(high for _, high in difference.getextrema()) <= _TOLERANCE


def selected_camera(panel):
    """The number of the camera button that is marked, 0 when none is, or nothing while the buttons
    show anything else than one mark or none."""
    looks = ["green" if shows(panel, f"btn_cam{n}", f"cam{n}_green.png")
             else "black" if shows(panel, f"btn_cam{n}", f"cam{n}_black.png") else "neither"
             for n in range(1, 6)]
    if "neither" in looks or looks.count("green") > 1:
        return None
    return looks.index("green") + 1 if "green" in looks else 0
