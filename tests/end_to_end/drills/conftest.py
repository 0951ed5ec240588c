# Copyright (c) 2026 The PTZ panel developers
# SPDX-License-Identifier: MIT

"""Runs the rows of the fault drills and notes what became of each."""

import contextlib
import json
import os
import signal
from pathlib import Path

import pytest

pytest.register_assert_rewrite("drill", "holds", "image")

from calls import noting_calls  # noqa: E402
from drill import SCRIBBLE, SEED, Drill
from harness.desktop import Desktop
from harness.panel import Panel


def pytest_report_header():
    return f"random moments: PTZ_DRILL_SEED={SEED}"


@pytest.fixture
def drill(row, request, tmp_path):
    """The row's panel, on the desktop that the rows of a file share, or on one of the row's own."""
    how = dict(row.how)
    with contextlib.ExitStack() as ends:
        if "desktop" in how:
            desktop = ends.enter_context(Desktop(**how.pop("desktop")))
        else:
            desktop = request.getfixturevalue("desktop")
            # A row that failed may have left another one.
            desktop.windows.show_desktop(0)
        environment = {**SCRIBBLE, **noting_calls(tmp_path), "PTZ_DRILL_FOLDER": str(tmp_path),
                       **how.pop("environment", {})}

        def start():
            return ends.enter_context(Panel(desktop, environment=environment, **how))
        made = Drill(row, start, desktop, tmp_path)
        ends.callback(end_processes, made.other_processes)
        yield made


def end_processes(ids):
    for process in ids:
        with contextlib.suppress(ProcessLookupError):
            os.kill(process, signal.SIGKILL)


@pytest.hookimpl(hookwrapper=True)
def pytest_runtest_makereport(item, call):
    """Each row's outcome goes to a file of the folder PTZ_DRILL_OUTCOMES."""
    report = (yield).get_result()
    folder = os.environ.get("PTZ_DRILL_OUTCOMES")
    if not folder or not hasattr(item, "callspec"):
        return
    path = Path(folder) / f"{Path(item.path).stem}.jsonl"
    path.parent.mkdir(parents=True, exist_ok=True)
    if report.when == "call" or report.outcome == "failed":
        row = item.callspec.params["row"]
        with open(path, "a", encoding="utf-8") as file:
            json.dump({"file": path.stem, "fault": row.fault, "moment": row.moment,
                       "outcome": row.outcome, "seed": SEED,
                       "passed": report.outcome == "passed",
                       "failed in": report.when if report.outcome == "failed" else None}, file)
            file.write("\n")
