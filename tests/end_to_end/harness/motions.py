# Copyright (c) 2026 The PTZ panel developers
# SPDX-License-Identifier: MIT

"""What moves the cameras, and what stops them."""

from .cameras import as_request
from .requests import vendor

_DIRECTIONS = {"pantilt_relative": (0, 2), "zoom_relative": (0,), "focus_relative": (0,)}


def is_motion(line):
    """Whether the camera took this line of its log for a start or a stop."""
    return line.what == "SET_CUR" and line.result == "ok" and line.control in _DIRECTIONS


def is_start(line):
    return is_motion(line) and any(line.values[place] for place in _DIRECTIONS[line.control])


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
        """Reads on in the log's lines, and returns what moves, as camera and control."""
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
        if as_request(line) == vendor(6, line.camera):
            # The automatic takes the lens over.
            self._moving.pop((line.camera, "focus_relative"), None)
        # What was on its way when the cable was pulled may be noted after that.
        if not is_motion(line) or line.camera in self._unplugged:
            return
        axis = (line.camera, line.control)
        if is_start(line):
            self.started += axis not in self._moving
            self._moving.setdefault(axis, line.time)
        elif axis in self._moving:
            self.longest = max(self.longest, line.time - self._moving.pop(axis))
