#!/usr/bin/python3
# Copyright (c) 2026 The PTZ panel developers
# SPDX-License-Identifier: MIT

"""Writes docs/face.md and its pictures from the built panel: PTZ_BIN_DIR=... face_page.py
Needs optipng."""

import subprocess

import label_test
import portraits

DOCS = portraits.draw.HERE.parents[1] / "docs"
FACTORS = (1, 1.5, 2, 3)
SHOWN = {
    "started": "As started, with the image settings open",
    "switched": "Every toggle in its other state, and the second camera chosen",
    "no camera": "No camera is connected",
    "empty number": "There is no camera at this number",
}

HEAD = """# The face of the panel

Written by `tests/resources/face_page.py`: the built panel on a real X server, at the scale factors
1, 1.5, 2 and 3. [How the pictures are drawn](../resources/art/README.md) is another page.
"""

TABLE = """## What was measured

Of each label its size on the screen at factor 1, in pixels, and its contrast at each factor, as
WCAG 2 defines it (small text needs 4.5, the outline of a control 3). The contrast is that of the
middle one of all inked pixels, softened edges included; at 1.5, where a stroke has more edge than
core, that of the upper quarter. `picture_label_test` fails below 4.5 at 1, 1.5 and 2.

| label | in the picture | size | 1 | 1.5 | 2 | 3 |
|---|---|---|---|---|---|---|
"""


def save(name, factor):
    """Returns the file's name in docs/. The settings have no second state."""
    picture, path = label_test.pictures(factor)[name], f"face/{name.replace(' ', '-')}-{factor}.png"
    if name == "switched":
        picture = picture.crop((0, 0, picture.width // 2, picture.height))
    picture.save(DOCS / path)
    subprocess.run(["optipng", "-quiet", "-o5", DOCS / path], check=True)
    return path


def gallery():
    lines = []
    for name, what in SHOWN.items():
        lines += [f"## {what}", ""]
        for factor in FACTORS:
            lines += [f"![{what}, at factor {factor}]({save(name, factor)})", ""]
    return "\n" + "\n".join(lines) + "\n"


def row(label):
    found = [label_test.measured(label, factor) for factor in FACTORS]
    ratios = [f"{one.core if factor == 1.5 else one.contrast:.1f}"
              for one, factor in zip(found, FACTORS)]
    size = f"{found[0].width:g} × {found[0].height:g}"
    return f"| {label.text} | `{label.picture}` | {size} | {' | '.join(ratios)} |\n"


def main():
    (DOCS / "face").mkdir(exist_ok=True)
    rings = [label_test.ring_contrast(label_test.pictures(factor)["started"], factor)
             for factor in FACTORS]
    ring = " | ".join(f"{ratio:.1f}" for ratio in rings)
    rows = "".join(row(label) for label in portraits.labels())
    text = HEAD + gallery() + TABLE + rows + f"| the joystick's ring | `background` | | {ring} |\n"
    (DOCS / "face.md").write_text(text, encoding="utf-8")


if __name__ == "__main__":
    main()
