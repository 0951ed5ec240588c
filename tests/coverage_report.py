#!/usr/bin/python3
# Copyright (c) 2026 The PTZ panel developers
# SPDX-License-Identifier: MIT

"""Says in words what gcovr counted: coverage_report.py COVERAGE.json

First the figures of each folder and file, then every line that no test reached, and every line of
which a branch was not taken. The text has the form that docs/coverage.md has.
"""

import json
import sys
from collections import defaultdict
from pathlib import Path


class Count:
    """How many of how many were reached."""

    def __init__(self):
        self.reached = 0
        self.all = 0

    def add(self, reached):
        self.all += 1
        self.reached += bool(reached)

    def include(self, other):
        self.all += other.all
        self.reached += other.reached

    def __str__(self):
        if not self.all:
            return "none"
        return f"{self.reached} of {self.all} ({100 * self.reached / self.all:.1f} %)"


class File:
    """One source file: its counts, and what was not reached, with the text of the line."""

    def __init__(self, entry):
        self.name = entry["file"]
        self.folder = self.name.split("/")[0]
        self.lines = Count()
        self.branches = Count()
        self.gaps = []
        text = Path(self.name).read_text(encoding="utf-8").splitlines()
        for line in entry["lines"]:
            if line.get("gcovr/noncode") or line.get("gcovr/excluded"):
                continue
            number = line["line_number"]
            self.lines.add(line["count"])
            taken = [branch["count"] > 0 for branch in line["branches"]]
            for one in taken:
                self.branches.add(one)
            missed = "the line" if not line["count"] else f"{taken.count(False)} of {len(taken)} branches"
            if not line["count"] or not all(taken):
                self.gaps.append((number, missed, text[number - 1].strip()))


def row(name, lines, branches):
    print(f"| {name} | {lines} | {branches} |")


def main():
    with open(sys.argv[1], encoding="utf-8") as report:
        files = [File(entry) for entry in json.load(report)["files"]]
    files = sorted((file for file in files if file.lines.all), key=lambda file: file.name)
    folders = defaultdict(lambda: (Count(), Count()))
    for file in files:
        for name in (file.folder, "all"):
            folders[name][0].include(file.lines)
            folders[name][1].include(file.branches)

    row("", "lines", "branches")
    row("---", "---", "---")
    for folder in sorted({file.folder for file in files}):
        row(f"**{folder}/**", *folders[folder])
        for file in files:
            if file.folder == folder:
                row(f"`{file.name}`", file.lines, file.branches)
    row("**all**", *folders["all"])

    print("\nNot reached:\n")
    for file in files:
        for number, missed, text in file.gaps:
            print(f"- `{file.name}:{number}`: {missed}: `{text}`")
    if not any(file.gaps for file in files):
        print("- nothing")


main()
