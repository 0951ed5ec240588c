# Copyright (c) 2026 The PTZ panel developers
# SPDX-License-Identifier: MIT
"""What `cmake --install` lays down, and that it works from there: in a staging folder, so that no
path of the build tree and no prefix can have been compiled in."""

import os
import re
import struct
import subprocess
import sys
import tempfile
import unittest
import xml.etree.ElementTree as xml
from pathlib import Path

ROOT = Path(__file__).resolve().parents[2]
BUILD = Path(os.environ["PTZ_BUILD_DIR"])
PREFIX = "/opt/panel"
SIZES = (16, 24, 32, 48, 64, 128, 256)
PAGES = ("ptz-panel", "virtual-camera", "virtual-camera-view")
FILES = {
    *(f"bin/{page}" for page in PAGES), *(f"share/man/man1/{page}.1" for page in PAGES),
    *(f"share/icons/hicolor/{size}x{size}/apps/ptz-panel.png" for size in SIZES),
    "share/icons/hicolor/scalable/apps/ptz-panel.svg",
    "share/applications/ptz-panel.desktop",
    "share/metainfo/invalid.ptz_panel.panel.metainfo.xml",
    "share/doc/ptz-panel/LICENSE", "share/doc/ptz-panel/CHANGELOG.md",
    "lib/udev/rules.d/60-ptz-panel.rules", "lib/virtual-camera/virtual_camera_open.so",
}


def run(*command, **options):
    return subprocess.run(command, capture_output=True, text=True, check=False, timeout=120,
                          **options)


