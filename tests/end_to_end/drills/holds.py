# Copyright (c) 2026 The PTZ panel developers
# SPDX-License-Identifier: MIT

"""What a hand may be doing when a fault strikes."""

import contextlib
import itertools

from drill import lens_rest


DIRECTIONS = [(right, down) for right in (-1, 0, 1) for down in (-1, 0, 1) if right or down]


@contextlib.contextmanager
def idle(drill):
    yield


def key(name):
    @contextlib.contextmanager
    def hold(drill):
        start = len(drill.panel.log.lines())
        repeats = drill.random.randrange(4)
        with drill.desktop.keyboard.held(name):
            drill.moves()
            drill.wait(lambda: len(drill.panel.log.settings(start)) > repeats,
                       f"{repeats} repetitions")
            yield
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
        yield


@contextlib.contextmanager
def joystick_by_a_double_click(drill):
    drill.desktop.mouse.click(*drill.panel.middle_of("joystick"))
    with joystick(drill):
        yield


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
            yield
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
        yield
    if drill.panel.is_running() and drill.panel.is_visible():
        drill.panel.click("btn_ok")


MOTIONS = [
    ("an arrow key held", key("Right")),
    ("a zoom key held", key("t")),
    ("the joystick held", joystick),
    ("the zoom slider held", zoom_slider),
    ("the focus slider held", focus_slider),
]

MOMENTS = [("idle", idle), *MOTIONS, ("a settings slider held", settings_slider)]
