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
import sys

from command_case import PATIENCE, UVC_CLIENT, VIRTUAL_CAMERA, Case, RunningCase, main, run


def runs(process):
    """Whether there is such a process, and it is no zombie."""
    try:
        with open(f"/proc/{process}/stat", encoding="ascii") as file:
            return file.read().rsplit(")", 1)[1].split()[0] != "Z"
    except FileNotFoundError:
        return False


class TheCommand(Case):
    def test_shows_cameras_to_lsusb(self):
        result = run("--cameras", "3", "--", "lsusb", "-v")
        self.assertEqual(result.returncode, 0)
        self.assertEqual(result.stderr, "")
        devices = re.findall(r"^Bus \d+ Device \d+: ID (\S+)", result.stdout, re.MULTILINE)
        self.assertEqual(devices, ["f055:8888"] * 3 + ["1d6b:0002"])
        cameras = result.stdout[: result.stdout.index("1d6b:0002")]
        for expected in (
            "Camera Sensor",
            "PanTilt (Relative)",
            "Power Line Frequency",
            "FORMAT_MJPEG",
            "Transfer Type            Interrupt",
            "bcdUVC               1.10",
        ):
            self.assertEqual(cameras.count(expected), 3, expected)
        # lsusb 018 names products that its list of vendors lacks "[unknown]".
        complaints = result.stdout.replace("[unknown]", "")
        for sign in ("rror", "Warning", "nrecognized", "unknown", "can't", "junk", "bogus"):
            self.assertNotIn(sign, complaints)

    def test_shows_what_is_no_camera(self):
        result = run("--devices", "camera,storage,other-camera,camera", "--", "lsusb")
        self.assertEqual(result.stderr, "")
        ids = re.findall(r"ID (\S+)", result.stdout)
        self.assertEqual(ids, ["f055:8888", "f055:0001", "f055:0102", "f055:8888", "1d6b:0002"])

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
        result = run("--", "sh", "-c", "echo $LD_PRELOAD",
            env={**os.environ, "LD_PRELOAD": "libm.so.6"})
        preloaded = result.stdout.strip()
        self.assertTrue(preloaded.endswith(":libumockdev-preload.so.0:libm.so.6"), preloaded)

    def test_passes_signals_on(self):
        for number in (signal.SIGTERM, signal.SIGINT, signal.SIGHUP):
            with subprocess.Popen(
                [VIRTUAL_CAMERA, "--", "sh", "-c", "echo up; exec sleep 60"], stdout=subprocess.PIPE
            ) as process:
                self.assertEqual(process.stdout.readline(), b"up\n")
                process.send_signal(number)
                self.assertEqual(process.wait(PATIENCE), 128 + number)

    def test_keeps_what_is_no_option_of_its_own(self):
        for arguments, expected in (
            (["echo", "--", "-v", "--log", "x"], "-- -v --log x\n"),
            (["--", "echo", "--cameras", "2"], "--cameras 2\n"),
            (["--cameras=2", "--", "echo", "--", "x"], "-- x\n"),
        ):
            self.assertEqual(run(*arguments).stdout, expected)

    def test_leaves_nothing_behind_when_it_is_killed(self):
        process = subprocess.Popen(
            [VIRTUAL_CAMERA, "--", "sh", "-c", 'echo $$ "$UMOCKDEV_DIR"; exec sleep 600'],
            stdout=subprocess.PIPE, text=True,
        )
        self.addCleanup(process.stdout.close)
        child, folder = process.stdout.readline().split()
        self.addCleanup(lambda: runs(child) and os.kill(int(child), signal.SIGKILL))
        self.assertTrue(os.path.exists(folder))
        process.kill()
        process.wait(PATIENCE)
        self.wait_until(lambda: not runs(child))
        self.wait_until(lambda: not os.path.exists(folder))

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
                     "--log-json", "--script", "--join", "--tell", "unplug N", "refuse-open",
                     "pantilt_relative", "Exit codes"):
            self.assertIn(word, result.stdout)
        self.assertLessEqual(max(map(len, result.stdout.splitlines())), 100)
        self.assertRegex(run("--version").stdout, r"^virtual-camera \d+\.\d+\.\d+\n$")


class BadInput(Case):
    def test_is_met_with_one_line(self):
        for arguments, words in (
            (["--foo"], "Unknown option --foo"),
            (["--cameras", "0", "--", "true"], "1 to 32"),
            (["--cameras", "200", "--", "true"], "1 to 32"),
            (["--cameras", "many", "--", "true"], "'many'"),
            (["--cameras"], "Missing argument for --cameras"),
            ([], "no command"),
            (["--", ], "no command"),
            (["--devices", "toaster", "--", "true"], "'toaster'"),
            (["--option", "brightness=1:2", "--", "true"], "min:max"),
            (["--option", "9.product=x", "--", "true"], "no device '9'"),
            (["--at-start", "explode 1", "--", "true"], "'explode'"),
            (["--tell", "/nowhere"], "--tell expects"),
            (["--tell"], "Missing argument for --tell"),
            (["--join", "/nowhere"], "no command"),
            (["--tell", "/nowhere", "--control", "/other", "--", "true"], "only one of"),
            (["--join", "/nowhere", "--cameras", "2", "--", "true"], "no other option"),
            (["--log", "", "--", "true"], "file name"),
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
        self.expect_complaint(run("--script", "/nonexistent/f", "--", "true"), 1, "/nonexistent/f")
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
                     "busy 1 off", "range 1 contrast 5:1:2:3", "range 1 tilt -3600:0:0:0",
                     "fail 1 all EPROTO at 2", "wrong 1 gamma share 10 7", "long 1 gain 9 every 3",
                     "lose-stop 1", "short 1 descriptors 4", "clear 1", "go 1 left up=3", "go 1 stop",
                     "go 1 home", "go 1 pan=3600 zoom=0", "help"):
            answer = self.tell(line)
            self.assertTrue(answer.startswith("ok"), answer)
            self.assertNotIn("\n", answer)
        self.assertEqual(self.tell("list"), "ok 1 camera address 2; 2 camera address 9")
        self.assertIn(" contrast=3 ", self.tell("state 1"))
        self.wait_until(lambda: " pan=3600 pan_velocity=0 " in self.tell("state 1"))
        for line in ("dance", "unplug", "unplug 3", "replug 1", "replug 2 9", "go 1 tilt=3600",
                     "go 1 preset=1"):
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


