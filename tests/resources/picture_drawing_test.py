# Copyright (c) 2026 The PTZ panel developers
# SPDX-License-Identifier: MIT
"""The program that draws the pictures, and that they are what it draws."""

import os
import re
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

ROOT = Path(__file__).resolve().parents[2]
ART = ROOT / "resources" / "art"
IMG = ROOT / "resources" / "img"
sys.path.insert(0, str(ART))

import draw  # noqa: E402

# The committed files were drawn by librsvg 2.54 and packed by the zlib of Debian 12.
DEBIAN_12 = 'VERSION_ID="12"' in Path("/etc/os-release").read_text(encoding="utf-8")


class Drawing(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = Path(folder.name)

    def draw(self, *arguments):
        return subprocess.run([ART / "draw.py", *arguments], check=False,
                              capture_output=True, text=True)

    def sheet(self, old, new):
        """The sheet of the keys with one thing changed."""
        text = (ART / "keys.svg").read_text(encoding="utf-8")
        self.assertIn(old, text)
        (self.folder / "keys.svg").write_text(text.replace(old, new), encoding="utf-8")
        return draw.Sheet("keys", self.folder)

    @unittest.skipUnless(DEBIAN_12, "another librsvg or zlib draws or packs other bytes")
    def test_the_sources_draw_the_committed_bytes_and_no_other_files(self):
        done = self.draw(self.folder)
        self.assertEqual((done.returncode, done.stderr), (0, ""))
        drawn, kept = [{path.relative_to(folder): path.read_bytes() for path in folder.rglob("*.*")
                        if path.suffix in (".png", ".ico", ".svg")} for folder in (self.folder, IMG)]
        self.assertEqual(drawn.keys(), kept.keys())
        for path, content in drawn.items():
            self.assertTrue(content == kept[path],
                            f"{path} is not what resources/art draws; run draw.py")

    def test_a_face_that_does_not_fit_its_picture_is_refused(self):
        sheet = self.sheet(">MIRROR<", ">MIRRORED<")
        self.assertRaisesRegex(draw.Misfit, "Mirror does not fit", sheet.draw, 1)

    def test_a_character_without_a_letter_is_refused(self):
        self.assertRaisesRegex(draw.Misfit, "no '%'", self.sheet, ">SET<", ">S%T<")

    @unittest.skipUnless(os.path.exists("/dev/full"), "needs a full disk")
    def test_a_picture_that_cannot_be_written_is_an_error(self):
        (self.folder / "0.png").symlink_to("/dev/full")
        done = self.draw(self.folder)
        self.assertEqual(done.returncode, 1)
        self.assertRegex(done.stderr, "^draw.py: .*No space left on device")

    def test_letters_begin_on_whole_pixels(self):
        for name in draw.SHEETS:
            for element in draw.Sheet(name).root.iter(f"{draw.SVG}svg"):
                if element.get("aria-label"):
                    self.assertTrue(re.fullmatch(r"-?\d+", element.get("x")), element.attrib)


if __name__ == "__main__":
    unittest.main()
