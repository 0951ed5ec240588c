# Copyright (c) 2026 The PTZ panel developers
# SPDX-License-Identifier: MIT

"""The start of the program, with a camera and without one."""

import time

from harness import face
from harness.pictures import selected_camera, settings_panel_shown, shows
from harness.requests import reads
from harness.waiting import wait_for

ENUMERATION = ["one: init success", "one: get list success"]


def close(panel):
    """Clicks on the close button; everything before it has been done when the panel has ended."""
    panel.click("btn_close")
    assert panel.ended() == 0
    assert panel.output().splitlines() == ENUMERATION


def test_the_first_camera_is_opened_and_read_twice_and_shown(start):
    panel = start().opened()
    lines = panel.log.lines()
    requests = [i for i, line in enumerate(lines) if line.control]
    assert panel.log.requests()[:64] == reads() * 2
    # Between the two rounds the camera was closed and opened.
    between = [line.what for line in lines[requests[31]:requests[32]]]
    assert "OPEN" in between
    assert all(line.what in ("OPEN", "CLOSE") for line in lines[:requests[0]])
    assert panel.place()[2:] == (face.WIDTH, face.HEIGHT)
    wait_for(lambda: selected_camera(panel) == 1, "the first camera to be marked")
    for control, picture in [("btn_mute", "no_mute.png"), ("btn_top", "top.png"),
                             ("btn_af", "AF.png"), ("btn_ai", "Framing.png"),
                             ("btn_num0", "0.png"), ("btn_set", "Set.png")]:
        assert shows(panel, control, picture), control
    assert not settings_panel_shown(panel)
    assert panel.notices() == []
    close(panel)


def test_a_camera_that_is_plugged_in_later_is_not_seen(start):
    panel = start(2, faults=["unplug 2"]).opened()
    panel.cameras.tell("replug 2")
    # Time for a second look at what is plugged in, if there were one.
    time.sleep(1)
    panel.click("btn_cam2")
    panel.await_notices(1)


def test_without_a_camera_a_notice_says_so_and_the_camera_buttons_mark_none(start):
    panel = start("storage,other-camera,other-camera")
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
    for number in (2, 3, 4, 5):
        panel.click(f"btn_cam{number}")
        panel.await_notices(1)
        wait_for(lambda: selected_camera(panel) == 1, "the first camera to be marked")
        panel.dismiss_notices()
        panel.click("btn_cam1")
        wait_for(lambda: selected_camera(panel) == 0, "no camera to be marked")
    # Nor does the gear show settings.
    panel.click("btn_setting")
    close(panel)
    assert panel.log.requests() == []
