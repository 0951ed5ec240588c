# Copyright (c) 2026 The PTZ panel developers
# SPDX-License-Identifier: MIT

"""A second panel is started on the same camera."""

import os
import signal

from drill import Row
from holds import MOTIONS, idle

SECOND_ON_DEMAND = {"through": ["sh", "-c", """
mkfifo "$PTZ_DRILL_FOLDER/go"
"$0" &
read _ < "$PTZ_DRILL_FOLDER/go"
exec "$0"
"""]}
"""Starts the panel, and another one when told to."""


class Instances:
    """Turns a drill from one panel to the other."""

    def __init__(self, drill):
        self._drill = drill
        self._first = drill.panel.window, drill.panel.process_id
        with open(os.path.join(drill.folder, "go"), "w", encoding="ascii") as go:
            go.write("now\n")
        window = drill.wait(self._other_window, "the second panel")[0]
        self._second = window, drill.desktop.windows.process_of(window)
        drill.other_processes += [self._first[1], self._second[1]]

    def use_first(self):
        return self._use(self._first)

    def use_second(self):
        return self._use(self._second)

    def _use(self, panel):
        drill = self._drill
        drill.panel.window, drill.panel.process_id = panel
        drill.desktop.windows.activate(drill.panel.window)
        return drill.up()

    def _other_window(self):
        windows = self._drill.desktop.windows
        return [window for window in windows.visible("MainWindow")
                if windows.process_of(window) not in (None, self._first[1])]


def beside(hold):
    def run(drill):
        drill.ready()
        with hold(drill):
            instances = Instances(drill)
        drill.at_rest()
        instances.use_second().receives_nothing_from_controls()
        instances.use_first().drives()
    return run


def takes_over(drill):
    drill.ready()
    first = drill.panel.process_id
    Instances(drill).use_second()
    os.kill(first, signal.SIGTERM)
    # Its files are closed with it. The second could open none that it kept.
    drill.wait(lambda: drill.open_files() == 0, "the first panel to end")
    drill.may_open_a_camera()
    drill.panel.click("btn_cam1")
    drill.drives()


ROWS = [
    *[Row("second instance on the same camera", moment, "both live; the first drives the camera",
          beside(hold), SECOND_ON_DEMAND)
      for moment, hold in [("idle", idle), MOTIONS[0], MOTIONS[2]]],
    Row("second instance on the same camera", "when the first has ended",
        "the second drives the camera when it is chosen", takes_over, SECOND_ON_DEMAND),
]
