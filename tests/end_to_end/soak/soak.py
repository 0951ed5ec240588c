#!/usr/bin/python3
# Copyright (c) 2026 The PTZ panel developers
# SPDX-License-Identifier: MIT

"""Operates the panel at random for a long time, as fast as it can be done, with cameras coming and
going. The same seed does the same things.

At every rest each motion that was started must have been stopped. At the end the panel must hold no
more memory, open files or threads than at the beginning, but for what it keeps on purpose."""

import argparse
import collections
import json
import os
import random
import sys
import time
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parents[1]))

from figures import complaints, growth, measure  # noqa: E402
from harness.desktop import Desktop  # noqa: E402
from harness.motions import Motions  # noqa: E402
from harness.panel import Panel  # noqa: E402
from harness.waiting import wait_for  # noqa: E402
from random_operator import CAMERAS, Operator  # noqa: E402

OPERATIONS_BETWEEN_RESTS = 100

# The toolkit's picture cache is full after 2,300 or so, however long they take; memory can be judged
# from then on.
LEAST_OPERATIONS = 5000


class Failure(Exception):
    """Something that must not happen did."""


def rest(operator, panel, motions):
    """Waits until everything is done, and fails if something still moves."""
    operator.settle()
    try:
        # The last request may be on its way.
        wait_for(lambda: not motions.follow(panel.log.lines()), "every motion to stop", 10)
    except AssertionError:
        raise Failure(f"still moving: {motions.follow(panel.log.lines())}") from None


def operate(panel, seed, seconds):
    """The samples, how often what was done, the motions, and how often a cable was pulled while its
    camera was driven."""
    operator = Operator(panel, random.Random(seed))
    motions = Motions()
    done = collections.Counter()
    latest = collections.deque(maxlen=10)
    samples = []
    end = time.monotonic() + seconds
    while time.monotonic() < end or done.total() < LEAST_OPERATIONS:
        try:
            for _ in range(OPERATIONS_BETWEEN_RESTS):
                latest.append(operator.choose())
                latest[-1]()
                done[latest[-1].__name__] += 1
            rest(operator, panel, motions)
        except AssertionError as reason:
            if folder := os.environ.get("PTZ_SCREENSHOTS"):
                Path(folder).mkdir(parents=True, exist_ok=True)
                panel.desktop.screenshot().save(Path(folder) / f"soak-{seed}.png")
            raise Failure(f"{reason}, after {[step.__name__ for step in latest]}") from reason
        samples.append(measure(panel.process_id, done.total(), operator.kept.values()))
    return samples, done, motions, operator.pulled_while_driven


def live(seed, seconds):
    """One panel from its start to its end: what was measured, and what must not be."""
    with Desktop() as desktop, Panel(desktop, CAMERAS) as panel:
        panel.opened()
        began = time.monotonic()
        try:
            samples, done, motions, pulled = operate(panel, seed, seconds)
        except Exception as reason:
            if not panel.is_running():
                raise Failure(f"the panel ended with {panel.ended()}: {panel.output()}") from reason
            raise
        requests = len(panel.log.requests())
    difference, allowed = growth(samples)
    return {
        "seed": seed,
        "minutes": round((time.monotonic() - began) / 60, 2),
        "operations": done.total(),
        "requests": requests,
        "motions started and stopped": motions.started,
        "longest motion in seconds": round(motions.longest, 2),
        "cables pulled while driving": pulled,
        "kept on purpose": dict(zip(("notices", "switches", "minimises"), samples[-1][4:])),
        "growth": {"KiB": difference.kibibytes, "KiB allowed": round(allowed),
                   "open files": difference.files, "threads": difference.threads},
        "done": dict(done.most_common()),
        "samples": samples,
    }, complaints(samples, motions)


def seconds_of_each_life(minutes):
    """A panel sees a camera that was pulled out again only after a new start, so there are several
    lives; they are long, so that what grows slowly shows."""
    lives = min(max(round(minutes / 5), 1), 3)
    return [minutes * 60 / lives] * lives


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--minutes", type=float, default=10)
    parser.add_argument("--seed", type=int, default=1)
    parser.add_argument("--report", type=Path, help="write the figures to this file, as JSON")
    arguments = parser.parse_args()
    lives, found = [], []
    for seed, seconds in enumerate(seconds_of_each_life(arguments.minutes), arguments.seed):
        try:
            figures, wrong = live(seed, seconds)
        except Failure as failure:
            print(f"soak, seed {seed}: {failure}", file=sys.stderr)
            return 1
        print(json.dumps({name: figures[name] for name in figures if name != "samples"}, indent=2))
        lives.append(figures)
        found += [f"soak, seed {seed}: {complaint}" for complaint in wrong]
    if arguments.report:
        arguments.report.write_text(json.dumps(lives, indent=1))
    print(*found, sep="\n", file=sys.stderr)
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main())
