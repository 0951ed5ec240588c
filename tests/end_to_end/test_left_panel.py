# Copyright (c) 2026 The PTZ panel developers
# SPDX-License-Identifier: MIT

"""The left panel by mouse: joystick, sliders, keypad, function buttons."""

import itertools
import time

import pytest

from harness import face
from harness.hands import MIDDLE, RIGHT, WHEEL_DOWN, WHEEL_UP
from harness.pictures import shows
from harness.requests import (call_preset, clear_preset, focus, halt, halt_focus, halt_zoom, pan,
                              store_preset, tilt, vendor, zoom)
from harness.waiting import wait_for

# Function button, and for each of its clicks what is sent and what it shows then.
FUNCTIONS = [
    ("btn_mute", [(vendor(5), "mute.png"), (vendor(4), "no_mute.png")]),
    ("btn_af", [(vendor(7), "MF.png"), (vendor(6), "AF.png")]),
    ("btn_ai", [(vendor(17), "Manual.png"), (vendor(16), "Framing.png")]),
    ("btn_push", [(vendor(17), "Push.png"), (vendor(17), "Push.png")]),
    ("btn_flip", [(vendor(2), "Flip.png"), (vendor(3), "Flip.png")]),
    ("btn_mirror", [(vendor(0), "Mirror.png"), (vendor(1), "Mirror.png")]),
    ("btn_home", [(vendor(8), "HOME.png"), (vendor(8), "HOME.png")]),
    ("btn_top", [(None, "no_top.png"), (None, "top.png")]),
]


@pytest.mark.parametrize("button, clicks", FUNCTIONS, ids=[row[0] for row in FUNCTIONS])
def test_a_function_button_sends_its_command_and_shows_its_state(panel, button, clicks):
    for request, picture in clicks * 2:
        panel.click(button)
        assert panel.received() == ([request] if request else [])
        wait_for(lambda: shows(panel, button, picture), f"{button} to show {picture}")


# Clicked buttons, without their btn_ (or key:, for the key of a keyboard), and what is sent.
KEYPAD = [
    *[([f"num{n}"], [call_preset(n)]) for n in range(10)],
    *[(["set", f"num{n}", f"num{n}"], [store_preset(n), call_preset(n)]) for n in range(10)],
    *[(["clear", f"num{n}", f"num{n}"], [clear_preset(n), call_preset(n)]) for n in range(10)],
    (["set", "clear", "num7", "num2"], [clear_preset(7), call_preset(2)]),
    (["clear", "set", "num7", "num2"], [store_preset(7), call_preset(2)]),
    (["set", "set", "num1", "num1"], [store_preset(1), call_preset(1)]),
    (["set", "key:4", "num5"], [call_preset(4), store_preset(5)]),
    (["clear", "key:4", "num5"], [call_preset(4), clear_preset(5)]),
    (["set", "home", "num6"], [vendor(8), store_preset(6)]),
]


@pytest.mark.parametrize("buttons, requests", KEYPAD, ids=["-".join(row[0]) for row in KEYPAD])
def test_the_keypad_recalls_stores_and_clears_presets(panel, desktop, buttons, requests):
    for button in buttons:
        if button.startswith("key:"):
            desktop.keyboard.tap(button[4:])
        else:
            panel.click(f"btn_{button}")
    assert panel.received() == requests


# Place in the joystick, what is sent for the pan and tilt speeds that it is called with.
JOYSTICK = [
    ("up-left", (3, 3), lambda p, t: [pan(-1, p), tilt(+1, t)], 15, 10),
    ("up", (58, 1), lambda p, t: [tilt(+1, t)], 0, 14),
    ("up-right", (115, 1), lambda p, t: [pan(+1, p), tilt(+1, t)], 15, 10),
    ("left", (1, 58), lambda p, t: [pan(-1, p)], 21, 0),
    ("right", (115, 58), lambda p, t: [pan(+1, p)], 21, 0),
    ("down-left", (1, 115), lambda p, t: [pan(-1, p), tilt(-1, t)], 15, 10),
    ("down", (58, 115), lambda p, t: [tilt(-1, t)], 0, 14),
    ("down-right", (115, 115), lambda p, t: [tilt(-1, t), pan(+1, p)], 15, 10),
]