class OnARunningBus(RunningCase):
    def join(self, *command, **options):
        return run("--join", self.socket, "--", *command, **options)

    def test_a_second_program_sees_the_same_cameras(self):
        self.start("--cameras", "2", "--option", "2.product=Second", command=(UVC_CLIENT, "turn"))
        self.assertEqual(self.process.stdout.readline(), "turning\n")
        self.assertIn("Second", self.join("lsusb").stdout)
        self.tell("refuse-open 2 EACCES")
        result = self.join(UVC_CLIENT)
        self.assertIn("  open: -3\n", result.stdout)
        self.tell("unplug 2")
        self.assertNotIn("Second", self.join("lsusb").stdout)
        self.assertEqual(self.join("lsusb").stderr, "")

    def test_programs_hear_of_plugging_beside_each_other(self):
        # All of them listen at the same descriptor.
        listener = ("import socket; s = socket.socket(socket.AF_NETLINK, socket.SOCK_RAW, 15)\n"
                    "s.bind((0, 0)); print('listening', s.fileno(), flush=True)\n"
                    "for _ in range(2): print(s.recv(8192).split(b'\\0')[-3:], flush=True)")
        self.start(command=(sys.executable, "-c", listener))
        programs = [self.process]
        for _ in range(2):
            programs.append(self.enterContext(subprocess.Popen(
                [VIRTUAL_CAMERA, "--join", self.socket, "--", sys.executable, "-c", listener],
                stdout=subprocess.PIPE, text=True)))
            self.addCleanup(programs[-1].kill)
        self.assertEqual(len({program.stdout.readline() for program in programs}), 1)
        self.tell("unplug 1")
        self.tell("replug 1")
        for program in programs:
            self.assertIn("DEVNUM=002", program.stdout.readline())
            self.assertIn("DEVNUM=002", program.stdout.readline())

    def test_the_second_program_is_like_any_other(self):
        self.start()
        self.assertEqual(self.join("sh", "-c", "exit 7").returncode, 7)
        self.assertEqual(self.join("cat", input="typed").stdout, "typed")
        environment = {**os.environ, "LD_PRELOAD": "libm.so.6", "MINE": "kept"}
        result = self.join("sh", "-c", "echo $MINE $LD_PRELOAD", env=environment)
        self.assertRegex(result.stdout,
                         r"^kept \S+/virtual_camera_open.so:libumockdev-preload.so.0:libm.so.6$")
        self.expect_complaint(self.join("no-such-command"), 127, "no-such-command")
        self.expect_complaint(self.join(self.folder), 126, "Permission denied")

    def test_there_must_be_one(self):
        self.expect_complaint(run("--join", self.path("nobody"), "--", "true"), 1, "nobody")


class Scripts(Case):
    def play(self, text, *command):
        with open(self.path("script"), "w", encoding="utf-8") as file:
            file.write(text)
        return run("--script", self.path("script"), "--log", self.path("log"), "--", *command)

    def events(self):
        """Time and name of what the log says."""
        with open(self.path("log"), encoding="ascii") as file:
            return [(float(line.split()[0]), line.split()[2]) for line in file if line[0] != "#"]

    def test_are_carried_out_in_time(self):
        result = self.play("# a comment\n0.2 unplug 1 # another\n\n+0.25 replug 1\n0.75 unplug 1\n",
                           "sleep", "1")
        self.assertEqual((result.returncode, result.stderr), (0, ""))
        events = self.events()
        self.assertEqual([name for _, name in events], ["UNPLUG", "REPLUG", "UNPLUG"])
        times = [time for time, _ in events]
        self.assertGreaterEqual(times[0], 0.2)
        for before, after in zip(times, times[1:]):
            # The machine may be busy, but steps are never early.
            self.assertGreater(after - before, 0.1)

    def test_end_with_the_command(self):
        result = self.play("0 unplug 1\n60 replug 1\n", "sleep", "0.3")
        self.assertEqual(result.returncode, 0)
        self.assertEqual([name for _, name in self.events()], ["UNPLUG"])

    def test_say_what_failed(self):
        result = self.play("0 unplug 1\n0 unplug 1\n", "sleep", "0.3")
        self.expect_complaint(result, 1, "script:2: device is unplugged already")
        result = self.play("0 unplug 7\n", "sh", "-c", "sleep 0.3; exit 9")
        self.expect_complaint(result, 9, "script:1: there is no device 7")

    def test_are_read_before_anything_starts(self):
        for text, words in (
            ("unplug 1\n", "script:1: 'unplug' is not a time"),
            ("1 unplug 1\n0.5 replug 1\n", "script:2: 0.5 is earlier"),
            ("1\n", "script:1: no command"),
            ("\n\n1 dance\n", "script:3: no command is called 'dance'"),
            ("-1 unplug 1\n", "'-1'"), ("nan unplug 1\n", "'nan'"), ("1e3 unplug 1\n", "'1e3'"),
        ):
            with self.subTest(text=text):
                self.expect_complaint(self.play(text, "echo", "started"), 1, words)


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
