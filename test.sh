#!/usr/bin/env bash
# Copyright (c) 2026 The PTZ panel developers
# SPDX-License-Identifier: MIT
set -euo pipefail

usage="Usage: ./test.sh [OPTION]...
Installs what is missing, builds everything and runs every test: as shipped, and again with
AddressSanitizer and UndefinedBehaviorSanitizer. With CI=true compiler warnings are errors.

  --filter REGEX  run only the tests whose name matches
  --no-sanitize   only as shipped
  --help          show this help

The exit code is 0 when every test passed in every configuration, 2 when an option is wrong."

complain() {
    echo "test.sh: $*" >&2
    exit 2
}

sanitize=yes
selection=(--no-tests=error)
while [[ $# -gt 0 ]]; do
    case $1 in
        --help)
            echo "$usage"
            exit 0
            ;;
        --no-sanitize) sanitize=no ;;
        --filter)
            [[ $# -ge 2 ]] || complain "--filter needs a regular expression"
            selection+=(-R "$2")
            shift
            ;;
        --filter=*) selection+=(-R "${1#*=}") ;;
        *) complain "unknown option '$1' (see ./test.sh --help)" ;;
    esac
    shift
done

cd "$(dirname "${BASH_SOURCE[0]}")"
packaging/install_packages.sh build virtual-camera virtual-display test

if command -v ccache >/dev/null; then export CMAKE_CXX_COMPILER_LAUNCHER=ccache; fi
if [[ ${CI:-} == true ]]; then errors=ON; else errors=OFF; fi

build() { # PRESET
    echo "== build: $1"
    cmake --preset "$1" -DBUILD_TESTING=ON -DPTZ_WARNINGS_AS_ERRORS=$errors >/dev/null \
        && cmake --build --preset "$1"
}

run_tests() { # PRESET CTEST_OPTION...
    echo "== test: $1"
    # One job more than there are processors: the longest tests mostly wait.
    ctest --preset "$1" -j $(($(nproc) + 1)) "${selection[@]}" "${@:2}"
}

# The end of a configuration's log: CTest's summary, or what went wrong before it.
closing_lines() { # PRESET
    echo
    echo "== $1"
    if grep -q '% tests passed' "build/$1.log"; then
        sed -n '/% tests passed/,$p' "build/$1.log"
    else
        tail -n 20 "build/$1.log"
    fi
}

build release

if [[ $sanitize == no ]]; then
    run_tests release
    exit
fi

# The sanitized configuration is built and tested beside the tests of the shipped one, of which
# some take minutes in which the processors have time to spare.
set -m # a process group of its own, which can be ended as a whole
(build sanitize && run_tests sanitize -LE release-only --no-tests=ignore) >build/sanitize.log 2>&1 &
beside=$!
set +m
renice -n 5 -g "$beside" >/dev/null 2>&1 || true
trap 'kill -TERM -- "-$beside" 2>/dev/null || true' EXIT

passed=()
failed=()
if run_tests release 2>&1 | tee build/release.log; then passed+=(release); else failed+=(release); fi

tail -n +1 -f -s 0.2 --pid="$beside" build/sanitize.log
if wait "$beside"; then passed=(sanitize "${passed[@]}"); else failed+=(sanitize); fi
trap - EXIT

for configuration in "${passed[@]}" "${failed[@]}"; do closing_lines "$configuration"; done
[[ ${#failed[@]} -eq 0 ]]
