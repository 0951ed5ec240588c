# Copyright (c) 2026 The PTZ panel developers
# SPDX-License-Identifier: MIT
"""Virtual USB cameras for tests: a bus, programs on it, a hand at the cameras, and what they saw.

    from virtual_camera import Bus

    with Bus(cameras=2) as bus:
        bus.tell("delay 2 250")
        result = bus.run("my-camera-program")
        assert bus.state(1)["zoom"]["position"] > 0
        assert bus.log.requests(control="zoom_absolute")

With pytest, the plug-in virtual_camera.pytest_plugin offers the fixtures virtual_camera and
virtual_cameras.
"""

from .bus import Bus
from .control import Control, VirtualCameraError
from .log import Log, Record
from .waiting import PATIENCE, wait_until

__all__ = ["PATIENCE", "Bus", "Control", "Log", "Record", "VirtualCameraError", "wait_until"]
