# Copyright (c) 2026 The PTZ panel developers
# SPDX-License-Identifier: MIT

"""The start of the program and the ways in which it goes wrong."""

import time

import pytest

from harness import face
from harness.pictures import selected_camera, settings_panel_shown, shows
from harness.requests import READ_ON_OPENING, flicker
from harness.waiting import wait_for

READS = [f"cam1 {code} {control}" for code, control in READ_ON_OPENING]
ENUMERATION = ["one: init success", "one: get list success"]


def use_every_control(panel):
    """Clicks on and drags everything in sight but what ends or hides the panel, and types all keys.
    There is one camera at most, and no notice about."""
    mouse, keyboard = panel.desktop.mouse, panel.desktop.keyboard
    for name, rectangle in face.CONTROLS.items():
        if name in ("btn_close", "btn_min"):
            continue
        if rectangle.x >= face.LEFT_PANEL_WIDTH and not settings_panel_shown(panel):
            continue
        x, y = panel.middle_of(name)
        if name.startswith("slider_"):
            mouse.drag((x, y), (x, y - 30), (x + 30, y + 30), (x, y))
        elif name == "cb_fliker":
            items = panel.open_flicker_choice()
            keyboard.tap("Escape")
            wait_for(lambda: not panel.desktop.windows.is_visible(items), "the items to go")
        else:
            mouse.click(x, y)
        if name in ("btn_cam2", "btn_cam3", "btn_cam4", "btn_cam5"):
            panel.await_notices(1)
            panel.dismiss_notices()
    for key in ["Left", "Right", "Up", "Down", "t", "w", "f", "m", "p", *"0123456789"]:
        keyboard.tap(key)


def close(panel):
    """Clicks on the close button; everything before it has been done when the panel has ended."""
    panel.click("btn_close")
    assert panel.ended() == 0


def test_the_first_camera_is_opened_and_read_twice(start):
    panel = start().opened()
    lines = panel.log.lines()
    requests = [i for i, line in enumerate(lines) if line.control]
    assert panel.log.requests()[:64] == READS * 2
    # Between the two rounds the camera was closed and opened.
    between = [line.what for line in lines[requests[31]:requests[32]]]
    assert "OPEN" in between
    assert all(line.what in ("OPEN", "CLOSE") for line in lines[:requests[0]])
    close(panel)
    assert panel.output().splitlines() == ENUMERATION


def test_the_start_looks_as_it_should(start):
    panel = start().opened()
    assert panel.place()[2:] == (face.WIDTH, face.HEIGHT)
    wait_for(lambda: selected_camera(panel) == 1, "the first camera to be marked")
    for control, picture in [("btn_mute", "no_mute.png"), ("btn_top", "top.png"),
                             ("btn_af", "AF.png"), ("btn_ai", "Framing.png"),
                             ("btn_num0", "0.png"), ("btn_set", "Set.png")]:
        assert shows(panel, control, picture), control
    assert not settings_panel_shown(panel)
    assert panel.notices() == []


def test_a_camera_that_is_plugged_in_later_is_not_seen(start):
    panel = start(2, faults=["unplug 2"]).opened()
    panel.cameras.tell("replug 2")
    # Time for a second look at what is plugged in, if there were one.
    time.sleep(1)
    panel.click("btn_cam2")
    panel.await_notices(1)


# Devices that are plugged in, none of which the panel takes for one of its cameras.
NO_CAMERA = ["storage", "other-camera", "storage,other-camera,other-camera"]


@pytest.mark.parametrize("devices", NO_CAMERA)
def test_without_a_camera_a_notice_says_so_and_nothing_is_sent(start, devices):
    panel = start(devices)
    notice, = panel.await_notices(1)
    place = panel.place()
    assert panel.desktop.windows.place(notice) == (
        place.x + face.NOTICE_WIDTH // 2, place.y + face.NOTICE_HEIGHT // 2,
        face.NOTICE_WIDTH, face.NOTICE_HEIGHT)
    assert selected_camera(panel) == 0
    assert shows(panel, "btn_mute", "mute.png")
    panel.click_notice(notice, face.NO_CAMERA_NOTICE["btn_ok"])
    panel.await_notices(0)
    panel.desktop.windows.activate(panel.window)
    use_every_control(panel)
    assert not settings_panel_shown(panel)
    close(panel)
    assert panel.log.requests() == []
    assert panel.output().splitlines() == ENUMERATION


def test_the_notices_quit_ends_the_program_with_code_0(start):
    panel = start("storage")
    notice, = panel.await_notices(1)
    panel.click_notice(notice, face.NO_CAMERA_NOTICE["btn_quit"])
    assert panel.ended() == 0


def test_the_camera_buttons_without_a_camera(start):
    panel = start("storage")
    notice, = panel.await_notices(1)
    panel.click_notice(notice, face.NO_CAMERA_NOTICE["btn_ok"])
    panel.await_notices(0)
    for number in (2, 3, 4, 5):
        panel.click(f"btn_cam{number}")
        panel.await_notices(1)
        wait_for(lambda: selected_camera(panel) == 1, "the first camera to be marked")
        panel.dismiss_notices()
        panel.click("btn_cam1")
        wait_for(lambda: selected_camera(panel) == 0, "no camera to be marked")


REFUSALS = ["refuse-open 1 EACCES", "refuse-open 1 EBUSY", "busy 1 on"]


@pytest.mark.parametrize("fault", REFUSALS)
def test_a_camera_that_may_not_be_opened_gets_no_request_whatever_the_operator_does(start, fault):
    panel = start(faults=[fault])
    wait_for(lambda: selected_camera(panel) == 1, "the first camera to be marked")
    panel.desktop.windows.activate(panel.window)
    use_every_control(panel)
    close(panel)
    assert panel.log.requests() == []


def test_a_camera_that_may_be_opened_later_is_opened_by_its_button(start):
    panel = start(faults=["refuse-open 1 EACCES"])
    wait_for(lambda: selected_camera(panel) == 1, "the first camera to be marked")
    panel.cameras.tell("refuse-open 1 none")
    panel.click("btn_cam1")
    # The frequency that is chosen then is told to the camera that has just been asked for it.
    panel.await_requests([*READS, flicker(1)])


def test_a_camera_whose_brightness_cannot_be_read_is_not_opened_again(start):
    panel = start(faults=["stall 1 brightness GET_CUR"])
    wait_for(lambda: selected_camera(panel) == 1, "the first camera to be marked")
    panel.desktop.windows.activate(panel.window)
    use_every_control(panel)
    close(panel)
    assert panel.log.requests() == [
        read + " stall" if read == "cam1 GET_CUR brightness" else read for read in READS]


def test_an_unplugged_camera_is_chosen_again_three_times(start):
    panel = start().opened()
    panel.cameras.tell("unplug 1")
    for _ in range(3):
        panel.click("btn_cam1")
    use_every_control(panel)
    close(panel)
    assert [request for request in panel.so_far() if not request.endswith("gone")] == []
