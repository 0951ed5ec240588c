#!/usr/bin/env bash
# Copyright (c) 2026 The PTZ panel developers
# SPDX-License-Identifier: MIT
set -euo pipefail

usage="Usage: tests/fuzz/run.sh [OPTION]... [SECONDS]
Builds the fuzz targets with clang and runs them for so many seconds in total (default: 60),
shared equally. What is found is written to a file, and its name is printed.

  --target NAME  run only this one (camera_model, control, description, usbfs)
  --build DIR    build there and keep the inputs of interest there for the next run
                 (default: build/fuzz)
  --help         show this help

The exit code is 0 when nothing was found, 1 when something was, 2 when an option is wrong."

complain() {
    echo "run.sh: $*" >&2
    exit 2
}

here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
root=$(cd "$here/../.." && pwd)
known=(camera_model control description usbfs)

targets=()
seconds=60
build=$root/build/fuzz
while [[ $# -gt 0 ]]; do
    case $1 in
        --help)
            echo "$usage"
            exit 0
            ;;
        --target)
            [[ $# -ge 2 && " ${known[*]} " == *" $2 "* ]] || complain "--target knows ${known[*]}"
            targets+=("$2")
            shift
            ;;
        --build)
            [[ $# -ge 2 ]] || complain "--build needs a folder"
            build=$2
            shift
            ;;
        -*) complain "unknown option '$1' (see --help)" ;;
        *)
            [[ $1 =~ ^[1-9][0-9]*$ ]] || complain "'$1' is not a number of seconds"
            seconds=$1
            ;;
    esac
    shift
done
[[ ${#targets[@]} -gt 0 ]] || targets=("${known[@]}")

mkdir -p "$build"
build=$(cd "$build" && pwd)
if command -v ccache >/dev/null; then export CMAKE_CXX_COMPILER_LAUNCHER=ccache; fi
(cd "$root" && cmake --preset fuzz -B "$build" && cmake --build "$build") >"$build/build.log" 2>&1 || {
    tail -n 30 "$build/build.log" >&2
    complain "the fuzz targets could not be built"
}
"$here/seeds.py" "$build/seeds"

fuzz() { # TARGET SECONDS
    local dictionary=requests longest=1024 corpus=$build/corpus/$1 log=$build/$1.log inputs=("$build/seeds/$1")
    if [[ $1 == control || $1 == description ]]; then dictionary=words; fi
    # Long enough to find out what becomes of a line that is too long.
    if [[ $1 == control ]]; then longest=6000; fi
    if [[ -d $here/found/$1 ]]; then inputs+=("$here/found/$1"); fi
    mkdir -p "$corpus" "$build/findings"
    "$build/bin/$1_fuzz" -max_total_time="$2" -max_len="$longest" -timeout=10 -rss_limit_mb=2048 \
        -dict="$here/$dictionary.dict" -artifact_prefix="$build/findings/$1-" -print_final_stats=1 \
        "$corpus" "${inputs[@]}" >"$log" 2>&1
}

last() { # PATTERN FILE: what the last match holds in parentheses
    sed -nE "s/.*$1.*/\\1/p" "$2" | tail -n 1
}

status=0
printf '%-14s %10s %14s %10s  %s\n' target seconds executions "a second" "edges reached"
for target in "${targets[@]}"; do
    share=$((seconds / ${#targets[@]} > 0 ? seconds / ${#targets[@]} : 1))
    result=0
    fuzz "$target" "$share" || result=1
    log=$build/$target.log
    printf '%-14s %10s %14s %10s  %s\n' "$target" "$share" \
        "$(last 'number_of_executed_units: ([0-9]+)' "$log")" \
        "$(last 'average_exec_per_sec: *([0-9]+)' "$log")" "$(last ' cov: ([0-9]+)' "$log")"
    if [[ $result != 0 ]]; then
        status=1
        grep -E 'does not hold|ERROR: |runtime error|Assertion|#[0-9]+ .*(tests/fuzz|virtual_camera)/' "$log" | head -n 20 || true
        echo "$target found something: $(last 'Test unit written to (.+)' "$log")"
        echo "Copy that file to tests/fuzz/found/$target/, where it stays a test, and mend the cause."
    fi
done
exit $status
