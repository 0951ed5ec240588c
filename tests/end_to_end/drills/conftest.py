# Copyright (c) 2026 The PTZ panel developers
# SPDX-License-Identifier: MIT

"""Runs the rows of the fault drills and writes down what became of each."""

import contextlib
import importlib
import os
import signal
import sys
from pathlib import Path

import pytest

FAULTS = Path(__file__).resolve().parent / "faults"
sys.path.insert(0, str(FAULTS))
EVERY_TABLE = sorted(path.stem for path in FAULTS.glob("*.py"))
pytest.register_assert_rewrite("drill", "holds", "image", *EVERY_TABLE)

from calls import noting_calls  # noqa: E402
from drill import SCRIBBLE, SEED, Drill  # noqa: E402
from harness.desktop import Desktop  # noqa: E402
from harness.panel import Panel  # noqa: E402

OUTCOMES = pytest.StashKey[dict]()


def pytest_addoption(parser):
    parser.addoption("--faults", default=",".join(EVERY_TABLE), help="the tables to run")


def pytest_report_header():
    return f"random moments: PTZ_DRILL_SEED={SEED}"


def pytest_generate_tests(metafunc):
    rows = [row for table in metafunc.config.option.faults.split(",")
            for row in importlib.import_module(table).ROWS]
    names = [row.name for row in rows]
    assert len(set(names)) == len(names), "two rows of the same name"
    metafunc.config.stash[OUTCOMES] = dict.fromkeys(rows, "not run")
    metafunc.parametrize("row", rows, ids=names)


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
    report = (yield).get_result()
    if report.when == "call" or report.failed:
        # A row whose desktop or panel could not even be started says nothing.
        outcome = "not started" if report.when == "setup" else report.outcome
        item.config.stash[OUTCOMES][item.callspec.params["row"]] = outcome


def pytest_sessionfinish(session):
    """Writes the table of the rows into the folder PTZ_DRILL_OUTCOMES."""
    folder = os.environ.get("PTZ_DRILL_OUTCOMES")
    rows = session.config.stash.get(OUTCOMES, {})
    if folder and rows:
        path = Path(folder) / f"{session.config.option.faults}.md"
        path.parent.mkdir(parents=True, exist_ok=True)
        lines = [f"| fault | moment | what must happen | seed {SEED} |", "|---|---|---|---|",
                 *(f"| {row.fault} | {row.moment} | {row.outcome} | {outcome} |"
                   for row, outcome in rows.items())]
        path.write_text("\n".join(lines) + "\n", encoding="utf-8")
