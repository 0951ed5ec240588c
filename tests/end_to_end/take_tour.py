#!/usr/bin/python3
# Copyright (c) 2026 The PTZ panel developers
# SPDX-License-Identifier: MIT

"""Takes a tour of the built panel: every button, key, slider and direction of the joystick, with
virtual cameras, on a desktop of its own. Writes a report with a picture of each step and what the
cameras received; with --view also what they saw, and a drive in moving pictures. The exit code is 0
when they received in each step what they should, 1 when they did not, 2 when the command is wrong.
"""

import argparse
import os
import sys
import time
from pathlib import Path

from tour import drive, report, view
from tour.guide import Guide
from tour.steps import CHAPTERS


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--bin", required=True, type=Path, metavar="DIR",
                        help="where ptz-panel and virtual-camera are")
    parser.add_argument("--report", required=True, type=Path, metavar="DIR",
                        help="where to write the report")
    parser.add_argument("--view", action="store_true",
                        help="show what the camera sees in each step, and record a drive")
    options = parser.parse_args()
    for name in ("ptz-panel", "virtual-camera", *(["virtual-camera-view"] if options.view else [])):
        if not (options.bin / name).is_file():
            parser.error(f"there is no {name} in {options.bin}")
    os.environ["PTZ_BIN_DIR"] = str(options.bin.resolve())

    begin = time.monotonic()
    chapters, left_out = take_all(view.see if options.view else None)
    summary = report.Summary(sum(len(steps) for _, steps in CHAPTERS), time.monotonic() - begin,
                             chapters, left_out)
    if sys.stdout.isatty():
        print("\r\033[K", end="")
    report.write(options.report, summary)
    print(summary.text)
    if options.view and summary.passed:
        drive.record(options.report / "drive.webp")
        print(f"The drive is {(options.report / 'drive.webp').resolve()}")
    print(f"The report of the tour is {(options.report / 'report.html').resolve()}")
    return 0 if summary.passed else 1


def take_all(see):
    """Takes the steps up to the first that fails, chapter by chapter. Returns them, and the controls
    that they should not have left out."""
    number = 0
    chapters = []
    with Guide(see) as guide:
        for title, steps in CHAPTERS:
            chapters.append((title, []))
            for step in steps:
                number += 1
                taken = guide.take(number, step)
                chapters[-1][1].append(taken)
                tell(title, taken)
                if taken.failure:
                    return chapters, []
        return chapters, guide.left_out()


def tell(chapter, taken):
    """On a terminal, says how far the tour has come."""
    if taken.failure:
        print(f"step {taken.number} failed: {chapter}, {taken.title}: {taken.failure}",
              file=sys.stderr, flush=True)
    elif sys.stdout.isatty():
        print(f"\r\033[K{taken.number} {chapter}: {taken.title}", end="", flush=True)


if __name__ == "__main__":
    sys.exit(main())
