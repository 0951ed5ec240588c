# Copyright (c) 2026 The PTZ panel developers
# SPDX-License-Identifier: MIT

"""The end of the program while something is held: nothing that moves outlives it."""

import signal

import pytest

from harness import face
from harness.requests import focus, halt, halt_focus, halt_zoom, pan, tilt, zoom

# What is held, what that sends, what must follow when the program ends.
HELD = [
    ("Left", [pan(-1, 21)], [halt(), halt(), halt_zoom()]),
    ("Up", [tilt(+1, 14)], [halt(), halt(), halt(), halt(), halt_zoom()]),
    ("w", [zoom(-1)], [halt_zoom()]),
    ("joystick", [pan(+1, 0), pan(+1, 21)], [halt()] * 4),
    ("slider_zoom", [zoom(+1)], [halt_zoom()] * 2),
    ("slider_focus", [focus(-1)], [halt_focus()] * 2),
]


def hold(panel, what):
    """Takes hold of a key, the joystick or a slider, for good."""
    mouse = panel.desktop.mouse
    if what not in face.CONTROLS:
        panel.desktop.keyboard.press(what)
        return
    rectangle = face.CONTROLS[what]
    if what == "joystick":
        mouse.move_to(*panel.on_screen(rectangle.x + 115, rectangle.y + 58))
        mouse.press()
        return
    if what == "slider_focus":
        panel.click("btn_af")
        panel.received()
    x = face.centre(rectangle)[0]
    mouse.move_to(*panel.on_screen(x, 115))
    mouse.press()
    mouse.move_to(*panel.on_screen(x, 60))


def terminate(panel):
    panel.signal(signal.SIGTERM)
    return 128 + signal.SIGTERM


def interrupt(panel):
    panel.signal(signal.SIGINT)
    return 128 + signal.SIGINT


def hang_up(panel):
    panel.signal(signal.SIGHUP)
    return 128 + signal.SIGHUP


def take_the_x_server_away(panel):
    panel.desktop.kill_server()
    return 1


def close_the_window(panel):
    panel.desktop.windows.close(panel.window)
    return 0


@pytest.mark.parametrize("end", [terminate, interrupt, hang_up, take_the_x_server_away,
                                 close_the_window], ids=lambda end: end.__name__)
@pytest.mark.parametrize("what, moves, stops", HELD, ids=[row[0] for row in HELD])
def test_no_motion_outlives_the_program(start, end, what, moves, stops):
    panel = start().opened()
    with panel.desktop.keyboard.without_repeat():
        hold(panel, what)
        panel.await_requests(moves)
        code = end(panel)
        assert panel.ended() == code
        assert panel.so_far() == moves + stops
