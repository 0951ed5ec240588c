# Copyright (c) 2026 The PTZ panel developers
# SPDX-License-Identifier: MIT
"""What configure says of what it did not find, and what is built then."""

import os
import re
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

ROOT = Path(__file__).resolve().parents[2]


def package_folders():
    done = subprocess.run(["pkg-config", "--variable", "pc_path", "pkg-config"], check=True,
                          capture_output=True, text=True)
    return [Path(folder) for folder in done.stdout.strip().split(":")]


class Configuring(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory(prefix="ptz-configure-")
        self.addCleanup(folder.cleanup)
        self.folder = Path(folder.name)

    def configure(self, *options, hidden):
        """Configures where pkg-config does not know the hidden package."""
        visible = self.folder / "packages"
        visible.mkdir()
        for file in [file for folder in package_folders() for file in folder.glob("*.pc")]:
            if file.name != hidden + ".pc" and not (visible / file.name).exists():
                (visible / file.name).symlink_to(file)
        return subprocess.run(
            ["cmake", "-G", "Ninja", "-S", ROOT, "-B", self.folder / "build", *options],
            env={**os.environ, "PKG_CONFIG_LIBDIR": str(visible)}, capture_output=True, text=True,
            check=False, timeout=120)

    def test_says_what_is_left_out_and_why(self):
        done = self.configure("-DPTZ_PYTHON=OFF", "-DBUILD_TESTING=OFF", "-DPTZ_X11=OFF",
                              "-DPTZ_HOMEPAGE=https://panel.example", hidden="umockdev-1.0")
        self.assertEqual((done.returncode, done.stderr), (0, ""))
        disabled = done.stdout.split("features have been disabled:")[1]
        for feature, reason in {"Virtual cameras": "umockdev-1.0", "Python": "no python3",
                                "X11 desktops": "PTZ_X11", "Tests": "BUILD_TESTING"}.items():
            self.assertRegex(disabled, rf"\* {feature}, .*{reason}")
        targets = subprocess.run(["ninja", "-C", self.folder / "build", "-t", "targets", "all"],
                                 capture_output=True, text=True, check=True).stdout
        self.assertIn("bin/ptz-panel:", targets)
        self.assertNotIn("bin/virtual-camera", targets)
        self.check_published_metainfo()

    def check_published_metainfo(self):
        [file] = self.folder.glob("build/packaging/*.metainfo.xml")
        done = subprocess.run(["appstreamcli", "validate", "--no-net", file], check=False,
                              capture_output=True, text=True)
        self.assertEqual(done.returncode, 0, done.stdout)
        pictures = re.findall("<image>https://panel.example/(.*)</image>",
                              file.read_text(encoding="utf-8"))
        self.assertEqual(len(pictures), 2)
        for picture in pictures:
            self.assertTrue((ROOT / picture).exists(), picture)

    def test_x11_is_needed_unless_it_is_switched_off(self):
        done = self.configure(hidden="x11")
        self.assertEqual(done.returncode, 1)
        self.assertRegex(done.stderr, r"(?s)^CMake Error at CMakeLists\.txt.*PTZ_X11=OFF")


if __name__ == "__main__":
    sys.exit(unittest.main(verbosity=2))
