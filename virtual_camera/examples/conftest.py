# Copyright (c) 2026 The PTZ panel developers
# SPDX-License-Identifier: MIT

pytest_plugins = ["virtual_camera.pytest_plugin"]


def pytest_addoption(parser):
    parser.addoption("--program", required=True, help="the program zoom_in")
