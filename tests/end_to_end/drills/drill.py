# Copyright (c) 2026 The PTZ panel developers
# SPDX-License-Identifier: MIT

"""What a drill is: one row of a table, and what is checked in each."""

import os
import random
from dataclasses import dataclass, field
from typing import Callable

import pytest

from calls import calls_on_the_dead, noted_calls, stopped_axes
from harness import face, requests
from harness.cameras import as_request
from harness.motions import Motions, is_motion, is_start
from harness.pictures import shows
from harness.usage import usage
from harness.waiting import wait_for

PATIENCE = float(os.environ.get("PTZ_DRILL_PATIENCE", "20"))
"""Seconds to wait for what follows a fault: such a machine is not only faulty but busy."""

HANGS = "delay 1 3600000"
"""Makes the first camera answer nothing any more."""

SEED = int(os.environ.get("PTZ_DRILL_SEED", "1"))

# Use of freed memory shows itself: what is given back is filled with this byte.
SCRIBBLE = {"MALLOC_PERTURB_": "165"}


@dataclass(eq=False)
class Row:
    """One fault at one moment. run gets a Drill and brings the fault about; how is what the panel
    is started with."""
    fault: str
    moment: str
    outcome: str
    run: Callable
    how: dict = field(default_factory=dict)

    @property
    def name(self):
        return f"{self.fault}, {self.moment}" if self.moment else self.fault

    @property
    def notes_calls(self):
        return "LD_PRELOAD" not in self.how.get("environment", {})


MOST_KIBIBYTES = int(os.environ.get("PTZ_DRILL_MEBIBYTES", "14")) * 1024
"""What a single drill may add: ten megabytes of painted pictures that the toolkit keeps, and notices.
What adds up over many is found by drills of its own. The sanitizers keep what was given back."""


