# Copyright (c) 2026 The PTZ panel developers
# SPDX-License-Identifier: MIT

"""A second panel is started on the same camera."""

import os
import signal

from drill import Row, drill_rows
from holds import MOTIONS, idle
from second import SECOND_ON_DEMAND, Instances


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


@drill_rows(ROWS)
def test_drill(row, drill):
    row.run(drill)
    drill.finish()
