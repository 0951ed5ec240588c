#!/usr/bin/python3
# Copyright (c) 2026 The PTZ panel developers
# SPDX-License-Identifier: MIT

"""Writes docs/fault-drills.md from what prove.py left in a folder:

    fault_drills_page.py FOLDER > docs/fault-drills.md"""

import ast
import json
import sys
from pathlib import Path

HERE = Path(__file__).resolve().parent
sys.path.insert(0, str(HERE.parent))

# pylint: disable=wrong-import-position
from drill import MOST_KIBIBYTES
from protections import COMMON, DEFECTS, PROTECTIONS

VARIANTS = [*PROTECTIONS, *DEFECTS]

HEAD = """# Fault drills

What the panel does on a bad day. Each row is one fault at one moment, tried on the built program
with virtual cameras, an X server of its own and injected mouse and keys. Besides what the row says,
each checks that the panel ended only where it should, that nothing at a camera was left moving that
could be stopped, and that nothing was asked of libuvc for a camera that is not open. Where the panel
lives on, it holds no more open files and threads than when it came up, and at most {most} MiB more
memory: the toolkit keeps pictures; the rows about memory look closer (and note no calls). Freed
memory is filled with a pattern, so that its use shows.

**{survived} of {rows} rows survived, twice: {faults} faults, seed {seed}.**

    ctest --test-dir <build> -L drills                     runs them
    PTZ_DRILL_SEED=7 ctest --test-dir <build> -L drills    with other random moments
    tests/end_to_end/drills/prove.py <folder>              sees them fail (below)

This page is written by `tests/end_to_end/drills/fault_drills_page.py` from a run of `prove.py`.
"Fails with" names what the row was seen failing with: variants of the program that have a
protection taken out or a defect put in, listed at the end. Each variant is tried on the files that
have to do with it. In *italics* stand those with which nearly every row fails that drives a camera at
its end: unless the row is about just that, they show no more. The panel as it is runs before all of them
and again after them, as busy a machine and as short a patience given as they.
"""


def read(folder):
    """What became of each row, by file, fault and moment."""
    rows = {}
    for path in sorted(Path(folder).glob("*.jsonl")):
        for line in path.read_text().splitlines():
            row = json.loads(line)
            key = row["file"], row["fault"], row["moment"]
            if key in rows:
                row["passed"] = row["passed"] and rows[key]["passed"]
            rows[key] = row
    return rows


def table(header, rows):
    lines = [header, ["---"] * len(header), *rows]
    return "\n".join("| " + " | ".join(line) + " |" for line in lines) + "\n"


def about(name):
    text = ast.get_docstring(ast.parse((HERE / f"{name}.py").read_text()))
    return " ".join(text.split())


def fails(row):
    """A row whose desktop or panel could not even be started says nothing."""
    return not row["passed"] and row.get("failed in", "call") == "call"


def failures(rows):
    """How many of the rows failed."""
    if not rows:
        return "not tried yet"
    return f"{sum(map(fails, rows.values()))} of {len(rows)}"


def page(folder):
    whole, again = read(folder / "whole"), read(folder / "again")
    for key, row in whole.items():
        row["passed"] = row["passed"] and again[key]["passed"]
    tried = {variant.name: read(folder / variant.name) for variant in VARIANTS}

    def failing_with(key):
        return [f"*{name}*" if name in COMMON else name
                for name, rows in tried.items() if key in rows and fails(rows[key])]

    yield HEAD.format(survived=sum(row["passed"] for row in whole.values()), rows=len(whole),
                      faults=len({row["fault"] for row in whole.values()}), most=MOST_KIBIBYTES // 1024,
                      seed=next(iter(whole.values()))["seed"])
    for name in dict.fromkeys(row["file"] for row in whole.values()):
        yield f"## {about(name)}\n"
        yield table(["fault", "when", "what happens", "survived", "fails with"], [
            [row["fault"], row["moment"], row["outcome"], "yes" if row["passed"] else "**no**",
             ", ".join(failing_with(key)) or "**nothing yet**"]
            for key, row in whole.items() if row["file"] == name])
    for title, variants in (("Protections taken out", PROTECTIONS), ("Defects put in", DEFECTS)):
        yield f"## {title}\n"
        yield table(["variant", "what it is", "rows that fail"], [
            [variant.name, variant.meaning, failures(tried[variant.name])]
            for variant in variants])


if __name__ == "__main__":
    if len(sys.argv) != 2:
        raise SystemExit(__doc__)
    print("\n".join(page(Path(sys.argv[1]) / "outcomes")), end="")
