#!/usr/bin/python3
# Copyright (c) 2026 The PTZ panel developers
# SPDX-License-Identifier: MIT

"""Writes the first inputs of every fuzz target: seeds.py FOLDER makes FOLDER/<target>/<name>.

Each is something that a program, a camera or a person really does. What the bytes mean is said
at the top of each target's source.
"""

import sys
from pathlib import Path

CONTROLS = """pantilt_absolute pantilt_relative zoom_absolute zoom_relative focus_absolute
focus_relative focus_auto roll_absolute brightness contrast saturation sharpness gamma
white_balance_temperature white_balance_temperature_auto backlight_compensation gain
power_line_frequency extension_value""".split()
CODES = ["GET_CUR", "GET_MIN", "GET_MAX", "GET_RES", "GET_DEF", "GET_LEN", "GET_INFO"]
# Entity and selector of each control, as they stand on the wire.
SELECTORS = dict(zip(CONTROLS, [
    (1, 0x0d), (1, 0x0e), (1, 0x0b), (1, 0x0c), (1, 0x06), (1, 0x07), (1, 0x08), (1, 0x0f),
    (2, 0x02), (2, 0x03), (2, 0x07), (2, 0x08), (2, 0x09), (2, 0x0a), (2, 0x0b), (2, 0x01),
    (2, 0x04), (2, 0x05), (4, 0x01)]))


def little(value, size=2):
    return (value % (1 << 8 * size)).to_bytes(size, "little")


def setup(request_type, request, value, index, length):
    return bytes([request_type, request]) + little(value) + little(index) + little(length)


def set_on_wire(control, data):
    entity, selector = SELECTORS[control]
    return setup(0x21, 0x01, selector << 8, entity << 8, len(data)) + data


def get_on_wire(control, code, length):
    entity, selector = SELECTORS[control]
    return setup(0xa1, code, selector << 8, entity << 8, length)


class CameraModel:
    """Steps of a camera's life."""

    @staticmethod
    def options(*lines):
        return bytes([len(lines)]) + b"".join(line.encode() + b"\n" for line in lines)

    @staticmethod
    def raw(packet):
        return b"\x00" + packet

    @staticmethod
    def set(control, data):
        return bytes([1, CONTROLS.index(control)]) + data

    @staticmethod
    def get(control, code, length):
        return bytes([2, CONTROLS.index(control), CODES.index(code), length])

    @staticmethod
    def wait(seconds):
        return b"\x03" + little(round(seconds * 100))

    @staticmethod
    def announce(control, size, numbers):
        return bytes([4, CONTROLS.index(control)]) + b"".join(little(n, size) for n in numbers)

    CUT_POWER = b"\x05"
    SWITCH_ON = b"\x06"

    @staticmethod
    def go(*place):
        return b"\x07" + b"".join(little(axis, 4) for axis in place)


