#!/usr/bin/env bash
# Copyright (c) 2026 The PTZ panel developers
# SPDX-License-Identifier: MIT
set -euo pipefail

usage="Usage: ./run.sh [OPTION]...
Installs what is missing, builds the panel and starts it on virtual cameras.

  --cameras N  plug in N virtual cameras (1 to 32; default: 3)
  --real       use the cameras that are plugged in, no virtual ones
  --tour       play every button, key and slider by machine and write a report
  --help       show this help

The exit code is the panel's; 2 when an option is wrong."

complain() {
    echo "run.sh: $*" >&2
    exit 2
}

mode=virtual
cameras=3
cameras_given=no
while [[ $# -gt 0 ]]; do
    case $1 in
        --help)
            echo "$usage"
            exit 0
            ;;
        --real | --tour)
            [[ $mode == virtual || $mode == "${1#--}" ]] || complain "--real and --tour exclude each other"
            mode=${1#--}
            ;;
        --cameras)
            [[ $# -ge 2 ]] || complain "--cameras needs a number"
            cameras=$2 cameras_given=yes
            shift
            ;;
        --cameras=*) cameras=${1#*=} cameras_given=yes ;;
        *) complain "unknown option '$1' (see ./run.sh --help)" ;;
    esac
    shift
done
[[ $cameras_given == no || $mode == virtual ]] || complain "--cameras does not go with --$mode"
[[ $cameras =~ ^([1-9]|[12][0-9]|3[0-2])$ ]] ||
    complain "--cameras needs a number from 1 to 32, not '$cameras'"

root=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
packaging=$root/packaging
bin=$root/build/release/bin

has_display() { [[ -n ${DISPLAY:-}${WAYLAND_DISPLAY:-} ]]; }

if [[ $mode == virtual ]] && ! has_display; then
    echo "There is no display, so the tour is run instead, on a virtual one."
    mode=tour
fi

purposes=(build)
if [[ $mode != real ]]; then purposes+=(virtual-camera); fi
if [[ $mode == tour ]]; then purposes+=(tour); fi
if [[ $mode == tour ]] || ! has_display; then purposes+=(virtual-display); fi
"$packaging/install_packages.sh" "${purposes[@]}"

build() {
    local options=()
    if command -v ccache >/dev/null; then export CMAKE_CXX_COMPILER_LAUNCHER=ccache; fi
    # Whoever only wants to run the panel need not install what its tests need.
    if [[ ! -e build/release/CMakeCache.txt ]]; then options=(-DBUILD_TESTING=OFF); fi
    cmake --preset release "${options[@]}" >/dev/null && cmake --build --preset release --target "$@"
}
targets=(ptz-panel)
if [[ $mode != real ]]; then targets+=(virtual-camera virtual-camera-view); fi
(cd "$root" && build "${targets[@]}") || {
    echo "run.sh: the panel could not be built" >&2
    exit 1
}

# Prints where the first camera is that the panel would use but may not open.
camera_out_of_reach() {
    local device node
    for device in /sys/bus/usb/devices/*; do
        [[ $(cat "$device/idProduct" 2>/dev/null) == 8888 ]] || continue
        # An interface descriptor (9 bytes, type 4) of the video class.
        od -An -v -tx1 "$device/descriptors" | tr -d '\n' | grep -q ' 09 04 .. .. .. 0e' || continue
        printf -v node '/dev/bus/usb/%03d/%03d' "$(<"$device/busnum")" "$(<"$device/devnum")"
        if ! (: <>"$node") 2>/dev/null; then
            echo "$node"
            return
        fi
    done
}

case $mode in
    tour)
        echo "The tour takes a while; its report will be in $root/build/tour"
        exec "$root/tests/end_to_end/take_tour.py" --bin "$bin" --report "$root/build/tour" --view
        ;;
    real)
        node=$(camera_out_of_reach)
        if [[ -n $node ]]; then
            echo "The camera $node may not be opened; allow it with: sudo install -m 644 '$packaging/60-ptz-panel.rules' /etc/udev/rules.d/ && sudo udevadm control --reload && sudo udevadm trigger --settle --attr-match=idProduct=8888" >&2
        fi
        has_display && exec "$bin/ptz-panel"
        echo "There is no display, so the panel is shown on a virtual one."
        exec "$packaging/with_display.sh" "$bin/ptz-panel"
        ;;
    virtual) # there is a display
        log=$root/build/requests.log
        : >"$log"
        echo "What the cameras receive, while it happens: tail -f '$log'"
        exec "$bin/virtual-camera" --view --cameras "$cameras" --log "$log" -- "$bin/ptz-panel"
        ;;
esac
