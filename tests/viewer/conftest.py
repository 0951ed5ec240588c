# Copyright (c) 2026 The PTZ panel developers
# SPDX-License-Identifier: MIT
import pytest

pytest_plugins = ["virtual_camera.pytest_plugin"]


def pytest_addoption(parser):
    parser.addoption("--viewer", help="the program virtual-camera-view")


@pytest.fixture
def viewer_program(request):
    return request.config.getoption("--viewer")


@pytest.fixture
def virtual_camera_program(request):
    return request.config.getoption("--virtual-camera")
