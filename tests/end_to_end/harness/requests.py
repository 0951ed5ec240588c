# Copyright (c) 2026 The PTZ panel developers
# SPDX-License-Identifier: MIT

"""The requests that tests expect, each as a line of text.

"pantilt_relative 1 21 0 0" is a write, "GET_MIN brightness" a read; a request to another camera than
the first begins with "cam2: ", and one that fails ends with its outcome, such as " stall". The tests
of the window in C++ write requests in the same way.
"""


def write(control, *values, camera=1):
    return " ".join(map(str, [*([f"cam{camera}:"] if camera > 1 else []), control, *values]))


def pan(direction, speed, camera=1):
    return write("pantilt_relative", direction, speed, 0, 0, camera=camera)


def tilt(direction, speed, camera=1):
    return write("pantilt_relative", 0, 0, direction, speed, camera=camera)


def halt(camera=1):
    """Stops pan and tilt."""
    return write("pantilt_relative", 0, 0, 0, 0, camera=camera)


def zoom(direction, camera=1):
    return write("zoom_relative", direction, 1, 1, camera=camera)


def halt_zoom(camera=1):
    return write("zoom_relative", 0, 1, 5, camera=camera)


def focus(direction, camera=1):
    return write("focus_relative", direction, 1, camera=camera)


def halt_focus(camera=1):
    return write("focus_relative", 0, 0, camera=camera)


def vendor(code, camera=1):
    """A command of the camera's own, written to the roll control."""
    return write("roll_absolute", code, camera=camera)


def store_preset(number, camera=1):
    return vendor(20 + number, camera)


def clear_preset(number, camera=1):
    return vendor(60 + number, camera)


def call_preset(number, camera=1):
    return vendor(100 + number, camera)


PROPERTY_CONTROLS = {
    # In the order in which they are read.
    "blc": "backlight_compensation",
    "gamma": "gamma",
    "contrast": "contrast",
    "saturation": "saturation",
    "brightness": "brightness",
    "sharpness": "sharpness",
    "wb": "white_balance_temperature",
}


def image_property(name, value, camera=1):
    return write(PROPERTY_CONTROLS[name], value, camera=camera)


def flicker(value, camera=1):
    return write("power_line_frequency", value, camera=camera)


def auto_white_balance(value, camera=1):
    return write("white_balance_temperature_auto", value, camera=camera)


def reads(camera=1):
    """What is read from a camera each time it is chosen, in order."""
    controls = [*PROPERTY_CONTROLS.values(), "power_line_frequency"]
    return [write(f"{code} {control}", camera=camera) for control in controls
            for code in ("GET_CUR", "GET_MIN", "GET_MAX", "GET_DEF")]
