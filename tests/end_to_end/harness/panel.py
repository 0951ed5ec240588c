# Copyright (c) 2026 The PTZ panel developers
# SPDX-License-Identifier: MIT

"""The built panel on a desktop, with virtual cameras beneath it."""

import contextlib
import os
import shutil
import signal
import tempfile
from pathlib import Path

from . import face, processes, requests
from .cameras import CameraControl, CameraLog
from .waiting import wait_for

# Two keys whose requests no test expects one after the other, and two for when one is held.
_LAST_KEYS = [("7", "3"), ("8", "4")]

_WIDEST_TRAY_ICON = 64


def binary(name):
    """The path of a program of the build under test."""
    folder = os.environ.get("PTZ_BIN_DIR")
    if not folder:
        raise RuntimeError("PTZ_BIN_DIR must name the bin folder of the build under test")
    return str(Path(folder) / name)


class Panel:
    """Starts the panel and shows the way to its controls. Use it in a with statement.

    Plugged in are so many cameras, or a list of devices such as "storage,camera"; faults are
    commands such as "stall 1 brightness" that are in force from the start, and descriptions are
    options such as "brightness=-64:64:0:10". A command that the panel is started through gets it as
    its last argument."""

    def __init__(self, desktop, devices=1, faults=(), descriptions=(), environment=None,
                 through=()):
        self.desktop = desktop
        self._windows = desktop.windows
        self._folder = Path(tempfile.mkdtemp(prefix="ptz-panel-"))
        self.log = CameraLog(self._folder / "cameras.log")
        self.cameras = CameraControl(self._folder / "cameras.control")
        self._seen = 0
        options = ["--cameras" if isinstance(devices, int) else "--devices", str(devices),
                   "--log", str(self._folder / "cameras.log"),
                   "--control", str(self._folder / "cameras.control")]
        for fault in faults:
            options += ["--at-start", fault]
        for description in descriptions:
            options += ["--option", description]
        # The window of a panel that has just ended may still be there.
        self._earlier = {window.id for window in self._windows.visible("MainWindow")}
        self._process = processes.start(
            [binary("virtual-camera"), *options, "--", *through, binary("ptz-panel")],
            dict(desktop.environment, **(environment or {})), log=self._folder / "output")
        self.process_id = None
        self.touched = set()
        """The controls that were used."""

    def __enter__(self):
        try:
            self.window = self._await_window("MainWindow")
            self.process_id = self._windows.process_of(self.window)
        except BaseException:
            self.close()
            raise
        return self

    def __exit__(self, *_):
        self.close()

    def close(self):
        """Ends the panel if it still runs, and throws away what it left."""
        self.cameras.close()
        if self._process.poll() is None and self.process_id:
            # It may be about to end by itself. Who counts what ran needs a gentler end.
            with contextlib.suppress(ProcessLookupError):
                self.signal(int(os.environ.get("PTZ_ENDING_SIGNAL", signal.SIGKILL)))
            wait_for(lambda: self._process.poll() is not None, "the cameras to end")
        processes.stop(self._process)
        shutil.rmtree(self._folder, ignore_errors=True)

    # The process.

    def signal(self, number):
        os.kill(self.process_id, number)

    def ended(self):
        """Waits for the end and returns the exit code, 128 + n when it was signal n."""
        return wait_for(lambda: (self._process.poll(),) if self._process.poll() is not None
                        else None, "the panel to end")[0]

    def is_running(self):
        return self._process.poll() is None

    def output(self):
        """What the panel wrote, on standard output and on standard error."""
        return (self._folder / "output").read_text(errors="replace")

    # What the cameras received.

    def opened(self):
        """Waits until the first camera has been opened twice and read, as at every start, and the
        panel has the keyboard. What came up to then does not count as received."""
        last_read = "power_line_frequency"
        wait_for(lambda: sum(line.what == "GET_DEF" and line.control == last_read
                             for line in self.log.lines()) == 2, "the first camera to be opened")
        wait_for(lambda: self._windows.has_keyboard(self.window), "the panel to get the keyboard")
        self.received()
        return self

    def received(self):
        """What the cameras received since the last call, nothing being under way any more: two
        more requests are let through, and everything before them is returned. The panel must have
        the keyboard and a camera."""
        self._windows.answers(self.window)
        keyboard = self.desktop.keyboard
        keys = next(keys for keys in _LAST_KEYS if not keyboard.held_keys.intersection(keys))
        for key in keys:
            keyboard.tap(key)
        last = [[requests.call_preset(int(key), camera) for key in keys] for camera in range(1, 10)]

        def end():
            found = self.so_far()
            ends = [i for i in range(len(found) - 1) if found[i:i + 2] in last]
            return [found[:ends[0]]] if ends else None

        result = wait_for(end, lambda: f"the requests of the keys {keys} after {self.so_far()}")[0]
        self.forget()
        return result

    def so_far(self):
        """What has arrived since the last call of received(); more may be under way."""
        return self.log.requests(self._seen)

    def forget(self):
        """What has arrived up to now does not count as received."""
        self._seen = len(self.log.lines())

    def await_requests(self, expected):
        """Waits for exactly these requests since the last call of received()."""
        self.log.await_requests(expected, self._seen)

    # The window and its controls.

    def place(self):
        return self._windows.place(self.window)

    def is_visible(self):
        return self._windows.is_visible(self.window)

    def has_keyboard(self):
        return self._windows.has_keyboard(self.window)

    def on_screen(self, x, y):
        """The place on the screen of a place in the window."""
        corner = self._windows.corner(self.window)
        return corner[0] + x, corner[1] + y

    def middle_of(self, control):
        """The place on the screen of the control's middle, where it is about to be used."""
        self.touched.add(control)
        return self.on_screen(*face.centre(face.CONTROLS[control]))

    def click(self, control):
        self.desktop.mouse.click(*self.middle_of(control))

    def picture_of(self, control):
        """What the control looks like now."""
        rectangle = face.CONTROLS[control]
        return self.desktop.screenshot(
            *self.on_screen(rectangle.x, rectangle.y), rectangle.width, rectangle.height)

    def drag_to(self, x, y, grip=None):
        """Drags the window by its background, or from another place on the screen, until its
        corner is there. The window follows step by step, so that the pointer stays over it."""
        before = self.place()
        grip = [round(place) for place in grip or self.on_screen(*face.BACKGROUND)]
        way = (x - before.x, y - before.y)
        steps = max(abs(way[0]), abs(way[1])) // 100 + 1
        with self.desktop.mouse.held(*grip) as mouse:
            for step in range(1, steps + 1):
                by = [part * step // steps for part in way]
                mouse.move_to(grip[0] + by[0], grip[1] + by[1])
                self.await_place(before.x + by[0], before.y + by[1])

    def await_place(self, x, y):
        """Waits until the window's corner is there."""
        wait_for(lambda: self.place()[:2] == (x, y),
                 lambda: f"the window to be at {(x, y)}; it is at {self.place()}")

    def open_flicker_choice(self):
        """Clicks on the anti-flicker choice and returns the window with its items."""
        self.click("cb_fliker")
        return wait_for(self.flicker_items, "the items to choose from")

    def flicker_items(self):
        """The window with the items of the anti-flicker choice, or none."""
        for window, place in self._unmanaged_windows():
            if place.width > _WIDEST_TRAY_ICON:
                return window
        return None

    def tray_icon(self):
        """The panel's window in the tray, or none."""
        for window, place in self._unmanaged_windows():
            if place.width <= _WIDEST_TRAY_ICON:
                return window
        return None

    def _unmanaged_windows(self):
        """What the panel has on the screen past the window manager, and where."""
        return [(window, self._windows.place(window))
                for window in self._windows.of_same_client(self.window)
                if self._windows.is_unmanaged(window)]

    def double_click_tray_icon(self):
        icon = wait_for(self.tray_icon, "the icon in the tray")
        self.desktop.mouse.double_click(*face.centre(self._windows.place(icon)))

    # The notices.

    def notices(self):
        """The notices on the screen, the lowest first."""
        return self._windows.visible("Dialog", self.process_id)

    def await_notices(self, count):
        """Waits until there are so many notices, and returns them."""
        wait_for(lambda: len(self.notices()) == count,
                 lambda: f"{count} notices; there are {len(self.notices())}")
        return self.notices()

    def click_notice(self, notice, rectangle):
        """Clicks in the middle of a rectangle of the notice."""
        place = self._windows.place(notice)
        x, y = face.centre(rectangle)
        self.desktop.mouse.click(place.x + x, place.y + y)

    def drag_notice(self, notice, by_x, by_y, **options):
        """Drags the notice by its background and so far."""
        place = self._windows.place(notice)
        x, y = place.x + face.NOTICE_BACKGROUND[0], place.y + face.NOTICE_BACKGROUND[1]
        self.desktop.mouse.drag((x, y), (x + by_x, y + by_y), **options)

    def dismiss_notices(self):
        """Clicks OK on every missing-camera notice, the topmost first."""
        while notices := self.notices():
            self.click_notice(notices[-1], face.MISSING_CAMERA_NOTICE["btn_ok"])
            self.await_notices(len(notices) - 1)

    def _await_window(self, title):
        def found():
            if not self.is_running():
                raise AssertionError(f"the panel ended: {self.output()}")
            return [window for window in self._windows.visible(title)
                    if window.id not in self._earlier]
        return wait_for(found, f"the window {title}")[0]
