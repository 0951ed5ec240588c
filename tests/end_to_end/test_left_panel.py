# Copyright (c) 2026 The PTZ panel developers
# SPDX-License-Identifier: MIT

"""The left panel by mouse, where the tour does not go."""

import itertools
import time

import pytest

from harness import face
from harness.hands import MIDDLE, RIGHT, WHEEL_DOWN, WHEEL_UP
from harness.requests import focus, halt, halt_focus, halt_zoom, pan, zoom
from harness.waiting import wait_for


def test_the_joystick_follows_the_pointer_from_one_direction_to_the_other(start):
    panel = start().opened()
    joystick = face.CONTROLS["joystick"]
    y = joystick.y + 58
    with panel.desktop.mouse.held(*panel.on_screen(joystick.x + 115, y)) as mouse:
        panel.await_requests([pan(+1, 0), pan(+1, 21)])
        # Every second movement is looked at, and two that come at once are one.
        places = itertools.cycle([joystick.x - 60, joystick.x - 61])
        wait_for(lambda: mouse.move_to(*panel.on_screen(next(places), y))
                 or len(panel.so_far()) > 2, "the other direction")
    assert panel.received() == [pan(+1, 0), pan(+1, 21), pan(-1, 21)] + [halt()] * 4


SLIDERS = [("slider_zoom", zoom, halt_zoom, +1), ("slider_focus", focus, halt_focus, -1)]
"""Slider, what it sends for a direction, what stops it, and its direction above its rest."""

REST_Y = 115
"""The height in the window at which a lens slider's handle rests."""


def slider_x(name):
    return face.centre(face.CONTROLS[name])[0]


@pytest.fixture
def manual_focus(panel):
    panel.click("btn_af")
    panel.received()
    yield panel
    panel.click("btn_af")


@pytest.mark.parametrize("name, move, stop, above", SLIDERS, ids=["zoom", "focus"])
def test_a_lens_slider_moves_the_lens_until_it_is_let_go(manual_focus, name, move, stop, above):
    panel = manual_focus
    x = slider_x(name)
    expected = []
    with panel.desktop.mouse.held(*panel.on_screen(x, REST_Y)) as mouse:
        # Each change of the value sends the start of its side again; at rest it stops.
        for y, request in [(100, move(above)), (80, move(above)), (20, move(above)),
                           (300, move(-above)), (REST_Y, stop()), (140, move(-above))]:
            mouse.move_to(*panel.on_screen(x, y))
            expected.append(request)
            panel.await_requests(expected)
    # It springs back, which stops the lens, and letting go stops it once more.
    assert panel.received() == expected + [stop(), stop()]


@pytest.mark.parametrize("name, move, stop, above", SLIDERS, ids=["zoom", "focus"])
def test_a_middle_click_moves_the_lens_and_stops_it(manual_focus, name, move, stop, above):
    panel = manual_focus
    panel.desktop.mouse.click(*panel.on_screen(slider_x(name), 80), button=MIDDLE)
    time.sleep(0.4)  # twice as long as a slider that a screen reader moves is held
    assert panel.received() == [move(above), stop(), stop()]


def test_the_focus_slider_does_nothing_while_the_camera_focuses_by_itself(panel):
    # Nor does it drag the window, which it leaves the mouse to: the pointer comes back.
    x = slider_x("slider_focus")
    grip = panel.on_screen(x, REST_Y)
    before = panel.picture_of("slider_focus")
    panel.desktop.mouse.drag(grip, (grip[0], grip[1] - 40), grip)
    assert panel.received() == []
    assert panel.picture_of("slider_focus").tobytes() == before.tobytes()


def test_the_wheel_and_the_right_mouse_button_do_nothing(manual_focus):
    panel = manual_focus
    for control in ("slider_zoom", "slider_focus", "joystick", "btn_home"):
        for button in (WHEEL_UP, WHEEL_DOWN, WHEEL_UP):
            panel.desktop.mouse.click(*panel.middle_of(control), button=button)
    for control in ("btn_home", "btn_num5", "btn_mute", "btn_cam1"):
        panel.desktop.mouse.click(*panel.middle_of(control), button=RIGHT)
    assert panel.received() == []


def test_a_button_let_go_elsewhere_is_not_pressed(panel):
    panel.desktop.mouse.drag(panel.middle_of("btn_home"), panel.middle_of("btn_num5"))
    assert panel.received() == []
