# Copyright (c) 2026 The PTZ panel developers
# SPDX-License-Identifier: MIT
"""Whether the labels can be read, measured on the screen: contrast as WCAG 2 defines it."""

import collections
import math
import statistics
import sys
import unittest

import portraits

# What small text and what the outline of a control need for people with moderately low vision
# (WCAG 2, level AA).
READABLE = 4.5
VISIBLE = 3


def luminance(colour):
    def linear(level):
        value = level / 255
        return value / 12.92 if value <= 0.03928 else ((value + 0.055) / 1.055) ** 2.4
    return sum(weight * linear(level) for weight, level in zip((0.2126, 0.7152, 0.0722), colour))


def contrast(one, other):
    low, high = sorted((luminance(one), luminance(other)))
    return (high + 0.05) / (low + 0.05)


Measure = collections.namedtuple("Measure", "contrast width height")


def measure(picture, box, factor=1):
    """Contrast and size of what is printed in the box. The ground is the middle one of the colours
    around it; the contrast is that of the middle one of the inked pixels, softened edges too."""
    margin = 2
    left, top = [math.floor(factor * (edge - margin)) for edge in box[:2]]
    right, bottom = [math.ceil(factor * (box[i] + box[i + 2] + margin)) for i in (0, 1)]
    part = picture.crop((left, top, right, bottom))
    pixels = list(part.getdata())
    rim = pixels[:part.width] + pixels[-part.width:]
    ground = sorted(rim, key=luminance)[len(rim) // 2]
    inked = {(i % part.width, i // part.width): ratio for i, pixel in enumerate(pixels)
             if (ratio := contrast(pixel, ground)) > 1.5}
    if not inked:
        return Measure(1, 0, 0)
    columns, rows = [sorted({place[axis] for place in inked}) for axis in (0, 1)]
    return Measure(statistics.median(inked.values()), (columns[-1] - columns[0] + 1) / factor,
                   (rows[-1] - rows[0] + 1) / factor)


def ring_contrast(picture, factor=1):
    """The joystick's ring against both sides of it, the lesser of both, all around."""
    def at(angle, radius):
        return picture.getpixel((round(factor * (100 + radius * math.cos(angle)) - 0.5),
                                 round(factor * (114 + radius * math.sin(angle)) - 0.5)))

    def here(angle):
        line = max((at(angle, 34 + step / 4) for step in range(17)), key=luminance)
        return min(contrast(line, at(angle, radius)) for radius in (32, 40))
    # Between the arrows.
    return min(here(math.radians(22.5 + 45 * turn)) for turn in range(8))


class Labels(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.pictures = portraits.take()

    def test_every_label_can_be_read(self):
        for label in portraits.labels():
            with self.subTest(label.text, picture=label.picture):
                found = measure(self.pictures[label.portrait], label.box)
                self.assertGreaterEqual(found.contrast, READABLE)
                self.assertGreaterEqual(max(found.width, found.height), 7, "nothing is there")

    def test_the_ring_in_which_the_joystick_rests_can_be_seen(self):
        self.assertGreaterEqual(ring_contrast(self.pictures["started"]), VISIBLE)

    def test_no_label_touches_another(self):
        labels = [label for label in portraits.labels() if label.portrait == "started"]
        for i, one in enumerate(labels):
            for other in labels[:i]:
                (a, b, c, d), (x, y, width, height) = one.box, other.box
                self.assertFalse(a <= x + width and x <= a + c and b <= y + height and y <= b + d,
                                 f"{one.text} and {other.text}")


if __name__ == "__main__":
    if sys.argv[1:] == ["--table"]:
        shown = portraits.take()
        for label in portraits.labels():
            print(label.picture, label.text, measure(shown[label.portrait], label.box))
        print("ring", ring_contrast(shown["started"]))
    else:
        unittest.main()
