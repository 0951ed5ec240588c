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

configure() { # PRESET
    cmake --preset "$1" -DBUILD_TESTING=ON -DPTZ_WARNINGS_AS_ERRORS=$errors >/dev/null
}

build() { # PRESET [TARGET...]
    local targets=()
    if [[ $# -gt 1 ]]; then targets=(--target "${@:2}"); fi
    echo "== build: $*"
    cmake --build --preset "$1" "${targets[@]}"
}

run_once() { # PRESET CTEST_OPTION...
    echo "== test: $*"
    # One job more than there are processors: the longest tests mostly wait.
    ctest --preset "$1" -j $(($(nproc) + 1)) "${selection[@]}" "${@:2}"
}

# The machine is so busy then that now and again an emulated bus or an X server answers too late; a
# test that fails is tried once more, and CTest's output names it. Not so those labelled "once": what
# they find is found by chance.
run_tests() { # PRESET CTEST_OPTION...
    run_once "$@" --repeat until-pass:2
}

configure release
if [[ $sanitize == no ]]; then
    build release
    run_tests release
    exit
fi

# What runs beside the rest, by name: the process group, the output in build/NAME.log.
declare -A beside=()
end_what_runs_beside() {
    local group
    for group in "${beside[@]}"; do kill -TERM -- "-$group" 2>/dev/null || true; done
}
trap end_what_runs_beside EXIT

run_beside() { # NAME COMMAND...
    set -m # a process group of its own, which can be ended as a whole
    "${@:2}" >"build/$1.log" 2>&1 &
    beside[$1]=$!
    set +m
}

# The end of a log: CTest's summary, or what went wrong before it.
closing_lines() { # NAME
    echo
    echo "== $1"
    if grep -q '% tests passed' "build/$1.log"; then
        sed -n '/% tests passed/,$p' "build/$1.log"
    else
        tail -n 20 "build/$1.log"
    fi
}

sanitized() {
    configure sanitize && build sanitize && run_tests sanitize -LE release-only --no-tests=ignore
}

# The soak takes by far the longest and leaves the processors time to spare, so it starts as soon
# as there are the programs that it needs; the fuzzers need none.
rest=(-LE once)
if ctest --preset release -N -L once "${selection[@]}" --no-tests=ignore | grep -q 'Test *#'; then
    build release ptz-panel virtual-camera
    run_beside once run_once release -L once
    rest+=(--no-tests=ignore)
fi
build release
run_beside sanitize sanitized
renice -n 5 -g "${beside[sanitize]}" >/dev/null 2>&1 || true

passed=()
failed=()
result() { # NAME COMMAND...
    if "${@:2}"; then passed=("$1" "${passed[@]}"); else failed+=("$1"); fi
}
logged_tests() { run_tests release "${rest[@]}" 2>&1 | tee build/release.log; }
result release logged_tests
for name in "${!beside[@]}"; do
    tail -n +1 -f -s 0.2 --pid="${beside[$name]}" "build/$name.log"
    result "$name" wait "${beside[$name]}"
    unset "beside[$name]"
done

# A failure stands last, where it is looked for.
for name in "${passed[@]}" "${failed[@]}"; do closing_lines "$name"; done
[[ ${#failed[@]} -eq 0 ]]
