#!/usr/bin/python3
# Copyright (c) 2026 The PTZ panel developers
# SPDX-License-Identifier: MIT

"""profile_panel.py start|press|joystick|drag FILE [PROGRAM]: writes a profile of the panel, or of another
program in the build folder, for callgrind_annotate."""

import sys
from pathlib import Path

ROOT = Path(__file__).resolve().parent.parent
sys.path.insert(0, str(ROOT / "tests/end_to_end"))

import measure  # noqa: E402

if __name__ == "__main__":
    what, file, *program = sys.argv[1:]
    side = measure.Side(*program) if program else measure.PANEL
    print(int(getattr(measure, f"{what}_instructions")(side, 100, file)), "instructions")
