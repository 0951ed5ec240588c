# Copyright (c) 2026 The PTZ panel developers
# SPDX-License-Identifier: MIT

"""What a hand may be doing when a fault strikes. Each hold yields the requests that must stop the
camera when it ends, however it ends."""

import contextlib
import itertools

from drill import lens_rest
from harness.requests import halt, halt_focus, halt_zoom

KEY_STOPS = {
    "Right": [halt(), halt_zoom()],
    "Left": [halt()] * 2 + [halt_zoom()],
    "Down": [halt()] * 3 + [halt_zoom()],
    "Up": [halt()] * 4 + [halt_zoom()],
    "t": [halt_zoom()],
}

DIRECTIONS = [(right, down) for right in (-1, 0, 1) for down in (-1, 0, 1) if right or down]


@contextlib.contextmanager
def idle(_):
    yield []


def key(*names):
    """One of these keys."""
    @contextlib.contextmanager
    def hold(drill):
        name = drill.random.choice(names)
        start = len(drill.panel.log.lines())
        repeats = drill.random.randrange(4)
        with drill.desktop.keyboard.held(name):
            drill.moves()
            drill.wait(lambda: len(drill.panel.log.settings(start)) > repeats,
                       f"{repeats} repetitions")
            yield KEY_STOPS[name]
    return hold


@contextlib.contextmanager
def joystick(drill):
    x, y = drill.panel.middle_of("joystick")
    with drill.desktop.mouse.held(x, y):
        steps = itertools.cycle((48, 50))
        right, down = drill.random.choice(DIRECTIONS)

        # Only every second movement is painted, and what is painted counts.
        def push():
            step = next(steps)
            drill.desktop.mouse.move_to(x + right * step, y + down * step)
            return any(drill.velocities(1).values())
        drill.wait(push, "the camera to follow the joystick")
        yield [halt()] * 4


@contextlib.contextmanager
def joystick_by_a_double_click(drill):
    drill.desktop.mouse.click(*drill.panel.middle_of("joystick"))
    with joystick(drill) as stops:
        yield stops


def _lens(control):
    @contextlib.contextmanager
    def hold(drill):
        if control == "slider_focus":
            drill.panel.click("btn_af")
        x, y = drill.panel.on_screen(*lens_rest(control))
        with drill.desktop.mouse.held(x, y):
            # The zoom is at its wide end.
            upwards = control == "slider_zoom" or drill.random.choice((True, False))
            for step in (10, 20, 30):
                drill.desktop.mouse.move_to(x, y - step if upwards else y + step)
            drill.moves()
            # Springing back stops the lens, and the release stops it once more.
            yield [halt_zoom() if control == "slider_zoom" else halt_focus()] * 2
        if control == "slider_focus" and drill.panel.is_running() and drill.panel.is_visible():
            drill.panel.click("btn_af")
    return hold


zoom_slider = _lens("slider_zoom")
focus_slider = _lens("slider_focus")


@contextlib.contextmanager
def settings_slider(drill):
    """Brightness, from the middle of its range."""
    drill.panel.click("btn_setting")
    x, y = drill.panel.middle_of("slider_brightness")
    start = len(drill.panel.log.settings())
    with drill.desktop.mouse.held(x, y):
        drill.desktop.mouse.move_to(x + drill.random.choice((-20, 20)), y)
        drill.wait(lambda: any("brightness" in request
                               for request in drill.panel.log.settings()[start:]),
                   "the camera to get a brightness")
        yield []
    if drill.panel.is_running() and drill.panel.is_visible():
        drill.panel.click("btn_ok")


MOTIONS = [
    ("an arrow key held", key("Left", "Right", "Up", "Down")),
    ("a zoom key held", key("t")),
    ("the joystick held", joystick),
    ("the zoom slider held", zoom_slider),
    ("the focus slider held", focus_slider),
]

MOMENTS = [("idle", idle), *MOTIONS, ("a settings slider held", settings_slider)]
