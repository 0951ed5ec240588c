#!/usr/bin/python3
# Copyright (c) 2026 The PTZ panel developers
# SPDX-License-Identifier: MIT

"""Writes the figures of docs/reliability.md from what the last runs left: figures.py [BUILD]

BUILD (default: build/release) has the fault drills, the tour and the soak; the mutants are looked for
in build/mutants and coverage in build/coverage. What was not run is said to be not measured."""

import json
import re
import sys
import time
from pathlib import Path

ROOT = Path(__file__).resolve().parent.parent
PAGE = ROOT / "docs" / "reliability.md"
NOT_MEASURED = "not measured"


def drill_outcomes(folder):
    return [line.strip("| ").split(" | ")[-1] for path in sorted(folder.glob("*.md"))
            for line in path.read_text(encoding="utf-8").splitlines()[2:]]


def drills(build):
    found = drill_outcomes(build / "fault-drills")
    return f"{found.count('passed')} of {len(found)} rows passed" if found else NOT_MEASURED


def mutants(folder):
    found = {path.name: "failed" in drill_outcomes(path)
             for path in (folder / "outcomes").glob("*") if path.name not in ("whole", "again")}
    return f"{sum(found.values())} of {len(found)} found" if found else NOT_MEASURED


def soak(file):
    if not file.exists():
        return NOT_MEASURED
    lives = json.loads(file.read_text())

    def total(name):
        return f"{sum(life[name] for life in lives):,}"
    return (f"{total('minutes')} minutes, {total('operations')} operations, {total('requests')} requests; "
            f"{total('motions started and stopped')} motions, each stopped, the longest after "
            f"{max(life['longest motion in seconds'] for life in lives)} s; memory grew by "
            f"{max(life['growth']['KiB'] for life in lives):,.0f} KiB, "
            f"{min(life['growth']['KiB allowed'] for life in lives):,} allowed")


def text_of(file):
    return file.read_text(encoding="utf-8").strip() if file.exists() else NOT_MEASURED


def coverage(file):
    row = re.search(r"\| \*\*all\*\* \| (.*?) \| (.*?) \|", text_of(file))
    return f"{row[1]} lines, {row[2]} branches" if row else NOT_MEASURED


def main():
    build = Path(sys.argv[1]) if len(sys.argv) > 1 else ROOT / "build" / "release"
    rows = [
        ("[Fault drills](fault-drills.md)", drills(build)),
        ("[Mutants](fault-drills.md#mutants)", mutants(ROOT / "build" / "mutants")),
        ("Tour", text_of(build / "tour" / "summary.txt")),
        ("Soak", soak(build / "soak.json")),
        ("[Coverage](coverage.md) of `device/`, `console/`, `desktop/`, `widgets/`",
         coverage(ROOT / "build" / "coverage" / "coverage.txt")),
    ]
    table = "\n".join([f"Measured on {time.strftime('%-d %B %Y')}:", "", "| what | figures |", "|---|---|",
                       *(f"| {what} | {figures} |" for what, figures in rows)])
    page = PAGE.read_text(encoding="utf-8")
    marked = re.compile(r"(<!-- figures.py -->\n).*?(<!-- end -->)", re.DOTALL)
    assert marked.search(page), f"{PAGE} has no place for the figures"
    PAGE.write_text(marked.sub(lambda place: f"{place[1]}\n{table}\n\n{place[2]}", page), encoding="utf-8")


if __name__ == "__main__":
    main()
