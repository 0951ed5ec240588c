# Copyright (c) 2026 The PTZ panel developers
# SPDX-License-Identifier: MIT

"""The page with the results: a table, and a plot of the ratios."""

import math
import statistics

from rows import HIGHEST, ROWS

WIDTH, LEFT, RIGHT, STEP, TOP = 900, 470, 30, 26, 34
LEAST, MOST = 0.1, 4.0


def lines(results):
    """Each line that was measured, with its samples."""
    for row in ROWS:
        for number, line in enumerate(row.lines):
            if row.name in results:
                yield line, results[row.name][number]


def is_met(line, samples):
    value = statistics.median(samples)
    return value <= line.target if line.bound == HIGHEST else value >= line.target


def _text(value, unit):
    digits = {"×": 2, "%": 1}.get(unit, 0)
    return f"{value:.{digits}f} {unit}".strip()


def table(results):
    yield "| what | against | median | spread | must be | |"
    yield "|---|---|---|---|---|---|"
    for line, samples in lines(results):
        low, high = spread(samples)
        there = f"{_text(low, '×')[:-2]} to {_text(high, '×')[:-2]}" if len(samples) > 1 else ""
        yield (f"| {line.what} | {line.against} | {_text(statistics.median(samples), line.unit)} | "
               f"{there} | {line.bound} {_text(line.target, line.unit)} | "
               f"{'' if is_met(line, samples) else 'missed'} |")


def spread(samples):
    """The middle half of the samples."""
    if len(samples) < 2:
        return samples[0], samples[0]
    quarters = statistics.quantiles(samples, n=4, method="inclusive")
    return quarters[0], quarters[2]


def _x(ratio):
    part = math.log(min(max(ratio, LEAST), MOST) / LEAST) / math.log(MOST / LEAST)
    return round(LEFT + part * (WIDTH - LEFT - RIGHT), 1)


def plot(results):
    """An SVG picture: a dot for the median, a bar for the spread, a tick for the target."""
    ratios = [(line, samples) for line, samples in lines(results) if line.unit == "×"]
    height = TOP + STEP * len(ratios) + 10
    yield (f'<svg xmlns="http://www.w3.org/2000/svg" width="{WIDTH}" height="{height}" '
           f'font-family="sans-serif" font-size="12">')
    yield '<rect width="100%" height="100%" fill="white"/>'
    for mark in (0.1, 0.2, 0.5, 1, 2, 4):
        stroke = "#888" if mark == 1 else "#ddd"
        yield f'<path d="M{_x(mark)} {TOP - 10}V{height - 6}" stroke="{stroke}"/>'
        yield f'<text x="{_x(mark)}" y="{TOP - 16}" text-anchor="middle">{mark:g} ×</text>'
    for number, (line, samples) in enumerate(ratios):
        y = TOP + STEP * number + STEP / 2
        low, high = spread(samples)
        colour = "#2a7d2a" if is_met(line, samples) else "#c0392b"
        name = line.what if line.against == "the same" else f"{line.what} / {line.against}"
        yield (f'<text x="{LEFT - 12}" y="{y + 4}" text-anchor="end" textLength="{LEFT - 20}" '
               f'lengthAdjust="spacingAndGlyphs">{name}</text>' if len(name) > 75 else
               f'<text x="{LEFT - 12}" y="{y + 4}" text-anchor="end">{name}</text>')
        yield f'<path d="M{_x(line.target)} {y - 9}v18" stroke="black" stroke-width="2"/>'
        yield f'<path d="M{_x(low)} {y}H{_x(high)}" stroke="{colour}" stroke-width="4"/>'
        yield f'<circle cx="{_x(statistics.median(samples))}" cy="{y}" r="5" fill="{colour}"/>'
    yield "</svg>"


def summary(samples):
    low, high = spread(samples)
    return f"{statistics.median(samples):.4g} ({low:.4g} to {high:.4g})"
