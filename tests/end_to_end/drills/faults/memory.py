# Copyright (c) 2026 The PTZ panel developers
# SPDX-License-Identifier: MIT

"""Faults again and again: memory, files and threads stay what they were."""

from calls import NOT_NOTING_CALLS
from drill import Row
from harness.pictures import shows

ROUNDS = 20
"""The fault is repeated so often to warm up, and so often again to be measured."""

MOST_KIBIBYTES = 16 * ROUNDS
"""What the measured rounds may add. libuvc keeps a little of each camera that it closes."""

CLICKS, MOST_BATCHES = 50, 40
PICTURE = 8
"""Less than the kibibytes of the pictures that a choice of a camera paints."""


def choose(drill, number):
    drill.panel.click(f"btn_cam{number}")
    drill.wait(lambda: shows(drill.panel, f"btn_cam{number}", f"cam{number}_green.png"),
               f"camera {number} to be green")


def in_turn(drill):
    """Chooses the second camera, which has the fault, and the first, which is well."""
    choose(drill, 2)
    choose(drill, 1)


def put_back(drill):
    """The second camera comes and goes, and is chosen with and without it."""
    drill.tell("unplug 2")
    choose(drill, 2)
    drill.tell("replug 2 77")
    in_turn(drill)


def controls_used(drill):
    for name in ("btn_home", "btn_num5", "slider_zoom", "btn_push"):
        drill.panel.click(name)
    drill.answers()


def fill_picture_cache(drill):
    """The toolkit keeps pictures that it has painted, up to ten megabytes. That is no growth, so it
    comes first: each choice of a camera paints new ones, opened or not."""
    drill.tell("refuse-open 1 EACCES")
    sizes = [drill.usage().kibibytes]
    for _ in range(MOST_BATCHES):
        for _ in range(CLICKS):
            drill.panel.click("btn_cam1")
            # Clicks that come one upon the other are painted once.
            drill.desktop.windows.answers(drill.panel.window)
        sizes.append(drill.usage().kibibytes)
        if len(sizes) > 3 and max(sizes[-2:]) - sizes[-3] < PICTURE * CLICKS:
            break
    else:
        raise AssertionError(f"each choice of a camera adds memory: {sizes}")
    drill.tell("refuse-open 1 none")
    choose(drill, 1)


def in_turn_with_each(faults, cycle):
    """The panel is the same for all faults, so that its cache fills only once."""
    def run(drill):
        drill.ready()
        fill_picture_cache(drill)
        drill.drives()
        for command, end in faults:
            drill.tell(command)
            rounds(drill, cycle)
            before = drill.usage()
            rounds(drill, cycle)
            # What is given back in the background is given time.
            drill.wait(lambda: no_more(drill.usage(), before),
                       lambda: f"{command}: no more than {before}: {drill.usage()}")
            drill.tell(end)
        drill.answers()
    return run


def rounds(drill, cycle):
    for _ in range(ROUNDS):
        cycle(drill)


def no_more(now, before):
    return (now.kibibytes - before.kibibytes <= MOST_KIBIBYTES and now.files <= before.files
            and now.threads <= before.threads)


FLAT = (f"no more files or threads after {ROUNDS} more, and at most {MOST_KIBIBYTES // ROUNDS} KiB for "
        "each")

LEAN = {"environment": {"MALLOC_PERTURB_": "0", **NOT_NOTING_CALLS}}
"""Memory that is never written to counts as none, and calls that are noted take some."""

ROWS = [
    Row("refused, busy, stalled, short, slow and unplugged", "chosen again and again", FLAT,
        in_turn_with_each([
            ("refuse-open 2 EACCES", "refuse-open 2 none"),
            ("refuse-open 2 EBUSY", "refuse-open 2 none"),
            ("busy 2 on", "busy 2 off"),
            ("stall 2 gamma", "unstall 2"),
            ("short 2 gamma 0", "full 2"),
            ("short 2 gamma 1", "full 2"),
            ("delay 2 5", "delay 2 0"),
            ("unplug 2", "replug 2"),
        ], in_turn), dict(LEAN, devices=2)),
    Row("put back at another address", "again and again", FLAT,
        in_turn_with_each([("delay 2 0", "delay 2 0")], put_back), dict(LEAN, devices=2)),
    Row("stall of all, unplugged", "controls used again and again", FLAT,
        in_turn_with_each([("stall 1 all", "unstall 1"), ("unplug 1", "delay 1 0")],
                          controls_used), LEAN),
]
