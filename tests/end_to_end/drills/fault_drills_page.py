#!/usr/bin/python3
# Copyright (c) 2026 The PTZ panel developers
# SPDX-License-Identifier: MIT

"""Writes docs/fault-drills.md from what prove.py left in a folder:

    fault_drills_page.py FOLDER > docs/fault-drills.md"""

import ast
import json
import sys
from pathlib import Path

from protections import COMMON, DEFECTS, PROTECTIONS

HERE = Path(__file__).resolve().parent
VARIANTS = [*PROTECTIONS, *DEFECTS]

HEAD = """# Fault drills

What the panel does on a bad day. Each row is one fault at one moment, tried on the built program
with virtual cameras, an X server of its own and injected mouse and keys. Besides what the row says,
each checks that the panel ended only where it should, that at the end nothing moves at any camera,
that nothing was asked of libuvc for a camera that is not open, and that the panel holds no more open
files and threads and hardly more memory than when it came up. Freed memory is filled with a pattern,
so that its use ends the panel.

**{survived} of {rows} rows survived, twice: {faults} faults, seed {seed}.**

    ctest --test-dir <build> -L drills                     runs them
    PTZ_DRILL_SEED=7 ctest --test-dir <build> -L drills    with other random moments
    tests/end_to_end/drills/prove.py <folder>              sees them fail (below)

This page is written by `tests/end_to_end/drills/fault_drills_page.py` from a run of `prove.py`.
"Fails with" names what the row was seen failing with: variants of the program that have a
protection taken out or a defect put in, listed at the end. Each variant is tried on the files that
have to do with it. In *italics* stand those with which every row fails that drives a camera at its
end: unless the row is about just that, they show no more. The panel as it is runs before all of them
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


def failures(rows):
    """How many of the rows failed."""
    if not rows:
        return "not tried yet"
    return f"{sum(not row['passed'] for row in rows.values())} of {len(rows)}"


def page(folder):
    whole, again = read(folder / "whole"), read(folder / "again")
    for key, row in whole.items():
        row["passed"] = row["passed"] and again[key]["passed"]
    tried = {variant.name: read(folder / variant.name) for variant in VARIANTS}

    def failing_with(key):
        return [f"*{name}*" if name in COMMON else name
                for name, rows in tried.items() if key in rows and not rows[key]["passed"]]

    yield HEAD.format(survived=sum(row["passed"] for row in whole.values()), rows=len(whole),
                      faults=len({row["fault"] for row in whole.values()}),
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
