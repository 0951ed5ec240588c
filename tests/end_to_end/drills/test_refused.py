# Copyright (c) 2026 The PTZ panel developers
# SPDX-License-Identifier: MIT

"""Cameras that may not be opened, or that another program holds."""

from drill import Row, drill_rows
from holds import MOTIONS

REFUSALS = [
    ("no permission to open (EACCES)", "refuse-open {} EACCES", "refuse-open {} none"),
    ("busy when opened (EBUSY)", "refuse-open {} EBUSY", "refuse-open {} none"),
    ("held by another program", "busy {} on", "busy {} off"),
]


def from_the_start(allow):
    def run(drill):
        drill.up().receives_nothing_from_controls()
        drill.tell(allow.format(1))
        drill.panel.click("btn_cam1")
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


def while_it_is_open(refuse, hold):
    def run(drill):
        drill.ready()
        with hold(drill):
            drill.tell(refuse.format(1))
        drill.at_rest()
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
        *[Row(fault, moment, "stops at the release; is driven on",
              while_it_is_open(refuse, hold)) for moment, hold in MOTIONS[:4:2]],
    ]


@drill_rows(ROWS)
def test_drill(row, drill):
    row.run(drill)
    drill.finish()
