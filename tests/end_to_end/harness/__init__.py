# Copyright (c) 2026 The PTZ panel developers
# SPDX-License-Identifier: MIT

"""Drives the built panel from outside, as an operator does.

A Desktop is an X server of its own with a window manager and a tray, a Mouse and a Keyboard
inject what a hand would do, a CameraBench is a row of virtual cameras and tells what they
received, and a Panel is the program between them. What a camera received is the result of a test;
where things stand on the screen is the other half.

Tests wait for conditions, never for time: waiting.wait_for. To learn that nothing more is coming,
Panel.received() lets one more request through at the end and reads everything before it.
"""
