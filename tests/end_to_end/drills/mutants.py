#!/usr/bin/python3
# Copyright (c) 2026 The PTZ panel developers
# SPDX-License-Identifier: MIT

"""Sees the fault drills fail: runs them against panels that are broken on purpose.

    mutants.py                         checks that the texts of mutants.txt are in the source
    mutants.py FOLDER [MUTANT...]      runs the drills against the mutants, all or these

builds in FOLDER, which should be empty or from an earlier run, and leaves there the outcome of each
row, in outcomes/<mutant>/, and the list of all rows with the mutants that each fails with, in
fault-drills.md. The panel as it is runs first, as "whole", and again at the end, as "again"."""

import os
import re
import shutil
import subprocess
import sys
from concurrent.futures import ThreadPoolExecutor
from dataclasses import dataclass, field
from pathlib import Path

HERE = Path(__file__).resolve().parent
ROOT = HERE.parents[2]
EVERY_TABLE = sorted(path.stem for path in (HERE / "faults").glob("*.py"))
TARGETS = ["ptz-panel", "virtual-camera", "uvc_call_recorder"]
AT_ONCE = 5

PATIENCE = {"PTZ_DRILL_PATIENCE": "6", "PTZ_DEADLINE": "6"}
"""What does not happen soon in a broken panel does not happen at all. It goes for the whole one too:
a row that is only too slow would fail there."""

COMMON = {"deaf-keys", "next-camera", "first-camera"}
"""With these the camera that a row drives at its end is not driven, whatever the row is about."""


@dataclass
class Mutant:
    name: str
    meaning: str = ""
    file: Path = None
    tables: list = field(default_factory=lambda: EVERY_TABLE)
    changes: list = field(default_factory=list)

    def text(self, root):
        """The file's text with the changes. Only what is not white space must match, so that the
        source can be formatted anew."""
        text = (root / self.file).read_text(encoding="utf-8")
        for old, new in self.changes:
            found = list(re.finditer(r"\s*".join(map(re.escape, old.split())), text))
            if len(found) != 1:
                raise ValueError(f"{self.name}: {len(found)} times in {self.file}: {old}")
            text = text[:found[0].start()] + new + text[found[0].end():]
        return text


def read_mutants():
    mutants = []
    for block in (HERE / "mutants.txt").read_text(encoding="utf-8").split("\n\n"):
        if block.startswith(("#", "==")):
            continue
        head, place, *lines = block.strip("\n").split("\n")
        file, tables = place.strip().split(": ")
        changes = re.findall(r"((?:^  -.*\n?)+)((?:^  \+.*\n?)+)", "\n".join(lines), re.M)
        mutants.append(Mutant(*head.split(": ", 1), Path(file), tables.split(), [
            tuple("\n".join(line[4:] for line in part.strip("\n").split("\n")) for part in change)
            for change in changes]))
    return mutants


def check(mutants):
    """Says which mutants do not match the source any more."""
    wrong = []
    for mutant in mutants:
        try:
            mutant.text(ROOT)
        except (OSError, ValueError) as reason:
            wrong.append(str(reason))
        if unknown := set(mutant.tables) - set(EVERY_TABLE):
            wrong.append(f"{mutant.name}: there are no drills {unknown}")
    print(*wrong, f"{len(mutants)} mutants, {len(wrong)} of them wrong", sep="\n")
    return 1 if wrong else 0


class Workshop:
    """A copy of the program's sources, and what is built of it."""

    def __init__(self, folder):
        self.source, self.build = folder / "source", folder / "build"
        self.outcomes = folder / "outcomes"
        shutil.rmtree(self.source, ignore_errors=True)
        files = subprocess.run(["git", "ls-files"], cwd=ROOT, check=True,
                               capture_output=True, text=True).stdout.split("\n")
        for name in filter(None, files):
            (self.source / name).parent.mkdir(parents=True, exist_ok=True)
            # Without its time: what was built last may be of a mutant.
            shutil.copyfile(ROOT / name, self.source / name)
        subprocess.run(["cmake", "-S", self.source, "-B", self.build, "-G", "Ninja",
                        "-DCMAKE_BUILD_TYPE=Debug"], check=True, stdout=subprocess.DEVNULL)

    def run(self, mutant):
        if mutant.file:
            (self.source / mutant.file).write_text(mutant.text(ROOT))
        try:
            subprocess.run(["cmake", "--build", self.build, "--target", *TARGETS], check=True,
                           stdout=subprocess.DEVNULL)
            with ThreadPoolExecutor(AT_ONCE) as pool:
                list(pool.map(lambda table: self._drill(table, mutant.name), mutant.tables))
        finally:
            if mutant.file:
                shutil.copyfile(ROOT / mutant.file, self.source / mutant.file)

    def _drill(self, table, mutant):
        environment = dict(os.environ, PTZ_BIN_DIR=str(self.build / "bin"), PYTHONDONTWRITEBYTECODE="1",
                           PTZ_DRILL_OUTCOMES=str(self.outcomes / mutant), **PATIENCE)
        done = subprocess.run([sys.executable, "-m", "pytest", "-q", "-p", "no:cacheprovider",
                               "--tb=short", HERE / "test_drills.py", "--faults", table],
                              env=environment, capture_output=True, text=True, check=False)
        print(f"{mutant}: {table}: {done.stdout.strip().splitlines()[-1]}", flush=True)
        if mutant in ("whole", "again") and done.returncode:
            print(done.stdout)


def outcomes(folder):
    """The outcome of each row, by its table, fault, moment and what must happen."""
    rows = {}
    for path in sorted(folder.glob("*.md")):
        for line in path.read_text(encoding="utf-8").splitlines()[2:]:
            *row, outcome = line.strip("| ").split(" | ")
            rows[(path.stem, *row)] = outcome
    return rows


def report(folder, mutants):
    """The list of all rows, and of the mutants with how many rows fail with each."""
    whole, again = outcomes(folder / "whole"), outcomes(folder / "again")
    tried = {mutant.name: outcomes(folder / mutant.name) for mutant in mutants}
    yield "| drills | fault | moment | what must happen | whole | fails with |\n|---|---|---|---|---|---|"
    for row, outcome in whole.items():
        failing = [f"*{name}*" if name in COMMON else name for name, rows in tried.items()
                   if rows.get(row) == "failed"]
        yield f"| {' | '.join(row)} | {outcome}, {again.get(row)} | {', '.join(failing) or '**none**'} |"
    yield "\n| mutant | what is wrong | rows that fail |\n|---|---|---|"
    for mutant in mutants:
        rows = list(tried[mutant.name].values())
        yield f"| {mutant.name} | {mutant.meaning} | {rows.count('failed')} of {len(rows)} |"


def main():
    mutants = read_mutants()
    if len(sys.argv) < 2:
        return check(mutants)
    folder, *names = sys.argv[1:]
    every = [Mutant("whole"), *mutants, Mutant("again")]
    if unknown := set(names) - {mutant.name for mutant in every}:
        raise SystemExit(f"there is no {', '.join(sorted(unknown))}\n{__doc__}")
    workshop = Workshop(Path(folder).resolve())
    for mutant in every:
        if not names or mutant.name in names:
            workshop.run(mutant)
    (Path(folder) / "fault-drills.md").write_text("\n".join(report(workshop.outcomes, mutants)) + "\n")
    missed = [mutant.name for mutant in mutants if (not names or mutant.name in names)
              and "failed" not in outcomes(workshop.outcomes / mutant.name).values()]
    print(f"Not found: {', '.join(missed) or 'none'}")
    return 1 if missed else 0


if __name__ == "__main__":
    sys.exit(main())
