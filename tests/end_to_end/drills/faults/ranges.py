# Copyright (c) 2026 The PTZ panel developers
# SPDX-License-Identifier: MIT

"""Cameras that tell ranges which make no sense, and ranges at the edge of what can be told."""

from drill import Row
from image import ask_for_default, grab

ALL = "lives; what the camera gets when the slider is grabbed lies in its range"
NONE = "lives; the slider cannot be grabbed"

EVERYWHERE = [eighth / 8 for eighth in range(9)]

# Fault, what the camera tells (minimum:maximum:default:current), where the handle stands from 0 to 1
# (None: nowhere), and what the camera gets when it is grabbed and when the defaults are asked for.
TABLE = [
    ("minimum above maximum", "gamma=500:100:220:220", None, [], [220]),
    ("minimum above maximum, brightness below zero", "brightness=64:-64:0:0", None, [], [0]),
    ("current above the range", "gamma=100:500:220:900", 1, [500], [220]),
    ("current below the range", "gamma=100:500:220:50", 0, [100], [220]),
    ("range of a single value", "contrast=77:77:77:77", None, [], [77]),
    ("range of zero", "sharpness=0:0:0:0", None, [], [0]),
    ("negative brightness", "brightness=-64:64:-5:-64", 0, [-64], [-5]),
    ("brightness all below zero", "brightness=-100:-50:-75:-50", 1, [-50], [-75]),
    ("brightness as far as it can be told", "brightness=-32768:32767:-1:-32768", 0, [-32768], [-1]),
    ("contrast as far as it can be told", "contrast=0:65535:65534:65535", 1, [65535], [65534]),
    ("default outside the range", "saturation=0:50:200:50", 1, [50], [200]),
]


def grabbed(name, where, when_grabbed, as_default):
    def run(drill):
        drill.ready().panel.click("btn_setting")
        for place in EVERYWHERE if where is None else [where]:
            assert grab(drill, name, place) == when_grabbed
        assert ask_for_default(drill, name) == as_default
        drill.panel.click("btn_ok")
        drill.answers()
        drill.drives()
    return run


ROWS = [Row(fault, "", ALL if when_grabbed else NONE,
            grabbed(option.split("=")[0], where, when_grabbed, as_default),
            {"descriptions": [option]})
        for fault, option, where, when_grabbed, as_default in TABLE]
