# Copyright (c) 2026 The PTZ panel developers
# SPDX-License-Identifier: MIT

"""Waiting for something to become true."""

import os
import time

DEADLINE = float(os.environ.get("PTZ_DEADLINE", "30"))
"""Seconds after which something that should have happened counts as not happening. Generous: the
machine may be busy, and a test that passes never waits that long."""


def wait_for(condition, what, deadline=DEADLINE):
    """Returns the first true value of condition(), or fails naming what was awaited; what may be
    a function that tells it then."""
    give_up = time.monotonic() + deadline
    pause = 0.002
    while True:
        value = condition()
        if value:
            return value
        if time.monotonic() > give_up:
            what = what() if callable(what) else what
            raise AssertionError(f"still waiting after {deadline:g} s: {what}")
        time.sleep(pause)
        pause = min(pause * 1.5, 0.05)
