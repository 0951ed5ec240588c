# Copyright (c) 2026 The PTZ panel developers
# SPDX-License-Identifier: MIT

"""What the panel asks of libuvc. The wire shows what a camera was asked; a request on a camera that
is not open any more never gets there."""

import re

from harness.panel import binary

_STOPS = {control: re.compile(rf"{call}\(handle\d+, 0, {rest}") for control, call, rest in (
    ("pantilt_relative", "uvc_set_pantilt_rel", "0, 0, 0"),
    ("zoom_relative", "uvc_set_zoom_rel", ""),
    ("focus_relative", "uvc_set_focus_rel", ""))}
_DEAD = re.compile(r"\b(null|no_\w+)\b")


def noting_calls(folder):
    """The environment in which a panel notes its calls in this folder."""
    recorder = binary("../tests/support/libuvc_call_recorder.so")
    return {"LD_PRELOAD": recorder, "UVC_CALLS_FILE": str(folder / "uvc-calls")}


NOT_NOTING_CALLS = {"LD_PRELOAD": "", "UVC_CALLS_FILE": ""}


def noted_calls(folder):
    calls = (folder / "uvc-calls").read_text(encoding="utf-8").splitlines()
    assert calls, "the panel's calls are noted"
    return calls


def calls_on_the_dead(folder):
    """Calls for a camera, a list or a context that was never made or has ended."""
    return [call for call in noted_calls(folder) if _DEAD.search(call)]


def stopped_axes(calls):
    """The controls that these calls tell to stop, whether a camera hears it or not."""
    return {control for control, stop in _STOPS.items() for call in calls if stop.match(call)}
