# Copyright (c) 2026 The PTZ panel developers
# SPDX-License-Identifier: MIT
"""Fixtures for pytest: write pytest_plugins = ["virtual_camera.pytest_plugin"] in conftest.py."""

import contextlib

import pytest

from .bus import Bus


def pytest_addoption(parser):
    parser.addoption("--virtual-camera", metavar="PROGRAM", default=None,
                     help="the program virtual-camera (default: $VIRTUAL_CAMERA, or on the PATH)")


@pytest.fixture
def virtual_cameras(request):
    """Makes buses: virtual_cameras(2, options={"2.product": "Hall"}). They end with the test."""
    executable = request.config.getoption("--virtual-camera")
    with contextlib.ExitStack() as ends:
        def make(cameras=None, **options):
            return ends.enter_context(Bus(cameras, **{"executable": executable, **options}))
        yield make


@pytest.fixture
def virtual_camera(virtual_cameras):
    """A bus with one camera."""
    return virtual_cameras(1)
