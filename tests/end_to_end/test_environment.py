# Copyright (c) 2026 The PTZ panel developers
# SPDX-License-Identifier: MIT

"""What the desktop and the user's environment make of the panel."""

from pathlib import Path

import pytest

from harness import face
from harness.desktop import Desktop
from harness.requests import halt


@pytest.fixture(scope="module")
def desktop():
    """A screen of 144 dpi. Places are its pixels here."""
    with Desktop(tray=False, scale=1.5) as made:
        made.windows.scale = made.mouse.scale = 1
        yield made


# X resource, what the user has set, pixels of the screen for each of the panel.
FACTORS = [
    ("Xft.dpi: 96", {}, 1), ("Xft.dpi: 192", {}, 2), ("Xft.dpi: 110", {}, 1.25),
    ("Xft.dpi: 60", {}, 1), ("Xft.dpi: 1000", {}, 4), ("Xft.dpi: none", {}, 1.5), ("", {}, 1.5),
    ("Xft.dpi: 192", {"QT_SCALE_FACTOR": "1.25"}, 1.25),
    ("Xft.dpi: 192", {"QT_SCREEN_SCALE_FACTORS": "1.75"}, 1.75),
]


@pytest.mark.parametrize("resource, environment, factor", FACTORS)
def test_the_panel_is_as_large_as_the_desktop_and_the_user_ask_for(
        desktop, start, resource, environment, factor):
    desktop.set_resource(resource)
    panel = start("storage", on=desktop, environment=environment)
    assert panel.place()[2:] == (round(face.WIDTH * factor + 0.01), round(face.HEIGHT * factor))


ENVIRONMENTS = [
    {"QT_FONT_DPI": "96"},
    {"QT_DPI_ADJUSTMENT_POLICY": "DontAdjustDpi"},
    {"QT_SCALE_FACTOR_ROUNDING_POLICY": "PassThrough"},
    {"QT_USE_PHYSICAL_DPI": "1"},
    {"QT_SCREEN_SCALE_FACTORS": "1.5", "QT_ENABLE_HIGHDPI_SCALING": "0"},
    {"QT_SCREEN_SCALE_FACTORS": "1.5", "QT_AUTO_SCREEN_SCALE_FACTOR": "0"},
]


@pytest.mark.parametrize("environment", ENVIRONMENTS, ids=lambda names: list(names)[-1])
def test_the_joystick_at_rest_drives_nothing_whatever_the_environment_says(
        desktop, start, environment):
    desktop.set_resource("")
    panel = start(on=desktop, environment=environment).opened()
    factor = panel.place().width / face.WIDTH
    middle = [factor * place for place in face.centre(face.CONTROLS["joystick"])]
    with desktop.mouse.held(*panel.on_screen(*middle)):
        panel.await_requests([halt()] * 4)
    assert panel.received() == [halt()] * 4


@pytest.mark.parametrize("environment, loaded",
                         [({}, False), ({"QT_XCB_GL_INTEGRATION": "xcb_glx"}, True)])
def test_opengl_is_loaded_only_for_a_user_who_asks_for_it(desktop, start, environment, loaded):
    panel = start("storage", on=desktop, environment=environment)
    maps = Path(f"/proc/{panel.process_id}/maps").read_text(encoding="utf-8")
    assert ("qxcb-glx-integration" in maps) == loaded
