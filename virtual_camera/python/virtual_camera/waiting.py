# Copyright (c) 2026 The PTZ panel developers
# SPDX-License-Identifier: MIT
"""Waiting for what becomes true."""

import time

PATIENCE = 30
"""Seconds after which waiting has failed; no test that passes takes so long."""


def wait_until(condition, what="a condition", patience=PATIENCE):
    """Waits until the function returns something true, and returns that."""
    end = time.monotonic() + patience
    while True:
        result = condition()
        if result:
            return result
        if time.monotonic() > end:
            raise TimeoutError(f"waited {patience} s for {what}")
        time.sleep(0.01)
