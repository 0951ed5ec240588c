#!/usr/bin/env bash
# Copyright (c) 2026 The PTZ panel developers
# SPDX-License-Identifier: MIT
set -euo pipefail

usage="Usage: ./bench.sh [--once] [ROW]...
Installs what is missing, builds, measures everything in bench/ and writes docs/benchmarks.md. With
ROWs only these are measured, and the others keep the results of their last run.

  --once  take the shortest look at each row and write nothing
  --help  show this help"

if [[ ${1:-} == --help ]]; then
    echo "$usage"
    exit 0
fi

cd "$(dirname "${BASH_SOURCE[0]}")"
packaging/install_packages.sh build virtual-camera virtual-display test
if command -v ccache >/dev/null; then export CMAKE_CXX_COMPILER_LAUNCHER=ccache; fi
cmake --preset release >/dev/null
cmake --build --preset release --target benches
# Debian's Python, because that is the one that Debian's libraries are for.
PYTHONDONTWRITEBYTECODE=1 exec /usr/bin/python3 bench/bench.py "$@"
