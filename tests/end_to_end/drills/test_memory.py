# Copyright (c) 2026 The PTZ panel developers
# SPDX-License-Identifier: MIT

"""Faults again and again: memory, files and threads stay what they were."""

from drill import Row, drill_rows
from harness.pictures import shows

ROUNDS = 25
"""The fault is repeated so often to warm up, and so often again to be measured."""

MOST_KIBIBYTES = 8 * ROUNDS
"""What the measured rounds may add; libuvc keeps a few hundred bytes of each camera that it closes.
A camera that stays open adds threads and files."""

CLICKS, MOST_BATCHES = 100, 60


def green(drill, number):
    drill.wait(lambda: shows(drill.panel, f"btn_cam{number}", f"cam{number}_green.png"),
               f"camera {number} to be green")


def choose(drill, number):
    drill.panel.click(f"btn_cam{number}")
    green(drill, number)


def in_turn(drill):
    choose(drill, 2)
    choose(drill, 1)


def controls_used(drill):
    """The keys of a camera that is gone."""
    for name in ("btn_home", "btn_num5", "slider_zoom", "btn_push"):
        drill.panel.click(name)
    drill.answers()


def fill_picture_cache(drill):
    """The toolkit keeps pictures that it painted, up to ten megabytes. That is no growth."""
    memory = drill.memory().kibibytes
    for _ in range(MOST_BATCHES):
        for _ in range(CLICKS):
            drill.panel.click("btn_home")
        drill.answers()
        before, memory = memory, drill.memory().kibibytes
        if memory - before < CLICKS:
            return
    raise AssertionError(f"each click of a button adds memory: {memory} KiB")


def repeated(cycle, command):
    def run(drill):
        drill.ready()
        fill_picture_cache(drill)
        if command:
            drill.tell(command)
        rounds(drill, cycle)
        before = drill.memory()
        rounds(drill, cycle)
        # What is given back in the background is given it.
        drill.wait(lambda: no_more(drill.memory(), before),
                   lambda: f"no more than {before}: {drill.memory()}")
        drill.answers()
    return run


def no_more(now, before):
    return (now.kibibytes - before.kibibytes <= MOST_KIBIBYTES and now.files <= before.files
            and now.threads <= before.threads)


def rounds(drill, cycle):
    for _ in range(ROUNDS):
        cycle(drill)


FLAT = f"memory, files and threads are the same after {ROUNDS} more"

# What the second camera is told; the first is well, and they are chosen in turn.
FAULTS = [
    ("no fault", None),
    ("no permission to open (EACCES)", "refuse-open 2 EACCES"),
    ("busy when opened (EBUSY)", "refuse-open 2 EBUSY"),
    ("held by another program", "busy 2 on"),
    ("stall of gamma", "stall 2 gamma"),
    ("no bytes of gamma", "short 2 gamma 0"),
    ("unplugged", "unplug 2"),
]

UNSCRIBBLED = {"environment": {"MALLOC_PERTURB_": "0"}}
"""What is never written to counts as no memory."""

ROWS = [
    *[Row(fault, "chosen again and again", FLAT, repeated(in_turn, command), dict(UNSCRIBBLED, devices=2))
      for fault, command in FAULTS],
    *[Row(fault, "every control used again and again", FLAT, repeated(controls_used, command), UNSCRIBBLED)
      for fault, command in (("unplugged", "unplug 1"), ("stall of all", "stall 1 all"))],
]


@drill_rows(ROWS)
def test_drill(row, drill):
    row.run(drill)
    drill.finish()
