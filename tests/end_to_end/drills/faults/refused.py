# Copyright (c) 2026 The PTZ panel developers
# SPDX-License-Identifier: MIT

"""Cameras that may not be opened, or that another program holds."""

from drill import Row
from harness.requests import flicker, reads
from holds import MOTIONS

REFUSALS = [
    ("no permission to open (EACCES)", "refuse-open {} EACCES", "refuse-open {} none"),
    ("busy when opened (EBUSY)", "refuse-open {} EBUSY", "refuse-open {} none"),
    ("held by another program", "busy {} on", "busy {} off"),
]


def from_the_start(allow):
    def run(drill):
        drill.up().receives_nothing_from_controls()
        assert drill.panel.log.requests() == []
        drill.tell(allow.format(1))
        drill.panel.click("btn_cam1")
        # The frequency that is chosen then is sent to the camera that was just asked for it.
        drill.panel.log.await_requests([*reads(1), flicker(1)])
        drill.drives()
    return run


def when_another_is_chosen(refuse, allow):
    def run(drill):
        drill.ready()
        drill.tell(refuse.format(2))
        drill.panel.click("btn_cam2")
        drill.receives_nothing_from_controls()
        drill.panel.click("btn_cam1")
        drill.drives()
        drill.tell(allow.format(2))
        drill.panel.click("btn_cam2")
        drill.drives(camera=2)
    return run


def when_chosen_again(refuse, allow):
    def run(drill):
        drill.ready()
        drill.tell(refuse.format(1))
        drill.panel.click("btn_cam1")
        drill.receives_nothing_from_controls()
        drill.tell(allow.format(1))
        drill.panel.click("btn_cam1")
        drill.drives()
    return run


def chosen_while_held(refuse, hold):
    """A key that is still held is not heard again: it does not drive what could not be opened."""
    def run(drill):
        drill.ready()
        drill.tell(refuse.format(2))
        with hold(drill) as stops, drill.desktop.keyboard.without_repeat():
            since = drill.now()
            drill.panel.click("btn_cam2")
            drill.stopped_by(stops, since)
        # The stop of the lens comes last.
        drill.answers()
        drill.receives_nothing_from_controls()
        drill.panel.click("btn_cam1")
        drill.drives()
    return run


ROWS = []
for fault, refuse, allow in REFUSALS:
    ROWS += [
        Row(fault, "from the start", "lives; the camera is driven once it may be opened",
            from_the_start(allow), {"faults": [refuse.format(1)]}),
        Row(fault, "when another camera is chosen", "lives; the first is driven when chosen again",
            when_another_is_chosen(refuse, allow), {"devices": 2}),
        Row(fault, "when the camera is chosen again", "lives; driven once it may be opened",
            when_chosen_again(refuse, allow)),
        *[Row(fault, f"when another camera is chosen with {moment}",
              "the first stops at once, and is driven when chosen again",
              chosen_while_held(refuse, hold), {"devices": 2}) for moment, hold in MOTIONS[:2]],
    ]
