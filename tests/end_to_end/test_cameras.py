# Copyright (c) 2026 The PTZ panel developers
# SPDX-License-Identifier: MIT

"""The notice that a place has no camera, where the tour does not go."""

import pytest

from harness import face
from harness.hands import RIGHT
from harness.pictures import selected_camera, shows
from harness.waiting import wait_for

CAMERAS = 3
ABOVE = "_NET_WM_STATE_ABOVE"


def await_selected(panel, number):
    wait_for(lambda: selected_camera(panel) == number, f"camera {number} to be marked")


def choose(panel, number):
    panel.click(f"btn_cam{number}")
    panel.received()
    await_selected(panel, number)


@pytest.fixture
def first_camera(panel):
    """The panel with the first camera chosen and no notice about."""
    panel.dismiss_notices()
    panel.desktop.windows.activate(panel.window)
    choose(panel, 1)
    return panel


def test_the_notice_stands_beside_a_window_that_was_dragged_away(first_camera):
    panel = first_camera
    home = panel.place()
    panel.drag_to(100, 50)
    panel.click("btn_cam4")
    notice, = panel.await_notices(1)
    assert panel.desktop.windows.place(notice) == (
        100 + face.NOTICE_WIDTH // 2, 50 + face.NOTICE_HEIGHT // 2, face.NOTICE_WIDTH, face.NOTICE_HEIGHT)
    panel.dismiss_notices()
    panel.drag_to(home.x, home.y)


def test_ok_hides_its_own_notice_only(first_camera):
    panel = first_camera
    panel.click("btn_cam4")
    lower, = panel.await_notices(1)
    panel.drag_notice(lower, 300, 200)
    panel.click("btn_cam5")
    panel.await_notices(2)
    panel.click_notice(lower, face.MISSING_CAMERA_NOTICE["btn_ok"])
    remaining, = panel.await_notices(1)
    assert remaining.id != lower.id
    panel.dismiss_notices()


def test_a_notice_is_dragged_with_the_left_mouse_button_by_its_background(first_camera):
    panel = first_camera
    panel.click("btn_cam4")
    notice, = panel.await_notices(1)
    before = panel.desktop.windows.place(notice)
    panel.drag_notice(notice, -120, 80)
    moved = before._replace(x=before.x - 120, y=before.y + 80)
    wait_for(lambda: panel.desktop.windows.place(notice) == moved, "the notice to follow")
    panel.drag_notice(notice, 50, 50, button=RIGHT)
    x, y = face.centre(face.MISSING_CAMERA_NOTICE["btn_ok"])
    panel.desktop.mouse.drag((moved.x + x, moved.y + y), (moved.x + x + 90, moved.y + y + 60))
    panel.desktop.windows.activate(panel.window)
    panel.received()
    assert panel.desktop.windows.place(notice) == moved


def test_notices_stay_on_top_unless_the_pin_is_taken_out(first_camera):
    panel = first_camera
    windows = panel.desktop.windows
    for pictures in (["no_top.png"], ["top.png"]):
        panel.click("btn_top")
        wait_for(lambda: shows(panel, "btn_top", pictures[0]), f"the pin to show {pictures[0]}")
        panel.click("btn_cam4")
        notice, = panel.await_notices(1)
        assert windows.has_state(notice, ABOVE) == (pictures[0] == "top.png")
        assert not windows.has_state(panel.window, ABOVE)
        panel.dismiss_notices()
