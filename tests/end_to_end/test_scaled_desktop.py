# Copyright (c) 2026 The PTZ panel developers
# SPDX-License-Identifier: MIT

"""The panel on desktops of a higher resolution: docking and the lens sliders as on any other, the
joystick and the settings sliders as in the tour."""

import time

import pytest

import test_left_panel
import test_settings_panel
from harness import face
from harness.requests import halt, image_property, pan, tilt
from test_docking import *  # noqa: F401, F403
from test_settings_panel import handle, range_of, shown_value

# All on the desktop and the panel of test_docking.
manual_focus = test_left_panel.manual_focus
settings = test_settings_panel.settings
test_lens_slider = test_left_panel.test_a_lens_slider_moves_the_lens_until_it_is_let_go


@pytest.fixture(scope="module", params=[1.5, 2])
def scale(request):
    return request.param


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


@pytest.mark.parametrize("name", face.SETTINGS)
def test_a_settings_slider_sends_each_value_that_it_is_dragged_to(settings, name):
    panel = settings
    low, high, default = range_of(panel, name)
    x, y = handle(panel, name, default)
    # Taking hold of the handle sends the value at which it stands.
    values = [default]
    with panel.desktop.mouse.held(x, y) as mouse:
        panel.await_requests([image_property(name, value) for value in values])
        for x, value in [(x + 400, high), (x - 400, low)]:
            if value != values[-1]:
                mouse.move_to(x, y)
                values.append(value)
            panel.await_requests([image_property(name, value) for value in values])
    assert panel.received() == [image_property(name, value) for value in values]
    assert shown_value(panel, name) == str(low)


def test_a_notice_stands_half_its_size_from_the_corner_and_follows_the_pointer(start):
    panel = start("storage")
    notice, = panel.await_notices(1)
    x, y = panel.place()[:2]
    assert panel.desktop.windows.place(notice) == (
        x + face.NOTICE_WIDTH // 2, y + face.NOTICE_HEIGHT // 2,
        face.NOTICE_WIDTH, face.NOTICE_HEIGHT)
    panel.drag_notice(notice, 40, 20)
    panel.desktop.windows.answers(notice)
    assert panel.desktop.windows.place(notice)[:2] == (
        x + face.NOTICE_WIDTH // 2 + 40, y + face.NOTICE_HEIGHT // 2 + 20)