def camera_model_seeds():
    c = CameraModel
    plain = c.options()
    command = lambda code: c.set("roll_absolute", little(code))
    stop = c.set("pantilt_relative", bytes(4))
    right = c.set("pantilt_relative", bytes([1, 24, 0, 0]))
    up = c.set("pantilt_relative", bytes([0, 0, 1, 20]))
    yield "drive", plain + right + c.wait(1) + stop + up + c.wait(0.5) + stop
    yield "drive_to_the_end", plain + right + up + c.wait(60) + c.get("pantilt_absolute", "GET_CUR", 8)
    yield "zoom_and_focus", plain + (
        c.set("focus_auto", b"\0") + c.set("zoom_relative", bytes([1, 1, 5]))
        + c.set("focus_relative", bytes([0xff, 3])) + c.wait(1)
        + c.set("zoom_relative", bytes([0, 1, 5])) + c.set("focus_relative", bytes(2)))
    yield "positions", plain + (
        c.set("pantilt_absolute", little(3600, 4) + little(-7200, 4))
        + c.set("zoom_absolute", little(9000)) + c.set("focus_absolute", little(4000)) + c.wait(5))
    yield "presets", plain + right + c.wait(1) + stop + b"".join(
        command(code) for code in (20, 8, 29, 100, 109, 60, 100, 300))
    yield "commands", plain + b"".join(command(code) for code in [*range(20), -1, 32767])
    for code in CODES:
        yield "read_" + code.lower(), plain + b"".join(
            c.get(control, code, 8) for control in CONTROLS)
    yield "write_values", plain + b"".join(
        c.set(control, little(value, size)) for control, value, size in [
            ("brightness", 200, 2), ("contrast", 0, 2), ("saturation", 255, 2),
            ("sharpness", 16, 2), ("gamma", 100, 2), ("white_balance_temperature", 5000, 2),
            ("white_balance_temperature_auto", 1, 1), ("white_balance_temperature", 5000, 2),
            ("backlight_compensation", 1, 2), ("gain", 0, 2), ("power_line_frequency", 2, 1),
            ("focus_auto", 0, 1), ("focus_auto", 2, 1)])
    yield "on_the_wire", plain + (
        c.raw(set_on_wire("brightness", little(128))) + c.raw(get_on_wire("zoom_absolute", 0x81, 2))
        + c.raw(setup(0xa1, 0x81, 0x0200, 0, 1)) + c.raw(setup(0xa1, 0x86, 0x0200, 0, 1))
        + c.raw(setup(0xa1, 0x81, 0x0100, 1, 26)) + c.raw(setup(0x21, 0x01, 0x0200, 1, 34)))
    yield "streaming", plain + b"".join(
        c.raw(setup(0xa1, code, selector << 8, 1, length))
        for selector in (1, 2) for code, length in [
            (0x81, 26), (0x82, 34), (0x83, 34), (0x87, 26), (0x85, 2), (0x86, 1), (0x84, 26),
            (0x81, 8), (0x85, 1), (0x86, 0)])
    yield "wrong_on_the_wire", plain + (
        c.raw(setup(0xa1, 0x81, 0x0200, 0x0900, 2)) + c.raw(setup(0xa1, 0x81, 0x7f00, 0x0200, 2))
        + c.raw(get_on_wire("gamma", 0x81, 1)) + c.raw(set_on_wire("gamma", b"\x01")))
    yield "ranges_change", plain + (
        c.announce("brightness", 2, [-64, 64, 0, 12, 1]) + c.set("brightness", little(-64))
        + c.announce("contrast", 2, [10, 5, 7, 99, 1]) + c.set("contrast", little(1000)))
    yield "power_cycle", plain + command(21) + command(0) + right + c.wait(1) + (
        c.CUT_POWER + c.SWITCH_ON + command(101) + c.SWITCH_ON)
    yield "remote_control", plain + right + c.go(36000, -9999, 16384, 4000) + (
        c.wait(60) + c.go(0, 0, 0, 70000))
    yield "extended", c.options("with=extension_unit", "uvc=1.5") + (
        c.set("extension_value", little(7)) + c.get("extension_value", "GET_CUR", 2)
        + c.raw(setup(0xa1, 0x81, 0x0100, 1, 48)))
    yield "pan_and_tilt_change", plain + (
        c.announce("pantilt_absolute", 1, []) + b"\x01" + b"".join(
            little(n, 4) for n in [-3600, 3600, 0, 0, 1]))
    yield "power_cut", plain + right + c.wait(1) + c.CUT_POWER + c.wait(1)
    yield "lens_without_travel", c.options("zoom_absolute=5:5:5:9") + c.set("zoom_absolute", little(5))
    yield "upside_down", c.options("pan=100:-100:0:500", "focus_absolute=9:1:5:20") + (
        right + c.wait(1) + c.set("focus_absolute", little(1)) + command(8))
    yield "without", c.options("without=gamma", "without=roll_absolute") + (
        c.get("gamma", "GET_CUR", 2) + command(8))