class Drill:
    """A panel that something happens to."""

    def __init__(self, row, start, desktop, folder):
        self.row = row
        self._start = start
        self.panel = start()
        self.desktop = desktop
        self.random = random.Random(f"{SEED} {row.name}")
        devices = row.how.get("devices", 1)
        self.devices = devices if isinstance(devices, int) else len(devices.split(","))
        self.exit_code = None
        self._at_first = None
        self.patience = PATIENCE
        self.folder = folder
        """A folder for the row alone, which the panel finds as PTZ_DRILL_FOLDER."""
        self.beyond_control = set()
        """Cameras that take no stop any more."""
        self.other_processes = []
        """Ended with the row."""

    def start_anew(self):
        """For a row that came too late."""
        self.panel.close()
        self.panel = self._start()

    def tell(self, command):
        return self.panel.cameras.tell(command)

    # Coming up.

    def up(self):
        """Waits until the panel has looked for cameras once and shows what it found."""
        self.wait(lambda: shows(self.panel, "btn_mute", "no_mute.png") or self.panel.notices(),
                  "the panel to look for cameras")
        if not self._at_first:
            self._at_first = self.usage()
            if not self.open_files():
                self.may_open_a_camera()
        return self

    def may_open_a_camera(self):
        """It had none when it came up."""
        before = self._at_first
        self._at_first = before._replace(files=before.files + 2, threads=before.threads + 1)

    def ready(self):
        """The panel has opened the first camera, and the keyboard is its own."""
        self.up()
        self.desktop.windows.activate(self.panel.window)
        return self

    def bring_back(self):
        """Has the panel on the screen again, and its keyboard."""
        if not self.panel.is_visible():
            self.wait(self.panel.tray_icon, "the icon in the tray")
            self.panel.double_click_tray_icon()
        if not self.panel.is_visible():
            self.desktop.windows.activate(self.panel.window)
        self.wait(self.panel.is_visible, "the panel to come back")
        self.desktop.windows.activate(self.panel.window)

    def notice(self):
        return self.wait(self.panel.notices, "the notice")[0]

    def wait(self, condition, what):
        def living():
            if self.exit_code is None and not self.panel.is_running():
                pytest.fail(f"the panel ended ({self.panel.ended()}) while waiting for {what}: "
                            + self.panel.output(), pytrace=False)
            return condition()
        return wait_for(living, what, self.patience)

    # What must hold afterwards.

    def answers(self):
        """The panel answers its operator: the focus button changes its face, and back again."""
        for face_now in ("MF.png", "AF.png"):
            self.panel.click("btn_af")
            self.wait(lambda: shows(self.panel, "btn_af", face_now), f"the focus button: {face_now}")

    def drives(self, camera=1):
        """The keyboard drives this camera, and the camera stands still afterwards."""
        self.desktop.windows.activate(self.panel.window)
        self.panel.received()
        # A busy machine may hold even a tapped key.
        with self.desktop.keyboard.without_repeat():
            self.desktop.keyboard.tap("Right")
        assert self.panel.received() == [
            requests.pan(+1, 21, camera), requests.halt(camera), requests.halt_zoom(camera)]
        self.at_rest(camera)

    def receives_nothing_from_controls(self):
        """Every control is used and no camera receives anything."""
        start = len(self.panel.log.requests())
        use_every_control(self)
        self.answers()
        assert self.panel.log.requests()[start:] == []

    def state(self, camera):
        """What the camera is doing, by name."""
        return dict(word.split("=", 1) for word in self.tell(f"state {camera}").split()[1:])

    def velocities(self, camera):
        return {name: int(value) for name, value in self.state(camera).items()
                if name.endswith("_velocity")}

    def hangs(self, camera=1):
        """The panel waits for an answer of this camera."""
        self.wait(lambda: self.state(camera)["requests_under_way"] != "0",
                  f"a request to be under way at camera {camera}")

    def at_rest(self, camera=1):
        """The camera was told to stop, and nothing moves at it any more. That it stands still is not
        enough: a camera that was forgotten does so in the end, at the end of its way."""
        self.wait(lambda: not self.moving(camera) and not any(self.velocities(camera).values()),
                  lambda: f"camera {camera} to be stopped; moving: {self.moving(camera)}")

    def now(self):
        """The place in the camera log that comes next."""
        return len(self.panel.log.lines())

    def stopped_by(self, stops, since):
        """The cameras are stopped by exactly these requests from that place of the log on, and once
        more after each repeat of a key that still drove them: a key that repeats already goes on
        when the X server is told to repeat no more."""
        def told(starts):
            return [as_request(line) for line in self.panel.log.lines()[since:]
                    if is_motion(line) and is_start(line) == starts]

        def stopped():
            found, times = told(False), 1 + len(told(True))
            return any(found == stops * n for n in range(1, times + 1))
        wait_for(stopped, lambda: f"{stops}: {told(True)}, {told(False)}", self.patience)

    def moving(self, camera=1):
        """The controls that the camera was last told to move."""
        return [control for number, control in Motions().follow(self.panel.log.lines())
                if number == camera]

    def calls(self):
        """What the panel asked of libuvc."""
        return noted_calls(self.folder)

    def tries_to_stop(self, axes, since):
        """These are told to stop by the panel's calls from that one on, heard or not."""
        self.wait(lambda: stopped_axes(self.calls()[since:]) >= set(axes),
                  lambda: f"a try to stop {axes}: {self.calls()[since:]}")

    def moves(self, camera=1):
        self.wait(lambda: any(self.velocities(camera).values()), f"camera {camera} to move")

    def ends_with(self, code):
        assert self.end() == code, self.panel.output()

    def end(self):
        """Waits for the end of the panel and returns its exit code."""
        wait_for(lambda: not self.panel.is_running(), "the panel to end", self.patience)
        self.exit_code = self.panel.ended()
        return self.exit_code

    def holds_no_more(self):
        """The panel holds no more files and threads than when it came up, but for the camera when
        none was open then, and hardly more memory."""
        before = self._at_first
        if before:
            self.wait(lambda: self.usage().files <= before.files
                      and self.usage().threads <= before.threads,
                      lambda: f"no more files and threads than {before}: {self.usage()}")
            assert self.usage().kibibytes <= before.kibibytes + MOST_KIBIBYTES

    def finish(self):
        """What holds after every drill, whatever the fault was."""
        if self.exit_code is None:
            assert self.panel.is_running(), \
                f"the panel ended ({self.panel.ended()}): {self.panel.output()}"
            self.holds_no_more()
        for camera in set(range(1, self.devices + 1)) - self.beyond_control:
            assert self.moving(camera) == []
        if self.row.notes_calls:
            assert calls_on_the_dead(self.folder) == []

    # Figures.

    def open_files(self):
        """How many of the cameras' files programs hold."""
        lines = self.panel.log.lines()
        return sum((line.what == "OPEN") - (line.what == "CLOSE") for line in lines)

    def usage(self):
        return usage(self.panel.process_id)


def lens_rest(control):
    """Where in the window the handle of a lens slider stands at rest."""
    rectangle = face.CONTROLS[control]
    return rectangle.x + rectangle.width // 2, rectangle.y + 65


def use_every_control(drill):
    """A finger on everything but close, minimise and the camera buttons."""
    panel, desktop = drill.panel, drill.desktop
    panel.click("btn_setting")
    for control in face.BUTTONS:
        if control not in ("btn_setting", "btn_min", "btn_close", "btn_ok", "btn_af") \
                and not control.startswith("btn_cam"):
            panel.click(control)
    for control in ("joystick", "slider_zoom", *(f"slider_{name}" for name in face.SETTINGS)):
        x, y = panel.middle_of(control)
        # There and back: by a slider that has no range, it is the window that is dragged.
        desktop.mouse.drag((x, y), (x + 20, y - 30), (x + 40, y - 40), (x, y))
        desktop.windows.answers(panel.window)
    panel.click("btn_ok")
    panel.click("btn_af")
    x, y = panel.on_screen(*lens_rest("slider_focus"))
    desktop.mouse.drag((x, y), (x, y - 20), (x, y - 30))
    panel.click("btn_af")
    desktop.windows.activate(panel.window)
    for key in ("Right", "Up", "Left", "Down", "t", "w", "f", "m", "p", "3"):
        desktop.keyboard.tap(key)
