# Copyright (c) 2026 The PTZ panel developers
# SPDX-License-Identifier: MIT

"""A mouse and a keyboard, injected into the X server as if they were plugged in."""

import contextlib

from Xlib import XK, X, error
from Xlib.ext import xtest

LEFT, MIDDLE, RIGHT, WHEEL_UP, WHEEL_DOWN = 1, 2, 3, 4, 5


class Mouse:
    """The pointer. Places are pixels of the panel, of which each is so many of the screen."""

    def __init__(self, display, scale=1):
        self._display = display
        self.scale = scale

    def move_to(self, x, y):
        self._fake(X.MotionNotify, 0, x=round(x * self.scale), y=round(y * self.scale))

    def press(self, button=LEFT):
        self._fake(X.ButtonPress, button)

    def release(self, button=LEFT):
        self._fake(X.ButtonRelease, button)

    def click(self, x, y, button=LEFT):
        self.move_to(x, y)
        self.press(button)
        self.release(button)

    def double_click(self, x, y):
        self.click(x, y)
        self.click(x, y)

    def drag(self, *places, button=LEFT):
        """Presses at the first place, goes to each of the others and lets go at the last."""
        with self.held(*places[0], button=button):
            for place in places[1:]:
                self.move_to(*place)

    @contextlib.contextmanager
    def held(self, x, y, button=LEFT):
        """Holds the button down from that place on."""
        self.move_to(x, y)
        self.press(button)
        try:
            yield self
        finally:
            self.release(button)

    def _fake(self, kind, detail, x=0, y=0):
        xtest.fake_input(self._display, kind, detail, x=x, y=y)
        self._display.sync()


class Keyboard:
    """The keys, by their X names: "Right", "t", "5", "Tab". A held key repeats by itself."""

    def __init__(self, display):
        self._display = display
        self.held_keys = set()

    def press(self, key):
        self.held_keys.add(key)
        self._fake(X.KeyPress, key)

    def release(self, key):
        self.held_keys.discard(key)
        self._fake(X.KeyRelease, key)

    def tap(self, key):
        self.press(key)
        self.release(key)

    @contextlib.contextmanager
    def held(self, key):
        self.press(key)
        try:
            yield self
        finally:
            self.release(key)

    @contextlib.contextmanager
    def without_repeat(self):
        """A held key does not repeat, so that what it sends can be counted."""
        self._display.change_keyboard_control(auto_repeat_mode=X.AutoRepeatModeOff)
        self._display.sync()
        try:
            yield self
        finally:
            with contextlib.suppress(error.ConnectionClosedError):
                self._display.change_keyboard_control(auto_repeat_mode=X.AutoRepeatModeOn)
                self._display.sync()

    def code(self, key):
        """The X server's code for the key."""
        code = self._display.keysym_to_keycode(XK.string_to_keysym(key))
        assert code, f"no such key: {key}"
        return code

    def _fake(self, kind, key):
        xtest.fake_input(self._display, kind, self.code(key))
        self._display.sync()
