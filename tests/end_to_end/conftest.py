# Copyright (c) 2026 The PTZ panel developers
# SPDX-License-Identifier: MIT

"""A desktop for each file of tests, and panels on it."""

import contextlib
import os
from pathlib import Path

import pytest

from harness.desktop import Desktop
from harness.panel import Panel

DESKTOP = pytest.StashKey[Desktop]()


@pytest.fixture(scope="module")
def scale():
    """Pixels of the X server for each of the panel."""
    return 1


@pytest.fixture(scope="module")
def desktop(request, scale):
    """The screen, window manager and tray that the tests of a file share."""
    with Desktop(scale=scale) as made:
        request.node.stash[DESKTOP] = made
        yield made


@pytest.fixture
def start(request, scale):
    """Starts a panel on a desktop of its own; both end with the test."""
    with contextlib.ExitStack() as ends:
        def start_panel(*arguments, on=None, **options):
            desktop = on or ends.enter_context(Desktop(scale=scale))
            request.node.stash[DESKTOP] = desktop
            return ends.enter_context(Panel(desktop, *arguments, **options))
        yield start_panel


@pytest.fixture(scope="module")
def shared_panel(desktop, request):
    """A panel for all tests of a file. The file says CAMERAS = 3 for more than one camera."""
    with Panel(desktop, getattr(request.module, "CAMERAS", 1)) as panel:
        yield panel.opened()


@pytest.fixture
def panel(shared_panel):
    """The shared panel, nothing being under way."""
    shared_panel.received()
    return shared_panel


@pytest.hookimpl(hookwrapper=True)
def pytest_runtest_makereport(item, call):
    """A failure says what was on the screen: a picture in the folder PTZ_SCREENSHOTS."""
    report = (yield).get_result()
    folder = os.environ.get("PTZ_SCREENSHOTS")
    shared = item.getparent(pytest.Module).stash.get(DESKTOP, None)
    desktop = item.stash.get(DESKTOP, shared)
    if report.failed and folder and desktop:
        path = Path(folder) / f"{item.name.replace('/', '_')}.png"
        path.parent.mkdir(parents=True, exist_ok=True)
        try:
            desktop.screenshot().save(path)
            report.sections.append(("screen", str(path)))
        except Exception as reason:  # The X server may be what failed.
            report.sections.append(("screen", f"no picture: {reason}"))
