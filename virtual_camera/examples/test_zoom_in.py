# Copyright (c) 2026 The PTZ panel developers
# SPDX-License-Identifier: MIT
"""How to test a camera program: pytest --program path/to/zoom_in"""

import pytest


@pytest.fixture
def program(request):
    return request.config.getoption("--program")


def test_zooms_in(virtual_camera, program):
    result = virtual_camera.run(program)
    assert (result.returncode, result.stdout) == (0, "Zoomed in to 16384\n")
    assert virtual_camera.state()["zoom"] == {"position": 16384, "velocity": 0}


def test_sends_one_command(virtual_camera, program):
    virtual_camera.run(program)
    commands = virtual_camera.log.requests(request="SET_CUR")
    assert [(command.control, command.values) for command in commands] == [
        ("zoom_absolute", {"value": 16384})]


def test_goes_as_far_as_the_camera_can(virtual_cameras, program):
    cameras = virtual_cameras(2, options={"zoom_absolute": "0:100:0:0"})
    assert cameras.run(program).stdout == "Zoomed in to 100\n"
    assert [cameras.state(number)["zoom"]["position"] for number in (1, 2)] == [100, 0]


def test_says_when_the_camera_is_unplugged(virtual_camera, program):
    running = virtual_camera.start(program)
    with virtual_camera.watch() as messages:
        next(message for message in messages
             if message["devices"][0].get("zoom", {}).get("velocity"))
    virtual_camera.tell("unplug 1")
    assert running.stdout.read() == "Lost the camera: No such device\n"
    assert running.wait() == 1


@pytest.mark.parametrize(("faults", "output"), [
    (["unplug 1"], "No camera: No such device\n"),
    (["refuse-open 1 EACCES"], "Cannot open the camera: Access denied\n"),
    (["stall 1 zoom_absolute GET_MAX"], "This camera has no zoom: Pipe\n"),
    (["stall 1 zoom_absolute SET_CUR"], "The camera does not zoom: Pipe\n"),
])
def test_says_what_is_wrong(virtual_cameras, program, faults, output):
    result = virtual_cameras(1, faults=faults).run(program)
    assert (result.returncode, result.stdout) == (1, output)
