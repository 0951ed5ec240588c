# Copyright (c) 2026 The PTZ panel developers
# SPDX-License-Identifier: MIT

"""The panel for those who cannot see its pictures: every control is found and used through the
desktop's accessibility bus."""

import functools
import xml.etree.ElementTree
from collections import namedtuple
from pathlib import Path

import pytest

from harness import face
from harness.accessibility import AccessibilityBus
from harness.panel import Panel
from harness.pictures import selected_camera, settings_panel_shown, shows
from harness.requests import (auto_white_balance, call_preset, clear_preset,
                              flicker, focus, halt_focus, halt_zoom, image_property, reads, store_preset,
                              vendor, zoom)
from harness.waiting import wait_for

CAMERAS = 3

WINDOW = ("frame", "PTZ camera control panel")
NO_CAMERA = ("dialog", "No camera")
MISSING_CAMERA = ("dialog", "No camera here")

ROLES = {"QPushButton": "push button", "QSlider": "slider", "QLineEdit": "text",
         "QComboBox": "combo box", "RockerHandle": "filler"}

FormControl = namedtuple("FormControl", "form object role name description")


def controls_of(form):
    """Every control of a form, under what it is called there."""
    path = Path(__file__).resolve().parents[2] / "forms" / f"{form}.ui"
    for widget in xml.etree.ElementTree.parse(path).iter("widget"):
        if widget.get("class") in ROLES:
            texts = {entry.get("name"): "".join(entry.itertext()).strip()
                     for entry in widget.findall("property")}
            yield FormControl(form, widget.get("name"), ROLES[widget.get("class")],
                              texts.get("accessibleName"), texts.get("accessibleDescription"))


FORMS = {form: {control.object: control for control in controls_of(form)}
         for form in ("main_window", "no_device", "no_mord_camera")}

reached = set()
"""The controls that were found, and used if they are buttons or sliders."""


def reach(window, form, name):
    """The control of that object name, found by what a blind user is told of it."""
    control = FORMS[form][name]
    assert control.name and control.description, f"{name} is called nothing"
    # On Linux a combo box is named after its current choice, and has a label for what is chosen.
    if control.role == "combo box":
        found = window.find(control.role, label=control.name)
    else:
        found = window.find(control.role, control.name)
    assert found.description == control.description
    return found


def used(form, name):
    reached.add((form, name))


@pytest.fixture(scope="module")
def bus(desktop):
    with AccessibilityBus(desktop) as made:
        yield made


@pytest.fixture(scope="module")
def shared_panel(desktop, bus):
    with Panel(desktop, CAMERAS, environment=bus.environment) as panel:
        panel.opened()
        panel.click("btn_setting")
        wait_for(lambda: settings_panel_shown(panel), "the settings panel")
        yield panel


@pytest.fixture
def find(bus, panel):
    return functools.partial(reach, bus.window(panel, *WINDOW), "main_window")


@pytest.fixture
def press(find):
    def press_button(name):
        find(name).press()
        used("main_window", name)
    return press_button


def press_notice(bus, panel, window, form, name):
    reach(bus.window(panel, *window), form, name).press()
    used(form, name)


# These panels come and go before the one that the other tests share: one at a time on the desktop.


@pytest.fixture
def panel_without_cameras(desktop, bus):
    # What is plugged in is no camera.
    with Panel(desktop, "storage", environment=bus.environment) as panel:
        panel.await_notices(1)
        yield panel


def test_the_notice_of_no_camera_is_dismissed(bus, panel_without_cameras):
    press_notice(bus, panel_without_cameras, NO_CAMERA, "no_device", "btn_ok")
    panel_without_cameras.await_notices(0)
    assert panel_without_cameras.is_running()


def test_the_notice_of_no_camera_ends_the_panel(bus, panel_without_cameras):
    press_notice(bus, panel_without_cameras, NO_CAMERA, "no_device", "btn_quit")
    assert panel_without_cameras.ended() == 0


def test_the_panel_is_closed(desktop, bus):
    with Panel(desktop, environment=bus.environment) as panel:
        panel.opened()
        reach(bus.window(panel, *WINDOW), "main_window", "btn_close").press()
        assert panel.ended() == 0
    used("main_window", "btn_close")


@pytest.mark.parametrize("name", FORMS["main_window"])
def test_a_control_is_found_by_its_name_and_role(find, name):
    control = find(name)
    assert control.is_shown()
    assert control.is_enabled() == (name != "slider_focus")
    if control.role not in ("push button", "slider"):
        used("main_window", name)


# Pressed buttons, without their btn_, and what the camera receives.
PRESSES = [
    ("mute mute", [vendor(5), vendor(4)]),
    ("af af", [vendor(7), vendor(6)]),
    ("ai ai", [vendor(17), vendor(16)]),
    ("push", [vendor(17)]),
    ("flip flip", [vendor(2), vendor(3)]),
    ("home", [vendor(8)]),
    ("mirror mirror", [vendor(0), vendor(1)]),
    *[(f"num{n}", [call_preset(n)]) for n in range(10)],
    ("set num3 num3", [store_preset(3), call_preset(3)]),
    ("clear num4 num4", [clear_preset(4), call_preset(4)]),
    ("default", [image_property("wb", 4600), image_property("blc", 0), image_property("gamma", 220),
                 image_property("contrast", 128), image_property("saturation", 128),
                 image_property("brightness", 128), image_property("sharpness", 7), flicker(1),
                 auto_white_balance(0)]),
]


