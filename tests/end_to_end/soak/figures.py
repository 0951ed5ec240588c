# Copyright (c) 2026 The PTZ panel developers
# SPDX-License-Identifier: MIT

"""What is measured of a panel that runs for a long time, and what of it may grow."""

import statistics
from collections import namedtuple

from harness.usage import lasting_usage

Sample = namedtuple("Sample", "operations kibibytes files threads notices switches minimises")
"""Taken while nothing is held and nothing is on the way. The last three count what the panel keeps
on purpose: each notice stays in memory after it was dismissed, each opening of a camera costs
libuvc a transfer that it never frees, each minimise connects the tray icon once more."""

# What one of each may cost, in KiB, a little above what was measured on Debian 12.
KIBIBYTES_PER_NOTICE = 340.0
KIBIBYTES_PER_SWITCH = 1.0
KIBIBYTES_PER_MINIMISE = 0.5

# Nothing is held for as long as a second. A busy machine may take its time.
MOST_SECONDS_OF_MOTION = 2.0

# The heap grows in steps.
SLACK_KIBIBYTES = 1024


def measure(process_id, operations, kept):
    return Sample(operations, *lasting_usage(process_id), *kept)


def _part(samples, first, last):
    """The samples of a part of the run: the typical memory, the most files and threads."""
    part = samples[int(len(samples) * first):max(int(len(samples) * last), 1)]
    columns = Sample(*zip(*part))
    return Sample(*(statistics.median(column) for column in columns))._replace(
        files=max(columns.files), threads=max(columns.threads))


def growth(samples):
    """What the end of the run holds more than the time after its first half, in which the
    toolkit's picture cache fills, and how much of that the panel keeps on purpose."""
    before, after = _part(samples, 0.6, 0.75), _part(samples, 0.9, 1)
    difference = Sample(*(late - early for early, late in zip(before, after)))
    allowed = (difference.notices * KIBIBYTES_PER_NOTICE
               + difference.switches * KIBIBYTES_PER_SWITCH
               + difference.minimises * KIBIBYTES_PER_MINIMISE + SLACK_KIBIBYTES)
    return difference, allowed


def complaints(samples, motions):
    """What grew that should not have, and what moved on."""
    difference, allowed = growth(samples)
    found = []
    if motions.longest > MOST_SECONDS_OF_MOTION:
        found.append(f"something moved for {motions.longest:.1f} s")
    if difference.kibibytes > allowed:
        found.append(f"memory grew by {difference.kibibytes:.0f} KiB, allowed are {allowed:.0f}")
    if difference.files > 0:
        found.append(f"{difference.files:.0f} more open files at the end than at the beginning")
    if difference.threads > 0:
        found.append(f"{difference.threads:.0f} more threads at the end than at the beginning")
    return found
