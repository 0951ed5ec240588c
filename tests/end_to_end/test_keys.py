# Copyright (c) 2026 The PTZ panel developers
# SPDX-License-Identifier: MIT

"""Driving the camera from the keyboard."""

import time

import pytest

from harness import face
from harness.pictures import shows
from harness.requests import call_preset, halt, halt_zoom, pan, tilt, vendor, zoom

# Key, what its press sends, what its release sends.
KEYS = [
    ("Right", [pan(+1, 21)], [halt(), halt_zoom()]),
    ("Left", [pan(-1, 21)], [halt(), halt(), halt_zoom()]),
    ("Down", [tilt(-1, 14)], [halt(), halt(), halt(), halt_zoom()]),
    ("Up", [tilt(+1, 14)], [halt(), halt(), halt(), halt(), halt_zoom()]),
    ("t", [zoom(+1)], [halt_zoom()]),
    ("w", [zoom(-1)], [halt_zoom()]),
    ("f", [vendor(16)], []),
    ("m", [vendor(17)], []),
    ("p", [vendor(17)], []),
    *[(str(digit), [call_preset(digit)], []) for digit in range(10)],
    *[(key, [], []) for key in ("a", "z", "Return", "Escape", "Home", "Page_Up", "F5", "minus")],
]

MOTION_KEYS = [row for row in KEYS if row[2]]


@pytest.mark.parametrize("key, at_press, at_release", KEYS, ids=[row[0] for row in KEYS])
def test_a_key_sends_its_requests_at_the_press_and_at_the_release(
        panel, desktop, key, at_press, at_release):
    with desktop.keyboard.without_repeat():
        desktop.keyboard.press(key)
        while_held = panel.received()
        desktop.keyboard.release(key)
    assert while_held == at_press
    assert panel.received() == at_release


@pytest.mark.parametrize("key, at_press, at_release", KEYS[:9], ids=[row[0] for row in KEYS[:9]])
def test_a_letter_acts_with_shift_held_too_and_an_arrow_as_well(
        panel, desktop, key, at_press, at_release):
    with desktop.keyboard.without_repeat(), desktop.keyboard.held("Shift_L"):
        desktop.keyboard.tap(key)
    assert panel.received() == at_press + at_release


@pytest.mark.parametrize("key, at_press, at_release", MOTION_KEYS,
                         ids=[row[0] for row in MOTION_KEYS])
def test_a_key_held_for_two_seconds_stops_the_camera_at_the_release_and_not_before(
        panel, desktop, key, at_press, at_release):
    with desktop.keyboard.held(key):
        time.sleep(2)
        while_held = panel.so_far()
    starts = panel.received()
    del starts[len(starts) - len(at_release):]
    # The server repeats the key, and each repeat sends the start again.
    assert set(while_held) == set(at_press)
    assert len(while_held) > 1
    assert set(starts) == set(at_press)


def test_a_held_key_repeats_after_an_event_from_the_future(panel, desktop):
    desktop.windows.send_release_of_the_future(panel.window, desktop.keyboard.code("a"))
    with desktop.keyboard.held("Right"):
        panel.await_requests([pan(+1, 21)] * 5)
    assert set(panel.received()) == {pan(+1, 21), halt(), halt_zoom()}


def test_taps_that_are_quicker_than_any_finger_are_taps_all_the_same(panel, desktop):
    for _ in range(5):
        desktop.keyboard.tap("Right")
    assert panel.received() == [pan(+1, 21), halt(), halt_zoom()] * 5


def test_a_second_arrow_key_adds_its_axis_and_its_release_stops_everything(panel, desktop):
    with desktop.keyboard.without_repeat(), desktop.keyboard.held("Right"):
        with desktop.keyboard.held("Up"):
            while_both_are_held = panel.received()
        after_the_first_release = panel.received()
    assert while_both_are_held == [pan(+1, 21), tilt(+1, 14)]
    assert after_the_first_release == [halt(), halt(), halt(), halt(), halt_zoom()]
    assert panel.received() == [halt(), halt_zoom()]


@pytest.mark.parametrize("key, picture",
                         [("m", "Manual.png"), ("f", "Framing.png"), ("p", "Manual.png"),
                          ("f", "Framing.png")])
def test_a_framing_key_changes_the_face_of_the_framing_button(panel, desktop, key, picture):
    desktop.keyboard.tap(key)
    panel.received()
    assert shows(panel, "btn_ai", picture)


def test_an_arrow_key_drives_at_once_after_the_start(start):
    panel = start().opened()
    panel.desktop.keyboard.tap("Right")
    assert panel.received() == [pan(+1, 21), halt(), halt_zoom()]


@pytest.mark.parametrize("control", [
    *[name for name in face.BUTTONS
      if name not in ("btn_min", "btn_close", "btn_cam2", "btn_cam3", "btn_cam4", "btn_cam5")],
    "slider_zoom", "slider_focus", "joystick"])
def test_an_arrow_key_drives_at_once_after_a_click_on(panel, desktop, control):
    if control in ("btn_ok", "btn_default"):
        panel.click("btn_setting")
    panel.click(control)
    panel.received()
    desktop.keyboard.tap("Right")
    assert panel.received() == [pan(+1, 21), halt(), halt_zoom()]
