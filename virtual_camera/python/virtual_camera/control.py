# Copyright (c) 2026 The PTZ panel developers
# SPDX-License-Identifier: MIT
"""The control socket; docs/control-socket.md describes what goes over it."""

import contextlib
import json
import os
import socket

from .waiting import PATIENCE, wait_until


class VirtualCameraError(Exception):
    """A control command was refused."""


class Control:
    """A connection to virtual-camera, made when it is first used."""

    def __init__(self, path):
        self.path = os.fspath(path)
        self._socket = None
        self._lines = None

    def __enter__(self):
        return self

    def __exit__(self, *exception):
        self.close()

    def close(self):
        if self._socket is not None:
            self._lines.close()
            self._socket.close()
            self._socket = None

    def tell(self, command):
        """Gives a command such as "unplug 1" and returns the answer's words, once it is in force."""
        answer = self._ask(command)
        if not answer.startswith("ok"):
            raise VirtualCameraError(f"{command}: {answer.removeprefix('error: ')}")
        return answer.removeprefix("ok").strip()

    def ask(self, command):
        """The answer in JSON, as a dictionary."""
        answer = json.loads(self._ask(f"json {command}"))
        if not answer["ok"]:
            raise VirtualCameraError(f"{command}: {answer['error']}")
        return answer

    def describe(self, number=1):
        """What a device is: names, lens, controls with their ranges."""
        return self.ask("describe")["devices"][number - 1]

    def state(self, number=1):
        """What a device is doing: where its motors are, its values, its faults."""
        return self.ask(f"state {number}")["devices"][0]

    def go(self, *moves, number=1, **places):
        """Moves a camera as its remote control does: go("left", "up=3"), go("stop"), go("home"),
        go(pan=3600, zoom=100)."""
        places = (f"{motor}={place}" for motor, place in places.items())
        self.tell(" ".join(("go", str(number), *moves, *places)))

    @contextlib.contextmanager
    def watch(self):
        """The messages as they come: everything at first, then the changes."""
        with Control(self.path) as watcher:
            first = watcher.ask("watch")

            def messages():
                yield first
                for line in watcher._lines:
                    yield json.loads(line)
            yield messages()

    def _ask(self, line):
        if self._socket is None:
            self._connect()
        self._socket.sendall(f"{line}\n".encode())
        answer = self._lines.readline()
        if not answer:
            raise VirtualCameraError(f"{line}: virtual-camera has ended")
        return answer.rstrip("\n")

    def _connect(self):
        connection = socket.socket(socket.AF_UNIX)
        connection.settimeout(PATIENCE)

        def connects():
            try:
                connection.connect(self.path)
            except (FileNotFoundError, ConnectionRefusedError):
                return False
            return True
        try:
            wait_until(connects, f"virtual-camera to listen at {self.path}")
        except BaseException:
            connection.close()
            raise
        self._socket = connection
        self._lines = connection.makefile(encoding="utf-8")
