# Copyright (c) 2026 The PTZ panel developers
# SPDX-License-Identifier: MIT

"""Docking at the edges of a desktop 1920 pixels wide, with a real pointer."""

import pytest

from harness import face
from harness.desktop import HEIGHT, JWM, WIDTH, Desktop
from harness.hands import RIGHT
from harness.panel import Panel
from harness.pictures import settings_panel_shown
from harness.waiting import wait_for

OUTSIDE = (960, 1000)


@pytest.fixture(scope="module")
def desktop(scale):
    """A desktop whose window manager leaves windows where they put themselves."""
    with Desktop(window_manager=JWM, tray=False, scale=scale) as made:
        yield made


@pytest.fixture(scope="module")
def shared_panel(desktop):
    with Panel(desktop) as panel:
        yield panel.opened()


@pytest.fixture(params=[False, True], ids=["settings hidden", "settings shown"])
def panel_with_settings(request, panel):
    return show_settings(panel, request.param)


def show_settings(panel, shown):
    if panel.place()[:2] != (300, 200):
        come_back_to_the_middle(panel)
    if settings_panel_shown(panel) != shown:
        panel.click("btn_setting")
        wait_for(lambda: settings_panel_shown(panel) == shown, "the settings panel")
    return panel


def come_back_to_the_middle(panel):
    # Entering a docked window brings enough of it back to take hold of it.
    enter(panel)
    panel.received()
    place = panel.place()
    grip = panel.on_screen(*face.BACKGROUND)
    if not (0 < grip[0] < WIDTH and 0 < grip[1] < HEIGHT):
        grip = (max(place.x + 16, 5), place.y + 300)
    panel.drag_to(300, 200, grip)
    panel.received()


def enter(panel):
    """Moves the pointer onto what is to be seen of the panel."""
    place = panel.place()
    left, right = max(place.x, 0), min(place.x + place.width, WIDTH)
    top, bottom = max(place.y, 0), min(place.y + place.height, HEIGHT)
    panel.desktop.mouse.move_to((left + right) // 2, (top + bottom) // 2)


def leave(panel):
    panel.desktop.mouse.move_to(*OUTSIDE)


def drop(panel, x, y):
    """Drags the panel there and lets go of it. It has seen that before the pointer goes on: within
    the same millisecond the window manager hands it the movement first."""
    panel.drag_to(x, y)
    panel.received()


# Settings shown, where the panel is dropped, where it hides, where it comes back to.
DOCKED = [
    (False, (-50, 200), (-317, 200), (-10, 200)),
    (True, (-50, 200), (-643, 200), (-10, 200)),
    (False, (1700, 200), (1910, 200), (1594, 200)),
    (True, (1263, 200), (1910, 200), (1267, 200)),
    (False, (100, -100), (100, -426), (100, -10)),
    (True, (100, -100), (100, -426), (100, -10)),
    # In a corner the panel hides sideways only, and comes back at the height that it had.
    (False, (-50, -100), (-317, -100), (-10, -100)),
    (True, (-50, -100), (-643, -100), (-10, -100)),
    (True, (1263, -100), (1910, -100), (1267, -100)),
]


@pytest.mark.parametrize("settings, dropped, hidden, back", DOCKED)
def test_the_panel_hides_past_an_edge_when_the_pointer_leaves_and_comes_back_when_it_enters(
        panel, settings, dropped, hidden, back):
    show_settings(panel, settings)
    drop(panel, *dropped)
    for _ in range(2):
        leave(panel)
        panel.await_place(*hidden)
        enter(panel)
        panel.await_place(*back)
    assert panel.place()[2:] == (face.WIDTH, face.HEIGHT)


# Settings shown, where the panel is dropped: these places are no edges.
CLEAR = [
    (False, (300, 200)), (True, (300, 200)), (False, (0, 0)), (True, (0, 0)),
    # The settings panel's transparent half may hang over the right edge.
    (False, (1584, 200)), (True, (1257, 200)),
    # Nothing docks at the lower edge.
    (False, (300, 700)),
]


@pytest.mark.parametrize("settings, dropped", CLEAR)
def test_the_panel_stays_where_it_is_when_the_pointer_comes_and_goes_clear_of_the_edges(
        panel, settings, dropped):
    show_settings(panel, settings)
    drop(panel, *dropped)
    leave(panel)
    panel.received()
    assert panel.place()[:2] == dropped
    enter(panel)
    panel.received()
    assert panel.place()[:2] == dropped


def test_the_panel_follows_the_pointer_past_the_edge_while_it_is_dragged(panel_with_settings):
    panel = panel_with_settings
    x, y = panel.on_screen(*face.BACKGROUND)
    with panel.desktop.mouse.held(x, y) as mouse:
        for by in (-100, -200, -320, -350, -320, 0):
            mouse.move_to(x + by, y)
            panel.await_place(300 + by, 200)


def test_the_right_mouse_button_does_not_drag(panel_with_settings):
    panel = panel_with_settings
    x, y = panel.on_screen(*face.BACKGROUND)
    panel.desktop.mouse.drag((x, y), (x + 50, y + 50), button=RIGHT)
    panel.received()
    assert panel.place()[:2] == (300, 200)


@pytest.mark.parametrize("control", ["btn_num5", "slider_zoom", "joystick", "btn_set"])
def test_a_control_does_not_drag_the_panel(panel, control):
    show_settings(panel, False)
    x, y = panel.middle_of(control)
    panel.desktop.mouse.drag((x, y), (x + 5, y + 200))
    panel.received()
    assert panel.place()[:2] == (300, 200)
