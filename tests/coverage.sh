#!/usr/bin/env bash
# Copyright (c) 2026 The PTZ panel developers
# SPDX-License-Identifier: MIT
set -euo pipefail

usage="Usage: tests/coverage.sh [OPTION]...
Builds the panel so that it counts what runs, runs the tests, and reports which lines and branches
of device/, console/, desktop/ and widgets/ they reached.

  --build DIR     build there (default: build/coverage)
  --filter REGEX  run only the tests whose name matches
  --keep          add to what earlier runs reached
  --report-only   run nothing, report what earlier runs reached
  --help          show this help

The report is printed; DIR/coverage.txt has it too, and DIR/coverage.html shows it line by line.
The exit code is 0 when every test passed, 2 when an option is wrong."

complain() {
    echo "coverage.sh: $*" >&2
    exit 2
}

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
build=$root/build/coverage
# Fuzzers say nothing about the panel, the soak nothing that the other tests do not.
selection=(-LE 'fuzz|soak' --no-tests=error)
keep=no
run=yes
while [[ $# -gt 0 ]]; do
    case $1 in
        --help)
            echo "$usage"
            exit 0
            ;;
        --build | --filter)
            [[ $# -ge 2 ]] || complain "$1 needs a value"
            if [[ $1 == --build ]]; then build=$2; else selection+=(-R "$2"); fi
            shift
            ;;
        --keep) keep=yes ;;
        --report-only) run=no ;;
        *) complain "unknown option '$1' (see --help)" ;;
    esac
    shift
done
mkdir -p "$build"
build=$(cd "$build" && pwd)
cd "$root"

status=0
if [[ $run == yes ]]; then
    if command -v ccache >/dev/null; then export CMAKE_CXX_COMPILER_LAUNCHER=ccache; fi
    cmake --preset coverage -B "$build" >/dev/null
    cmake --build "$build"
    if [[ $keep == no ]]; then find "$build" -name '*.gcda' -delete; fi
    # A panel that is killed does not write what it counted.
    PTZ_ENDING_SIGNAL=15 ctest --test-dir "$build" --output-on-failure -j "$(nproc)" "${selection[@]}" || status=1
fi

/usr/bin/python3 tests/coverage_report.py "$build" "$build/coverage.json" | tee "$build/coverage.txt"
gcovr --root "$root" --add-tracefile "$build/coverage.json" --html-details "$build/coverage.html"
exit $status
