#!/usr/bin/python3
# Copyright (c) 2026 The PTZ panel developers
# SPDX-License-Identifier: MIT

"""Shows that the drills can fail: runs them against the panel and against each variant of it.

    prove.py [--drills NAME,...] FOLDER [VARIANT...]

builds in FOLDER, which should be empty or from an earlier run, and leaves there what became of
each row, in outcomes/<variant>/; the panel as it is, is the variant "whole" at the beginning and
"again" at the end. Without names it takes all variants, and each on all drills that have to do with
it. fault_drills_page.py makes the page of it."""

import argparse
import os
import shutil
import subprocess
import sys
from concurrent.futures import ThreadPoolExecutor
from pathlib import Path

from protections import DEFECTS, PROTECTIONS, Variant

HERE = Path(__file__).resolve().parent
ROOT = HERE.parents[2]
DRILLS = HERE.relative_to(ROOT)
TARGETS = ["ptz-panel", "virtual-camera", "uvc_call_recorder"]

ALL_DRILLS = sorted(path.stem.removeprefix("test_") for path in HERE.glob("test_*.py"))
WHOLE = Variant("whole", "", None, None, None, " ".join(ALL_DRILLS))
AGAIN = WHOLE._replace(name="again")
AT_ONCE = 5

PATIENCE = {"PTZ_DRILL_PATIENCE": "6", "PTZ_DEADLINE": "6"}
"""What does not happen soon in a broken panel does not happen at all. It goes for the whole one too:
a row that is only too slow would fail there."""


def with_changes(text, variant):
    one = isinstance(variant.old, str)
    for old, new in [(variant.old, variant.new)] if one else zip(variant.old, variant.new):
        if text.count(old) != 1:
            raise SystemExit(f"{variant.name}: its old text is not in {variant.file} once")
        text = text.replace(old, new)
    return text


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
            # Without its time: what was built last may be of a variant.
            shutil.copyfile(ROOT / name, self.source / name)
        self._run("cmake", "-S", self.source, "-B", self.build, "-G", "Ninja",
                  "-DCMAKE_BUILD_TYPE=Debug")

    def try_variant(self, variant, drills):
        changed = self.source / variant.file if variant.file else None
        before = changed.read_text() if changed else None
        if changed:
            changed.write_text(with_changes(before, variant))
        try:
            self._run("cmake", "--build", self.build, "--target", *TARGETS)
            with ThreadPoolExecutor(AT_ONCE) as pool:
                list(pool.map(lambda name: self._drill(name, variant), drills))
        finally:
            if changed:
                changed.write_text(before)

    def _drill(self, name, variant):
        folder = self.outcomes / variant.name
        (folder / f"test_{name}.jsonl").unlink(missing_ok=True)
        environment = dict(os.environ, PTZ_BIN_DIR=str(self.build / "bin"),
                           PTZ_DRILL_OUTCOMES=str(folder), PYTHONDONTWRITEBYTECODE="1", **PATIENCE)
        done = subprocess.run([sys.executable, "-m", "pytest", "-q", "-p", "no:cacheprovider",
                               "--tb=short", self.source / DRILLS / f"test_{name}.py"],
                              env=environment,
                              capture_output=True, text=True, check=False)
        print(f"{variant.name}: {name}: {done.stdout.strip().splitlines()[-1]}", flush=True)
        if variant in (WHOLE, AGAIN) and done.returncode:
            print(done.stdout)

    def _run(self, *command):
        subprocess.run(command, check=True, stdout=subprocess.DEVNULL)


def arguments():
    parser = argparse.ArgumentParser(description=__doc__,
                                     formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--drills", type=lambda names: names.split(","), default=ALL_DRILLS,
                        help="only these: " + ",".join(ALL_DRILLS))
    parser.add_argument("folder", type=Path)
    parser.add_argument("variants", nargs="*", metavar="VARIANT")
    return parser, parser.parse_args()


def main():
    parser, wanted = arguments()
    variants = [WHOLE, *PROTECTIONS, *DEFECTS, AGAIN]
    for names, known in ((wanted.variants, {variant.name for variant in variants}),
                         (wanted.drills, set(ALL_DRILLS))):
        if unknown := set(names) - known:
            parser.error(f"there is no {', '.join(sorted(unknown))}")
    workshop = Workshop(wanted.folder.resolve())
    for variant in variants:
        drills = [name for name in variant.drills.split() if name in wanted.drills]
        if drills and (not wanted.variants or variant.name in wanted.variants):
            workshop.try_variant(variant, drills)


if __name__ == "__main__":
    main()
