# Copyright (c) 2026 The PTZ panel developers
# SPDX-License-Identifier: MIT

"""The cable is pulled or plugged in while the panel is coming up or reading a camera."""

import signal

from drill import Row

SLOW = "delay 1 20"
READS = 32
"""Requests with which a camera is read each time it is chosen."""


def reads(drill):
    return sum(line.what.startswith("GET_") for line in drill.panel.log.lines())


def unplug_during_the_reads(drill, before):
    """So many reads were done before those that the cable is pulled in. The last few would be over
    before it is."""
    count = before + drill.random.randrange(1, READS - 8)
    drill.wait(lambda: reads(drill) >= count, f"{count} reads")
    drill.tell("unplug 1")
    assert before < reads(drill) < before + READS


def while_the_start_reads(which):
    """The start reads the camera twice."""
    def run(drill):
        unplug_during_the_reads(drill, which * READS)
        drill.up().receives_nothing_from_controls()
        assert not drill.panel.notices(), "it was found before"
    return run


def while_it_is_read_again(drill):
    drill.ready()
    drill.tell(SLOW)
    before = reads(drill)
    drill.panel.click("btn_cam1")
    unplug_during_the_reads(drill, before)
    drill.receives_nothing_from_controls()
    drill.panel.click("btn_cam1")
    drill.receives_nothing_from_controls()


def while_its_name_is_read(drill):
    drill.wait(lambda: any(line.what == "OPEN" for line in drill.panel.log.lines()),
               "the camera's name to be read")
    drill.tell("unplug 1")
    drill.up().receives_nothing_from_controls()
    assert not drill.panel.notices(), "it was found before"


def between_list_and_poll(commands, afterwards):
    """The panel is stopped as soon as its window is there, half a second before it looks for
    cameras. A busy machine may miss that."""
    def run(drill):
        drill.panel.signal(signal.SIGSTOP)
        while "init success" in drill.panel.output():
            drill.start_anew()
            drill.panel.signal(signal.SIGSTOP)
        for command in commands:
            drill.tell(command)
        drill.panel.signal(signal.SIGCONT)
        afterwards(drill.up())
    return run


def shows_the_notice(drill):
    assert drill.panel.notices()


def drives_nothing(drill):
    drill.receives_nothing_from_controls()
    for number in range(1, drill.devices + 1):
        drill.panel.click(f"btn_cam{number}")
        drill.receives_nothing_from_controls()


ROWS = [
    Row("unplugged", "while the start reads the camera",
        "lives; every control is harmless", while_the_start_reads(0), {"faults": [SLOW]}),
    Row("unplugged", "while the start reads the camera again",
        "lives; every control is harmless", while_the_start_reads(1), {"faults": [SLOW]}),
    Row("unplugged", "while the chosen camera is read", "lives; every control is harmless",
        while_it_is_read_again),
    Row("unplugged", "after it is found, before it is opened", "lives; every control is harmless",
        while_its_name_is_read, {"faults": ["delay 1 300"]}),
    Row("unplugged", "after the start, before cameras are looked for", "the notice comes up",
        between_list_and_poll(["unplug 1"], shows_the_notice)),
    *[Row(fault, "after the start, before cameras are looked for",
          "lives; every control is harmless until the next start",
          between_list_and_poll([f"replug {number}" for number in numbers], drives_nothing),
          {"devices": len(numbers), "faults": [f"unplug {number}" for number in numbers]})
      for fault, numbers in (("a camera plugged in", [1]),
                             ("five cameras plugged in", [1, 2, 3, 4, 5]))],
]
