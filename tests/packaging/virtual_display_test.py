# Copyright (c) 2026 The PTZ panel developers
# SPDX-License-Identifier: MIT
"""with_display.sh with a real X server: what the command finds, and that nothing outlives it."""

import os
import signal
import subprocess
import sys
import time
import unittest

ROOT = os.path.abspath(os.path.join(os.path.dirname(__file__), "..", ".."))
SCRIPT = os.path.join(ROOT, "packaging", "with_display.sh")

# Says its display, and waits; says which signal ended the waiting. What the signal
# does to the sleep is not worth a word.
WAITING = """
exec 2>/dev/null
for signal in INT TERM HUP; do trap "echo $signal; exit 3" $signal; done
echo "$DISPLAY"
while :; do sleep 0.1; done
"""

# Shows a window of two colours, waits until the compositing manager has both on the screen, swaps
# them, and waits again.
PAINTING = """
import time
from Xlib import X, display
screen = (server := display.Display()).screen()
while not server.get_selection_owner(server.intern_atom("_NET_WM_CM_S0")):
    time.sleep(0.02)
window = screen.root.create_window(0, 0, 200, 100, 0, screen.root_depth, override_redirect=True)
window.map()
def await_colours(*colours):
    for side, colour in enumerate(colours):
        pen = window.create_gc(foreground=colour)
        window.fill_rectangle(pen, 100 * side, 0, 100, 100)
    look = lambda x: screen.root.get_image(x, 50, 1, 1, X.ZPixmap, 0xffffffff).data[:3]
    seen = lambda x: int.from_bytes(look(x), "little")
    end = time.monotonic() + 20
    while [seen(50), seen(150)] != [*colours]:
        assert time.monotonic() < end, [seen(50), seen(150)]
        time.sleep(0.02)
await_colours(0xff0000, 0x00ff00)
await_colours(0x00ff00, 0x0000ff)
"""

BEFORE = set(os.listdir("/proc"))


def processes_on(display):
    """Names of the processes that show on this display or serve it. One of an earlier display that
    had the same number may still be there."""
    found = []
    for entry in set(os.listdir("/proc")) - BEFORE:
        if entry.isdigit():
            try:
                with open(f"/proc/{entry}/environ", "rb") as file:
                    environment = file.read().split(b"\0")
                with open(f"/proc/{entry}/comm") as file:
                    name = file.read().strip()
            except OSError:
                continue
            if b"DISPLAY=" + display.encode() in environment:
                found.append(name)
    return found


def serves(display):
    return os.path.exists(f"/tmp/.X11-unix/X{display[1:]}")


class VirtualDisplay(unittest.TestCase):
    def test_the_command_finds_a_screen_and_its_exit_code_comes_back(self):
        result = subprocess.run(
            [SCRIPT, "sh", "-c", "xdpyinfo >/dev/null && echo $DISPLAY; exit 7"],
            capture_output=True, text=True, check=False, timeout=60)
        self.assertEqual((result.returncode, result.stderr), (7, ""))
        announced, found = result.stdout.splitlines()
        self.assertEqual(announced, f"The virtual display is {found}.")
        self.assertFalse(serves(found))

    def start_waiting(self):
        """Starts a command that waits on a virtual display, which comes as the second result."""
        script = subprocess.Popen([SCRIPT, "bash", "-c", WAITING], stdout=subprocess.PIPE,
                                  stderr=subprocess.PIPE, text=True)
        self.addCleanup(script.communicate)
        self.addCleanup(script.terminate)
        script.stdout.readline()
        return script, script.stdout.readline().split()[0]

    def test_a_window_manager_and_a_compositing_manager_run_on_it(self):
        _, display = self.start_waiting()
        deadline = time.monotonic() + 30
        while not {"openbox", "picom"} <= set(processes_on(display)):
            self.assertLess(time.monotonic(), deadline, processes_on(display))
            time.sleep(0.05)

    def test_a_window_and_what_changes_in_it_are_on_the_screen(self):
        result = subprocess.run([SCRIPT, sys.executable, "-c", PAINTING], capture_output=True,
                                text=True, check=False, timeout=60)
        self.assertEqual((result.returncode, result.stderr), (0, ""))

    def test_a_signal_reaches_the_command_and_everything_ends(self):
        for number in signal.SIGINT, signal.SIGTERM, signal.SIGHUP:
            with self.subTest(number.name):
                script, display = self.start_waiting()
                self.assertTrue(serves(display))
                script.send_signal(number)
                output, complaints = script.communicate(timeout=60)
                self.assertEqual(output, number.name[3:] + "\n")
                self.assertEqual((script.returncode, complaints), (3, ""))
                self.assertFalse(serves(display))
                self.assertEqual(processes_on(display), [])

    def test_a_command_that_does_not_exist_is_said(self):
        result = subprocess.run([SCRIPT, "no-such-command"], capture_output=True, text=True,
                                check=False, timeout=60)
        self.assertEqual(result.returncode, 127)
        self.assertIn("no-such-command", result.stderr)


if __name__ == "__main__":
    sys.exit(unittest.main(verbosity=2))
