# Copyright (c) 2026 The PTZ panel developers
# SPDX-License-Identifier: MIT
"""The virtual-camera command as a person at a shell uses it.

command_test.py VIRTUAL_CAMERA UVC_CLIENT
"""

import os
import re
import signal
import socket
import subprocess

from command_case import PATIENCE, UVC_CLIENT, VIRTUAL_CAMERA, Case, RunningCase, main, run

class TheCommand(Case):
    def test_shows_cameras_to_lsusb(self):
        result = run("--cameras", "3", "--", "lsusb", "-v")
        self.assertEqual(result.returncode, 0)
        self.assertEqual(result.stderr, "")
        devices = re.findall(r"^Bus \d+ Device \d+: ID (\S+)", result.stdout, re.MULTILINE)
        self.assertEqual(devices, ["f055:8888"] * 3)
        for expected in (
            "Camera Sensor",
            "PanTilt (Relative)",
            "Power Line Frequency",
            "FORMAT_MJPEG",
            "Transfer Type            Interrupt",
            "bcdUVC               1.10",
        ):
            self.assertEqual(result.stdout.count(expected), 3, expected)
        for sign in ("rror", "Warning", "nrecognized", "unknown", "can't", "junk", "bogus"):
            self.assertNotIn(sign, result.stdout)

    def test_shows_what_is_no_camera(self):
        result = run("--devices", "camera,storage,other-camera,camera", "--", "lsusb")
        self.assertEqual(result.stderr, "")
        ids = re.findall(r"ID (\S+)", result.stdout)
        self.assertEqual(ids, ["f055:8888", "f055:0001", "f055:0102", "f055:8888"])

    def test_serves_a_client_built_on_libuvc_alone(self):
        result = run("--cameras", "2", "--", UVC_CLIENT)
        self.assertEqual(result.returncode, 0, result.stdout + result.stderr)
        self.assertIn("2 cameras, 0 failures", result.stdout)
        self.assertEqual(result.stderr, "")

    def test_hands_on_the_exit_code(self):
        for code in (0, 1, 7, 255):
            self.assertEqual(run("--", "sh", "-c", f"exit {code}").returncode, code)

    def test_tells_which_signal_ended_the_command(self):
        self.assertEqual(run("--", "sh", "-c", "kill -9 $$").returncode, 128 + 9)

    def test_hands_on_arguments_streams_and_environment(self):
        result = run(
            "--", "sh", "-c", 'cat; printf "%s|" "$0" "$@"; echo "$MINE"; echo no >&2', "a b", "", "-v",
            input="typed\n", env={**os.environ, "MINE": "kept"},
        )
        self.assertEqual(result.stdout, "typed\na b||-v|kept\n")
        self.assertEqual(result.stderr, "no\n")

    def test_keeps_other_preloaded_libraries(self):
        result = run("--", "sh", "-c", "echo $LD_PRELOAD; echo ${VIRTUAL_CAMERA_LD_PRELOAD-unset}",
            env={**os.environ, "LD_PRELOAD": "libm.so.6"})
        preloaded, leftover = result.stdout.splitlines()
        self.assertTrue(preloaded.endswith(":libumockdev-preload.so.0:libm.so.6"), preloaded)
        self.assertEqual(leftover, "unset")

    def test_passes_signals_on(self):
        for number in (signal.SIGTERM, signal.SIGINT, signal.SIGHUP):
            with subprocess.Popen(
                [VIRTUAL_CAMERA, "--", "sh", "-c", "echo up; exec sleep 60"], stdout=subprocess.PIPE
            ) as process:
                self.assertEqual(process.stdout.readline(), b"up\n")
                process.send_signal(number)
                self.assertEqual(process.wait(PATIENCE), 128 + number)

    def test_leaves_nothing_behind(self):
        result = run("--", "sh", "-c", 'echo "$UMOCKDEV_DIR"')
        folder = result.stdout.strip()
        self.assertTrue(folder.startswith("/"))
        self.assertFalse(os.path.exists(folder))

    def test_explains_itself(self):
        result = run("--help")
        self.assertEqual(result.returncode, 0)
        self.assertEqual(result.stderr, "")
        for word in ("--cameras", "--devices", "--option", "--log", "--control", "--at-start",
                     "--tell", "unplug N", "refuse-open", "pantilt_relative", "Exit codes"):
            self.assertIn(word, result.stdout)
        self.assertLessEqual(max(map(len, result.stdout.splitlines())), 100)
        self.assertRegex(run("--version").stdout, r"^virtual-camera \d+\.\d+\.\d+\n$")


