# Copyright (c) 2026 The PTZ panel developers
# SPDX-License-Identifier: MIT

"""Reaching every button with Tab and pressing it with the space bar."""

from collections import Counter

from harness import face
from harness.desktop import Desktop
from harness.panel import Panel
from harness.pictures import settings_panel_shown
from harness.requests import (auto_white_balance, call_preset, clear_preset,
                              reads, store_preset, vendor)
from harness.waiting import wait_for

# What buttons send when they are pressed twice.
PRESSED_TWICE = {
    (vendor(5), vendor(4)): "btn_mute",
    (vendor(7), vendor(6)): "btn_af",
    (vendor(17), vendor(16)): "btn_ai",
    (vendor(17), vendor(17)): "btn_push",
    (vendor(2), vendor(3)): "btn_flip",
    (vendor(0), vendor(1)): "btn_mirror",
    (vendor(8), vendor(8)): "btn_home",
    **{(call_preset(n), call_preset(n)): f"btn_num{n}" for n in range(10)},
    **{tuple(reads(n) * 2): f"btn_cam{n}" for n in range(1, 6)},
}

HIDES_THE_SETTINGS = "btn_setting or btn_ok"

ANOTHER_PANEL = ("btn_close", "btn_min", "cb_fliker", HIDES_THE_SETTINGS, "btn_top", "btn_set",
                 "btn_clear")
"""After these it goes on with another panel: they end, hide or cover the one that there is, or are
told apart by a click of the mouse, which takes the keyboard back to the window."""


def press(panel):
    """Presses what has the keyboard, and returns what was sent; nothing when the panel has gone
    or a list has come up."""
    for key in ("space", "7", "3"):
        panel.desktop.keyboard.tap(key)

    def done():
        return (not panel.is_running() or not panel.is_visible()
                or panel.flicker_items()
                or panel.so_far()[-2:] in ([call_preset(7, n), call_preset(3, n)]
                                           for n in range(1, 6)))

    wait_for(done, "the press to do its work")
    sent = panel.so_far()[:-2]
    panel.forget()
    return sent


def press_and_name(panel):
    """Presses what has the keyboard and tells by what happens what it is."""
    pin = panel.picture_of("btn_top").tobytes()
    sent = press(panel)
    if panel.is_running() and not panel.is_visible() and panel.tray_icon():
        return "btn_min"
    if not panel.is_running() or not panel.is_visible():
        assert panel.ended() == 0
        return "btn_close"
    if panel.flicker_items():
        return "cb_fliker"
    if sent and sent[-1] in [auto_white_balance(0, n) for n in range(1, 6)]:
        return "btn_default"
    if sent:
        return PRESSED_TWICE[(*sent, *press(panel))]
    panel.click("btn_num5")
    last, = panel.received()
    if last in [store_preset(5, n) for n in range(1, 6)]:
        return "btn_set"
    if last in [clear_preset(5, n) for n in range(1, 6)]:
        return "btn_clear"
    return wait_for(lambda: HIDES_THE_SETTINGS if not settings_panel_shown(panel)
                    else "btn_top" if panel.picture_of("btn_top").tobytes() != pin
                    else None, "the press to show")


def after_tabs(panel, tabs):
    """The panel with its settings shown and Tab pressed so often."""
    panel.opened()
    panel.click("btn_setting")
    wait_for(lambda: settings_panel_shown(panel), "the settings panel")
    panel.received()
    for _ in range(tabs):
        panel.desktop.keyboard.tap("Tab")
    return panel


def test_tab_reaches_every_button_and_the_space_bar_presses_it():
    everything = [*face.BUTTONS, "cb_fliker"]
    reached = []
    with Desktop() as desktop:
        while len(reached) < len(everything):
            with Panel(desktop, 5) as panel:
                after_tabs(panel, len(reached))
                while len(reached) < len(everything):
                    desktop.keyboard.tap("Tab")
                    reached.append(press_and_name(panel))
                    if reached[-1] in ANOTHER_PANEL:
                        break
    expected = Counter(everything)
    expected.subtract(["btn_setting", "btn_ok"])
    expected.update([HIDES_THE_SETTINGS] * 2)
    assert Counter(reached) == +expected, reached
