# Copyright (c) 2026 The PTZ panel developers
# SPDX-License-Identifier: MIT

"""An X server of the test's own, with a window manager and a tray."""

import os
import shutil
import tempfile
from pathlib import Path

import Xlib.display
from PIL import Image
from Xlib import X, Xatom

from . import processes
from .hands import Keyboard, Mouse
from .waiting import wait_for
from .windows import Windows

WIDTH, HEIGHT = 1920, 1080

# The window manager of most tests, and one that leaves a window where it puts itself, however
# little of it is on the screen: openbox keeps a tenth of it in view.
OPENBOX = "openbox"
JWM = "jwm"

# An empty mouse section takes away what clicks mean by default. With it, the window manager holds
# each click back to look at it, and a key that follows within a millisecond overtakes the click.
_OPENBOX_SETTINGS = """<?xml version="1.0" encoding="UTF-8"?>
<openbox_config xmlns="http://openbox.org/3.4/rc">
  <focus><focusNew>yes</focusNew><followMouse>no</followMouse></focus>
  <desktops><number>2</number><popupTime>0</popupTime></desktops>
  <mouse/>
</openbox_config>
"""

_JWM_SETTINGS = """<?xml version="1.0"?>
<JWM><FocusModel>click</FocusModel></JWM>
"""


class Desktop:
    """A screen of 1920 by 1080 pixels of the panel unless it is said; each is `scale` by `scale`
    pixels of the X server. Use it in a with statement."""

    def __init__(self, window_manager=OPENBOX, tray=True, compositor=False, size=(WIDTH, HEIGHT),
                 scale=1):
        self.width, self.height = size
        self.scale = scale
        self.home = Path(tempfile.mkdtemp(prefix="ptz-desktop-"))
        self.home.chmod(0o700)
        self._processes = []
        try:
            self._start_server()
            if window_manager:
                self._start_window_manager(window_manager)
            if compositor:
                self._start_and_await("_NET_WM_CM_S0", "picom", "--backend", "xrender",
                                      "--no-use-damage")
            if tray:
                self.start_tray()
        except BaseException:
            self.close()
            raise

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.close()

    def close(self):
        for process in reversed(self._processes):
            processes.stop(process)
        shutil.rmtree(self.home, ignore_errors=True)

    def set_resource(self, resource):
        """Makes this the only X resource of the desktop."""
        self._screen.root.change_property(
            Xatom.RESOURCE_MANAGER, Xatom.STRING, 8, f"{resource}\n".encode())
        self._display.sync()

    def start_tray(self):
        self._start_and_await(
            "_NET_SYSTEM_TRAY_S0", "trayer", "--edge", "bottom", "--align", "right",
            "--widthtype", "pixel", "--width", "100", "--height", "24")

    def stop(self, name):
        """Ends the window manager, "openbox", or the tray, "trayer"."""
        for process in self._processes:
            if process.args[0] == name:
                processes.stop(process)

    def kill_server(self):
        """Takes the X server away from everyone on it, at once."""
        self._server.kill()
        self._server.wait()

    def screenshot(self, left=0, top=0, width=None, height=None):
        """A picture of the screen, or of a part of it; what is beside the screen is black."""
        width, height = width or self.width, height or self.height
        if left < 0 or top < 0 or left + width > self.width or top + height > self.height:
            return self.screenshot().crop((left, top, left + width, top + height))
        left, top, *size = [round(n * self.scale) for n in (left, top, width, height)]
        picture = picture_of(self._screen.root, left, top, *size)
        return picture if self.scale == 1 else picture.resize((width, height), Image.BOX)

    def _start_server(self):
        reading, writing = os.pipe()
        with os.fdopen(reading) as announced:
            self._server = processes.start(
                ["Xvfb", "-displayfd", str(writing), "-screen", "0",
                 f"{round(self.width * self.scale)}x{round(self.height * self.scale)}x24",
                 "-dpi", str(round(96 * self.scale)), "-nolisten", "tcp", "-noreset"],
                dict(os.environ), log=self.home / "Xvfb.log", pass_fds=[writing])
            os.close(writing)
            self._processes.append(self._server)
            number = announced.readline().strip()
        if not number:
            raise RuntimeError("no X server: " + (self.home / "Xvfb.log").read_text())
        self.name = ":" + number
        self.environment = processes.clean_environment(self.home, self.name)
        self._display = Xlib.display.Display(self.name)
        self._screen = self._display.screen()
        self.windows = Windows(self._display, self.scale)
        self.mouse = Mouse(self._display, self.scale)
        self.keyboard = Keyboard(self._display)

    def _start_window_manager(self, name):
        settings = self.home / "window-manager-settings"
        if name == OPENBOX:
            settings.write_text(_OPENBOX_SETTINGS)
            command = ["openbox", "--config-file", str(settings), "--sm-disable"]
        else:
            settings.write_text(_JWM_SETTINGS)
            command = ["jwm", "-f", str(settings)]
        self._start(*command)
        wait_for(lambda: self.windows.root_property("_NET_SUPPORTING_WM_CHECK"), f"{name} to start")

    def _start(self, *command):
        self._processes.append(processes.start(
            command, self.environment, log=self.home / f"{command[0]}.log"))

    def _start_and_await(self, selection, *command):
        self._start(*command)
        atom = self._display.intern_atom(selection)
        wait_for(lambda: self._display.get_selection_owner(atom), f"{command[0]} to start")


def picture_of(window, left, top, width, height):
    """A picture of a part of an X window and of what is inside it."""
    raw = window.get_image(left, top, width, height, X.ZPixmap, 0xFFFFFFFF)
    return Image.frombytes("RGB", (width, height), raw.data, "raw", "BGRX")
