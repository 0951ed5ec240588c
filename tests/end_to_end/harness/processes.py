# Copyright (c) 2026 The PTZ panel developers
# SPDX-License-Identifier: MIT

"""Starting programs so that none outlives the test run, and ending them."""

import ctypes
import os
import signal
import subprocess

_libc = ctypes.CDLL(None, use_errno=True)
_PR_SET_PDEATHSIG = 1


def _die_with_parent():
    _libc.prctl(_PR_SET_PDEATHSIG, signal.SIGKILL)


def start(command, environment, log=None, pass_fds=()):
    """Starts command. Its output goes to the file log, or nowhere."""
    output = open(log, "wb") if log else subprocess.DEVNULL
    try:
        return subprocess.Popen(
            command, env=environment, stdin=subprocess.DEVNULL, stdout=output,
            stderr=subprocess.STDOUT, pass_fds=pass_fds, preexec_fn=_die_with_parent)
    finally:
        if log:
            output.close()


def stop(process, patience=10.0):
    """Asks the process to end, and makes it end when it does not."""
    if process.poll() is None:
        process.terminate()
        try:
            process.wait(patience)
        except subprocess.TimeoutExpired:
            process.kill()
            process.wait()


def clean_environment(home, display):
    """What a program that is started on this desktop finds: nothing of the user's own settings."""
    kept = ("PATH", "ASAN_OPTIONS", "LSAN_OPTIONS", "UBSAN_OPTIONS", "LLVM_PROFILE_FILE")
    environment = {name: os.environ[name] for name in kept if name in os.environ}
    environment.update(
        HOME=str(home),
        XDG_RUNTIME_DIR=str(home),
        XDG_CONFIG_HOME=str(home / ".config"),
        LANG="C.UTF-8",
        DISPLAY=display,
        # No session bus: the tray icon goes the way of the X server.
        DBUS_SESSION_BUS_ADDRESS=f"unix:path={home}/no-bus")
    return environment
