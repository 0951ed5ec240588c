# Copyright (c) 2026 The PTZ panel developers
# SPDX-License-Identifier: MIT

"""Virtual cameras: what they are told to do, and what they tell."""

import os
import re
import socket
from collections import namedtuple

from . import requests
from .waiting import wait_for

LogLine = namedtuple("LogLine", "time camera what control values result")
"""One line of the camera log: the time in seconds, the number of the camera, what happened (a
request code such as SET_CUR, or OPEN, CLOSE, UNPLUG, REPLUG), and for requests the control, the
numbers in the data and the outcome."""

_EVENTS = ("OPEN", "CLOSE", "UNPLUG", "REPLUG")


def parse(line):
    """Reads lines such as "0.5 cam1 OPEN file=1" and "0.6 cam1 GET_MIN gamma value=100 [64 00] ok".
    """
    time, camera, what, *rest = line.split(" ")
    number = int(camera.removeprefix("cam"))
    if what in _EVENTS:
        return LogLine(float(time), number, what, None, [], "ok")
    values = [int(value) for value in re.findall(r"=([-+]?\d+)\b", line)]
    return LogLine(float(time), number, what, rest[0], values, rest[-1])


def as_request(line):
    """The text in which tests expect a request, as harness.requests writes it."""
    words = [f"cam{line.camera}:"] if line.camera > 1 else []
    words += [line.control, *line.values] if line.what == "SET_CUR" else [line.what, line.control]
    if line.result != "ok":
        words.append(line.result)
    return " ".join(map(str, words))


class CameraLog:
    """The log file of a row of virtual cameras, read while it grows."""

    def __init__(self, path):
        self._path = path
        self._file = None
        self._unfinished = ""
        self._lines = []

    def lines(self):
        """Everything up to now."""
        if self._file is None and self._path.exists():
            self._file = open(self._path, encoding="utf-8")
        if self._file:
            *finished, self._unfinished = (self._unfinished + self._file.read()).split("\n")
            self._lines.extend(parse(line) for line in finished if not line.startswith("#"))
        return self._lines

    def requests(self, start=0):
        """The requests from that line on, as texts."""
        return [as_request(line) for line in self.lines()[start:] if line.what not in _EVENTS]

    def texts(self, start=0):
        """The requests from that line on, as the log tells them to a reader."""
        texts = self._path.read_text(encoding="utf-8").splitlines()[1:] if self._path.exists() else []
        return [text for text, line in zip(texts[start:], self.lines()[start:])
                if line.what not in _EVENTS]

    def settings(self, start=0):
        """The requests that change something at a camera, from that line on."""
        return [as_request(line) for line in self.lines()[start:] if line.what == "SET_CUR"]

    def await_requests(self, expected, start=0):
        """Waits for so many requests, and fails unless they are the expected ones."""
        expected = list(expected)
        wait_for(lambda: len(self.requests(start)) >= len(expected),
                 f"{expected}; there are {self.requests(start)}")
        assert self.requests(start) == expected

    def value_read(self, code, name):
        """What the first camera answered last for an image property, such as "GET_MAX", "gamma"."""
        control = requests.PROPERTY_CONTROLS.get(name, "power_line_frequency")
        return [line.values for line in self.lines()
                if line.what == code and line.control == control and line.result == "ok"][-1][0]


class CameraControl:
    """Does things to the cameras while the panel runs: "unplug 2", "stall 1 brightness"."""

    def __init__(self, path):
        self.path = path
        self._socket = None

    def tell(self, command):
        """Gives the command and returns the answer once it is in force."""
        if self._socket is None:
            wait_for(lambda: os.path.exists(self.path), "the cameras to listen")
            self._socket = socket.socket(socket.AF_UNIX)
            self._socket.connect(str(self.path))
            self._answers = self._socket.makefile(encoding="utf-8")
        self._socket.sendall(f"{command}\n".encode())
        answer = self._answers.readline().strip()
        assert answer.startswith("ok"), f"{command}: {answer}"
        return answer

    def close(self):
        if self._socket is not None:
            self._answers.close()
            self._socket.close()
            self._socket = None
