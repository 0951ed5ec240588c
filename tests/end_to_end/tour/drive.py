# Copyright (c) 2026 The PTZ panel developers
# SPDX-License-Identifier: MIT

"""A drive in moving pictures: the panel at work, and beside it what the camera sees."""

import contextlib
import threading
import time

from harness import processes
from harness.desktop import Desktop
from harness.panel import Panel, binary
from harness.pictures import settings_panel_shown
from harness.waiting import wait_for

from .screen import Screen

_SIZE = (1376, 640)
_PANEL_PLACE = (14, 100)
_VIEW_PLACE = (692, 24, 670, 600)
_DEGREE = 3600  # seconds of arc, the camera's unit
_PERIOD = 0.1
_SHOWN_WIDTH = 960
_QUALITY = 50


def record(file):
    """Drives a camera and writes the moving pictures to the file."""
    with contextlib.ExitStack() as ends:
        desktop = ends.enter_context(Desktop(tray=False, compositor=True, size=_SIZE))
        screen = ends.enter_context(contextlib.closing(Screen(desktop)))
        panel = ends.enter_context(Panel(desktop, 3))
        panel.opened()
        panel.drag_to(*_PANEL_PLACE)
        _open_view(desktop, panel, ends)
        with _Recorder(screen) as recorder:
            _drive(panel)
    recorder.write(file)


def _open_view(desktop, panel, ends):
    viewer = processes.start([binary("virtual-camera-view"), str(panel.cameras.path)],
                             desktop.environment)
    ends.callback(processes.stop, viewer)
    window, = wait_for(lambda: desktop.windows.visible("Virtual cameras"), "the view")
    x, y, width, height = _VIEW_PLACE
    window.configure(x=x, y=y, width=width, height=height)
    desktop.windows.settle()
    desktop.windows.activate(panel.window)


def _drive(panel):
    """Looks for a speaker, stores the place, goes home and back, and sets the picture."""
    hands = _Hands(panel)
    hands.hold("joystick", (48, 0), lambda: hands.camera("pan") > 12 * _DEGREE)
    hands.hold("slider_zoom", (0, -40), lambda: hands.camera("zoom") > 2500)
    for control, pause in [("btn_set", 0.3), ("btn_num1", 0.5), ("btn_home", 1.5),
                           ("btn_num1", 1.5), ("btn_mirror", 0.8), ("btn_mirror", 0.4)]:
        hands.click(control, pause)
    hands.click("btn_setting", 0.3)
    wait_for(lambda: settings_panel_shown(panel), "the settings panel")
    hands.hold("slider_brightness", (40, 0), lambda: hands.camera("brightness") > 170)
    hands.hold("slider_saturation", (-50, 0), lambda: hands.camera("saturation") < 80)
    for control, pause in [("btn_default", 0.8), ("btn_setting", 0.4), ("btn_cam2", 1.2)]:
        hands.click(control, pause)


class _Hands:
    """The operator's, at a pace that can be followed."""

    def __init__(self, panel):
        self._panel = panel
        self._mouse = panel.desktop.mouse

    def camera(self, what):
        """A number that the first camera has: where a motor is, or an image setting."""
        state = self._panel.cameras.tell("state 1").split()
        return int(dict(word.split("=") for word in state if "=" in word)[what])

    def hold(self, control, by, until):
        """Moves a control by so many pixels and holds it until the camera has got there."""
        x, y = self._panel.middle_of(control)
        with self._mouse.held(x, y):
            # The joystick looks at every second move only: the last is made twice.
            for share in (0.25, 0.5, 0.75, 0.97, 1):
                self._mouse.move_to(x + by[0] * share, y + by[1] * share)
                time.sleep(0.06)
            wait_for(until, f"the camera to follow {control}")
            time.sleep(0.2)
        time.sleep(0.5)

    def click(self, control, pause):
        x, y = self._panel.middle_of(control)
        self._mouse.move_to(x, y)
        time.sleep(0.25)
        self._mouse.click(x, y)
        time.sleep(pause)


class _Recorder:
    """Takes pictures of the screen at a steady pace while it is entered."""

    def __init__(self, screen):
        self._screen = screen
        self._done = threading.Event()
        self._thread = threading.Thread(target=self._run)
        self._pictures = []

    def __enter__(self):
        self._thread.start()
        return self

    def __exit__(self, *_):
        self._done.set()
        self._thread.join()

    def _run(self):
        while not self._done.wait(_PERIOD):
            self._pictures.append((time.monotonic(), self._screen.moment()))

    def write(self, file):
        times, pictures = zip(*self._pictures)
        durations = [round(1000 * (later - now)) for now, later in zip(times, times[1:])] + [1500]
        height = _SHOWN_WIDTH * _SIZE[1] // _SIZE[0]
        first, *rest = [picture.resize((_SHOWN_WIDTH, height)) for picture in pictures]
        first.save(file, save_all=True, append_images=rest, duration=durations, loop=0,
                   quality=_QUALITY, method=4)
