# Copyright (c) 2026 The PTZ panel developers
# SPDX-License-Identifier: MIT

"""Faults again and again: memory, files and threads stay what they were."""

from drill import Row, drill_rows
from harness.pictures import shows

ROUNDS = 25
"""The fault is repeated so often to warm up, and so often again to be measured."""

MOST_KIBIBYTES = 8 * ROUNDS
"""What a run of rounds may add. A camera that is not closed, or a list that is not freed, adds
several times as much."""


def green(drill, number):
    drill.wait(lambda: shows(drill.panel, f"btn_cam{number}", f"cam{number}_green.png"),
               f"camera {number} to be green")


def choose(drill, number):
    drill.panel.click(f"btn_cam{number}")
    green(drill, number)


def told(*commands):
    """Chooses the second camera, which is faulty, and the first, which is well."""
    def cycle(drill):
        for command in commands:
            drill.tell(command)
        choose(drill, 2)
        for command in ("clear 2", "replug 2"):
            drill.tell(command)
        choose(drill, 1)
    return cycle


def controls_used(drill):
    """The keys of a camera that is gone."""
    for name in ("btn_home", "btn_num5", "slider_zoom", "btn_push"):
        drill.panel.click(name)
    drill.answers()


def repeated(cycle, first=None):
    def run(drill):
        drill.ready()
        if first:
            drill.tell(first)
        rounds(drill, cycle)
        before = drill.memory()
        rounds(drill, cycle)
        after = drill.memory()
        assert after.kibibytes - before.kibibytes <= MOST_KIBIBYTES
        assert after.files <= before.files
        assert after.threads <= before.threads
        drill.answers()
    return run


def rounds(drill, cycle):
    for _ in range(ROUNDS):
        cycle(drill)


FLAT = f"memory, files and threads are the same after {ROUNDS} more"
TWO = {"devices": 2}

ROWS = [
    Row("cameras chosen in turn", "again and again", FLAT, repeated(told()), TWO),
    Row("no permission to open (EACCES)", "again and again", FLAT,
        repeated(told("refuse-open 2 EACCES")), TWO),
    Row("busy when opened (EBUSY)", "again and again", FLAT,
        repeated(told("refuse-open 2 EBUSY")), TWO),
    Row("held by another program", "again and again", FLAT, repeated(told("busy 2 on")), TWO),
    Row("stall of gamma", "again and again", FLAT, repeated(told("stall 2 gamma")), TWO),
    Row("no bytes of gamma", "again and again", FLAT, repeated(told("short 2 gamma 0")), TWO),
    Row("chosen when unplugged", "again and again", FLAT, repeated(told("unplug 2")), TWO),
    Row("controls of an unplugged camera", "again and again", FLAT,
        repeated(controls_used, first="unplug 1")),
    Row("controls of a camera that stalls", "again and again", FLAT,
        repeated(controls_used, first="stall 1 all")),
]


@drill_rows(ROWS)
def test_drill(row, drill):
    row.run(drill)
    drill.finish()
