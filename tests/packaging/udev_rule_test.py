# Copyright (c) 2026 The PTZ panel developers
# SPDX-License-Identifier: MIT
"""What udev makes of the rule: its own `udevadm test`, with all of the system's rules, on devices
that umockdev emulates. The rule is laid into /run/udev in a mount namespace of its own, so the
machine's rules stay as they are. With PTZ_INSTALLED_RULE it is the one that is installed."""

import os
import re
import subprocess
import sys
import tempfile
import unittest

ROOT = os.path.abspath(os.path.join(os.path.dirname(__file__), "..", ".."))
RULE = os.path.join(ROOT, "packaging", "60-ptz-panel.rules")
INSTALLED = "PTZ_INSTALLED_RULE" in os.environ

# Shows that udev got this far, and how it words what it would do.
CONTROL = 'TAG+="control", RUN+="/bin/true control"'

# Root may mount in a mount namespace; everybody else needs to be root of a user namespace first.
NAMESPACE = ["unshare", "--mount"] + ([] if os.getuid() == 0 else ["--map-root-user"])
SKIPPED = 77

# Interfaces as class, subclass, protocol.
VIDEO_CONTROL, VIDEO_STREAMING = "0e0100", "0e0200"
AUDIO, STORAGE, KEYBOARD, VENDOR = "010100", "080650", "030101", "ff0000"

IN_A_NAMESPACE = """
set -e
mkdir -p /run/udev
mkdir -p /dev/char 2>/dev/null || true
mount -t tmpfs none /run/udev
if [ -d /dev/char ]; then mount -t tmpfs none /dev/char; fi
mkdir /run/udev/rules.d
if [ -n "$1" ]; then cp "$1" /run/udev/rules.d/; fi
echo "$5" >/run/udev/rules.d/99-control.rules
exec umockdev-run --device "$2" -- udevadm test --action="$3" "$4" 2>&1
"""

DEVICE = "/devices/pci0000:00/0000:00:14.0/usb1/1-1"


def descriptors(product, interfaces):
    """A device descriptor and one configuration with these interfaces, each with an endpoint."""
    body = b"".join(
        bytes([9, 4, number, 0, 1]) + bytes.fromhex(interface) + b"\0"
        + bytes([7, 5, 0x81 + number, 3, 8, 0, 10])
        for number, interface in enumerate(interfaces)
    )
    device = b"\x12\x01\x00\x02\xef\x02\x01\x40\x55\xf0" + product.to_bytes(2, "little")
    device += b"\x00\x01\x01\x02\x03\x01"
    length = (9 + len(body)).to_bytes(2, "little")
    return device + b"\x09\x02" + length + bytes([len(interfaces), 1, 0, 0x80, 50]) + body


def usb_device(product, interfaces):
    return f"""P: {DEVICE}
N: bus/usb/001/002
E: DEVNAME=/dev/bus/usb/001/002
E: DEVTYPE=usb_device
E: MAJOR=189
E: MINOR=1
E: SUBSYSTEM=usb
A: idProduct={product:04x}\\n
A: idVendor=f055\\n
H: descriptors={descriptors(product, interfaces).hex().upper()}

"""


def usb_interface(interface):
    """An interface of a camera: no device node belongs to it."""
    return f"""P: {DEVICE}/1-1:1.0
E: DEVTYPE=usb_interface
E: INTERFACE={int(interface[0:2], 16)}/{int(interface[2:4], 16)}/0
E: SUBSYSTEM=usb
A: bInterfaceClass={interface[0:2]}\\n

""" + usb_device(0x8888, [interface])


def udev_result(device, rule=RULE, action="add", path=DEVICE):
    with tempfile.NamedTemporaryFile("w", suffix=".umockdev") as description:
        description.write(device)
        description.flush()
        command = ["sh", "-c", IN_A_NAMESPACE, "sh", "" if INSTALLED else rule or "",
                   description.name, action, "/sys" + path, CONTROL]
        result = subprocess.run(
            NAMESPACE + command,
            stdout=subprocess.PIPE, text=True, check=False)
    if result.returncode != 0 or f"DEVPATH={path}\n" not in result.stdout:
        raise AssertionError(f"udevadm says ({result.returncode}):\n{result.stdout}")
    return result.stdout


def opened_to_the_user(output):
    """Whether udev would hand the device node to whoever sits at the computer."""
    # The wording of udev 252, and that of 257.
    queued = re.findall(r"^run: '(.*)'$|^ *RUN\{\w+\} *: (.*)$", output, re.MULTILINE)
    queued = ["".join(either) for either in queued]
    if "/bin/true control" not in queued:
        raise AssertionError(f"udev does not say in known words what it would run:\n{output}")
    return "uaccess" in queued


class UdevRule(unittest.TestCase):
    def test_a_camera_of_the_panel_is_opened_to_the_user_at_the_seat(self):
        for name, interfaces in {
            "video only": [VIDEO_CONTROL, VIDEO_STREAMING],
            "video first": [VIDEO_CONTROL, VIDEO_STREAMING, AUDIO],
            "video last": [AUDIO, KEYBOARD, VIDEO_CONTROL],
        }.items():
            for action in "add", "change":
                with self.subTest(name, action=action):
                    device = usb_device(0x8888, interfaces)
                    self.assertTrue(opened_to_the_user(udev_result(device, action=action)))

    @unittest.skipIf(INSTALLED, "the rule is installed")
    def test_without_the_rule_no_camera_is_opened(self):
        device = usb_device(0x8888, [VIDEO_CONTROL, VIDEO_STREAMING])
        self.assertFalse(opened_to_the_user(udev_result(device, rule=None)))

    def test_no_other_device_is_opened(self):
        for name, (product, interfaces) in {
            "camera with another product id": (0x8889, [VIDEO_CONTROL, VIDEO_STREAMING]),
            "memory stick with the product id": (0x8888, [STORAGE]),
            "keyboard with the product id": (0x8888, [KEYBOARD]),
            "vendor's own device with the product id": (0x8888, [VENDOR]),
            "0e as a subclass": (0x8888, ["ff0e00"]),
            "0e as a protocol": (0x8888, ["ff000e"]),
            "0e across two numbers": (0x8888, ["10e000"]),
            "no interface": (0x8888, []),
        }.items():
            with self.subTest(name):
                self.assertFalse(opened_to_the_user(udev_result(usb_device(product, interfaces))))

    def test_only_the_whole_device_is_tagged_not_its_interfaces(self):
        output = udev_result(usb_interface(VIDEO_CONTROL), path=DEVICE + "/1-1:1.0")
        [tags] = re.findall(r"^ *TAGS=(.*)$", output, re.MULTILINE)
        self.assertIn(":control:", tags)
        self.assertNotIn(":uaccess:", tags)

    def test_the_file_sorts_between_the_rules_that_it_stands_on(self):
        read = [line.rsplit("/", 1)[1]
                for line in udev_result(usb_device(0x8888, [VIDEO_CONTROL])).splitlines()
                if line.startswith("Reading rules file: ")]
        places = [read.index(name) for name in
                  ("50-udev-default.rules", os.path.basename(RULE), "73-seat-late.rules")]
        self.assertEqual(places, sorted(places))


if __name__ == "__main__":
    if subprocess.run(NAMESPACE + ["true"], check=False).returncode != 0:
        print("This system grants no mount namespace, so no rule can be tried on it.")
        sys.exit(SKIPPED)
    sys.exit(unittest.main(verbosity=2))
