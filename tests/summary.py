#!/usr/bin/python3
# Copyright (c) 2026 The PTZ panel developers
# SPDX-License-Identifier: MIT

"""Sums up what CTest said: summary.py LISTING LOG...

LISTING is the output of "ctest -N"; each LOG that exists is a run. Names the tests that failed,
those that passed at the second try only, and those of the listing that no run ran. The exit code is
1 when a test failed or none ran."""

import re
import sys
from pathlib import Path

LISTED = re.compile(r" *Test +#\d+: (\S+)")
OUTCOME = re.compile(r".*Test +#\d+: (\S+) [ .]*(?:\*{3})?(Passed|Not Run|Skipped|\S+)")


def outcomes(log):
    """What became of each test, try by try."""
    tries = {}
    for line in log.read_text(errors="replace").splitlines():
        if (found := OUTCOME.match(line)) and found[2] not in ("Not Run", "Skipped"):
            tries.setdefault(found[1], []).append(found[2])
    return tries


def names(what, tests):
    return f"{what}: {', '.join(tests)}" if tests else f"{what}: none"


def main():
    listing, *logs = map(Path, sys.argv[1:])
    listed = [found[1] for line in listing.read_text().splitlines() if (found := LISTED.match(line))]
    ran, failed, retried = set(), [], []
    for log in filter(Path.exists, logs):
        tries = outcomes(log)
        ran.update(tries)
        wrong = [name for name in tries if tries[name][-1] != "Passed"]
        failed += [f"{name} ({log.stem})" for name in wrong]
        retried += [f"{name} ({log.stem})" for name in tries
                    if len(tries[name]) > 1 and name not in wrong]
        print(f"{log.stem}: {len(tries) - len(wrong)} of {len(tries)} tests passed")
    print(names("Failed", failed))
    print(names("Passed at the second try only", retried))
    print(names(f"Not run ({len(set(listed) - ran)} of {len(listed)})",
                [name for name in listed if name not in ran]))
    return 1 if failed or not ran else 0


if __name__ == "__main__":
    sys.exit(main())
