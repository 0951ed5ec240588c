# Copyright (c) 2026 The PTZ panel developers
# SPDX-License-Identifier: MIT

"""Desktops that lack something."""

import signal

from drill import Row
from holds import joystick


def to_nowhere(drill):
    """Without a tray there is no way back, but the panel is still there and ends when told to."""
    drill.ready().drives()
    drill.panel.click("btn_min")
    drill.wait(lambda: not drill.panel.is_visible(), "the window to go")
    drill.at_rest()
    drill.panel.signal(signal.SIGTERM)
    drill.ends_with(143)


def tray_comes_later(drill):
    drill.ready().panel.click("btn_min")
    drill.wait(lambda: not drill.panel.is_visible(), "the window to go")
    drill.desktop.start_tray()
    drill.bring_back()
    drill.drives()


def tray_goes(drill):
    drill.ready().panel.click("btn_min")
    drill.wait(lambda: not drill.panel.is_visible(), "the window to go")
    drill.desktop.stop("trayer")
    drill.desktop.start_tray()
    drill.bring_back()
    drill.drives()


def driven_by_the_mouse(drill):
    drill.answers()
    with joystick(drill):
        pass
    drill.at_rest()
    start = len(drill.panel.log.lines())
    drill.panel.click("btn_home")
    drill.wait(lambda: drill.panel.log.settings(start), "the home command")


def without_manager(drill):
    """Nobody gives windows the keyboard. The mouse needs nobody."""
    drill.up()
    driven_by_the_mouse(drill)
    drill.panel.click("btn_cam3")
    drill.wait(drill.panel.notices, "the notice of a missing camera")
    drill.panel.click("btn_close")
    drill.ends_with(0)


def manager_goes(drill):
    drill.ready()
    drill.desktop.stop("openbox")
    driven_by_the_mouse(drill)


ROWS = [
    Row("no tray", "minimised", "lives; ends with 143 when told to", to_nowhere,
        {"desktop": {"tray": False}}),
    Row("no tray", "minimised before there is one", "lives; comes back from the tray",
        tray_comes_later, {"desktop": {"tray": False}}),
    Row("tray gone and back", "minimised", "lives; comes back from the tray", tray_goes,
        {"desktop": {}}),
    Row("no window manager", "from the start", "the mouse drives; ends with 0", without_manager,
        {"desktop": {"tray": False, "window_manager": None}}),
    Row("window manager gone", "idle", "lives; the mouse drives", manager_goes,
        {"desktop": {"tray": False}}),
]
