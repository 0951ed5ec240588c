# Copyright (c) 2026 The PTZ panel developers
# SPDX-License-Identifier: MIT
"""The Python module virtual_camera, beyond what its example shows."""

import os

import pytest

from virtual_camera import Bus, Log, VirtualCameraError, wait_until


def test_describes_the_devices(virtual_cameras):
    bus = virtual_cameras(devices=["camera", "storage"], options={"1.product": "Hall"})
    assert bus.describe(1)["product"] == "Hall"
    assert bus.describe(2)["kind"] == "storage"
    with pytest.raises(VirtualCameraError, match="no device 3"):
        bus.state(3)


def test_refusals_are_exceptions(virtual_camera):
    with pytest.raises(VirtualCameraError, match="dance 1: no command is called 'dance'"):
        virtual_camera.tell("dance 1")
    assert virtual_camera.tell("list") == "1 camera address 2"
    assert virtual_camera.tell("delay 1 0") == ""


def test_watches(virtual_camera):
    with virtual_camera.watch() as messages:
        assert next(messages)["devices"][0]["description"] == virtual_camera.describe()
        virtual_camera.tell("stall 1 gain")
        assert next(messages)["devices"] == [{"number": 1, "faults": {"stall": ["gain"]}}]


def test_moves_the_camera(virtual_camera):
    with virtual_camera.watch() as messages:
        next(messages)
        virtual_camera.go("left=1", "up")
        state = next(messages)["devices"][0]
        assert (state["pan"]["velocity"], state["tilt"]["velocity"]) == (-5 * 3600, 90 * 3600)
    virtual_camera.go("stop")
    virtual_camera.go(pan=-3600, zoom=100)
    wait_until(lambda: virtual_camera.state()["zoom"]["position"] == 100)


def test_logs(virtual_camera):
    virtual_camera.tell("unplug 1")
    record = virtual_camera.log.wait_for(lambda record: record.event == "unplug")
    assert (record.device, str(record)) == (1, "cam1 UNPLUG")


def test_the_log_of_another_version_is_refused(tmp_path):
    path = tmp_path / "log"
    path.write_text('{"log":2}\n', encoding="utf-8")
    with Log(path) as log, pytest.raises(ValueError, match="another version"):
        log.records()


def test_everything_ends_with_the_bus(virtual_cameras, request):
    executable = request.config.getoption("--virtual-camera")
    with Bus(1, executable=executable) as bus:
        program = bus.start("sleep", "60")
        folder = bus.run("sh", "-c", "echo $UMOCKDEV_DIR").stdout.strip()
        assert os.path.isdir(folder)
    assert program.poll() == -9
    assert bus.process.poll() == 0
    assert not os.path.exists(folder)
    assert not bus.folder.exists()


def test_a_bus_that_cannot_be(request):
    executable = request.config.getoption("--virtual-camera")
    with pytest.raises(RuntimeError, match="ended with 2"), Bus(99, executable=executable):
        pass
    with pytest.raises(FileNotFoundError), Bus(1, executable="/nonexistent"):
        pass
