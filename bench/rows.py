# Copyright (c) 2026 The PTZ panel developers
# SPDX-License-Identifier: MIT

"""The table of comparisons."""

from dataclasses import dataclass
from typing import Callable

from measure import (BIN, PANEL, Side, drag_latency, drag_throughput, lost_movements, memory,
                     operation_instructions, press_instructions, press_latency, printed,
                     processor_time, report_periods, start_time, wake_ups)

SMALLEST = Side("smallest_window")
LEAN = Side("smallest_window", {"QT_XCB_GL_INTEGRATION": "none"})
KEY = Side("key_window")
POINTER = Side("pointer_window")
SLIDER = Side("slider_window")
CAMERA_WITH_LOG = ["virtual-camera", "--log", "/dev/null"]
REQUESTS = str(BIN / "request_loop")

HIGHEST, LOWEST = "≤", "≥"


@dataclass(frozen=True)
class Line:
    """A line of the page: what is compared with what, and what it must come to."""
    what: str
    against: str
    target: float
    bound: str = HIGHEST
    unit: str = "×"


@dataclass(frozen=True)
class Row:
    """One measurement, of which each result is a line. Measures (scale, rounds) into one list of
    samples for each line; a scale of 0 takes the shortest look that shows that it works."""
    name: str
    lines: tuple
    samples: Callable


def ratios(measure, ours, theirs, count, rounds):
    """Both sides in turn, the first one changing; of each round, ours to theirs."""
    def samples(full):
        found = []
        for number in range(rounds if full else 1):
            sides = [ours, theirs] if number % 2 == 0 else [theirs, ours]
            results = {id(side): measure(side, count if full else 2) for side in sides}
            ours_, theirs_ = ([result] if isinstance(result, (int, float)) else result
                              for result in (results[id(ours)], results[id(theirs)]))
            found.append([a / b for a, b in zip(ours_, theirs_)])
        return [list(line) for line in zip(*found)]
    return samples


def median(values):
    values = sorted(values)
    return (values[(len(values) - 1) // 2] + values[len(values) // 2]) / 2


def request_time(command, count):
    return median(line[0] for line in printed(command, count))


def switches(full):
    pairs = printed(["virtual-camera", str(BIN / "camera_switch")], 60 if full else 1)
    return [[ours / theirs for ours, theirs in pairs]]


def more_instructions(full):
    count = 1000 if full else 10
    return [[operation_instructions("device", count) - operation_instructions("call", count)]]


def shares(holds):
    def samples(full):
        return [[100 * report_periods(holds if full else [0.5])]]
    return samples


def lost(full):
    return [[lost_movements(10_000 if full else 5)]]


def wakes(full):
    return [[count] for count in wake_ups(60 if full else 1)]


def frames(full):
    count = 90 if full else 1
    return [[line[0] for line in printed(["frame_bench", kind], count)]
            for kind in ("panning", "everything")]


ROWS = (
    Row("start", (
        Line("start to first painted window", "the smallest Qt window of that size", 0.9),),
        ratios(start_time, PANEL, SMALLEST, 1, 15)),
    Row("memory", (
        Line("memory (PSS), settings shown", "the smallest Qt window of that size", 0.6),),
        ratios(memory, PANEL, SMALLEST, 1, 3)),
    Row("lean-start", (
        Line("start to first painted window", "the same window without OpenGL", 1.7),),
        ratios(start_time, PANEL, LEAN, 1, 15)),
    Row("lean-memory", (
        Line("memory (PSS), settings shown", "the same window without OpenGL", 1.35),),
        ratios(memory, PANEL, LEAN, 1, 3)),
    Row("press", (
        Line("key press to request, median", "a window that makes the same call", 1.02),
        Line("key press to request, 99 of 100 below", "the same", 1.1)),
        ratios(press_latency, PANEL, KEY, 1000, 5)),
    Row("press-instructions", (
        Line("instructions of a press and its release", "a window that makes the same call", 1.2),),
        ratios(press_instructions, PANEL, KEY, 200, 3)),
    Row("operation", (
        Line("instructions of an operation", "the bare call", 12, unit="more"),),
        more_instructions),
    Row("period", (
        Line("joystick held for 60 s: reports within 100 ± 5 ms", "all", 99.9, LOWEST, "%"),),
        shares([60])),
    Row("short-holds", (
        Line("joystick held for 1.15 s, 30 times: the same", "all", 99, LOWEST, "%"),),
        shares([1.15] * 30)),
    Row("processor", (
        Line("processor time, joystick held", "a window that draws nothing", 1.6),),
        ratios(processor_time, PANEL, POINTER, 5, 5)),
    Row("drag", (
        Line("slider dragged: pointer move to request", "the slider alone", 1.3),),
        ratios(drag_latency, PANEL, SLIDER, 1000, 5)),
    Row("throughput", (
        Line("slider dragged: requests that get through to a virtual camera", "the slider alone",
             0.97, LOWEST),),
        ratios(drag_throughput, PANEL, SLIDER, 4, 5)),
    Row("switch", (
        Line("camera switch: close, open, 32 reads", "the bare calls", 1.05),),
        switches),
    Row("rest", (
        Line("wake-ups in 60 s at rest, no camera", "none", 0, unit=""),
        Line("wake-ups in 60 s at rest, one camera open", "none", 0, unit="")),
        wakes),
    Row("request", (
        Line("virtual camera with a log: a control request", "a device that does nothing", 1.05),),
        ratios(request_time, [*CAMERA_WITH_LOG, REQUESTS],
               ["do_nothing_device", REQUESTS], 2000, 9)),
    Row("movements", (
        Line("10,000 slider movements: lost or out of order", "one request for each", 0,
             unit=""),),
        lost),
    Row("frame", (
        Line("a frame of the camera's picture, panning", "the time of a frame at 30 a second", 1),
        Line("the same, every control off its default", "the same", 1)),
        frames),
)
