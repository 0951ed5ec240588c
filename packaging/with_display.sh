#!/usr/bin/env bash
# Copyright (c) 2026 The PTZ panel developers
# SPDX-License-Identifier: MIT
#
# with_display.sh COMMAND [ARGUMENT]...
#
# Runs the command on a virtual X display of its own, with a window manager and a compositing
# manager. INT, TERM and HUP go on to the command; the display ends with it. The exit code is the
# command's.
set -uo pipefail

work=$(mktemp -d) || exit 1
groups=() # process groups to end, the display's last

# Job control gives every background job a process group of its own, so that Ctrl-C reaches none
# of them directly, and none is started with SIGINT ignored.
set -m

# What job control has to say about jobs that end is of no use to anybody: 2>/dev/null.
# shellcheck disable=SC2317 # the trap calls it
end_all() {
    local group
    for group in "${groups[@]}"; do kill -TERM -- "-$group" 2>/dev/null; done
    wait 2>/dev/null
    rm -rf "$work"
}
trap end_all EXIT

mkfifo "$work/number"
Xvfb -displayfd 3 -screen 0 1280x800x24 -nolisten tcp 3>"$work/number" 2>"$work/xvfb.log" &
groups=($!)
if ! read -r number <"$work/number"; then
    echo "The virtual display did not start: $(tail -n 1 "$work/xvfb.log")" >&2
    exit 1
fi
export DISPLAY=:$number
echo "The virtual display is $DISPLAY."

openbox >/dev/null 2>&1 &
groups=($! "${groups[@]}")
# Damage tracking leaves most of a window unpainted with picom 12.
picom --config /dev/null --backend xrender --no-use-damage >/dev/null 2>&1 &
groups=($! "${groups[@]}")

"$@" &
command=$!
groups=("$command" "${groups[@]}")
set +m

for signal in INT TERM HUP; do
    # shellcheck disable=SC2064 # the name of the signal is meant as it is now
    trap "kill -$signal -- -$command 2>/dev/null" "$signal"
done
# A signal also ends the waiting; then the command is still there.
while
    wait "$command" 2>/dev/null
    status=$?
    kill -0 "$command" 2>/dev/null
do :; done
exit "$status"
