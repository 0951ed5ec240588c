# Copyright (c) 2026 The PTZ panel developers
# SPDX-License-Identifier: MIT
"""virtual-camera-view beside a bus: nothing that befalls it disturbs the cameras.

pytest test_view.py --viewer PROGRAM --virtual-camera PROGRAM
"""

import os
import subprocess
from pathlib import Path

import pytest
from PIL import Image
from virtual_camera import Bus
from virtual_camera.waiting import PATIENCE, wait_until

OFFSCREEN = {**os.environ, "QT_QPA_PLATFORM": "offscreen"}
NO_DISPLAY = {name: value for name, value in os.environ.items()
              if name not in ("DISPLAY", "WAYLAND_DISPLAY")} | {"QT_QPA_PLATFORM": "xcb"}


def viewers_of(process):
    """The process numbers of the viewers that a virtual-camera has started."""
    numbers = []
    for status in Path("/proc").glob("[0-9]*/stat"):
        try:
            name, rest = status.read_text(encoding="utf-8").split("(", 1)[1].rsplit(")", 1)
        except (FileNotFoundError, ProcessLookupError):
            continue
        state, parent = rest.split()[:2]
        if name.startswith("virtual-camera-") and int(parent) == process.pid and state != "Z":
            numbers.append(int(status.parent.name))
    return numbers


def is_socket(link):
    try:
        return os.readlink(link).startswith("socket:")
    except FileNotFoundError:  # closed meanwhile
        return False


def connected(viewer):
    """Whether the viewer follows a bus: it has both its connections."""
    return sum(map(is_socket, Path(f"/proc/{viewer}/fd").iterdir())) >= 2


@pytest.fixture
def bus(monkeypatch, virtual_camera_program):
    monkeypatch.setenv("QT_QPA_PLATFORM", "offscreen")
    with Bus(2, arguments=["--view"], executable=virtual_camera_program) as started:
        yield started


def test_is_started_with_the_bus_and_ends_with_it(monkeypatch, virtual_camera_program):
    monkeypatch.setenv("QT_QPA_PLATFORM", "offscreen")
    with Bus(arguments=["--view"], executable=virtual_camera_program) as started:
        wait_until(lambda: viewers_of(started.process), "a viewer")
        [viewer] = viewers_of(started.process)
        wait_until(lambda: connected(viewer), "the viewer's connections")
    wait_until(lambda: not Path(f"/proc/{viewer}").exists(), "the viewer's end")


def test_may_be_killed(bus):
    wait_until(lambda: viewers_of(bus.process), "a viewer")
    [viewer] = viewers_of(bus.process)
    wait_until(lambda: connected(viewer), "the viewer's connections")
    os.kill(viewer, 9)
    wait_until(lambda: not viewers_of(bus.process), "the viewer's end")
    bus.tell("unplug 1")
    assert not bus.state(1)["plugged_in"]
    assert bus.process.poll() is None


def test_may_be_started_twice(bus, viewer_program):
    wait_until(lambda: viewers_of(bus.process), "a viewer")
    with subprocess.Popen([viewer_program, bus.socket], env=OFFSCREEN) as second:
        wait_until(lambda: connected(second.pid), "the second viewer's connections")
        bus.tell("delay 2 20")
        assert bus.state(2)["faults"] == {"delay": 20}
        assert second.poll() is None and viewers_of(bus.process)
        second.kill()


def test_needs_no_display_for_the_bus_to_run(monkeypatch, virtual_camera_program):
    for name in ("DISPLAY", "WAYLAND_DISPLAY"):
        monkeypatch.delenv(name, raising=False)
    monkeypatch.setenv("QT_QPA_PLATFORM", "xcb")
    with Bus(arguments=["--view"], executable=virtual_camera_program) as started:
        wait_until(lambda: not viewers_of(started.process), "the viewer's end")
        assert started.state(1)["plugged_in"]


def test_saves_a_picture_of_the_open_camera(bus, viewer_program, tmp_path):
    files = [tmp_path / "front.png", tmp_path / "up.png"]
    for file, before in zip(files, ["full 1", "unplug 1"]):
        bus.tell(before)
        assert subprocess.run([viewer_program, "--picture", file, bus.socket], env=OFFSCREEN,
                              timeout=PATIENCE, check=False).returncode == 0
    plugged_in, unplugged = [Image.open(file).convert("L") for file in files]
    assert plugged_in.size == (1280, 720)
    assert unplugged.getpixel((1200, 650)) < 40 < plugged_in.getpixel((1200, 650))


@pytest.mark.parametrize("arguments, code", [
    ([], 2), (["--help"], 0), (["a", "b"], 2), (["--frob", "a"], 2), (["/nowhere/at/all"], 1)])
def test_says_what_is_wrong(viewer_program, arguments, code):
    result = subprocess.run([viewer_program, *arguments], env=OFFSCREEN, capture_output=True,
                            text=True, timeout=PATIENCE, check=False)
    assert result.returncode == code
    said = result.stdout if code == 0 else result.stderr
    assert "virtual-camera-view" in said


def test_says_that_there_is_no_display(viewer_program):
    result = subprocess.run([viewer_program, "/nowhere"], env=NO_DISPLAY, capture_output=True,
                            text=True, timeout=PATIENCE, check=False)
    assert result.returncode == 1
    assert result.stderr == "virtual-camera-view: there is no display\n"
