# Copyright (c) 2026 The PTZ panel developers
# SPDX-License-Identifier: MIT

"""The cable: pulled out and put back, whatever the operator is doing."""

from drill import Row
from holds import MOMENTS, MOTIONS, idle

BACK = "lives; its controls stay harmless; the other camera is driven at once"


def pulled(hold):
    def run(drill):
        drill.ready()
        with hold(drill):
            moving = drill.moving()
            drill.tell("unplug 1")
            since = len(drill.calls())
        drill.tries_to_stop(moving, since)
        drill.answers()
        drill.receives_nothing_from_controls()
    return run


def pulled_and_chosen_again(hold):
    def run(drill):
        drill.ready()
        with hold(drill):
            drill.tell("unplug 1")
        for _ in range(3):
            drill.panel.click("btn_cam1")
        drill.receives_nothing_from_controls()
        drill.panel.click("btn_cam2")
        drill.drives(camera=2)
    return run


def put_back(address, hold, chosen):
    """Devices are those that were there at the start: the camera is not found again until then.
    The panel must live with it, and the other camera must be there."""
    def run(drill):
        drill.ready()
        with hold(drill):
            drill.tell("unplug 1")
            if chosen:
                drill.panel.click("btn_cam1")
            drill.answers()
            drill.tell(f"replug 1 {address}".strip())
        drill.receives_nothing_from_controls()
        drill.panel.click("btn_cam1")
        drill.receives_nothing_from_controls()
        drill.panel.click("btn_cam2")
        drill.drives(camera=2)
    return run


ROWS = [
    *[Row("unplugged", moment, "lives; the stop is tried; every control is harmless", pulled(hold))
      for moment, hold in MOMENTS],
    *[Row("unplugged and chosen again", moment, "lives; the other camera is driven",
          pulled_and_chosen_again(hold), {"devices": 2}) for moment, hold in MOMENTS],
    *[Row(f"put back at {place} address", moment, BACK, put_back(address, hold, chosen),
          {"devices": 2})
      for place, address in (("the same", ""), ("another", "77"))
      for moment, hold, chosen in (("idle", idle, False), ("idle, chosen meanwhile", idle, True),
                                   ("an arrow key held", MOTIONS[0][1], False))],
]
