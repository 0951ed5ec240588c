# Copyright (c) 2026 The PTZ panel developers
# SPDX-License-Identifier: MIT

"""Cameras that take their time: 50 ms and 1 s for each request, or that hang."""

import contextlib
import signal

from drill import HANGS, Row
from harness import requests
from harness.motions import is_start
from holds import MOTIONS, key, settings_slider

LATE = 3
"""So many starts may follow a release: one is on its way and one or two were typed before it."""

CHOOSING = 120.0
"""Seconds that the panel may take to read a camera at a second for each of 34 requests."""


def driven(milliseconds, hold):
    def run(drill):
        drill.ready()
        drill.tell(f"delay 1 {milliseconds}")
        with hold(drill):
            pass
        released = len(drill.panel.log.lines())
        drill.at_rest()
        late = sum(is_start(line) for line in drill.panel.log.lines()[released:])
        assert late <= LATE, f"{late} starts after the release"
        drill.tell("delay 1 0")
        drill.drives()
    return run


def long_held(milliseconds, starts):
    """The keyboard repeats faster than the camera answers."""
    def run(drill):
        drill.ready()
        drill.tell(f"delay 1 {milliseconds}")
        log = drill.panel.log
        first = len(log.lines())
        with drill.desktop.keyboard.held("Right"):
            drill.wait(lambda: len(log.settings(first)) >= starts, f"{starts} starts")
        released = len(log.lines())
        drill.wait(lambda: requests.halt() in log.settings(released), "the camera to be stopped")
        late = log.settings(released).index(requests.halt())
        assert late <= LATE, f"{late} starts after the release"
        drill.at_rest()
        drill.tell("delay 1 0")
        drill.drives()
    return run


def chosen(drill):
    drill.ready()
    drill.tell("delay 1 1000")
    drill.panel.click("btn_cam1")
    drill.patience = CHOOSING
    drill.answers()
    drill.tell("delay 1 0")
    drill.drives()


def chosen_while_held(drill):
    """The key is let go while the other camera is being read."""
    drill.ready()
    drill.tell("delay 2 50")
    with drill.desktop.keyboard.held("Right"):
        drill.moves(1)
        drill.panel.click("btn_cam2")
        drill.hangs(2)
        start = len(drill.panel.log.lines())
    drill.wait(lambda: requests.halt(2) in drill.panel.log.settings(start),
               "the release to reach the camera that is chosen")
    assert drill.panel.log.settings(start).count(requests.pan(+1, 21, 2)) <= 1
    drill.at_rest(1)
    drill.at_rest(2)
    drill.tell("delay 2 0")
    drill.drives(camera=2)


def used(drill):
    drill.up()
    drill.patience = CHOOSING
    drill.panel.click("btn_setting")
    drill.answers()
    drill.drives()


def ended(hold):
    def run(drill):
        drill.ready()
        drill.tell("delay 1 1000")
        drill.patience += 20
        with hold(drill):
            drill.panel.signal(signal.SIGTERM)
            drill.ends_with(128 + signal.SIGTERM)
    return run


def hung_and_ended(drill):
    """A request is given up after 5 s, and after 1 s from then on."""
    drill.ready()
    drill.tell(HANGS)
    drill.answers()
    drill.panel.signal(signal.SIGTERM)
    drill.ends_with(128 + signal.SIGTERM)


def hung_while_a_key_is_held(drill):
    drill.ready()
    with key("Right")(drill):
        drill.tell(HANGS)
    answers_and_drives(drill)


def hung_while_the_start_reads(drill):
    """Near the end of its 64 reads, for each takes a second."""
    drill.wait(lambda: sum(line.what.startswith("GET_") for line in drill.panel.log.lines()) >= 61,
               "61 reads")
    drill.tell(HANGS)
    answers_and_drives(drill.ready())


def answers_and_drives(drill):
    drill.answers()
    drill.tell("delay 1 0")
    drill.drives()


@contextlib.contextmanager
def up_and_tele(drill):
    with key("t")(drill), key("Up")(drill):
        yield


MOMENTS = [*MOTIONS, ("a settings slider held", settings_slider)]
LIVES = "lives; stops at the release"
HUNG = "lives; the camera is driven when it answers again"

ROWS = [
    Row("50 ms for each request", "from the start", "lives; the camera is driven", used,
        {"faults": ["delay 1 50"]}),
    *[Row("50 ms for each request", moment, LIVES, driven(50, hold)) for moment, hold in MOMENTS],
    Row("50 ms for each request", "an arrow key held long", LIVES, long_held(50, 40)),
    Row("50 ms for each request", "an arrow key held while the camera is chosen",
        "lives; the camera moves once at the most, and stops", chosen_while_held, {"devices": 2}),
    *[Row("1 s for each request", moment, LIVES, driven(1000, hold)) for moment, hold in MOMENTS],
    Row("1 s for each request", "an arrow key held long", LIVES, long_held(1000, 3)),
    Row("1 s for each request", "when the camera is chosen", "lives; the camera is driven", chosen),
    Row("no answer", "idle", "lives; ends with 143", hung_and_ended),
    Row("no answer", "an arrow key held", HUNG, hung_while_a_key_is_held),
    Row("no answer", "while the start reads the camera", HUNG, hung_while_the_start_reads,
        {"faults": ["delay 1 20"]}),
    *[Row("1 s for each request", f"SIGTERM with {moment}", "ends with 143; nothing moves on",
          ended(hold))
      for moment, hold in [*MOTIONS, ("an arrow key and a zoom key held", up_and_tele)]],
]
