# Copyright (c) 2026 The PTZ panel developers
# SPDX-License-Identifier: MIT
"""The log of virtual-camera --log-json."""

import json
from dataclasses import dataclass, field
from pathlib import Path

from .waiting import PATIENCE, wait_until

VERSION = 1
"""Of the log that this module reads."""


@dataclass(frozen=True)
class Record:
    """What a device saw."""

    time: float
    """Seconds since the start."""
    device: int
    """Its number, from 1."""
    event: str
    """request, open, close, unplug or replug; lost for records that are missing."""
    request: str = None
    """SET_CUR, GET_CUR, ...; None for a code that the video class does not know."""
    control: str = None
    """None when the request is to none of the camera's controls."""
    values: dict = field(default_factory=dict)
    """The numbers that went over the wire, by name."""
    command: str = None
    """What the camera makes of a number written to roll, such as "recall preset 3"."""
    setup: bytes = b""
    data: bytes = b""
    result: str = None
    """ok, stall, short, gone or cancelled."""

    def __str__(self):
        words = [f"cam{self.device}", self.request, self.control, self.data.hex(" "), self.result]
        return " ".join(str(word) for word in words if word) if self.request else (
            f"cam{self.device} {self.event.upper()}")


def _read(line):
    members = json.loads(line)
    return Record(
        **{name: members[name] for name in ("request", "control", "values", "command", "result")
           if name in members},
        time=members.get("time", 0.0), device=members.get("device", 0), event=members["event"],
        setup=bytes.fromhex(members.get("setup", "")), data=bytes.fromhex(members.get("data", "")))


class Log:
    """The records of a log file, which may still be growing."""

    def __init__(self, path):
        self.path = Path(path)
        self._file = None
        self._unfinished = ""
        self._records = []

    def __enter__(self):
        return self

    def __exit__(self, *exception):
        self.close()

    def close(self):
        if self._file is not None:
            self._file.close()

    def records(self):
        """Everything up to now."""
        if self._file is None and self.path.exists():
            self._file = open(self.path, encoding="utf-8")
        if self._file is None or self._file.closed:
            return list(self._records)
        *lines, self._unfinished = (self._unfinished + self._file.read()).split("\n")
        for line in lines:
            if line.startswith('{"log":'):
                if json.loads(line)["log"] != VERSION:
                    raise ValueError(f"{self.path}: a log of another version: {line}")
            else:
                self._records.append(_read(line))
        return list(self._records)

    def requests(self, device=None, request=None, control=None):
        """The requests to controls, all of them or only these."""
        return [record for record in self.records()
                if record.event == "request"
                and device in (None, record.device)
                and request in (None, record.request)
                and control in (None, record.control)]

    def wait_for(self, condition, what="a record", patience=PATIENCE):
        """Waits for a record for which the function returns something true, and returns it."""
        return wait_until(lambda: next(filter(condition, self.records()), None), what, patience)