class Installed(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        folder = tempfile.TemporaryDirectory(prefix="ptz-install-")
        cls.addClassCleanup(folder.cleanup)
        cls.stage = Path(folder.name)
        done = run("cmake", "--install", BUILD, "--prefix", PREFIX,
                   env={**os.environ, "DESTDIR": folder.name})
        assert done.returncode == 0, done.stderr
        cls.root = Path(folder.name + PREFIX)
        cls.version = re.search(r"VERSION (\d+\.\d+\.\d+)", (ROOT / "CMakeLists.txt").read_text(
            encoding="utf-8").split("project(")[1])[1]
        [cls.module] = cls.root.glob("lib/python3*/*/virtual_camera")

    def program(self, name):
        return self.root / "bin" / name

    def environment(self, **variables):
        """Nothing of the build tree's, and the installed programs first."""
        kept = {name: os.environ[name] for name in ("HOME", "TMPDIR") if name in os.environ}
        return {**kept, "PATH": f"{self.root}/bin:/usr/bin:/bin", "LC_ALL": "C.UTF-8", **variables}

    def test_every_file_is_there_and_no_other(self):
        found = {str(file.relative_to(self.root)) for file in self.root.rglob("*")
                 if file.is_file() and self.module not in file.parents}
        self.assertEqual({re.sub(r"^lib/[^/]*-linux-[^/]*/", "lib/", name) for name in found}, FILES)
        sources = (ROOT / "virtual_camera/python/virtual_camera").glob("*.py")
        self.assertEqual({file.name for file in self.module.iterdir()},
                         {file.name for file in sources})

    def test_what_the_manifest_names_is_all_there_is_to_remove(self):
        manifest = (BUILD / "install_manifest.txt").read_text(encoding="utf-8").splitlines()
        self.assertEqual({f"{self.stage}{name}" for name in manifest},
                         {str(file) for file in self.stage.rglob("*") if file.is_file()})

    def test_the_installed_panel_moves_a_camera(self):
        # Left is pressed until the camera has it.
        commands = """virtual-camera --log "$LOG" -- ptz-panel &
            for attempt in $(seq 200); do
                if grep -q 'SET_CUR pantilt_relative pan=-1 .* ok' "$LOG"; then kill $!; exit 0; fi
                xdotool key Left; sleep 0.1
            done
            cat "$LOG"; exit 1"""
        with tempfile.NamedTemporaryFile() as log:
            done = run(ROOT / "packaging" / "with_display.sh", "bash", "-c", commands,
                       env=self.environment(LOG=log.name))
        self.assertEqual(done.returncode, 0, done.stdout + done.stderr)

    def test_the_preloaded_module_is_the_installed_one(self):
        [module] = self.root.rglob("virtual_camera_open.so")
        module.rename(module.with_suffix(".away"))
        self.addCleanup(lambda: module.with_suffix(".away").rename(module))
        done = run(self.program("virtual-camera"), "--", "true")
        self.assertEqual(done.returncode, 1)
        self.assertIn(str(module.parent), done.stderr)

    def test_the_python_module_finds_the_installed_program(self):
        done = run("/usr/bin/python3", "-c", "import virtual_camera; b = virtual_camera.Bus(2)\n"
                   "with b: print(b.run('lsusb').stdout.count('8888'))", env=self.environment(
                       PYTHONPATH=str(self.module.parent), PYTHONDONTWRITEBYTECODE="1"))
        self.assertEqual((done.stdout, done.stderr), ("2\n", ""))

    def test_the_version_is_the_same_everywhere(self):
        for name in "virtual-camera", "virtual-camera-view":
            done = run(self.program(name), "--version",
                       env=self.environment(QT_QPA_PLATFORM="offscreen"))
            self.assertEqual(done.stdout, f"{name} {self.version}\n")
        for page in PAGES:
            text = (self.root / f"share/man/man1/{page}.1").read_text(encoding="utf-8")
            self.assertIn(f'"ptz\\-panel {self.version}"', text)
        self.assertIn(self.version.encode(), self.program("ptz-panel").read_bytes())
        changes = (ROOT / "CHANGELOG.md").read_text(encoding="utf-8")
        if "## [Unreleased]" not in changes:
            self.assertEqual(re.search(r"^## \[(.*?)\]", changes, re.M)[1], self.version)

    def test_the_desktop_entry_is_valid_and_names_what_is_there(self):
        entry = self.root / "share/applications/ptz-panel.desktop"
        done = run("desktop-file-validate", entry)
        self.assertEqual((done.returncode, done.stdout), (0, ""))
        words = dict(re.findall(r"^(\w+)=(.*)$", entry.read_text(encoding="utf-8"), re.M))
        self.assertTrue(os.access(self.program(words["Exec"]), os.X_OK))
        for size in SIZES:
            icon = self.root / f"share/icons/hicolor/{size}x{size}/apps/{words['Icon']}.png"
            self.assertEqual(struct.unpack(">II", icon.read_bytes()[16:24]), (size, size))

    def test_the_metainfo_is_valid_and_names_what_is_there(self):
        [file] = self.root.glob("share/metainfo/*")
        done = run("appstreamcli", "validate", "--no-net", file)
        self.assertEqual(done.returncode, 0, done.stdout)
        tree = xml.parse(file).getroot()
        self.assertEqual(file.name, tree.findtext("id") + ".metainfo.xml")
        self.assertTrue((self.root / "share/applications" / tree.findtext("launchable")).exists())
        self.assertTrue(self.program(tree.findtext("provides/binary")).exists())

    def test_man_has_no_complaints(self):
        for page in PAGES:
            done = run("man", "--warnings", "--local-file", self.root / f"share/man/man1/{page}.1",
                       env=self.environment(MANWIDTH="80", MANPAGER="cat"))
            self.assertEqual((done.returncode, done.stderr), (0, ""))
            self.assertIn(page, done.stdout)

    def test_the_man_pages_name_every_option(self):
        for name in "virtual-camera", "virtual-camera-view":
            options = run(self.program(name), "--help",
                          env=self.environment(QT_QPA_PLATFORM="offscreen")).stdout
            page = (self.root / f"share/man/man1/{name}.1").read_text(encoding="utf-8")
            names = set(re.findall(r"^ +(?:-\w, )*--([a-z-]+)", options, re.M)) - {"help-all"}
            self.assertGreater(len(names), 2)
            for option in names:
                self.assertRegex(page, r"\\-\\-" + option.replace("-", r"\\-"))


if __name__ == "__main__":
    sys.exit(unittest.main(verbosity=2))
