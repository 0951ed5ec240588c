# Copyright (c) 2026 The PTZ panel developers
# SPDX-License-Identifier: MIT

"""Faults again and again: memory, files and threads stay what they were."""

from statistics import median

from drill import Row, drill_rows
from harness.pictures import shows

ROUNDS, BATCHES = 8, 3
"""A batch of rounds is measured so often."""

MOST_KIBIBYTES = 16 * ROUNDS
"""What a batch with the fault may add over one without it. The toolkit keeps pictures that it has
painted, up to ten megabytes: that is in both."""


def choose(drill, number):
    drill.panel.click(f"btn_cam{number}")
    drill.wait(lambda: shows(drill.panel, f"btn_cam{number}", f"cam{number}_green.png"),
               f"camera {number} to be green")


def in_turn(drill):
    """Chooses the second camera, which has the fault, and the first, which is well."""
    choose(drill, 2)
    choose(drill, 1)


def controls_used(drill):
    for name in ("btn_home", "btn_num5", "slider_zoom", "btn_push"):
        drill.panel.click(name)
    drill.answers()


def growth(drill, cycle):
    """What a batch of rounds adds, in the middle of several: memory that is taken for a moment is
    in few of them."""
    sizes = [drill.memory().kibibytes]
    for _ in range(BATCHES):
        for _ in range(ROUNDS):
            cycle(drill)
        sizes.append(drill.memory().kibibytes)
    return median(after - before for before, after in zip(sizes, sizes[1:]))


def repeated(cycle, command):
    def run(drill):
        drill.ready()
        cycle(drill)
        without = growth(drill, cycle)
        before = drill.memory()
        drill.tell(command)
        cycle(drill)
        assert growth(drill, cycle) - without <= MOST_KIBIBYTES
        drill.wait(lambda: drill.memory().threads <= before.threads, "threads to end")
        assert drill.memory().files <= before.files
        drill.answers()
    return run


FLAT = "no more memory, files or threads than without the fault"

FAULTS = [
    ("no permission to open (EACCES)", "refuse-open 2 EACCES"),
    ("busy when opened (EBUSY)", "refuse-open 2 EBUSY"),
    ("held by another program", "busy 2 on"),
    ("stall of gamma", "stall 2 gamma"),
    ("no bytes of gamma", "short 2 gamma 0"),
    ("unplugged", "unplug 2"),
]

UNSCRIBBLED = {"environment": {"MALLOC_PERTURB_": "0"}}
"""Memory that is never written to counts as none."""

ROWS = [
    *[Row(fault, "chosen again and again", FLAT, repeated(in_turn, command),
          dict(UNSCRIBBLED, devices=2)) for fault, command in FAULTS],
    *[Row(fault, "controls used again and again", FLAT, repeated(controls_used, command),
          UNSCRIBBLED)
      for fault, command in (("unplugged", "unplug 1"), ("stall of all", "stall 1 all"))],
]


@drill_rows(ROWS)
def test_drill(row, drill):
    row.run(drill)
    drill.finish()
