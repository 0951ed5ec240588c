# Copyright (c) 2026 The PTZ panel developers
# SPDX-License-Identifier: MIT

"""The requests that tests expect, as the text in which the camera log is read.

One request reads "cam1 SET_CUR pantilt_relative 01 15 00 00": the bytes are what went over the
wire, so nothing here depends on how the virtual camera understands them. A request that the camera
refused has its outcome at the end.
"""

import struct


def set_cur(control, *data, camera=1):
    payload = " ".join(f"{byte:02x}" for byte in data)
    return f"cam{camera} SET_CUR {control} {payload}"


def _signed_byte(value):
    return value & 0xFF


def pan(direction, speed, camera=1):
    return set_cur("pantilt_relative", _signed_byte(direction), speed, 0, 0, camera=camera)


def tilt(direction, speed, camera=1):
    return set_cur("pantilt_relative", 0, 0, _signed_byte(direction), speed, camera=camera)


def halt(camera=1):
    """Stops pan and tilt."""
    return set_cur("pantilt_relative", 0, 0, 0, 0, camera=camera)


def zoom(direction, camera=1):
    return set_cur("zoom_relative", _signed_byte(direction), 1, 1, camera=camera)


def halt_zoom(camera=1):
    return set_cur("zoom_relative", 0, 1, 5, camera=camera)


def focus(direction, camera=1):
    return set_cur("focus_relative", _signed_byte(direction), 1, camera=camera)


def halt_focus(camera=1):
    return set_cur("focus_relative", 0, 0, camera=camera)


def vendor(code, camera=1):
    """A command of the camera's own, written to the roll control."""
    return set_cur("roll_absolute", *struct.pack("<h", code), camera=camera)


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
    return set_cur(PROPERTY_CONTROLS[name], *struct.pack("<H", value & 0xFFFF), camera=camera)


def flicker(value, camera=1):
    return set_cur("power_line_frequency", value, camera=camera)


def auto_white_balance(value, camera=1):
    return set_cur("white_balance_temperature_auto", value, camera=camera)


def reads(camera=1):
    """What is read from a camera each time it is chosen, in order."""
    controls = [*PROPERTY_CONTROLS.values(), "power_line_frequency"]
    return [f"cam{camera} {code} {control}" for control in controls
            for code in ("GET_CUR", "GET_MIN", "GET_MAX", "GET_DEF")]
