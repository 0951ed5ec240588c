# Copyright (c) 2026 The PTZ panel developers
# SPDX-License-Identifier: MIT

"""What the settings panel makes of what a camera answers."""

from PIL import ImageChops

from harness import face, requests

RANGES = {
    "blc": (0, 10, 0), "gamma": (100, 500, 220), "contrast": (0, 255, 128),
    "saturation": (0, 255, 128), "brightness": (0, 255, 128), "sharpness": (0, 15, 7),
    "wb": (2800, 6500, 4600),
}
"""Minimum, maximum and default of the virtual cameras, in the order in which they are read."""


def stale_value(name):
    """What the slider of a property that tells nothing stands at: the value that was read last, for
    brightness none, because it alone is signed."""
    if name == "brightness":
        return 0
    names = [other for other in RANGES if other != "brightness"]
    before = names[:names.index(name)]
    return RANGES[before[-1]][2] if before else 0


_HANDLE = 12


def _values(sent, name):
    """The values that these requests give that property."""
    words = [request.split() for request in sent]
    return [int(value) for control, value, *_ in words
            if control == requests.PROPERTY_CONTROLS[name]]


def _sent(drill, how):
    """What the camera is sent while how() is done and seen through."""
    start = len(drill.panel.log.lines())
    how()
    # The buttons below the sliders act after what was done before them.
    drill.panel.click("btn_home")
    drill.wait(lambda: any("roll_absolute" in request
                           for request in drill.panel.log.settings(start)), "the home command")
    return drill.panel.log.settings(start)


def grab(drill, name, where):
    """Presses and lets go of the handle of a property's slider, which stands left (0), right (1) or
    between. Returns the values that the camera is sent."""
    left, top, width, height = face.CONTROLS[f"slider_{name}"]
    x = left + _HANDLE // 2 + round(where * (width - _HANDLE))
    place = drill.panel.on_screen(x, top + height // 2)
    return _values(_sent(drill, lambda: drill.desktop.mouse.click(*place)), name)


def shows_same(drill, name, other):
    """Whether the value boxes of both properties show the same."""
    pictures = [drill.panel.picture_of(f"v_{box}").crop((2, 2, 38, 20)) for box in (name, other)]
    return ImageChops.difference(*pictures).getbbox() is None


def ask_for_defaults(drill):
    """Clicks the default button. Returns what the camera is sent."""
    return _sent(drill, lambda: drill.panel.click("btn_default"))


def ask_for_default(drill, name):
    """The same, and returns the values of that property alone."""
    return _values(ask_for_defaults(drill), name)
