#!/usr/bin/python3
# Copyright (c) 2026 The PTZ panel developers
# SPDX-License-Identifier: MIT

"""Runs the benches and writes the page. ./bench.sh builds what is needed and calls this."""

import argparse
import json
import sys
from pathlib import Path

HERE = Path(__file__).resolve().parent
ROOT = HERE.parent
sys.path[:0] = [str(HERE), str(ROOT / "tests/end_to_end")]

import report  # noqa: E402
from rows import ROWS  # noqa: E402

PAGE = ROOT / "docs/benchmarks.md"
PLOT = ROOT / "docs/benchmarks.svg"
BEGIN, END = "<!-- measured: begin -->", "<!-- measured: end -->"


def write_page(results):
    """Puts the table between the marks of the page; the words around it are written by hand."""
    before, _, rest = PAGE.read_text(encoding="utf-8").partition(BEGIN)
    after = rest.partition(END)[2]
    table = "\n".join(report.table(results))
    PAGE.write_text(f"{before}{BEGIN}\n{table}\n{END}{after}", encoding="utf-8")
    PLOT.write_text("\n".join(report.plot(results)) + "\n", encoding="utf-8")


def main():
    parser = argparse.ArgumentParser(prog="./bench.sh", description=__doc__.splitlines()[0])
    parser.add_argument("rows", nargs="*", metavar="ROW", help="only these: " + ", ".join(
        row.name for row in ROWS) + "; the others keep the results of their last run")
    parser.add_argument("--once", action="store_true",
                        help="run everything as shortly as it goes and write nothing")
    parser.add_argument("--results", type=Path, default=ROOT / "build/bench.json")
    options = parser.parse_args()
    unknown = set(options.rows) - {row.name for row in ROWS}
    if unknown:
        parser.error(f"no such row: {', '.join(sorted(unknown))}")

    results = {}
    if options.results.exists() and not options.once:
        results = json.loads(options.results.read_text())
    for row in ROWS:
        if options.rows and row.name not in options.rows:
            continue
        samples = row.samples(not options.once)
        assert len(samples) == len(row.lines) and all(samples), row.name
        print(f"{row.name}: {'; '.join(report.summary(s) for s in samples)}", flush=True)
        if not options.once:
            results[row.name] = samples
            options.results.write_text(json.dumps(results, indent=1))
            write_page(results)


if __name__ == "__main__":
    main()
