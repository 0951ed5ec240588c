#!/usr/bin/env bash
# Copyright (c) 2026 The PTZ panel developers
# SPDX-License-Identifier: MIT
#
# tidy.sh [--all] BUILD
#
# Runs clang-tidy with the compile commands of a build folder: on the sources that differ from main, or
# on main from its last commit; with --all on all of the program, which takes a quarter of an hour of
# processor time. Headers are checked with the sources that include them.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

most=3 # sources, each of which takes about ten seconds
all=no
if [[ ${1:-} == --all ]]; then
    all=yes
    shift
fi
[[ $# == 1 && -e $1/compile_commands.json ]] || {
    echo "usage: tidy.sh [--all] BUILD, a folder with compile_commands.json" >&2
    exit 2
}

base=HEAD~1
for name in origin/main main; do
    if found=$(git merge-base HEAD "$name" 2>/dev/null) && [[ $found != $(git rev-parse HEAD) ]]; then
        base=$found
    fi
done
if [[ $all == yes ]]; then
    mapfile -t names < <(git ls-files)
else
    mapfile -t names < <(git diff --name-only "$base" 2>/dev/null || true)
fi

sources=()
for name in "${names[@]}"; do
    if [[ $name =~ ^(device|console|desktop|widgets|virtual_camera)/.*\.cpp$ ]] && [[ -e $name ]] \
        && grep -q "/$name\"" "$1/compile_commands.json"; then
        sources+=("$name")
    fi
done
if [[ $all == no && ${#sources[@]} -gt $most ]]; then
    echo "Not checked: ${sources[*]:most} (tidy.sh --all checks everything)"
    sources=("${sources[@]:0:most}")
fi
echo "clang-tidy checks ${#sources[@]} sources: ${sources[*]}"
[[ ${#sources[@]} -eq 0 ]] || clang-tidy -p "$1" --quiet --warnings-as-errors='*' "${sources[@]}" 2>/dev/null
