# Copyright (c) 2026 The PTZ panel developers
# SPDX-License-Identifier: MIT
"""The JSON side of the control socket, as a program uses it."""

import contextlib
import json
import select
import socket
import time

from command_case import PATIENCE, UVC_CLIENT, RunningCase, main


class Client:
    """A program at the control socket."""

    def __init__(self, path):
        self._socket = socket.socket(socket.AF_UNIX)
        self._socket.connect(path)
        self._socket.settimeout(PATIENCE)
        self._unread = b""

    def close(self):
        self._socket.close()

    def send(self, line):
        self._socket.sendall(line.encode() + b"\n")

    def read(self):
        while b"\n" not in self._unread:
            received = self._socket.recv(65536)
            if not received:
                raise EOFError("virtual-camera hung up")
            self._unread += received
        line, self._unread = self._unread.split(b"\n", 1)
        return json.loads(line)

    def ask(self, line):
        self.send(line)
        return self.read()

    def silent(self, seconds):
        """Nothing comes for so long."""
        return not self._unread and not select.select([self._socket], [], [], seconds)[0]


class JsonCase(RunningCase):
    def connect(self):
        client = Client(self.socket)
        self.addCleanup(client.close)
        return client


class Answers(JsonCase):
    def test_describe_every_device(self):
        self.start("--devices", "camera,storage,other-camera", "--option", "1.product=Saal \"Süd\"",
                   "--option", "3.brightness=-64:64:3:10:2", "--option", "3.without=gamma")
        answer = self.connect().ask("describe")
        self.assertEqual((answer["ok"], answer["protocol"]), (True, 1))
        first, second, third = answer["devices"]
        self.assertEqual(first["product"], "Saal \"Süd\"")
        self.assertEqual((first["vendor_id"], first["product_id"]), (0xF055, 0x8888))
        self.assertEqual(first["controls"]["pantilt_absolute"]["fields"]["tilt"],
                         {"min": -108000, "max": 324000, "default": 0, "step": 3600})
        self.assertAlmostEqual(first["lens"]["wide"]["horizontal_degrees"], 60.74, places=2)
        self.assertAlmostEqual(first["lens"]["tele"]["horizontal_degrees"], 3.36, places=2)
        self.assertEqual(first["motors"]["pan"], {"unit": "arcsec", "fastest": 24})
        self.assertEqual(second, {"number": 2, "kind": "storage"})
        self.assertEqual(third["controls"]["brightness"],
                         {"kind": "value", "entity": 2, "selector": 2,
                          "fields": {"value": {"min": -64, "max": 64, "default": 3, "step": 2}}})
        self.assertNotIn("gamma", third["controls"])
        self.assertIn("gamma", first["controls"])

    def test_tell_the_state_of_every_device(self):
        self.start("--devices", "camera,storage", "--option", "brightness=0:9:1:7",
                   "--at-start", "stall 1 gamma GET_MIN", "--at-start", "stall 1 gain",
                   "--at-start", "short 1 focus_auto 0", "--at-start", "delay 1 5",
                   "--at-start", "refuse-open 1 EACCES", "--at-start", "busy 1 on")
        client = self.connect()
        camera, storage = client.ask("state")["devices"]
        self.assertEqual(camera["pan"], {"position": 0, "velocity": 0})
        self.assertEqual(camera["focus"], {"position": 2048, "velocity": 0})
        self.assertEqual(camera["values"]["brightness"], 7)
        self.assertEqual(camera["presets"], {})
        self.assertEqual([camera[name] for name in ("auto_focus", "mute", "flip", "mirror", "freeze",
                                                    "framing", "menu")], [True] + 6 * [False])
        self.assertEqual(camera["faults"], {
            "stall": ["gamma GET_MIN", "gain"], "short": ["focus_auto 0"], "delay": 5,
            "refuse_open": 13, "busy": True})
        self.assertEqual(storage, {"number": 2, "requests_under_way": 0, "plugged_in": True,
                                   "address": 3, "open_files": 0, "faults": {}})
        self.assertEqual(client.ask("json state 2")["devices"], [storage])

    def test_are_errors_too(self):
        self.start()
        client = self.connect()
        for line, words in (("json unplug 7", "no device 7"), ("json dance", "'dance'"),
                            ("json", "no command"), ("describe 1", "usage"), ("watch 1", "usage"),
                            ("json \xff\x01", "no command is called")):
            answer = client.ask(line)
            self.assertFalse(answer["ok"])
            self.assertIn(words, answer["error"])
        self.assertEqual(client.ask("json delay 1 5"), {"ok": True})
        self.assertEqual(client.ask("json list"), {"ok": True, "text": "1 camera address 2"})
        self.tell("describe extra", code=1)
        self.assertIn('"ok":true', self.tell("describe"))


