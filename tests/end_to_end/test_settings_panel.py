# Copyright (c) 2026 The PTZ panel developers
# SPDX-License-Identifier: MIT

"""The settings panel by mouse: sliders, value boxes, anti-flicker choice, default, OK."""

import pytest

from harness import face
from harness.hands import MIDDLE, WHEEL_DOWN, WHEEL_UP
from harness.pictures import settings_panel_shown
from harness.requests import auto_white_balance, flicker, image_property
from harness.waiting import wait_for

HANDLE_WIDTH = 24


@pytest.fixture
def settings(panel):
    """The panel with its settings shown and all values at the camera's defaults."""
    show(panel, True)
    panel.click("btn_default")
    panel.received()
    return panel


def show(panel, shown):
    if settings_panel_shown(panel) != shown:
        panel.click("btn_setting")
        wait_for(lambda: settings_panel_shown(panel) == shown, "the settings panel")


def range_of(panel, name):
    return [panel.log.value_read(code, name) for code in ("GET_MIN", "GET_MAX", "GET_DEF")]


def handle(panel, name, value):
    """The middle of a settings slider's handle when it stands at that value, on the screen."""
    groove = face.CONTROLS[f"slider_{name}"]
    low, high, _ = range_of(panel, name)
    along = (value - low) * (groove.width - HANDLE_WIDTH) // (high - low)
    return panel.on_screen(groove.x + HANDLE_WIDTH // 2 + along, groove.y + groove.height // 2)


def shown_value(panel, name):
    """The number in a value box, read by marking it as a mouse does."""
    x, y = panel.middle_of(f"v_{name}")
    for _ in range(3):
        panel.desktop.mouse.click(x, y)
    panel.received()
    return panel.desktop.windows.selected_text()


def test_the_setting_button_shows_and_hides_the_settings_and_leaves_the_window_as_it_is(panel):
    show(panel, False)
    place = panel.place()
    for shown in (True, False, True, False):
        panel.click("btn_setting")
        assert panel.received() == []
        wait_for(lambda: settings_panel_shown(panel) == shown, "the settings panel")
        assert panel.place() == place


def test_ok_hides_the_settings_and_sends_nothing(panel):
    show(panel, True)
    panel.click("btn_ok")
    assert panel.received() == []
    wait_for(lambda: not settings_panel_shown(panel), "the settings panel to go")


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


@pytest.mark.parametrize("name", face.SETTINGS)
def test_a_middle_click_sends_the_value_once(settings, name):
    panel = settings
    low, _, _ = range_of(panel, name)
    panel.desktop.mouse.click(*handle(panel, name, low), button=MIDDLE)
    requests = panel.received()
    assert requests == [image_property(name, int(shown_value(panel, name)))]


@pytest.mark.parametrize("name", face.SETTINGS)
def test_a_value_box_shows_what_the_camera_was_told(settings, name):
    panel = settings
    _, _, default = range_of(panel, name)
    x, y = handle(panel, name, default)
    panel.desktop.mouse.drag((x, y), (x + 30, y))
    requests = panel.received()
    assert requests[-1] == image_property(name, int(shown_value(panel, name)))
    assert requests[-1] != requests[0]


@pytest.mark.parametrize("name", face.SETTINGS)
def test_a_click_beside_the_handle_and_the_mouse_wheel_change_nothing(settings, name):
    panel = settings
    _, _, default = range_of(panel, name)
    groove = face.CONTROLS[f"slider_{name}"]
    x, y = handle(panel, name, default)
    far = panel.on_screen(groove.x + groove.width - 2, groove.y + groove.height // 2)
    panel.desktop.mouse.click(*far)
    for button in (WHEEL_UP, WHEEL_DOWN, WHEEL_DOWN):
        panel.desktop.mouse.click(x, y, button=button)
    assert panel.received() == []
    assert shown_value(panel, name) == str(default)


ITEMS = ["OFF", "50HZ", "60HZ"]


def choose_flicker(panel, index):
    """Opens the anti-flicker choice and clicks on one of its three items."""
    windows, mouse = panel.desktop.windows, panel.desktop.mouse
    items = panel.open_flicker_choice()
    place = windows.place(items)
    x, y = place.x + place.width // 2, place.y + place.height * (2 * index + 1) // 6
    # Far enough away and back, which tells a choice from the end of the click that opened it.
    mouse.move_to(x, y + 12 if index == 0 else y - 12)
    mouse.click(x, y)
    wait_for(lambda: not windows.is_visible(items), "the items to go")


@pytest.mark.parametrize("indices", [[2], [0], [2, 1], [0, 2, 0, 1]],
                         ids=lambda indices: "-".join(ITEMS[index] for index in indices))
def test_the_anti_flicker_choice_sends_its_frequency(settings, indices):
    panel = settings
    for index in indices:
        choose_flicker(panel, index)
    assert panel.received() == [flicker(index) for index in indices]


def defaults(panel):
    def value(name):
        return range_of(panel, name)[2]

    return [*[image_property(name, value(name)) for name in (
        "wb", "blc", "gamma", "contrast", "saturation", "brightness", "sharpness")],
        flicker(value("flicker")), auto_white_balance(0)]


def test_default_sends_nine_requests_the_white_balance_first_and_its_automatic_last(settings):
    panel = settings
    for name in face.SETTINGS:
        x, y = handle(panel, name, range_of(panel, name)[2])
        panel.desktop.mouse.drag((x, y), (x + 30, y))
    panel.received()
    panel.click("btn_default")
    assert panel.received() == defaults(panel)
    for name in face.SETTINGS:
        assert shown_value(panel, name) == str(range_of(panel, name)[2])


def test_default_sends_the_frequency_twice_when_it_was_another_one(settings):
    panel = settings
    choose_flicker(panel, 2)
    panel.received()
    panel.click("btn_default")
    assert panel.received() == [flicker(range_of(panel, "flicker")[2]), *defaults(panel)]


def test_values_below_zero_are_shown_and_sent(start):
    panel = start(descriptions=["brightness=-64:64:0:-12"]).opened()
    show(panel, True)
    assert shown_value(panel, "brightness") == "-12"
    x, y = handle(panel, "brightness", -12)
    with panel.desktop.mouse.held(x, y) as mouse:
        panel.await_requests([image_property("brightness", -12)])
        mouse.move_to(x - 400, y)
        panel.await_requests([image_property("brightness", value) for value in (-12, -64)])
    assert shown_value(panel, "brightness") == "-64"
