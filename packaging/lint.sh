#!/usr/bin/env bash
# Copyright (c) 2026 The PTZ panel developers
# SPDX-License-Identifier: MIT
#
# lint.sh [--fix]
#
# Checks what a machine can check without building: the formatting of the C++ files, the shell and
# Python scripts, and that every source file says whose it is. With --fix the formatting is put right.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

format=(clang-format-19 --dry-run -Werror)
case ${1:-} in
    '') ;;
    --fix) format=(clang-format-19 -i) ;;
    *)
        echo "lint.sh: unknown option '$1' (the only one is --fix)" >&2
        exit 2
        ;;
esac

# Prints the files of the project with one of these names, each ended by a null character.
files() { # PATTERN...
    local names=(-name "$1") pattern
    for pattern in "${@:2}"; do names+=(-o -name "$pattern"); done
    find . \( -path ./build -o -path ./.git -o -path ./.cache \) -prune \
        -o -type f \( "${names[@]}" \) -print0
}

mapfile -d '' -t cpp < <(files '*.cpp' '*.h')
mapfile -d '' -t shell < <(files '*.sh')
mapfile -d '' -t python < <(files '*.py')
mapfile -d '' -t signed < <(files '*.cpp' '*.h' '*.py' '*.sh' '*.cmake' CMakeLists.txt '*.rules')

good=yes
"${format[@]}" "${cpp[@]}" || good=no
shellcheck .ci/run "${shell[@]}" || good=no
flake8 "${python[@]}" || good=no
for file in .ci/run "${signed[@]}"; do
    head -n 4 "$file" | grep -q 'SPDX-License-Identifier: MIT' || {
        echo "$file: the copyright and licence lines are missing" >&2
        good=no
    }
done
echo "Checked ${#cpp[@]} C++ files, $((${#shell[@]} + 1)) shell and ${#python[@]} Python scripts, and ${#signed[@]} licence lines."
[[ $good == yes ]]
