# Copyright (c) 2026 The PTZ panel developers
# SPDX-License-Identifier: MIT
"""A bus with virtual cameras, and programs on it."""

import contextlib
import os
import subprocess
import tempfile
from pathlib import Path

from .control import Control
from .log import Log
from .waiting import PATIENCE, wait_until


def find_executable():
    """The program virtual-camera: VIRTUAL_CAMERA in the environment, else the one on the PATH."""
    return os.environ.get("VIRTUAL_CAMERA", "virtual-camera")


class Bus:
    """Virtual cameras that exist until the end of the with statement.

    cameras or devices say how many or which; options are those of --option, a dictionary such as
    {"brightness": "-64:64:0:10", "2.product": "Hall"}; faults are control commands that are in
    force from the start; script is a file for --script. Further arguments go to virtual-camera as
    they are.
    """

    def __init__(self, cameras=None, *, devices=None, options=None, faults=(), script=None,
                 arguments=(), executable=None):
        self._executable = executable or find_executable()
        self._arguments = list(arguments)
        if cameras is not None:
            self._arguments += ["--cameras", str(cameras)]
        if devices is not None:
            self._arguments += ["--devices", ",".join(devices)]
        for key, value in (options or {}).items():
            self._arguments += ["--option", f"{key}={value}"]
        for command in faults:
            self._arguments += ["--at-start", command]
        if script is not None:
            self._arguments += ["--script", os.fspath(script)]
        self._ends = contextlib.ExitStack()

    def __enter__(self):
        with contextlib.ExitStack() as ends:
            self.folder = Path(ends.enter_context(
                tempfile.TemporaryDirectory(prefix="virtual-camera-python-")))
            self.socket = self.folder / "control"
            # The bus exists as long as its command runs: cat, until its input ends.
            self.process = subprocess.Popen(
                [self._executable, "--control", self.socket, "--log-json", self.folder / "log",
                 *self._arguments, "--", "cat"],
                stdin=subprocess.PIPE, stdout=subprocess.DEVNULL)
            ends.callback(self._stop)
            self.control = ends.enter_context(Control(self.socket))
            self.log = ends.enter_context(Log(self.folder / "log"))
            self._await_start()
            self._ends = ends.pop_all()
        return self

    def __exit__(self, *exception):
        self.log.records()
        self._ends.close()

    def run(self, *command, timeout=PATIENCE, **options):
        """Runs a program on the bus to its end; what subprocess.run returns, output as text."""
        options = {"capture_output": True, "text": True, **options}
        return subprocess.run(self._on_bus(command), timeout=timeout, check=False, **options)

    def start(self, *command, **options):
        """Starts a program on the bus; what subprocess.Popen returns, output as text. It is killed
        when the bus ends."""
        options = {"stdout": subprocess.PIPE, "text": True, **options}
        program = self._ends.enter_context(subprocess.Popen(self._on_bus(command), **options))
        self._ends.callback(program.kill)
        return program

    def tell(self, command):
        return self.control.tell(command)

    def describe(self, number=1):
        return self.control.describe(number)

    def state(self, number=1):
        return self.control.state(number)

    def go(self, *moves, number=1, **places):
        self.control.go(*moves, number=number, **places)

    def watch(self):
        return self.control.watch()

    def _on_bus(self, command):
        return [self._executable, "--join", self.socket, "--", *command]

    def _await_start(self):
        wait_until(lambda: self.socket.exists() or self.process.poll() is not None, "virtual-camera")
        if self.process.poll() is not None:
            raise RuntimeError(f"virtual-camera ended with {self.process.returncode}")
        self.tell("list")

    def _stop(self):
        self.process.stdin.close()
        try:
            self.process.wait(PATIENCE)
        except subprocess.TimeoutExpired:
            self.process.kill()
            self.process.wait()
            raise
