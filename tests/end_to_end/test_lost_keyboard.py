# Copyright (c) 2026 The PTZ panel developers
# SPDX-License-Identifier: MIT

"""Losing the keyboard while a key is held: the camera stops, for the release goes elsewhere."""

import contextlib

import pytest

from harness.requests import halt, halt_zoom, pan, tilt, zoom
from harness.waiting import wait_for

# Key, what its press sends, what stops the camera.
HELD_KEYS = [
    ("Left", pan(-1, 21), [halt(), halt(), halt_zoom()]),
    ("Up", tilt(+1, 14), [halt(), halt(), halt(), halt(), halt_zoom()]),
    ("t", zoom(+1), [halt_zoom()]),
]
KEY_NAMES = [row[0] for row in HELD_KEYS]


@contextlib.contextmanager
def another_window_comes_up(panel):
    another = panel.desktop.windows.open_another(100, 100)
    yield
    another.destroy()


@contextlib.contextmanager
def the_window_manager_minimises_it(panel):
    panel.desktop.windows.minimise(panel.window)
    yield


@contextlib.contextmanager
def the_minimise_button_is_clicked(panel):
    panel.click("btn_min")
    yield
    panel.double_click_tray_icon()
    wait_for(panel.is_visible, "the panel to come back")


WAYS = [another_window_comes_up, the_window_manager_minimises_it, the_minimise_button_is_clicked]


def await_stop(panel, stops):
    wait_for(lambda: panel.so_far()[-len(stops):] == stops,
             lambda: f"{stops} at the end of {panel.so_far()}")


@pytest.mark.parametrize("way", WAYS, ids=[way.__name__ for way in WAYS])
@pytest.mark.parametrize("key, start_request, stops", HELD_KEYS, ids=KEY_NAMES)
def test_the_camera_stops_when_a_key_is_held_and(panel, desktop, way, key, start_request, stops):
    keyboard = desktop.keyboard
    with keyboard.without_repeat(), contextlib.ExitStack() as way_back:
        with keyboard.held(key):
            panel.await_requests([start_request])
            way_back.enter_context(way(panel))
            panel.await_requests([start_request, *stops])
            wait_for(lambda: not panel.has_keyboard(), "the keyboard to be elsewhere")
    desktop.windows.activate(panel.window)
    assert panel.received() == [start_request, *stops]


@pytest.mark.parametrize("key, start_request, stops", HELD_KEYS, ids=KEY_NAMES)
def test_the_camera_stops_each_time_the_keyboard_is_lost_with_the_same_key_still_held(
        panel, desktop, key, start_request, stops):
    windows = desktop.windows
    with desktop.keyboard.held(key):
        wait_for(panel.so_far, "the camera to move")
        another = windows.open_another(100, 100)
        await_stop(panel, stops)
        windows.activate(panel.window)
        # The key repeats into the window that has the keyboard again.
        wait_for(lambda: panel.so_far()[-1] == start_request, "the camera to move again")
        windows.activate(another)
        await_stop(panel, stops)
    another.destroy()
    windows.activate(panel.window)
    assert panel.received()[-len(stops):] == stops


def test_a_key_let_go_elsewhere_leaves_the_panel_ready_for_the_next(panel, desktop):
    with desktop.keyboard.held("Left"):
        another = desktop.windows.open_another(100, 100)
    another.destroy()
    desktop.windows.activate(panel.window)
    panel.received()
    desktop.keyboard.tap("Right")
    assert panel.received() == [pan(+1, 21), halt(), halt_zoom()]