def description_seeds():
    texts = {
        "names": ["product=Große Halle", "manufacturer=会議カメラ", "serial=\U0001f3a5 7"],
        "empty_names": ["product=", "serial=", "manufacturer="],
        "long_name": ["product=" + "x" * 125 + "\U0001f3a5"],
        "numbers": ["vendor-id=0x1234", "product-id=34952", "product-id=65536", "vendor-id=-1"],
        "ranges": ["brightness=-64:64:0:12", "gamma=1:2:3:4:5", "pan=-3600:3600:0:0:3600",
                   "tilt=0:0:0:0", "contrast=0xffc0:0xffff:0xfff0:0xfff0", "gain=70000:0:0:0"],
        "units": ["with=extension_unit", "without=processing_unit", "uvc=1.0", "uvc=1.5", "uvc=2"],
        "without": ["without=" + control for control in CONTROLS],
        "wrong": ["", "=", "what=1", "brightness=1:2", "brightness=1:2:3:x", "without=what",
                  "pantilt_relative=1:2:3:4", "gain=--1:0:0:0", "gain=0x:0:0:0"],
    }
    for name, lines in texts.items():
        yield name, "\n".join(lines).encode()
    yield "not_utf8", b"product=\xff\xfe\xc0\x80\xed\xa0\x80\xf4\x90\x80\x80\xe2\x82"


def usbfs_seeds():
    steps = ("open close claim release detach attach clear_halt configure set_interface submit"
             " listen discard reap transfer break wait wait_too unplug").split()
    def step(name, *numbers):
        return bytes([steps.index(name), *numbers])
    camera, stick, first, second = b"\x01", b"\x00", 0, 1
    def submit(file, address, packet):
        return step("submit", file, address) + packet
    delay, busy, mend = range(3)
    def fault(what, control="brightness", detail=0):
        return step("break", CONTROLS.index(control), detail, what)
    def effect(name, target):
        effects = "stall short long wrong eproto etime lose_stop".split()
        targets = "all one descriptors stops".split()
        return 3 + targets.index(target) * len(effects) + effects.index(name)
    def always(number):
        return 4 * number
    def at(number):
        return 4 * number + 1
    take = step("detach", 0) + step("claim", first, 0)
    read = get_on_wire("brightness", 0x81, 2)
    device = setup(0x80, 6, 0x0100, 0, 18)
    yield "ask", camera + take + submit(first, 1, read) + step("reap", first)
    yield "at_once", camera + take + step("transfer", first) + read + (
        step("transfer", first) + set_on_wire("brightness", little(1)))
    yield "standard", camera + b"".join(step("transfer", first) + packet for packet in [
        device, setup(0x80, 6, 0x0200, 0, 255), setup(0x80, 6, 0x0302, 0x0409, 255),
        setup(0x80, 0, 0, 0, 2), setup(0x80, 8, 0, 0, 1), setup(0x00, 9, 1, 0, 0),
        setup(0x80, 6, 0x0600, 0, 10)])
    yield "two_programs", camera + step("open") + take + step("claim", second, 0) + (
        submit(second, 2, read) + step("close", first) + step("claim", first, 0))
    yield "settings", camera + step("detach", 1) + step("set_interface", first, 1, 1) + (
        step("transfer", first) + setup(0x81, 10, 0, 1, 1) + step("configure", 1)
        + step("release", first, 1) + step("attach", 1) + step("clear_halt", 0x81))
    yield "listen", camera + take + step("listen", first, 7, 0x81) + (
        step("discard", first, 7) + step("reap", first))
    yield "slow", camera + take + fault(delay, detail=1) + submit(first, 1, read) + (
        submit(first, 2, read) + step("discard", first, 1) + step("wait") + step("reap", first))
    yield "stalled", camera + take + fault(effect("stall", "one"), detail=at(2)) + (
        submit(first, 1, read) + submit(first, 2, read) + fault(effect("stall", "all"))
        + submit(first, 3, read) + fault(mend) + submit(first, 4, read))
    for name, length in ("short", 1), ("long", 9), ("wrong", 0), ("eproto", 0), ("etime", 0):
        yield name, camera + take + fault(effect(name, "all"), detail=always(length)) + (
            submit(first, 1, read) + step("reap", first))
    yield "lost_stop", camera + take + fault(effect("lose_stop", "stops")) + submit(
        first, 1, set_on_wire("zoom_relative", b"\x00\x00\x01"))
    yield "broken_strings", camera + fault(effect("eproto", "descriptors"), detail=at(2)) + (
        2 * (step("transfer", first) + setup(0x80, 6, 0x0302, 0x0409, 255)))
    yield "busy", camera + fault(busy) + step("detach", 0) + step("claim", first, 0)
    yield "unplug", camera + take + fault(delay, detail=1) + submit(first, 1, read) + (
        step("listen", first, 2, 0x81) + step("unplug"))
    yield "stick", stick + take + step("transfer", first) + device + step("listen", first, 1, 0x02)


