# Copyright (c) 2026 The PTZ panel developers
# SPDX-License-Identifier: MIT

"""Driving the camera from the keyboard, where the tour does not go."""

import pytest

from harness import face
from harness.requests import halt, halt_zoom, pan, tilt, vendor, zoom

RIGHT = [pan(+1, 21), halt(), halt_zoom()]

# Key, what a tap of it sends.
WITH_SHIFT = [
    ("Right", RIGHT),
    ("Up", [tilt(+1, 14), halt(), halt(), halt(), halt(), halt_zoom()]),
    ("t", [zoom(+1), halt_zoom()]),
    ("w", [zoom(-1), halt_zoom()]),
    ("f", [vendor(16)]),
    ("m", [vendor(17)]),
    ("p", [vendor(17)]),
]


def test_letters_and_arrows_act_with_shift_held_too(panel, desktop):
    with desktop.keyboard.without_repeat(), desktop.keyboard.held("Shift_L"):
        for key, requests in WITH_SHIFT:
            desktop.keyboard.tap(key)
            panel.await_requests(requests)
            panel.forget()


def test_a_second_arrow_key_adds_its_axis_and_its_release_stops_everything(panel, desktop):
    with desktop.keyboard.without_repeat(), desktop.keyboard.held("Right"):
        with desktop.keyboard.held("Up"):
            while_both_are_held = panel.received()
        after_the_first_release = panel.received()
    assert while_both_are_held == [pan(+1, 21), tilt(+1, 14)]
    assert after_the_first_release == [halt(), halt(), halt(), halt(), halt_zoom()]
    assert panel.received() == [halt(), halt_zoom()]


def test_a_held_key_repeats_after_an_event_from_the_future(panel, desktop):
    desktop.windows.send_release_of_the_future(panel.window, desktop.keyboard.code("a"))
    with desktop.keyboard.held("Right"):
        panel.await_requests([pan(+1, 21)] * 5)
    assert set(panel.received()) == set(RIGHT)


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
    assert panel.received() == RIGHT
