# Copyright (c) 2026 The PTZ panel developers
# SPDX-License-Identifier: MIT

"""The panel is ended from outside, or its output goes nowhere."""

import contextlib
import signal

from Xlib import error

from drill import HANGS, Row
from holds import MOMENTS

LETS_GO = "ends with {}; nothing moves on"


def ended_by(number, hold):
    def run(drill):
        drill.ready()
        with hold(drill) as stops:
            since = drill.now()
            drill.panel.signal(number)
            drill.ends_with(128 + number)
            drill.stopped_by(stops, since)
    return run


def in_the_tray(number):
    def run(drill):
        drill.ready().panel.click("btn_min")
        drill.wait(lambda: not drill.panel.is_visible(), "the panel to go to the tray")
        drill.panel.signal(number)
        drill.ends_with(128 + number)
    return run


def with_the_notice_up(number):
    def run(drill):
        drill.up().panel.signal(number)
        drill.ends_with(128 + number)
    return run


def while_a_camera_that_hangs_is_read(drill):
    """The reads would take half a minute."""
    drill.ready()
    drill.tell(HANGS)
    drill.panel.click("btn_cam1")
    drill.hangs()
    drill.patience += 10
    drill.panel.signal(signal.SIGTERM)
    drill.ends_with(128 + signal.SIGALRM)


def unplugged_while_it_hangs(drill):
    drill.ready()
    drill.tell(HANGS)
    drill.desktop.keyboard.tap("Right")
    drill.hangs()
    drill.tell("unplug 1")
    drill.receives_nothing_from_controls()


def closed(hold, how):
    def run(drill):
        drill.ready()
        with hold(drill) as stops:
            since = drill.now()
            how(drill)
            drill.ends_with(0)
            drill.stopped_by(stops, since)
    return run


def by_its_button(drill):
    drill.panel.click("btn_close")


def by_the_window_manager(drill):
    drill.desktop.windows.close(drill.panel.window)


def server_gone(hold):
    def run(drill):
        drill.ready()
        with contextlib.suppress(error.ConnectionClosedError), hold(drill) as stops:
            since = drill.now()
            drill.desktop.kill_server()
            drill.ends_with(1)
            drill.stopped_by(stops, since)
        assert drill.exit_code == 1
    return run


def server_gone_at_a_random_moment(drill):
    """The camera has got so many requests of a held key."""
    drill.ready()
    start = len(drill.panel.log.lines())
    count = drill.random.randrange(2, 20)
    with contextlib.suppress(error.ConnectionClosedError), drill.desktop.keyboard.held("Up"):
        drill.wait(lambda: len(drill.panel.log.settings(start)) >= count, f"{count} requests")
        drill.desktop.kill_server()
        drill.ends_with(1)
    assert drill.exit_code == 1


def goes_on(drill):
    drill.ready().drives()
    drill.panel.click("btn_close")
    drill.ends_with(0)


# Starts the panel with its standard output on a pipe that nobody reads.
UNREAD_PIPE = ["python3", "-c", """
import os, signal, sys
signal.signal(signal.SIGPIPE, signal.SIG_DFL)
reading, writing = os.pipe()
os.close(reading)
os.dup2(writing, 1)
os.execv(sys.argv[1], sys.argv[1:])
"""]
CLOSED = ["sh", "-c", 'exec "$0" >&-']
FULL = ["sh", "-c", 'exec "$0" >/dev/full']

# A panel that was started with a signal ignored leaves it so.
HEARING = {"through": ["env", "--default-signal=HUP,INT"]}

OWN_SERVER = {"desktop": {"tray": False}}

SIGNALS = [(signal.SIGTERM, MOMENTS), (signal.SIGINT, MOMENTS[:4]), (signal.SIGHUP, MOMENTS[:4])]

ROWS = [
    *[Row(number.name, moment, LETS_GO.format(128 + number), ended_by(number, hold), HEARING)
      for number, moments in SIGNALS for moment, hold in moments],
    Row("SIGTERM", "in the tray", "ends with 143", in_the_tray(signal.SIGTERM)),
    Row("SIGTERM", "with the no-camera notice up", "ends with 143",
        with_the_notice_up(signal.SIGTERM), {"faults": ["unplug 1"]}),
    Row("SIGTERM", "while a camera is read that never answers",
        "ends with 142, after a grace period", while_a_camera_that_hangs_is_read),
    Row("unplugged", "while the camera never answers", "lives; every control is harmless",
        unplugged_while_it_hangs),
    *[Row("closed by its button", moment, LETS_GO.format(0), closed(hold, by_its_button))
      for moment, hold in MOMENTS[:3]],
    *[Row("closed by the window manager", moment, LETS_GO.format(0),
          closed(hold, by_the_window_manager)) for moment, hold in MOMENTS],
    *[Row("X server gone", moment, LETS_GO.format(1), server_gone(hold), OWN_SERVER)
      for moment, hold in MOMENTS],
    Row("X server gone", "at a random moment of an arrow key held", LETS_GO.format(1),
        server_gone_at_a_random_moment, OWN_SERVER),
    *[Row(f"standard output {state}", "from the start", "lives; the camera is driven", goes_on,
          {"through": through})
      for state, through in (("closed", CLOSED), ("on a pipe that nobody reads", UNREAD_PIPE),
                             ("on a full disk", FULL))],
]