def control_seeds():
    lines = {
        "commands": ["help", "list", "describe", "state", "state 1", "watch",
                     "json list", "unplug 2", "replug 2", "replug 2 17",
                     "stall 1 brightness GET_CUR", "stall 1 all", "unstall 1", "short 1 gamma 0",
                     "full 1", "delay 1 50", "refuse-open 1 EACCES", "refuse-open 1 none",
                     "busy 1 on", "range 1 brightness -64:64:0:12", "range 1 tilt -3600:0:0:0",
                     "fail 1 all EPROTO at 2", "wrong 1 gamma share 10 7",
                     "long 1 gain GET_CUR 9 every 3", "short 1 descriptors 4", "lose-stop 1",
                     "go 1 pan=3600 zoom=0", "go 1 left up=3",
                     "go 1 preset=3", "go 1 home", "go 1 stop", "log", "environment", "clear 1"],
        "script": ["0.5 unplug 1 # comment", "", "+0.25 replug 1", "2 delay 1 50"],
        "script_wrong": ["2 unplug 1", "1 unplug 1", "+1e9 list", "-1 list", ". list"],
        "wrong": ["", " ", "what", "unplug", "unplug 0", "unplug one", "stall 1 descriptors GET_CUR",
                  "stall 1 what", "short 1 gamma 4097", "stall 1 gain at 0", "fail 1 gain EIO",
                  "go 1 left=0", "go 1 pan=", "go 1 home left", "delay 1 -1", "busy 1 maybe",
                  "range 1 pantilt_relative 1:2:3:4", "replug 1 128"],
        "words": ["--cameras", "3", "--log=-", "--option", "2.product=Hall", "--at-start",
                  "stall 1 all", "--control", "/tmp/x", "--", "true", "--help"],
        "devices": ["--devices=camera,storage,other-camera", "--option=brightness=-64:64:0:1",
                    "lsusb", "-v"],
        "option_of_no_camera": ["--devices", "storage", "--option", "1.product=Hall", "true"],
        "tell": ["--tell", "/tmp/x", "unplug", "2"],
        "help": ["--help"],
        "version": ["--cameras", "33", "--version"],
    }
    for name, text in lines.items():
        for way, first in ("", 0), ("_piecemeal", 0x80), ("_at_once", 0xff):
            yield name + way, bytes([first]) + "\n".join(text).encode() + b"\n"
    yield "long_line", b"\xff" + b"x" * 5000


def main():
    folder = Path(sys.argv[1])
    for target, seeds in {"camera_model": camera_model_seeds, "control": control_seeds,
                          "description": description_seeds, "usbfs": usbfs_seeds}.items():
        (folder / target).mkdir(parents=True, exist_ok=True)
        for name, content in seeds():
            (folder / target / name).write_bytes(content)


main()
