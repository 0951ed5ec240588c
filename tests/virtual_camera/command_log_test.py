# Copyright (c) 2026 The PTZ panel developers
# SPDX-License-Identifier: MIT
"""The logs of virtual-camera, as people and programs read them."""

import collections
import errno
import json
import os
import re
import struct
import subprocess
import time

from command_case import PATIENCE, UVC_CLIENT, VIRTUAL_CAMERA, Case, RunningCase, main, run


class InWords(Case):
    def test_has_a_line_for_each_request(self):
        log = self.path("log")
        run("--log", log, "--option", "brightness=-64:64:0:10", "--", UVC_CLIENT)
        with open(log, encoding="ascii") as file:
            first, *lines = file.read().splitlines()
        self.assertRegex(first, r"^# virtual-camera log 1 \d{4}-\d\d-\d\dT\d\d:\d\d:\d\dZ$")
        for line in lines:
            self.assertRegex(line, r"^\d+\.\d{6} cam1 \S")
        times = [float(line.split()[0]) for line in lines]
        self.assertEqual(times, sorted(times))
        texts = [line.split(" ", 1)[1] for line in lines]
        for expected in (
            "cam1 GET_MIN brightness value=-64 [c0 ff] ok",
            "cam1 SET_CUR pantilt_relative pan=+1 pan_speed=24 tilt=0 tilt_speed=0 [01 18 00 00] ok",
            "cam1 SET_CUR zoom_relative zoom=0 digital=1 speed=5 [00 01 05] ok",
            "cam1 SET_CUR focus_relative focus=-1 speed=3 [ff 03] ok",
            "cam1 SET_CUR roll_absolute value=23 (store preset 3) [17 00] ok",
            "cam1 SET_CUR roll_absolute value=8 (home position) [08 00] ok",
            "cam1 SET_CUR gamma value=501 [f5 01] stall",
        ):
            self.assertEqual(texts.count(expected), 1, expected)
        opened = [text for text in texts if " OPEN " in text]
        closed = [text for text in texts if " CLOSE " in text]
        self.assertEqual(sorted(text.replace("CLOSE", "OPEN") for text in closed), sorted(opened))
        self.assertTrue(opened)

    def test_has_a_request_before_the_program_has_its_answer(self):
        log = self.path("log")
        result = run("--log", log, "--", "sh", "-c", f"{UVC_CLIENT} read 100; cat {log}")
        self.assertEqual(result.stdout.count(" GET_CUR brightness "), 100)

    def test_goes_to_standard_output(self):
        result = run("--log", "-", "--", UVC_CLIENT)
        self.assertIn(" cam1 SET_CUR roll_absolute value=8 (home position) [08 00] ok\n", result.stdout)


class InJson(RunningCase):
    def test_has_what_the_other_log_has(self):
        run("--log", self.path("text"), "--log-json", self.path("json"), "--", UVC_CLIENT)
        with open(self.path("text"), encoding="ascii") as file:
            texts = file.read().splitlines()[1:]
        with open(self.path("json"), encoding="utf-8") as file:
            first, *records = map(json.loads, file)
        self.assertEqual(first["log"], 1)
        self.assertEqual(len(records), len(texts))
        for record, text in zip(records, texts):
            time, camera, what, *rest = text.split()
            self.assertAlmostEqual(record["time"], float(time), places=6)
            self.assertEqual(f"cam{record['device']}", camera)
            if record["event"] == "request":
                self.assertEqual([record["request"], record["control"], record["result"]],
                                 [what, rest[0], rest[-1]])
                self.assertIn(f"[{record['data']}]" if record["data"] else rest[0], text)
            else:
                self.assertEqual([record["event"].upper(), f"file={record['file']}"], [what, *rest])
        turn = next(record for record in records if record.get("control") == "pantilt_relative")
        del turn["time"], turn["file"]
        self.assertEqual(turn, {
            "device": 1, "event": "request", "request": "SET_CUR", "control": "pantilt_relative",
            "values": {"pan": 1, "pan_speed": 24, "tilt": 0, "tilt_speed": 0},
            "setup": "21 01 00 0e 00 01 04 00", "data": "01 18 00 00", "result": "ok"})
        self.assertIn("store preset 3", [record.get("command") for record in records])

    def test_can_be_followed(self):
        self.start("--log-json", self.path("json"))
        with subprocess.Popen([VIRTUAL_CAMERA, "--tell", self.socket, "log"],
                              stdout=subprocess.PIPE, text=True) as follower:
            self.addCleanup(follower.kill)
            first = json.loads(follower.stdout.readline())
            self.assertEqual((first["ok"], first["protocol"], first["log"]), (True, 1, 1))
            self.assertEqual(run("--join", self.socket, "--", UVC_CLIENT, "read", "20").returncode, 0)
            self.tell("unplug 1")
            followed = []
            while not followed or json.loads(followed[-1])["event"] != "unplug":
                followed.append(follower.stdout.readline())
            follower.kill()
        with open(self.path("json"), encoding="utf-8") as file:
            self.assertEqual(file.readlines()[1:], followed)


