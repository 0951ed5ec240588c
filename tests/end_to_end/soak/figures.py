# Copyright (c) 2026 The PTZ panel developers
# SPDX-License-Identifier: MIT

"""What is measured of a panel that runs for a long time, and what of it may grow."""

import os
import statistics
from collections import namedtuple

Sample = namedtuple("Sample", "operations kibibytes handles threads notices switches minimises")
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
    folder = f"/proc/{process_id}"
    # Anonymous memory only: how much of the libraries' files is in memory is not for the panel to
    # say.
    with open(f"{folder}/smaps_rollup", encoding="ascii") as sums:
        kibibytes = next(int(line.split()[1]) for line in sums if line.startswith("Anonymous:"))
    return Sample(operations, kibibytes, len(os.listdir(f"{folder}/fd")),
                  len(os.listdir(f"{folder}/task")), *kept)


def _part(samples, first, last):
    """The samples of a part of the run: the typical memory, the most handles and threads."""
    part = samples[int(len(samples) * first):max(int(len(samples) * last), 1)]
    columns = Sample(*zip(*part))
    return Sample(*(statistics.median(column) for column in columns))._replace(
        handles=max(columns.handles), threads=max(columns.threads))


def growth(samples):
    """What the end of the run holds more than the time after its first third, in which the
    toolkit's caches fill, and how much of that the panel keeps on purpose."""
    before, after = _part(samples, 0.33, 0.5), _part(samples, 0.83, 1)
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
    if difference.handles > 0:
        found.append(f"{difference.handles:.0f} more open files at the end than at the beginning")
    if difference.threads > 0:
        found.append(f"{difference.threads:.0f} more threads at the end than at the beginning")
    return found


_DIRECTIONS = {"pantilt_relative": (0, 2), "zoom_relative": (0,), "focus_relative": (0,)}


class Motions:
    """Follows the camera log and knows what was told to move and not yet told to stop."""

    def __init__(self):
        self.started = 0
        self.longest = 0.0
        """In seconds. A stop that was lost shows in this, also when a later one made up for it."""
        self._unplugged = set()
        self._moving = {}
        """Camera and control, with the time of the start."""
        self._read = 0

    def follow(self, lines):
        """Reads on, and returns what should be standing still by now and is not."""
        for line in lines[self._read:]:
            self._note(line)
        self._read = len(lines)
        return sorted(self._moving)

    def _note(self, line):
        if line.what == "UNPLUG":
            # Without power nothing moves.
            self._unplugged.add(line.camera)
            self._moving = {axis: start for axis, start in self._moving.items()
                            if axis[0] != line.camera}
        if line.what == "REPLUG":
            self._unplugged.discard(line.camera)
        if line.what != "SET_CUR" or line.result != "ok" or line.control not in _DIRECTIONS:
            return
        # What was on its way when the cable was pulled may be noted after that.
        if line.camera in self._unplugged:
            return
        axis = (line.camera, line.control)
        data = bytes.fromhex(line.data)
        if any(data[place] for place in _DIRECTIONS[line.control]):
            self.started += axis not in self._moving
            self._moving.setdefault(axis, line.time)
        elif axis in self._moving:
            self.longest = max(self.longest, line.time - self._moving.pop(axis))
