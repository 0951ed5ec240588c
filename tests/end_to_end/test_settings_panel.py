# Copyright (c) 2026 The PTZ panel developers
# SPDX-License-Identifier: MIT

"""The settings panel by mouse, where the tour does not go."""

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
    """The number in a value box, read by marking it as a mouse does. Three clicks that a busy machine
    draws apart mark nothing, and are made again."""
    x, y = panel.middle_of(f"v_{name}")

    def marked():
        for _ in range(3):
            panel.desktop.mouse.click(x, y)
        panel.received()
        return panel.desktop.windows.selected_text()
    return wait_for(marked, "the number to be marked")


@pytest.mark.parametrize("name", face.SETTINGS)
def test_a_middle_click_sends_the_value_once(settings, name):
    panel = settings
    low, _, _ = range_of(panel, name)
    panel.desktop.mouse.click(*handle(panel, name, low), button=MIDDLE)
    requests = panel.received()
    assert requests == [image_property(name, int(shown_value(panel, name)))]


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


def test_default_restores_every_value_and_sends_the_frequency_twice_when_it_was_another(settings):
    panel = settings
    for name in face.SETTINGS:
        x, y = handle(panel, name, range_of(panel, name)[2])
        panel.desktop.mouse.drag((x, y), (x + 30, y))
    choose_flicker(panel, 2)
    panel.received()
    panel.click("btn_default")
    assert panel.received() == [flicker(range_of(panel, "flicker")[2]), *defaults(panel)]
    for name in face.SETTINGS:
        assert shown_value(panel, name) == str(range_of(panel, name)[2])


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