def reports(requests, before, pan_speed, tilt_speed):
    """What the joystick sends when it is pressed: the direction with the speeds of the last time,
    then again for each speed that is another one now."""
    sent = requests(*before)
    if pan_speed != before[0]:
        sent += requests(pan_speed, before[1])
    if tilt_speed != before[1]:
        sent += requests(pan_speed, tilt_speed)
    return sent


def test_the_joystick_drives_in_all_directions_until_it_is_let_go(start):
    panel = start().opened()
    speeds = (0, 0)
    for name, place, requests, *new_speeds in JOYSTICK:
        joystick = face.CONTROLS["joystick"]
        x, y = panel.on_screen(joystick.x + place[0], joystick.y + place[1])
        expected = reports(requests, speeds, *new_speeds)
        if name == "up-left":
            del expected[:2]  # the direction that counts as reported at the start
        with panel.desktop.mouse.held(x, y):
            panel.await_requests(expected)
            # Ten reports a second go on, and send nothing as long as nothing changes.
            time.sleep(0.3)
            assert panel.so_far() == expected, name
        assert panel.received() == expected + [halt()] * 4, name
        speeds = tuple(new_speeds)


@pytest.mark.parametrize("place", [(58, 58), (70, 58), (58, 40), (80, 80)])
def test_a_joystick_held_near_its_middle_only_stops_the_camera(start, place):
    panel = start().opened()
    joystick = face.CONTROLS["joystick"]
    with panel.desktop.mouse.held(*panel.on_screen(joystick.x + place[0], joystick.y + place[1])):
        panel.await_requests([halt()] * 4)
    assert panel.received() == [halt()] * 4


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


@pytest.mark.parametrize("name, move, stop, above", SLIDERS, ids=["zoom", "focus"])
def test_a_lens_slider_let_go_at_rest_stops_the_lens_once(manual_focus, name, move, stop, above):
    panel = manual_focus
    panel.desktop.mouse.click(*panel.on_screen(slider_x(name), REST_Y))
    assert panel.received() == [stop()]


def test_the_focus_slider_does_nothing_while_the_camera_focuses_by_itself(panel):
    # Nor does it drag the window, which it leaves the mouse to: the pointer comes back.
    x = slider_x("slider_focus")
    grip = panel.on_screen(x, REST_Y)
    before = panel.picture_of("slider_focus")
    panel.desktop.mouse.drag(grip, (grip[0], grip[1] - 40), grip)
    assert panel.received() == []
    assert panel.picture_of("slider_focus").tobytes() == before.tobytes()


@pytest.mark.parametrize("control", ["slider_zoom", "slider_focus", "joystick", "btn_home"])
@pytest.mark.parametrize("button", [WHEEL_UP, WHEEL_DOWN], ids=["up", "down"])
def test_the_mouse_wheel_moves_nothing(manual_focus, control, button):
    panel = manual_focus
    for _ in range(3):
        panel.desktop.mouse.click(*panel.middle_of(control), button=button)
    assert panel.received() == []


@pytest.mark.parametrize("control", ["btn_home", "btn_num5", "btn_mute", "btn_cam1"])
def test_the_right_mouse_button_presses_no_button(panel, control):
    panel.desktop.mouse.click(*panel.middle_of(control), button=RIGHT)
    assert panel.received() == []


def test_a_button_let_go_elsewhere_is_not_pressed(panel):
    panel.desktop.mouse.drag(panel.middle_of("btn_home"), panel.middle_of("btn_num5"))
    assert panel.received() == []
