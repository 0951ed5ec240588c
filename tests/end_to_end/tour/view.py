# Copyright (c) 2026 The PTZ panel developers
# SPDX-License-Identifier: MIT

"""What the camera that the panel has open sees."""

import subprocess

from PIL import Image

from harness.panel import binary

_SIZE = (640, 360)


def see(panel):
    """A picture of what that camera sees now."""
    file = panel.cameras.path.with_name("seen.png")
    subprocess.run([binary("virtual-camera-view"), "--picture", file, panel.cameras.path],
                   env=dict(panel.desktop.environment, QT_QPA_PLATFORM="offscreen"), check=True,
                   stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL, timeout=30)
    with Image.open(file) as picture:
        return picture.convert("RGB").resize(_SIZE, Image.LANCZOS)
