# Copyright (c) 2026 The PTZ panel developers
# SPDX-License-Identifier: MIT

"""Choosing among three cameras, the notice that a place has none, and leaving the window."""

import pytest

from harness import face
from harness.hands import RIGHT
from harness.pictures import selected_camera, shows
from harness.requests import halt, halt_zoom, pan, reads, vendor
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


@pytest.mark.parametrize("number", [2, 3, 1])
def test_a_camera_button_opens_its_camera_reads_it_and_is_marked(panel, number):
    panel.click(f"btn_cam{number}")
    assert panel.received() == reads(number)
    await_selected(panel, number)


def test_what_the_operator_does_goes_to_the_chosen_camera(first_camera):
    panel = first_camera
    for number in (3, 2, 1, 3):
        choose(panel, number)
        panel.desktop.keyboard.tap("Right")
        panel.click("btn_home")
        assert panel.received() == [pan(+1, 21, number), halt(number), halt_zoom(number),
                                    vendor(8, number)]


def test_the_camera_that_is_left_while_a_key_is_held_stops(first_camera):
    panel = first_camera
    with panel.desktop.keyboard.without_repeat(), panel.desktop.keyboard.held("Right"):
        panel.await_requests([pan(+1, 21)])
        panel.click("btn_cam2")
        panel.await_requests([pan(+1, 21), halt(), halt_zoom(), *reads(2)])


@pytest.mark.parametrize("number", [4, 5])
def test_a_place_without_a_camera_brings_the_notice_and_leaves_the_camera_open(
        first_camera, number):
    panel = first_camera
    choose(panel, 2)
    panel.click(f"btn_cam{number}")
    notice, = panel.await_notices(1)
    # The mark goes back to the first camera; what is open stays open.
    await_selected(panel, 1)
    panel.desktop.windows.activate(panel.window)
    panel.desktop.keyboard.tap("f")
    assert panel.received() == [vendor(16, 2)]
    place, notice_place = panel.place(), panel.desktop.windows.place(notice)
    assert notice_place == (place.x + face.NOTICE_WIDTH // 2, place.y + face.NOTICE_HEIGHT // 2,
                            face.NOTICE_WIDTH, face.NOTICE_HEIGHT)


def test_the_notice_stands_beside_a_window_that_was_dragged_away(first_camera):
    panel = first_camera
    home = panel.place()
    panel.drag_to(100, 50)
    panel.click("btn_cam4")
    notice, = panel.await_notices(1)
    assert panel.desktop.windows.place(notice)[:2] == (263, 143)
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


def test_the_minimised_panel_comes_back_by_a_double_click_in_the_tray(first_camera):
    panel = first_camera
    place = panel.place()
    for _ in range(3):
        panel.click("btn_min")
        wait_for(lambda: not panel.is_visible(), "the panel to go")
        panel.double_click_tray_icon()
        wait_for(panel.is_visible, "the panel to come back")
        panel.desktop.windows.activate(panel.window)
        panel.desktop.keyboard.tap("Right")
        assert panel.received() == [pan(+1, 21), halt(), halt_zoom()]
        assert panel.place() == place


def test_the_close_button_ends_the_program_with_code_0_and_sends_nothing(start):
    panel = start(3).opened()
    panel.click("btn_close")
    assert panel.ended() == 0
    assert panel.so_far() == []


def test_closing_the_window_from_outside_ends_the_program_with_code_0(start):
    panel = start().opened()
    panel.desktop.windows.close(panel.window)
    assert panel.ended() == 0
    assert panel.so_far() == []
