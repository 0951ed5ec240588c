# Copyright (c) 2026 The PTZ panel developers
# SPDX-License-Identifier: MIT

"""Cameras that refuse requests, or answer with too few bytes or none."""

from drill import Row, lens_rest, use_every_control
from harness import requests
from harness.requests import PROPERTY_CONTROLS
from holds import MOTIONS
from image import ask_for_default, ask_for_defaults, grab, shows_same, stale_value

UNREAD = ("lives; 0 is shown and the range shrinks to the last answer; is driven when the camera is "
          "well again")
LOST = "lives; every control is harmless until the next start"
MOVES_ON = ("lives; the stop is tried and not taken, so it moves on until it is told again and well; is "
            "driven when the camera is well again")
DULL = "sharpness=0:15:7:0"
CONTROLS = ["pantilt_relative", "zoom_relative", "focus_relative", "roll_absolute",
            "white_balance_temperature_auto", "power_line_frequency"]


def use_and_recover(drill, heal):
    use_every_control(drill)
    drill.answers()
    drill.tell(heal)
    drill.panel.received()
    drill.panel.click("btn_cam1")
    drill.drives()


def struck(drill, control, result):
    return any(line.control == control and line.result == result
               for line in drill.panel.log.lines())


def refused(control):
    def run(drill):
        use_and_recover(drill.ready(), "unstall 1")
        assert struck(drill, control, "stall")
    return run


def one_property(name, heal):
    def run(drill):
        drill.ready().panel.click("btn_setting")
        # Nothing was read, which is shown as 0. Two others are 0 with these cameras.
        well = "wb" if name != "wb" else "gamma"
        zero = "blc" if name != "blc" else "sharpness"
        drill.wait(lambda: not shows_same(drill, well, zero), "the settings to be shown")
        drill.wait(lambda: shows_same(drill, name, zero), f"0 to be shown for {name}")
        # A slider without a range cannot be grabbed.
        assert grab(drill, name, where=0) == []
        assert ask_for_default(drill, name) == [stale_value(name)]
        drill.panel.click("btn_ok")
        use_and_recover(drill, heal)
    return run


def unread_choice(drill):
    drill.ready().panel.click("btn_setting")
    assert requests.flicker(0) in ask_for_defaults(drill)
    drill.panel.click("btn_ok")
    use_and_recover(drill, "full 1")
    assert struck(drill, "power_line_frequency", "short")


def unreadable(heal, stalled):
    """A camera whose brightness cannot be read is not opened again."""
    def run(drill):
        drill.ready().receives_nothing_from_controls()
        assert drill.panel.log.requests() == [
            read + " stall" * (stalled in (read.split()[1], "all")) for read in requests.reads()]
        drill.tell(heal)
        drill.panel.click("btn_cam1")
        drill.receives_nothing_from_controls()
    return run


def everything_at_work(hold):
    def run(drill):
        drill.ready()
        with hold(drill):
            moving = drill.moving()
            drill.tell("stall 1 all")
            since = len(drill.calls())
        drill.tries_to_stop(moving, since)
        assert drill.moving() == moving
        use_every_control(drill)
        drill.answers()
        drill.tell("unstall 1")
        drill.panel.received()
        # The camera refused its stops.
        drill.desktop.keyboard.tap("Right")
        for slider in ("slider_focus", "slider_zoom"):
            drill.panel.click("btn_af")
            drill.desktop.mouse.click(*drill.panel.on_screen(*lens_rest(slider)))
        drill.panel.received()
        drill.drives()
    return run


def stalled(control):
    return {"faults": [f"stall 1 {control}"], "descriptions": [DULL]}


def cut(control, count):
    return {"faults": [f"short 1 {control} {count}"], "descriptions": [DULL]}


READABLE = {name: control for name, control in PROPERTY_CONTROLS.items() if name != "brightness"}

ROWS = [
    *[Row(f"stall of {control}", "from the start", "lives; is driven when the camera is well again",
          refused(control), stalled(control)) for control in CONTROLS],
    *[Row(f"stall of {control}", "from the start", UNREAD, one_property(name, "unstall 1"),
          stalled(control)) for name, control in READABLE.items()],
    *[Row(f"stall of {control}", "from the start", LOST, unreadable("unstall 1", control),
          stalled(control))
      for control in ("brightness", "all")],
    *[Row("stall of all", moment, MOVES_ON, everything_at_work(hold)) for moment, hold in MOTIONS],
    *[Row(f"{count or 'no'} byte{'s' * (not count)} of {control}", "from the start", UNREAD,
          one_property(name, "full 1"), cut(control, count))
      for count in (0, 1) for name, control in PROPERTY_CONTROLS.items()],
    Row("no bytes of power_line_frequency", "from the start",
        "lives; the default is the first choice; is driven when the camera is well again",
        unread_choice, cut("power_line_frequency", 0)),
]
