#!/usr/bin/env bash
# Copyright (c) 2026 The PTZ panel developers
# SPDX-License-Identifier: MIT
set -euo pipefail

usage="Usage: ./test.sh [OPTION]...
Installs what is missing, builds, and runs every test: those of the built programs as shipped, the
unit tests with AddressSanitizer and UndefinedBehaviorSanitizer. Compiler warnings are errors with
CI=true.

  --filter REGEX  run only the tests whose name matches
  --no-sanitize   run every test as shipped, none with the sanitizers
  --help          show this help

The last lines name the tests that failed, needed a second try or were left out. The exit code is 0
when every test passed, 2 when an option is wrong."

complain() {
    echo "test.sh: $*" >&2
    exit 2
}

sanitize=yes
filter=
left_out=("clang-tidy on what does not differ from main (packaging/tidy.sh --all)"
    "fuzzing (tests/fuzz/run.sh); the seeds and what was found are replayed")
while [[ $# -gt 0 ]]; do
    case $1 in
        --help)
            echo "$usage"
            exit 0
            ;;
        --no-sanitize)
            sanitize=no
            left_out+=("the sanitizers (--no-sanitize)")
            ;;
        --filter)
            [[ $# -ge 2 ]] || complain "--filter needs a regular expression"
            filter=$2
            shift
            ;;
        --filter=*) filter=${1#*=} ;;
        *) complain "unknown option '$1' (see ./test.sh --help)" ;;
    esac
    shift
done
selection=(--no-tests=ignore)
if [[ -n $filter ]]; then
    selection+=(-R "$filter")
    left_out+=("tests whose names do not match '$filter' (--filter)")
fi

cd "$(dirname "${BASH_SOURCE[0]}")"
packaging/install_packages.sh build virtual-camera virtual-display tour test

if command -v ccache >/dev/null; then export CMAKE_CXX_COMPILER_LAUNCHER=ccache; fi
if [[ ${CI:-} == true ]]; then errors=ON; else errors=OFF; fi

configure() { # PRESET
    cmake --preset "$1" -DBUILD_TESTING=ON -DPTZ_WARNINGS_AS_ERRORS=$errors >/dev/null
}

build() { # PRESET [CMAKE_OPTION...]
    echo "== build: $*"
    cmake --build --preset "$@"
}

tests() { # PRESET [CTEST_OPTION...]
    echo "== test: $*"
    # More jobs than there are processors: the longest tests mostly wait.
    ctest --preset "$1" -j $(($(nproc) + 2)) "${selection[@]}" "${@:2}"
}

# What runs beside the rest, by name: the process group; the output is in build/NAME.log.
declare -A beside=()
end_what_runs_beside() {
    local group
    for group in "${beside[@]}"; do kill -TERM -- "-$group" 2>/dev/null || true; done
}
trap end_what_runs_beside EXIT

run_beside() { # NAME COMMAND...
    set -m
    "${@:2}" >"build/$1.log" 2>&1 &
    beside[$1]=$!
    set +m
}

# A busy machine makes an emulated bus or an X server answer too late now and again, so a test that
# fails is tried once more. Tests labelled "once" are randomised; a retry would hide what they find.
tests_as_shipped() { tests release --repeat until-pass:2 -LE "$excluded" 2>&1 | tee build/release.log; }
tests_once() { tests release -L once; }
tests_sanitized() {
    configure sanitize && build sanitize && tests sanitize --repeat until-pass:2 -LE release-only
}

mkdir -p build
rm -f build/{once,release,sanitize}.log
configure release
ctest --preset release -N "${selection[@]}" >build/every-test.log 2>&1
if [[ $sanitize == yes ]]; then
    # Unit tests are built once, where they show most.
    excluded='^(once|unit)$'
    build release --target tested_programs
    run_beside sanitize tests_sanitized
    renice -n 5 -g "${beside[sanitize]}" >/dev/null 2>&1 || true
else
    excluded='^once$'
    build release
fi
run_beside once tests_once

failed=()
result() { # NAME COMMAND...
    "${@:2}" || failed+=("$1")
}
result release tests_as_shipped
for name in "${!beside[@]}"; do
    tail -n +1 -f -s 0.2 --pid="${beside[$name]}" "build/$name.log"
    result "$name" wait "${beside[$name]}"
    unset "beside[$name]"
done

echo
result summary tests/summary.py build/every-test.log build/{once,release,sanitize}.log
for reason in "${left_out[@]}"; do echo "Left out: $reason"; done
if [[ ${#failed[@]} -gt 0 ]]; then
    echo "FAILED: ${failed[*]}; the output is in build/<name>.log"
    exit 1
fi
