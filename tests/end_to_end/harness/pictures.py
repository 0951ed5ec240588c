# Copyright (c) 2026 The PTZ panel developers
# SPDX-License-Identifier: MIT

"""Which picture a control shows, by its pixels on the screen."""

import functools
from pathlib import Path

from PIL import Image, ImageChops, ImageDraw

from . import face

_FOLDER = Path(__file__).resolve().parents[3] / "resources" / "img"

# How far a channel may be off where half-transparent pixels were blended.
_TOLERANCE = 4

# So many pixels at the edges of the window are half transparent.
_RIM = 6

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
    strip = (face.LEFT_PANEL_WIDTH + 20, 20, face.LEFT_PANEL_WIDTH + 90, 390)
    shown = panel.desktop.screenshot(
        *panel.on_screen(*strip[:2]), strip[2] - strip[0], strip[3] - strip[1])
    # Coarsely, because a scaled desktop shows sharper pictures.
    seen, expected = [picture.resize((2, 10), Image.BOX)
                      for picture in (shown, _bare_face().convert("RGB").crop(strip))]
    difference = ImageChops.difference(expected, seen)
    return max(high for _, high in difference.getextrema()) <= _TOLERANCE


@functools.cache
def _bare_face():
    """The window without its controls."""
    whole = Image.new("RGBA", (face.WIDTH, face.HEIGHT))
    whole.paste(Image.open(_FOLDER / "background.png").convert("RGBA"))
    whole.paste(Image.open(_FOLDER / "setting_background.png").convert("RGBA"),
                (face.LEFT_PANEL_WIDTH, 0))
    return whole


def missing_share(picture, corner, width, hidden=()):
    """How much of the panel is not to be seen in a picture, from 0 to 1. It is looked for with its
    corner at that place of the picture, that much of its width and without what the hidden rectangles
    cover of it; the controls and the rim, which is half transparent, do not count."""
    looked_at = Image.new("L", picture.size)
    draw = ImageDraw.Draw(looked_at)
    x, y = corner
    for left, right in ((0, face.LEFT_PANEL_WIDTH), (face.LEFT_PANEL_WIDTH, face.WIDTH)):
        if right <= width:
            draw.rounded_rectangle((x + left + _RIM, y + _RIM, x + right - _RIM,
                                    y + face.HEIGHT - _RIM), radius=40, fill=255)
    for rectangle in [*face.CONTROLS.values(), *hidden]:
        left, top = x + rectangle.x, y + rectangle.y
        draw.rectangle((left, top, left + rectangle.width, top + rectangle.height), fill=0)
    expected = picture.copy()
    expected.paste(_bare_face().convert("RGB"), corner)
    off = functools.reduce(ImageChops.lighter, ImageChops.difference(expected, picture).split())
    wrong = ImageChops.multiply(off.point(lambda value: 255 * (value > _TOLERANCE)), looked_at)
    seen = looked_at.histogram()[255]
    return wrong.histogram()[255] / seen if seen else 0


def selected_camera(panel):
    """The number of the camera button that is marked, 0 when none is, or nothing while the buttons
    show anything else than one mark or none."""
    looks = ["green" if shows(panel, f"btn_cam{n}", f"cam{n}_green.png")
             else "black" if shows(panel, f"btn_cam{n}", f"cam{n}_black.png") else "neither"
             for n in range(1, 6)]
    if "neither" in looks or looks.count("green") > 1:
        return None
    return looks.index("green") + 1 if "green" in looks else 0