class BadInput(Case):
    def test_is_met_with_one_line(self):
        for arguments, words in (
            (["--foo"], "unknown option '--foo'"),
            (["--cameras", "0", "--", "true"], "1 to 32"),
            (["--cameras", "200", "--", "true"], "1 to 32"),
            (["--cameras", "many", "--", "true"], "'many'"),
            (["--cameras"], "needs a value"),
            ([], "no command"),
            (["--", ], "no command"),
            (["--devices", "toaster", "--", "true"], "'toaster'"),
            (["--option", "brightness=1:2", "--", "true"], "min:max"),
            (["--option", "9.product=x", "--", "true"], "no device '9'"),
            (["--at-start", "explode 1", "--", "true"], "'explode'"),
            (["--tell", "/nowhere"], "--tell expects"),
        ):
            with self.subTest(arguments=arguments):
                self.expect_complaint(run(*arguments), 2, words)

    def test_names_the_command_that_is_not_there(self):
        self.expect_complaint(run("--", "/nonexistent"), 127, "/nonexistent")
        self.expect_complaint(run("--", "no-such-command"), 127, "no-such-command")
        self.expect_complaint(run("--", self.folder), 126, "Permission denied")

    def test_names_the_file_that_cannot_be_written(self):
        self.expect_complaint(run("--log", "/nonexistent/log", "--", "true"), 1, "/nonexistent/log")
        self.expect_complaint(run("--control", "/nonexistent/s", "--", "true"), 1, "/nonexistent/s")
        self.expect_complaint(run("--control", self.path("x" * 200), "--", "true"), 1, "too long")
        with open(self.path("file"), "w", encoding="ascii"):
            pass
        self.expect_complaint(run("--control", self.path("file"), "--", "true"), 1, "in use")
        self.assertTrue(os.path.exists(self.path("file")))

    def test_says_when_a_start_command_fails(self):
        self.expect_complaint(run("--at-start", "unplug 5", "--", "true"), 1, "no device 5")

    def test_says_when_umockdev_is_missing(self):
        # An empty file where the loader looks first is a library that cannot be loaded.
        with open(self.path("libumockdev-preload.so.0"), "w", encoding="ascii"):
            pass
        result = run("--", "true", env={**os.environ, "LD_LIBRARY_PATH": self.folder})
        self.expect_complaint(result, 1, "libumockdev0")

    def test_says_when_its_folder_cannot_be_told_to_the_loader(self):
        for name in "with blank", "with:colon":
            folder = self.path(name)
            os.mkdir(folder)
            result = run("--", "true", env={**os.environ, "TMPDIR": folder})
            self.expect_complaint(result, 1, folder)
            self.assertEqual(os.listdir(folder), [])

    def test_says_when_nobody_listens(self):
        self.expect_complaint(run("--tell", self.path("nobody"), "list"), 1, "nobody")


class TheLog(Case):
    def test_has_a_line_for_each_request(self):
        log = self.path("log")
        run("--log", log, "--option", "brightness=-64:64:0:10", "--", UVC_CLIENT)
        with open(log, encoding="ascii") as file:
            lines = file.read().splitlines()
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

    def test_goes_to_standard_output(self):
        result = run("--log", "-", "--", UVC_CLIENT)
        self.assertIn(" cam1 SET_CUR roll_absolute value=8 (home position) [08 00] ok\n", result.stdout)


