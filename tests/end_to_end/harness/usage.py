# Copyright (c) 2026 The PTZ panel developers
# SPDX-License-Identifier: MIT

"""What a panel holds: memory, open files, threads."""

import contextlib
import os
import stat
import time
from collections import namedtuple

Usage = namedtuple("Usage", "kibibytes files threads")

_PAINTING_THREAD = "Thread (pooled)"
"""The toolkit starts some when there is much to paint, each with a file, and ends them later."""


def usage(process_id):
    """What the process holds now."""
    folder = f"/proc/{process_id}"
    with open(f"{folder}/smaps_rollup", encoding="ascii") as sums:
        # A library's file that is in memory counts as private, all at once, when the last other
        # program that uses it ends. So only what is in no file counts.
        size = next(int(line.split()[1]) for line in sums if line.startswith("Anonymous:"))
    threads = _each(f"{folder}/task", lambda path: _text(f"{path}/comm"))
    painting = threads.count(_PAINTING_THREAD)
    # The library that emulates the bus has sockets of its own, and opens more for devices that are
    # gone. What the panel may lose has other files: a camera its device, a libusb context its pipes.
    files = _each(f"{folder}/fd", lambda path: stat.S_ISSOCK(os.stat(path).st_mode)).count(False)
    return Usage(size, files - painting, len(threads) - painting)


def lasting_usage(process_id):
    """What the process holds for longer than a moment: some threads live for less than 50 ms."""
    looks = []
    for _ in range(3):
        looks.append(usage(process_id))
        time.sleep(0.06)
    return Usage(*map(min, zip(*looks)))


def _each(folder, look):
    found = []
    for name in os.listdir(folder):
        # It may just have ended.
        with contextlib.suppress(OSError):
            found.append(look(f"{folder}/{name}"))
    return found


def _text(path):
    with open(path, encoding="ascii") as file:
        return file.read().strip()
