# Copyright (c) 2026 The PTZ panel developers
# SPDX-License-Identifier: MIT

"""What makes the desktop of the tour a pleasant one, and pictures of it."""

import time

import Xlib.display
from PIL import ImageDraw
from Xlib import Xatom

from harness.desktop import picture_of

_TOP, _BOTTOM = (52, 76, 98), (158, 138, 118)
_BAND = 4

# An arrow as pointers are, from its tip.
_POINTER = [(0, 0), (0, 17), (4, 13), (7, 20), (10, 19), (7, 12), (12, 12)]


class Screen:
    """The screen of a desktop, with a background for the panel's transparent corners to show."""

    def __init__(self, desktop):
        self._desktop = desktop
        self._display = Xlib.display.Display(desktop.name)
        self._root = self._display.screen().root
        self._paint_background()

    def close(self):
        self._display.close()

    def _paint_background(self):
        width, height = self._desktop.width, self._desktop.height
        pixmap = self._root.create_pixmap(width, height, self._display.screen().root_depth)
        brush = pixmap.create_gc()
        for y in range(0, height, _BAND):
            colour = [round(a + (b - a) * y / height) for a, b in zip(_TOP, _BOTTOM)]
            brush.change(foreground=int.from_bytes(bytes(colour), "big"))
            pixmap.fill_rectangle(brush, 0, y, width, _BAND)
        self._root.change_attributes(background_pixmap=pixmap)
        self._root.clear_area()
        # Where compositing managers look for it.
        self._root.change_property(self._display.intern_atom("_XROOTPMAP_ID"), Xatom.PIXMAP, 32,
                                   [pixmap.id])
        self._display.sync()

    def picture(self, left, top, width, height):
        """A picture of a part of the screen once it is still, with the pointer in it."""
        picture = settled(lambda: self._desktop.screenshot(left, top, width, height))
        return self._with_pointer(picture, left, top)

    def moment(self):
        """A picture of the screen as it is, with the pointer in it. A thread of its own may call
        this while others use the desktop, but not this object."""
        whole = picture_of(self._root, 0, 0, self._desktop.width, self._desktop.height)
        return self._with_pointer(whole, 0, 0)

    def _with_pointer(self, picture, left, top):
        pointer = self._root.query_pointer()
        shape = [(x + pointer.root_x - left, y + pointer.root_y - top) for x, y in _POINTER]
        ImageDraw.Draw(picture).polygon(shape, fill="white", outline="black")
        return picture


def settled(look):
    """A picture that is the same twice in a row, a few frames of the screen apart."""
    last = look()
    while True:
        time.sleep(0.08)
        now = look()
        if now.tobytes() == last.tobytes():
            return now
        last = now
