# Copyright (c) 2026 The PTZ panel developers
# SPDX-License-Identifier: MIT

"""What the panel looks like on a real X server, and where its labels are in those pictures."""

import contextlib
import sys
import time
from collections import namedtuple
from pathlib import Path

_ROOT = Path(__file__).resolve().parents[2]
sys.path += [str(_ROOT / "resources" / "art"), str(_ROOT / "tests" / "end_to_end")]

import draw  # noqa: E402
from harness import face  # noqa: E402
from harness.desktop import Desktop  # noqa: E402
from harness.panel import Panel  # noqa: E402
from tour.screen import Screen  # noqa: E402

Label = namedtuple("Label", "portrait picture text box")

# The picture of each face and where it is to be seen: as started, or with every toggle switched.
_FACES = {
    "started": {
        "AF": "btn_af", "Framing": "btn_ai", "Push": "btn_push", "Set": "btn_set",
        "Clear": "btn_clear", "Flip": "btn_flip", "HOME": "btn_home", "Mirror": "btn_mirror",
        "no_mute": "btn_mute", "top": "btn_top", "Default": "btn_default", "OK": "btn_ok",
        "cam1_green": "btn_cam1",
        **{str(n): f"btn_num{n}" for n in range(10)},
        **{f"cam{n}_black": f"btn_cam{n}" for n in range(2, 6)},
    },
    "switched": {
        "MF": "btn_af", "Manual": "btn_ai", "mute": "btn_mute", "no_top": "btn_top",
        "cam2_green": "btn_cam2", "cam1_black": "btn_cam1",
    },
}
_CORNERS = {
    "background": ("started", 0), "setting_background": ("started", face.LEFT_PANEL_WIDTH),
    "no_device": ("no camera", 0), "no_more_camera": ("empty number", 0),
}


def _centred(room, size):
    """Where the toolkit puts a picture on a button."""
    x, y, width, height = room
    return x + width // 2 - size[0] // 2, y + height // 2 - size[1] // 2, *size


def labels():
    """Every label of the panel and its box, in pixels of the portrait at factor 1."""
    sheets = [draw.Sheet(name) for name in draw.SHEETS]
    for sheet in sheets:
        for picture, (portrait, left) in _CORNERS.items():
            for text, (x, y, width, height) in sheet.texts.get(picture, ()):
                yield Label(portrait, picture, text, (left + x, y, width, height))
    sizes = {name: place[2:] for sheet in sheets for name, place in sheet.places.items()}
    texts = {name: text for sheet in sheets for name, text in sheet.texts.items()}
    for portrait, faces in _FACES.items():
        for picture, control in faces.items():
            name = texts[picture][0][0] if texts[picture] else f"({picture})"
            yield Label(portrait, picture, name, _centred(face.CONTROLS[control], sizes[picture]))
    for control, rectangle in {**face.NO_CAMERA_NOTICE, "only": None}.items():
        portrait = "no camera" if rectangle else "empty number"
        picture = "Quit" if control == "btn_quit" else "OK"
        room = rectangle or face.MISSING_CAMERA_NOTICE["btn_ok"]
        yield Label(portrait, picture, texts[picture][0][0], _centred(room, sizes[picture]))


class _ScaledPanel(Panel):
    """A panel that the toolkit shows so many times as large."""

    factor = 1

    def on_screen(self, x, y):
        place = self.place()
        return place.x + round(self.factor * x), place.y + round(self.factor * y)


@contextlib.contextmanager
def _panel(desktop, devices, factor):
    environment = {} if factor == 1 else {"QT_SCALE_FACTOR": str(factor)}
    with _ScaledPanel(desktop, devices, environment=environment) as panel:
        panel.factor = factor
        yield panel


def _picture(desktop, place, size):
    """What is in that place, once it does not change any more."""
    desktop.mouse.move_to(desktop.width - 1, 0)
    last = None
    while True:
        now = desktop.screenshot(place.x, place.y, *size)
        if last and now.tobytes() == last.tobytes():
            return now
        last = now
        time.sleep(0.1)


def take(factor=1):
    """Pictures of the panel with its settings, of the same with everything switched, and of both
    notices, by their names."""
    size = [round(factor * length) for length in (face.WIDTH, face.HEIGHT)]
    notice = [round(factor * length) for length in (face.NOTICE_WIDTH, face.NOTICE_HEIGHT)]
    pictures = {}
    with Desktop(compositor=True, size=(size[0] + 200, size[1] + 200)) as desktop, \
            contextlib.closing(Screen(desktop)):
        with _panel(desktop, 2, factor) as panel:
            panel.opened()
            panel.click("btn_setting")
            # At the start the face is that of muted sound, which the first click only confirms.
            panel.click("btn_mute")
            panel.click("btn_mute")
            pictures["started"] = _picture(desktop, panel.place(), size)
            for control in ("btn_mute", "btn_top", "btn_af", "btn_ai", "btn_cam2"):
                panel.click(control)
            pictures["switched"] = _picture(desktop, panel.place(), size)
            panel.click("btn_cam4")
            place = desktop.windows.place(panel.await_notices(1)[0])
            pictures["empty number"] = _picture(desktop, place, notice)
        with _panel(desktop, "storage", factor) as panel:
            place = desktop.windows.place(panel.await_notices(1)[0])
            pictures["no camera"] = _picture(desktop, place, notice)
    return pictures
