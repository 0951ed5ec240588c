#!/usr/bin/python3
# Copyright (c) 2026 The PTZ panel developers
# SPDX-License-Identifier: MIT

"""Adds up what the compiler counted: coverage_report.py BUILD-FOLDER TRACEFILE

Prints the figures of device/, console/, desktop/ and widgets/, each line that no test reached and each of
which a branch was not taken, as Markdown. Writes the counts for gcovr, which
makes pages of them.

gcovr could read the counts itself, but from gcov's text, which does not say which branches of code
that one program never ran are taken by exceptions only, and has no branches of templates. So the
counts are read here from what gcov says to machines.
"""

import json
import re
import subprocess
import sys
from collections import defaultdict
from pathlib import Path

ROOT = Path(__file__).resolve().parent.parent
FOLDERS = ("console", "desktop", "device", "widgets")

# Branches that are no decision of ours, on lines that have none: whether "new" got memory, and
# whether a pointer to a member points to a virtual one.
NO_DECISION = re.compile(r"^(?!.*(\?|\bif\b|\bwhile\b|\bfor\b|&&|\|\|)).*(\bnew [A-Z]|->\*|\bdelete )")


def gcov(counts):
    """What gcov says of one object's counts, file by file."""
    result = subprocess.run(["gcov", "--json-format", "--stdout", "--branch-probabilities", counts],
                            capture_output=True, text=True, check=True, cwd=counts.parent)
    for line in result.stdout.splitlines():
        yield from json.loads(line)["files"]


class File:
    """One source file, with the counts of its lines and branches added up over all programs."""

    def __init__(self, path):
        self.name = str(path.relative_to(ROOT))
        self.folder = path.relative_to(ROOT).parts[0]
        self.text = path.read_text(encoding="utf-8").splitlines()
        self.counts = defaultdict(int)
        # Instances of a template, and copies of inline functions in several programs, are one.
        # What tells them from other code on the line is how many branches they have.
        self.ways = defaultdict(lambda: defaultdict(int))

    def add(self, line):
        number = line["line_number"]
        self.counts[number] += line["count"]
        branches = [branch["count"] for branch in line["branches"] if not branch["throw"]]
        if len(branches) < 2 or NO_DECISION.match(self.text[number - 1]):
            return
        for place, count in enumerate(branches):
            self.ways[number][len(branches), place] += count

    def branches(self, number):
        return list(self.ways[number].values()) if number in self.ways else []

    def gaps(self):
        for number, count in sorted(self.counts.items()):
            missed = [way for way in self.branches(number) if not way]
            if not count:
                yield number, "not run"
            elif missed:
                yield number, f"{len(missed)} of {len(self.branches(number))} branches not taken"

    def for_gcovr(self):
        lines = [{"line_number": number, "count": count, "gcovr/noncode": False,
                  "gcovr/excluded": False, "branches": [{"count": way, "fallthrough": False, "throw": False}
                               for way in self.branches(number)]}
                 for number, count in sorted(self.counts.items())]
        return {"file": self.name, "lines": lines, "functions": []}


def read(build):
    """The files of these folders."""
    files = {}
    for counts in sorted(Path(build).resolve().rglob("*.gcda")):
        for entry in gcov(counts):
            path = (Path(build) / entry["file"]).resolve()
            if not any(path.is_relative_to(ROOT / folder) for folder in FOLDERS) or not entry["lines"]:
                continue
            file = files.setdefault(path, File(path))
            for line in entry["lines"]:
                file.add(line)
    return sorted(files.values(), key=lambda file: file.name)


def share(counts):
    counts = list(counts)
    if not counts:
        return "none"
    reached = sum(count > 0 for count in counts)
    return f"{reached} of {len(counts)} ({100 * reached / len(counts):.1f} %)"


def row(name, files):
    lines = [count for file in files for count in file.counts.values()]
    branches = [way for file in files for number in file.ways for way in file.branches(number)]
    print(f"| {name} | {share(lines)} | {share(branches)} |")


def main():
    build, tracefile = sys.argv[1:]
    files = read(build)
    Path(tracefile).write_text(json.dumps(
        {"gcovr/format_version": "0.3", "files": [file.for_gcovr() for file in files]}))

    print("| | lines | branches |\n|---|---|---|")
    for folder in FOLDERS:
        inside = [file for file in files if file.folder == folder]
        row(f"**{folder}/**", inside)
        for file in inside:
            row(f"`{file.name}`", [file])
    row("**all**", files)

    print("\nNot reached:\n")
    gaps = [(file, *gap) for file in files for gap in file.gaps()]
    for file, number, what in gaps:
        print(f"- `{file.name}:{number}`, {what}: `{file.text[number - 1].strip()}`")
    if not gaps:
        print("- nothing")


main()