class ForWireshark(RunningCase):
    """Read as <linux/usb/usbmon.h> lays it out, without Wireshark."""

    Packet = collections.namedtuple("Packet", "time id type transfer endpoint device bus no_setup no_data"
                                    " seconds microseconds status length captured setup data")

    def packets(self):
        with open(self.path("pcap"), "rb") as file:
            content = file.read()
        self.assertEqual(struct.unpack_from("=IHHiIII", content),
                         (0xA1B2C3D4, 2, 4, 0, 0, 262144, 220))
        place, packets = 24, []
        while place < len(content):
            seconds, microseconds, captured, original = struct.unpack_from("=4I", content, place)
            self.assertEqual(captured, original)
            head = struct.unpack_from("=QcBBBHccqiiII8s4I", content, place + 16)
            packets.append(self.Packet(seconds + microseconds / 1e6, *head[:14],
                                       content[place + 80:place + 16 + captured]))
            self.assertEqual((head[8], head[9]), (seconds, microseconds))
            self.assertEqual(len(packets[-1].data), packets[-1].captured)
            place += 16 + captured
        return packets

    def test_holds_each_transfer_twice(self):
        before = time.time()
        run("--log-json", self.path("json"), "--log-pcap", self.path("pcap"), "--", UVC_CLIENT)
        with open(self.path("json"), encoding="utf-8") as file:
            requests = [json.loads(line) for line in file if '"request"' in line]
        packets = self.packets()
        self.assertEqual([packet.type for packet in packets], [b"S", b"C"] * (len(packets) // 2))
        pairs = [(submission, completion)
                 for submission, completion in zip(packets[::2], packets[1::2])
                 if submission.setup[0] & 0x60 == 0x20]
        self.assertEqual(len(pairs), len(requests))
        for (submission, completion), request in zip(pairs, requests):
            self.assertEqual(submission.id, completion.id)
            self.assertEqual((submission.transfer, submission.device, submission.bus), (2, 2, 1))
            self.assertEqual(submission.setup.hex(" "), request["setup"])
            self.assertEqual((submission.data + completion.data).hex(" "), request["data"])
            reads = submission.setup[0] & 0x80
            self.assertEqual(submission.endpoint, reads)
            self.assertEqual(submission.data if reads else completion.data, b"")
            self.assertEqual(submission.status, -errno.EINPROGRESS)
            self.assertEqual(completion.status, -errno.EPIPE if request["result"] == "stall" else 0)
            self.assertLessEqual(submission.time, completion.time)
            self.assertTrue(before - 1 < completion.time < time.time() + 1)
        # What every USB device is asked for is there, too.
        self.assertGreater(len(packets), 2 * len(pairs))

    def test_says_when_and_where(self):
        self.start("--log-pcap", self.path("pcap"), "--cameras", "2", "--at-start", "delay 2 200")
        self.tell("unplug 1")
        self.tell("replug 1 77")
        self.tell("unplug 1")
        self.tell("unplug 2")
        self.tell("replug 2 88")
        run("--join", self.socket, "--", UVC_CLIENT, "read", "1")
        self.stop()
        packets = self.packets()
        self.assertEqual({packet.device for packet in packets}, {88})
        waits = [completion.time - submission.time
                 for submission, completion in zip(packets[::2], packets[1::2])
                 if submission.setup[0] & 0x60 == 0x20]
        self.assertEqual(len(waits), 1)
        self.assertGreaterEqual(waits[0], 0.199)


class NobodyReads(Case):
    """The bus goes on, whatever becomes of its log."""

    requests = 12000  # 640 kB of log; 512 kB are kept for a reader, and 64 kB are in the pipe.

    def start(self, script):
        """The process, which logs to a pipe, and the pipe."""
        reader, writer = os.pipe()
        process = subprocess.Popen(
            [VIRTUAL_CAMERA, "--log", "-", "--", "sh", "-c", f"exec >/dev/null 2>&1; {script}"],
            stdout=writer)
        os.close(writer)
        self.addCleanup(process.wait)
        self.addCleanup(process.kill)
        return process, reader

    def test_a_pipe_that_is_full(self):
        process, reader = self.start(f"{UVC_CLIENT} read {self.requests}; echo $? >{self.path('end')}")
        # The program is through before anybody reads.
        self.wait_until(lambda: os.path.exists(self.path("end")), 4 * PATIENCE)
        with open(reader, encoding="ascii") as pipe:
            lines = pipe.read().splitlines()
        self.assertEqual(process.wait(PATIENCE), 0)
        with open(self.path("end"), encoding="ascii") as file:
            self.assertEqual(file.read(), "0\n")
        # Nothing is left out silently.
        lost = [int(match[1]) for match in map(re.compile(r"# (\d+) records lost").match, lines)
                if match]
        kept = sum("GET_CUR brightness" in line for line in lines)
        self.assertTrue(lost)
        self.assertGreaterEqual(sum(lost) + kept, self.requests)

    def test_a_pipe_to_a_reader_that_has_gone(self):
        process, reader = self.start(f"{UVC_CLIENT} read 100")
        os.close(reader)
        self.assertEqual(process.wait(PATIENCE), 0)

    def test_a_pipe_that_stays_full_at_the_end(self):
        process, reader = self.start(f"{UVC_CLIENT} read 2000")
        self.assertEqual(process.wait(PATIENCE), 0)
        os.close(reader)


if __name__ == "__main__":
    main()