class WhileItRuns(RunningCase):
    def start(self, *options, command=("sleep", "60")):
        self.socket = self.path("socket")
        self.process = subprocess.Popen(
            [VIRTUAL_CAMERA, "--control", self.socket, *options, "--", "sh", "-c",
             'echo up; exec "$@"', "sh", *command],
            stdout=subprocess.PIPE, text=True,
        )
        self.addCleanup(self.stop)
        self.assertEqual(self.process.stdout.readline(), "up\n")

    def stop(self):
        self.process.terminate()
        self.process.communicate(timeout=PATIENCE)

    def tell(self, line, code=0):
        result = run("--tell", self.socket, *line.split())
        self.assertEqual(result.returncode, code, result.stdout + result.stderr)
        return result.stdout.rstrip("\n")

    def test_answers_every_command_with_one_line(self):
        self.start("--cameras", "2")
        for line in ("unplug 2", "replug 2 9", "stall 1 brightness", "stall 1 gamma GET_MIN",
                     "stall 1 all", "unstall 1", "short 1 gamma 1", "full 1", "delay 1 5",
                     "delay 1 0", "refuse-open 1 EACCES", "refuse-open 1 none", "busy 1 on",
                     "busy 1 off", "range 1 contrast 5:1:2:3", "clear 1", "help"):
            answer = self.tell(line)
            self.assertTrue(answer.startswith("ok"), answer)
            self.assertNotIn("\n", answer)
        self.assertEqual(self.tell("list"), "ok 1 camera address 2; 2 camera address 9")
        self.assertIn(" contrast=3 ", self.tell("state 1"))
        for line in ("dance", "unplug", "unplug 3", "replug 1", "replug 2 9"):
            answer = self.tell(line, code=1)
            self.assertTrue(answer.startswith("error: "), answer)
        self.assertEqual(self.tell("unplug 2"), "ok")
        self.assertTrue(self.tell("unplug 2", code=1).startswith("error: "))
        self.assertIn("2 camera unplugged", self.tell("list"))
        self.assertTrue(self.tell("replug 2 2", code=1).startswith("error: address 2 is taken"))

    def test_takes_many_lines_and_broken_ones_on_one_connection(self):
        self.start()
        with socket.socket(socket.AF_UNIX) as client:
            client.connect(self.socket)
            client.sendall(b"state 1\nlist\n\nxyz\xff\x00\n")
            with client.makefile("rb") as answers:
                self.assertTrue(answers.readline().startswith(b"ok plugged=yes"))
                self.assertTrue(answers.readline().startswith(b"ok 1 camera"))
                self.assertTrue(answers.readline().startswith(b"error: "))
                self.assertTrue(answers.readline().startswith(b"error: "))
        with socket.socket(socket.AF_UNIX) as endless:
            endless.connect(self.socket)
            try:
                for _ in range(100):
                    endless.sendall(b"x" * 1000)
            except OSError:
                pass  # hung up on, as is right
        self.assertTrue(self.tell("list").startswith("ok"))

    def test_unplugs_a_camera_under_a_program(self):
        log = self.path("log")
        self.start("--log", log, command=(UVC_CLIENT, "hold", "50"))
        self.assertEqual(self.process.stdout.readline(), "reading\n")
        self.assertEqual(self.tell("unplug 1"), "ok")
        self.assertEqual(self.process.stdout.readline(), "failed with -4\n")
        self.assertEqual(self.process.wait(PATIENCE), 0)
        with open(log, encoding="ascii") as file:
            self.assertIn(" cam1 UNPLUG\n", file.read())

    def test_stalls_a_control_under_a_program(self):
        self.start(command=(UVC_CLIENT, "hold", "50"))
        self.assertEqual(self.process.stdout.readline(), "reading\n")
        self.tell("stall 1 brightness GET_CUR")
        self.assertEqual(self.process.stdout.readline(), "failed with -9\n")

    def test_refuses_to_open_a_camera(self):
        for error, status in (("EACCES", -3), ("EBUSY", -1)):
            result = run("--at-start", f"refuse-open 1 {error}", "--", UVC_CLIENT)
            self.assertIn(f"  open: {status}\n", result.stdout)
        self.assertIn("  open: -6\n", run("--at-start", "busy 1 on", "--", UVC_CLIENT).stdout)

    def test_takes_the_name_of_a_socket_that_was_left_behind(self):
        with socket.socket(socket.AF_UNIX) as old:
            old.bind(self.path("socket"))
        self.start()
        self.assertTrue(self.tell("list").startswith("ok"))
        # But not that of one in use.
        self.expect_complaint(run("--control", self.socket, "--", "true"), 1, "in use")

    def test_removes_its_socket(self):
        self.start(command=("true",))
        self.process.wait(PATIENCE)
        self.assertFalse(os.path.exists(self.socket))


class Descriptions(Case):
    def test_reach_the_client(self):
        for option, expected in (
            ("product=", "product ''"),
            ("product=Saal Süd", "product 'Saal S?d'"),
            # libuvc reads no more than this of a name.
            ("product=" + "x" * 1000, "product '" + "x" * 63 + "'"),
            ("product-id=0x1234", "f055:1234"),
            ("serial=ABC", "serial 'ABC'"),
        ):
            with self.subTest(option=option):
                self.assertIn(expected, run("--option", option, "--", UVC_CLIENT).stdout)


if __name__ == "__main__":
    main()
