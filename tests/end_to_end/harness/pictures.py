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