@pytest.mark.parametrize("buttons, requests", PRESSES, ids=[row[0] for row in PRESSES])
def test_a_button_is_pressed_and_the_camera_receives_its_request(panel, press, buttons, requests):
    for button in buttons.split():
        before = len(panel.so_far())
        press(f"btn_{button}")
        # The button stays down for a tenth of a second, and until then a second press is nothing.
        if button not in ("set", "clear"):
            wait_for(lambda: len(panel.so_far()) > before, f"a request of {button}")
    panel.await_requests(requests)
    assert panel.received() == requests


@pytest.mark.parametrize("camera", [2, 3, 1])
def test_a_camera_is_chosen(panel, press, camera):
    requests = reads(camera)
    press(f"btn_cam{camera}")
    panel.await_requests(requests)
    assert panel.received() == requests
    wait_for(lambda: selected_camera(panel) == camera, f"camera {camera} to be marked")


@pytest.mark.parametrize("camera", [4, 5])
def test_the_notice_of_an_empty_position_is_dismissed(bus, panel, press, camera):
    press(f"btn_cam{camera}")
    panel.await_notices(1)
    press_notice(bus, panel, MISSING_CAMERA, "no_mord_camera", "btn_ok")
    panel.await_notices(0)
    panel.desktop.windows.activate(panel.window)
    assert panel.received() == []


def test_the_choice_of_keeping_notices_on_top_is_shown(panel, press):
    for picture in ("no_top.png", "top.png"):
        press("btn_top")
        wait_for(lambda: shows(panel, "btn_top", picture), picture)
    assert panel.received() == []


def test_the_settings_panel_is_hidden_and_shown(panel, press):
    for button, shown in [("btn_setting", False), ("btn_setting", True), ("btn_ok", False),
                          ("btn_setting", True)]:
        press(button)
        wait_for(lambda: settings_panel_shown(panel) == shown, f"the settings panel: {shown}")
    assert panel.received() == []


def test_the_panel_is_minimised(panel, press):
    press("btn_min")
    wait_for(lambda: not panel.is_visible(), "the panel to go")
    panel.double_click_tray_icon()
    wait_for(panel.is_visible, "the panel to come back")
    panel.desktop.windows.activate(panel.window)
    assert panel.received() == []


@pytest.mark.parametrize("name", face.SETTINGS)
def test_a_settings_slider_is_moved_and_the_camera_receives_the_value(panel, find, name):
    slider, box = find(f"slider_{name}"), find(f"v_{name}")
    for move in (lambda: slider.act("Increase"), lambda: slider.act("Decrease"),
                 lambda: setattr(slider, "value", slider.value + 3)):
        before = slider.value
        move()
        wait_for(lambda: slider.value != before, f"the slider of {name} to move")
        assert panel.received() == [image_property(name, slider.value)]
        assert box.text == str(slider.value)
    used("main_window", f"slider_{name}")


def step_lens(panel, slider, action, requests):
    slider.act(action)
    panel.await_requests(requests)
    assert panel.received() == requests
    assert slider.value == 45


def test_a_step_of_the_zoom_slider_nudges_the_zoom_and_lets_it_go(panel, find):
    slider = find("slider_zoom")
    step_lens(panel, slider, "Increase", [zoom(+1), halt_zoom(), halt_zoom()])
    step_lens(panel, slider, "Decrease", [zoom(-1), halt_zoom(), halt_zoom()])
    used("main_window", "slider_zoom")


def test_a_step_of_the_focus_slider_nudges_the_focus_in_manual_focus(panel, find, press):
    slider = find("slider_focus")
    press("btn_af")
    wait_for(slider.is_enabled, "manual focus")
    panel.received()
    step_lens(panel, slider, "Increase", [focus(-1), halt_focus(), halt_focus()])
    step_lens(panel, slider, "Decrease", [focus(+1), halt_focus(), halt_focus()])
    press("btn_af")
    wait_for(lambda: not slider.is_enabled(), "automatic focus")
    used("main_window", "slider_focus")


def test_the_focus_slider_does_not_step_in_automatic_focus(panel, find):
    slider = find("slider_focus")
    panel.received()
    slider.act("Increase")
    assert slider.value == 45
    assert panel.received() == []


def test_the_anti_flicker_list_is_opened_and_a_choice_made_by_key(panel, find):
    for key, value, text in (("Down", 2, "60HZ"), ("Up", 1, "50HZ")):
        choice = find("cb_fliker")
        choice.press()
        wait_for(lambda: sum(control.is_shown() for control in choice.everything()) == 4,
                 "the list to open")
        panel.desktop.keyboard.tap(key)
        panel.desktop.keyboard.tap("Return")
        panel.await_requests([flicker(value)])
        assert panel.received() == [flicker(value)]
        assert choice.name == text


def test_every_control_was_reached(capsys, request):
    every = {(control.form, control.object) for controls in FORMS.values()
             for control in controls.values()}
    with capsys.disabled():
        print(f"\ncontrols reached: {len(reached & every)} of {len(every)}")
    if request.config.option.keyword:
        pytest.skip("only a choice of the tests was run")
    assert sorted(every - reached) == []