class Watching(JsonCase):
    def watch(self):
        client = self.connect()
        return client, client.ask("watch")

    def read_until(self, client, name, expected):
        """Reads changes of device 1 until this member is as expected; all of them."""
        changes = []
        while True:
            message = client.read()
            self.assertEqual(message["event"], "change")
            changes += [device for device in message["devices"] if device["number"] == 1]
            if changes and changes[-1].get(name) == expected:
                return changes

    def test_starts_with_everything(self):
        self.start("--devices", "camera,storage")
        client = self.connect()
        described, state = client.ask("describe"), client.ask("state")
        first = client.ask("watch")
        self.assertEqual((first["ok"], first["protocol"]), (True, 1))
        for watched, device, about in zip(first["devices"], state["devices"], described["devices"]):
            del device["requests_under_way"]
            self.assertEqual(watched.pop("description"), about)
            self.assertEqual(watched, device)

    def test_tells_only_what_changed(self):
        self.start("--cameras", "2")
        client, _ = self.watch()
        for command, expected in (
            ("stall 1 gain", {"faults": {"stall": ["gain"]}}),
            ("clear 1", {"faults": {}}),
            ("unplug 1", {"plugged_in": False}),
            ("replug 1 9", {"plugged_in": True, "address": 9}),
        ):
            self.tell(command)
            message = client.read()
            self.assertEqual(message["devices"], [{"number": 1, **expected}])
        self.tell("range 2 gain 1:2:1:2")
        (device,) = client.read()["devices"]
        self.assertEqual(sorted(device), ["description", "number", "values"])
        self.assertEqual(device["description"]["controls"]["gain"]["fields"]["value"]["max"], 2)
        # Nothing changed; if it were told within a second, it would be told.
        self.tell("clear 1")
        self.assertTrue(client.silent(1))

    def test_and_following_the_log_twice_tells_nothing_twice(self):
        self.start()
        client, first = self.watch()
        again = client.ask("watch")
        self.assertEqual(again["devices"], first["devices"])
        self.assertEqual(client.ask("log")["log"], 1)
        self.assertEqual(client.ask("log")["log"], 1)
        self.tell("unplug 1")
        messages = [client.read(), client.read()]
        self.assertEqual(sorted(message["event"] for message in messages), ["change", "unplug"])
        self.assertTrue(client.silent(0.5))

    def test_follows_motors_and_is_silent_when_they_stand(self):
        self.start(command=("sh", "-c", f"{UVC_CLIENT} turn; exec sleep 60"))
        self.assertEqual(self.process.stdout.readline(), "turning\n")
        client, first = self.watch()
        self.assertEqual(first["devices"][0]["open_files"], 1)
        begin, messages, last = time.monotonic(), 0, first["devices"][0]["pan"]["position"]
        while time.monotonic() < begin + 1:
            (device,) = client.read()["devices"]
            self.assertEqual(sorted(device), ["number", "pan"])
            self.assertEqual(device["pan"]["velocity"], 120 * 3600 / 24)
            self.assertGreater(device["pan"]["position"], last)
            last = device["pan"]["position"]
            messages += 1
        self.assertLessEqual(messages, 61)
        self.assertGreater(messages, 10)  # 60 on an idle machine
        self.process.stdin.write("\n")
        self.process.stdin.flush()
        while device["pan"]["velocity"] != 0:
            (device,) = client.read()["devices"]
        self.assertEqual(self.process.stdout.readline(), "standing\n")
        self.assertTrue(client.silent(1))
        self.process.stdin.write("\n")
        self.process.stdin.flush()
        self.assertEqual(client.read()["devices"], [{"number": 1, "open_files": 0}])

    def test_follows_a_camera_moved_by_its_remote_control(self):
        self.start()
        client, _ = self.watch()
        self.assertEqual(client.ask("json go 1 right=12 in"), {"ok": True})
        begin = client.read()["devices"][0]
        self.assertEqual(begin["pan"]["velocity"], 60 * 3600)
        self.assertGreater(begin["zoom"]["velocity"], 0)
        self.tell("go 1 stop")
        while begin["pan"]["velocity"] != 0:
            (begin,) = client.read()["devices"]
        self.tell("go 1 pan=-3600")
        *_, last = self.read_until(client, "pan", {"position": -3600, "velocity": 0})
        self.assertNotIn("zoom", last)
        answer = client.ask("json go 1 pan=999999999")
        self.assertEqual(answer, {"ok": False, "error": "999999999 is out of range"})
        self.tell("unplug 1")
        self.assertFalse(client.read()["devices"][0]["plugged_in"])
        self.assertIn("no power", client.ask("json go 1 home")["error"])

    def test_keeps_nothing_for_a_program_that_does_not_read(self):
        self.start("--cameras", "32")
        sleeper, _ = self.watch()
        reader, _ = self.watch()
        other = self.connect()
        # Each round changes what takes more than 60 kB to tell. A socket holds 200 kB.
        for number in range(40):
            for device in range(1, 33):
                self.assertTrue(other.ask(f"json range {device} gain 0:255:0:{number}")["ok"])
            self.read_until(reader, "values", other.ask("json state 1")["devices"][0]["values"])
        other.ask("json unplug 1")
        changes = self.read_until(sleeper, "plugged_in", False)
        values = [change["values"]["gain"] for change in changes if "values" in change]
        self.assertEqual(values[-1], 39)
        self.assertLess(len(values), 20)

    def test_outlives_programs_that_hang_up(self):
        self.start()
        for _ in range(20):
            with contextlib.closing(Client(self.socket)) as client:
                client.send("watch")
            self.tell("range 1 gain 0:9:0:3")
            self.tell("range 1 gain 0:9:0:4")
        self.assertTrue(self.connect().ask("describe")["ok"])


if __name__ == "__main__":
    main()
