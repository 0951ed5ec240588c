# Copyright (c) 2026 The PTZ panel developers
# SPDX-License-Identifier: MIT
"""Whether the labels can be read, measured on the screen: contrast as WCAG 2 defines it."""

import collections
import functools
import math
import unittest

import portraits
from PIL import Image, ImageChops

IMG = portraits.draw.HERE.parent / "img"

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


Measure = collections.namedtuple("Measure", "contrast core width height")


def measure(picture, box, factor=1):
    """Contrast and size of what is printed in the box. The ground is the middle one of the colours
    around it; the contrast is that of the middle one of the inked pixels, softened edges too, and
    the core that of the upper quarter."""
    margin = 1
    left, top = [math.floor(factor * (edge - margin)) for edge in box[:2]]
    right, bottom = [math.ceil(factor * (box[i] + box[i + 2] + margin)) for i in (0, 1)]
    part = picture.crop((left, top, right, bottom))
    pixels = list(part.getdata())
    rim = pixels[:part.width] + pixels[-part.width:]
    ground = sorted(rim, key=luminance)[len(rim) // 2]
    inked = {(i % part.width, i // part.width): ratio for i, pixel in enumerate(pixels)
             if (ratio := contrast(pixel, ground)) > 1.5}
    if not inked:
        return Measure(1, 1, 0, 0)
    columns, rows = [sorted({place[axis] for place in inked}) for axis in (0, 1)]
    ratios = sorted(inked.values())
    return Measure(ratios[len(ratios) // 2], ratios[len(ratios) * 3 // 4],
                   (columns[-1] - columns[0] + 1) / factor, (rows[-1] - rows[0] + 1) / factor)


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


@functools.lru_cache
def pictures(factor):
    return portraits.take(factor)


def measured(label, factor):
    return measure(pictures(factor)[label.portrait], label.box, factor)


class Labels(unittest.TestCase):
    def test_every_label_can_be_read(self):
        for label in portraits.labels():
            with self.subTest(label.text, picture=label.picture):
                found = measured(label, 1)
                self.assertGreaterEqual(found.contrast, READABLE)
                self.assertGreaterEqual(max(found.width, found.height), 5, "nothing is there")

    def test_the_ring_in_which_the_joystick_rests_can_be_seen(self):
        self.assertGreaterEqual(ring_contrast(pictures(1)["started"]), VISIBLE)

    def test_no_label_touches_another(self):
        labels = [label for label in portraits.labels() if label.portrait == "started"]
        for i, one in enumerate(labels):
            for other in labels[:i]:
                (a, b, c, d), (x, y, width, height) = one.box, other.box
                self.assertFalse(a <= x + width and x <= a + c and b <= y + height and y <= b + d,
                                 f"{one.text} and {other.text}")


class ScaledLabels(unittest.TestCase):
    """The same on desktops with a scale factor."""

    def test_every_label_keeps_its_size_and_can_be_read(self):
        for factor in (1.5, 2):
            for label in portraits.labels():
                with self.subTest(label.text, picture=label.picture, factor=factor):
                    plain, found = measured(label, 1), measured(label, factor)
                    # Strokes of a pixel and a half have more edge than core.
                    sharp = found.contrast if factor == 2 else found.core
                    self.assertGreaterEqual(sharp, READABLE)
                    self.assertAlmostEqual(found.width, plain.width, delta=1.1)
                    self.assertAlmostEqual(found.height, plain.height, delta=1.1)

    def expect_exact(self, portrait, box, picture, ground=None):
        """That part of the screen is that part of the picture at twice its size."""
        x, y, width, height = [2 * length for length in box]
        shown = pictures(2)[portrait].crop((x, y, x + width, y + height))
        expected = Image.open(IMG / "scaled" / f"{picture}@2x.png")
        if ground:
            expected = Image.alpha_composite(Image.new("RGBA", expected.size, ground), expected)
        else:
            expected = expected.crop((x, y, x + width, y + height))
        off = ImageChops.difference(expected.convert("RGB"), shown).getextrema()
        self.assertLessEqual(max(high for _, high in off), 4, picture)

    def test_at_twice_the_size_the_larger_pictures_are_shown_as_they_are(self):
        for label in portraits.labels():
            if label.picture in ("AF", "Set", "Framing", "5", "MF", "Manual", "Default", "Quit"):
                self.expect_exact(label.portrait, label.box, label.picture, "black")
        self.expect_exact("started", (165, 60, 35, 115), "background")
        self.expect_exact("no camera", (40, 80, 240, 60), "no_device")


if __name__ == "__main__":
    unittest.main()
