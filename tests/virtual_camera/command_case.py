# Copyright (c) 2026 The PTZ panel developers
# SPDX-License-Identifier: MIT
"""What the tests of the virtual-camera command have in common: SOME_test.py VIRTUAL_CAMERA UVC_CLIENT
"""

import os
import subprocess
import sys
import tempfile
import time
import unittest

VIRTUAL_CAMERA, UVC_CLIENT = sys.argv[1:3]
PATIENCE = 60


def run(*arguments, **options):
    return subprocess.run(
        [VIRTUAL_CAMERA, *arguments], capture_output=True, text=True, timeout=PATIENCE, **options
    )


class Case(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory(prefix="virtual-camera-test-")
        self.addCleanup(folder.cleanup)
        self.folder = folder.name

    def path(self, name):
        return os.path.join(self.folder, name)

    def wait_until(self, condition, patience=PATIENCE):
        end = time.monotonic() + patience
        while not condition():
            self.assertLess(time.monotonic(), end, "waited in vain")
            time.sleep(0.01)

    def expect_complaint(self, result, code, words):
        """One line on standard error, nothing else."""
        self.assertEqual(result.returncode, code, result.stderr)
        lines = result.stderr.splitlines()
        self.assertEqual(len(lines), 1, result.stderr)
        self.assertTrue(lines[0].startswith("virtual-camera: "), lines[0])
        self.assertIn(words, lines[0])
        self.assertEqual(result.stdout, "")


class RunningCase(Case):
    """Cameras under a program, and a hand at the control socket."""

    def start(self, *options, command=("sleep", "60")):
        self.socket = self.path("socket")
        self.process = subprocess.Popen(
            [VIRTUAL_CAMERA, "--control", self.socket, *options, "--", "sh", "-c",
             'echo up; exec "$@"', "sh", *command],
            stdin=subprocess.PIPE, stdout=subprocess.PIPE, text=True,
        )
        self.addCleanup(self.stop)
        self.assertEqual(self.process.stdout.readline(), "up\n")

    def stop(self):
        self.process.terminate()
        self.process.communicate(timeout=PATIENCE)

    def tell(self, line, code=0):
        result = run("--tell", self.socket, *line.split())
        self.assertEqual(result.returncode, code, result.stdout + result.stderr)
        return result.stdout.rstrip("\n")


def main():
    unittest.main(argv=sys.argv[:1] + sys.argv[3:])
