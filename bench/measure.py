# Copyright (c) 2026 The PTZ panel developers
# SPDX-License-Identifier: MIT

"""Starts one side of a comparison and takes its measure."""

import contextlib
import ctypes
import math
import mmap
import os
import shutil
import signal
import statistics
import subprocess
import tempfile
import time
from collections import namedtuple
from pathlib import Path

import Xlib.display
from harness import face, processes
from harness.cameras import CameraLog
from harness.desktop import Desktop
from harness.waiting import wait_for
from Xlib import X
from Xlib.ext import damage

BIN = Path(os.environ.get("PTZ_BIN_DIR", "build/release/bin"))
TIMES = 1 << 17

Side = namedtuple("Side", "program environment", defaults=({},))
"""A program that shows a window, and what its environment adds."""

PANEL = Side("ptz-panel")

# Where a request ends. Before the prompt camera everything that is counted is the program's own;
# the virtual camera has the real libuvc and libusb above it.
PROMPT, VIRTUAL, NOTHING = "prompt", "virtual", "nothing"
SLIDER_RANGE = "brightness=0:250:120:120"  # each pixel that the slider travels is another value


class Record(ctypes.Structure):
    """What the preloaded libraries note, under the same names there."""
    _fields_ = [("settings", ctypes.c_uint64), ("readings", ctypes.c_uint64),
                ("countFrom", ctypes.c_uint64), ("countTo", ctypes.c_uint64),
                ("times", ctypes.c_uint64 * TIMES)]


class _StampedSocket:
    """A connection to the X server that knows when it last sent something."""

    def __init__(self, socket):
        self._socket = socket
        self.sent = 0

    def send(self, data):
        self.sent = time.monotonic_ns()
        return self._socket.send(data)

    def __getattr__(self, name):
        return getattr(self._socket, name)


class Running:
    """A side that runs on a desktop, ready to be operated. Use it in a with statement."""

    def __init__(self, desktop, side, camera=NOTHING, through=(), count=None, log=False):
        self.desktop, self.side, self.camera = desktop, side, camera
        self._folder = Path(tempfile.mkdtemp(prefix="ptz-bench-"))
        self.log = CameraLog(self._folder / "cameras.log") if log else None
        self._through = [str(part).format(folder=self._folder) for part in through]
        with open(self._folder / "record", "w+b") as file:
            file.truncate(ctypes.sizeof(Record))
            self.record = Record.from_buffer(mmap.mmap(file.fileno(), 0))
        if count:
            self.record.countFrom, self.record.countTo = count
        self._process = self._start()

    def _start(self):
        environment = dict(self.desktop.environment, BENCH_RECORD=str(self._folder / "record"))
        program = [*self._through, BIN / self.side.program]
        preload = {PROMPT: "prompt_camera.so", VIRTUAL: "request_clock.so"}.get(self.camera)
        if preload:
            environment["LD_PRELOAD"] = str((BIN / preload).resolve())
        if self.camera != PROMPT:
            options = ["--devices", "storage"]
            if self.camera == VIRTUAL:
                options = ["--option", SLIDER_RANGE]
            if self.log:
                options += ["--log", self._folder / "cameras.log"]
            program = [BIN / "virtual-camera", *options, "--", *program]
        return processes.start([str(part) for part in program],
                               {**environment, **self.side.environment}, log=self._folder / "output")

    def __enter__(self):
        try:
            self.window = wait_for(self._find_window, f"the window of {self.side.program}")
            self.id = self.desktop.windows.process_of(self.window)
            if self.side == PANEL and self.camera != NOTHING:
                wait_for(lambda: self.record.readings >= 64, "the camera to be opened twice", 120)
            self.desktop.windows.activate(self.window)
        except BaseException:
            self.__exit__()
            raise
        return self

    def _find_window(self):
        assert self._process.poll() is None, (self._folder / "output").read_text(errors="replace")
        windows = self.desktop.windows
        for window in windows.all():
            if windows.process_of(window) and windows.is_visible(window) \
                    and windows.place(window)[2:] == (face.WIDTH, face.HEIGHT):
                return window
        return None

    def __exit__(self, *_):
        with contextlib.suppress(AttributeError, ProcessLookupError, TypeError):
            os.kill(self.id, 9)
        with contextlib.suppress(subprocess.TimeoutExpired):
            self._process.wait(5)
        processes.stop(self._process)
        shutil.rmtree(self._folder, ignore_errors=True)

    def at(self, x, y):
        corner = self.desktop.windows.corner(self.window)
        return corner[0] + x, corner[1] + y

    def show_settings(self):
        """The panel with everything that it has to show; any other window is shown whole."""
        if self.side.program == PANEL.program:
            self.desktop.mouse.click(*self.at(*face.centre(face.CONTROLS["btn_setting"])))
        self.desktop.windows.answers(self.window)
        time.sleep(0.3)  # a repaint follows

    def await_setting(self, number):
        """Waits, without much ado, for the request of that number, and returns its time."""
        give_up = time.monotonic() + 60
        while self.record.settings < number:
            time.sleep(0.00005)
            assert time.monotonic() < give_up, f"no request {number} of {self.side.program}"
        return self.record.times[(number - 1) % TIMES]

    def instructions(self, keep=None):
        """What was counted between the two settings that were asked for; keeps the profile."""
        profile = wait_for(lambda: list(self._folder.glob("callgrind.out.*.1")), "the count", 60)[0]
        total = wait_for(lambda: total_of(profile), "the total")
        if keep:
            shutil.copy(profile, keep)
        return total

    def end_counting(self, keep=None):
        """Ends the program and returns all that was counted."""
        os.kill(self.id, signal.SIGTERM)
        self._process.wait(60)
        profile = max(self._folder.glob("callgrind.out.*"), key=lambda path: path.stat().st_size)
        if keep:
            shutil.copy(profile, keep)
        return total_of(profile)

    def tasks(self, name, field):
        """The sum over the program's threads of what a file in /proc says."""
        return sum(field(path.read_text()) for path in Path(f"/proc/{self.id}/task").glob(f"*/{name}"))


CALLGRIND = ("valgrind", "--tool=callgrind", "--instr-atstart=no", "--vgdb=no",
             "--callgrind-out-file={folder}/callgrind.out.%p")


def total_of(profile):
    """The instructions in a profile, or None while it is being written."""
    totals = [line for line in profile.read_text().splitlines() if line.startswith("totals:")]
    return int(totals[-1].split()[1]) if totals else None


class Hand:
    """Injects input, and knows when."""

    def __init__(self, desktop):
        self._display = Xlib.display.Display(desktop.name)
        self._socket = _StampedSocket(self._display.display.socket)
        self._display.display.socket = self._socket

    def do(self, kind, detail=0, x=0, y=0):
        """Injects an event and returns when it was sent."""
        self._display.xtest_fake_input(kind, detail, x=round(x), y=round(y))
        self._display.flush()
        return self._socket.sent

    def paced(self, seconds, per_second, step):
        """Calls step(elapsed) so often, for so long."""
        start = time.monotonic()
        number = 0
        while (elapsed := time.monotonic() - start) < seconds:
            step(elapsed)
            number += 1
            time.sleep(max(0, start + number / per_second - time.monotonic()))


@contextlib.contextmanager
def bench_desktop(window_manager="openbox"):
    with Desktop(window_manager=window_manager, tray=False) as desktop:
        yield desktop


def start_time(side, _count):
    """Milliseconds from the start of the program to the first pixels in its window."""
    with bench_desktop(window_manager=None) as desktop:
        display = Xlib.display.Display(desktop.name)
        display.screen().root.change_attributes(event_mask=X.SubstructureNotifyMask)
        display.damage_query_version()
        display.sync()
        environment = {**desktop.environment, **side.environment}
        start = time.monotonic_ns()
        process = processes.start([str(BIN / side.program)], environment)
        try:
            while True:
                happened = display.next_event()
                if happened.type == X.CreateNotify and happened.width == face.WIDTH:
                    happened.window.damage_create(damage.DamageReportNonEmpty)
                    display.flush()
                elif happened.type == display.extension_event.DamageNotify:
                    return (time.monotonic_ns() - start) / 1e6
        finally:
            process.kill()
            process.wait()


def memory(side, _count):
    """PSS in KiB."""
    with bench_desktop() as desktop, Running(desktop, side, VIRTUAL) as running:
        running.show_settings()
        sums = Path(f"/proc/{running.id}/smaps_rollup").read_text()
        return next(int(line.split()[1]) for line in sums.splitlines() if line.startswith("Pss:"))


def press_latency(side, count):
    """Microseconds from a key press to its request: the median, and what 99 of 100 stay below."""
    with bench_desktop() as desktop, Running(desktop, side, PROMPT) as running:
        code, hand, times = desktop.keyboard.code("Right"), Hand(desktop), []
        with desktop.keyboard.without_repeat():
            for _ in range(count):
                before = running.record.settings
                sent = hand.do(X.KeyPress, code)
                times.append((running.await_setting(before + 1) - sent) / 1e3)
                hand.do(X.KeyRelease, code)
                running.await_setting(before + 3)
                time.sleep(0.001)
    times.sort()
    return statistics.median(times), times[math.ceil(0.99 * len(times)) - 1]


def press_instructions(side, count, keep=None):
    """Instructions of a press and its release."""
    warm_up = 5
    window = (3 * warm_up, 3 * (warm_up + count))
    with bench_desktop() as desktop, \
            Running(desktop, side, PROMPT, through=CALLGRIND, count=window) as running:
        code, hand = desktop.keyboard.code("Right"), Hand(desktop)
        with desktop.keyboard.without_repeat():
            for _ in range(warm_up + count):
                before = running.record.settings
                hand.do(X.KeyPress, code)
                running.await_setting(before + 1)
                hand.do(X.KeyRelease, code)
                running.await_setting(before + 3)
        return running.instructions(keep) / count


def operation_instructions(by, count):
    """Instructions of an operation, those of the call in it among them."""
    with tempfile.TemporaryDirectory(prefix="ptz-bench-") as folder:
        record = Path(folder) / "record"
        content = Record(countFrom=10, countTo=10 + count)
        record.write_bytes(bytes(content))
        command = [part.format(folder=folder) for part in CALLGRIND]
        subprocess.run([*command, str(BIN / "operation"), by, str(count + 10)], check=True,
                       capture_output=True, env=dict(
                           os.environ, BENCH_RECORD=str(record),
                           LD_PRELOAD=str((BIN / "prompt_camera.so").resolve())))
        return total_of(next(Path(folder).glob("callgrind.out.*.1"))) / count


def _round_the_joystick(running, elapsed):
    """A place that lies in another direction at each report."""
    x, y = face.centre(face.CONTROLS["joystick"])
    angle = elapsed / 0.43 * 2 * math.pi
    return running.at(x + 50 * math.cos(angle), y + 50 * math.sin(angle))


def hold_joystick(hand, running, seconds, per_second=1000):
    """Holds the joystick and leads it round. Returns when it was pressed and released."""
    hand.do(X.MotionNotify, 0, *_round_the_joystick(running, 0))
    pressed = hand.do(X.ButtonPress, 1)
    hand.paced(seconds, per_second, lambda elapsed: hand.do(
        X.MotionNotify, 0, *_round_the_joystick(running, elapsed)))
    return pressed, hand.do(X.ButtonRelease, 1)


def joystick_instructions(side, count, keep=None):
    """Instructions of a report of the joystick and the moves before it, a hundred a second."""
    window = (20, 20 + 4 * count)
    with bench_desktop() as desktop, \
            Running(desktop, side, PROMPT, through=CALLGRIND, count=window) as running:
        hold_joystick(Hand(desktop), running, 3 + count / 8, 100)
        return running.instructions(keep) / count


def start_instructions(side, _count, keep=None):
    """Instructions from the start to an idle window, dynamic linking among them."""
    callgrind = [part for part in CALLGRIND if "instr-atstart" not in part]
    with bench_desktop() as desktop, Running(desktop, side, through=callgrind) as running:
        desktop.windows.answers(running.window)
        return running.end_counting(keep)


def _periods(running, first, pressed, released):
    """Milliseconds between the reports of a hold, the first counted from the press. Each report
    sends a few requests at once."""
    marks = [pressed]
    last = pressed
    for number in range(first, running.record.settings):
        when = running.record.times[number % TIMES]
        if when >= released:
            break
        if when - last > 40e6:
            marks.append(when)
        last = when
    return [(after - before) / 1e6 for before, after in zip(marks, marks[1:])]


def report_periods(holds):
    """The share of the joystick's reports that come 100 ± 5 ms after the one before."""
    with bench_desktop() as desktop, Running(desktop, PANEL, VIRTUAL) as running:
        hand, periods = Hand(desktop), []
        for seconds in holds:
            before = running.record.settings
            times = hold_joystick(hand, running, seconds)
            time.sleep(0.3)
            found = _periods(running, before, *times)
            assert len(found) > seconds * 5, f"{len(found)} reports in {seconds} s"
            periods += found
    return sum(abs(period - 100) <= 5 for period in periods) / len(periods)


def processor_time(side, seconds):
    """The share of a processor while the joystick is held."""
    with bench_desktop() as desktop, Running(desktop, side, PROMPT) as running:
        def used():
            return running.tasks("schedstat", lambda text: int(text.split()[0]))
        before = used()
        hold_joystick(Hand(desktop), running, seconds)
        return (used() - before) / 1e9 / seconds


def _drag_places(running):
    """Along the slider's way and back, pixel by pixel, over and over: the grip, then each step."""
    slider = face.CONTROLS["slider_brightness"]
    middle = face.centre(slider)[1]
    grip = slider.x + 60 + 12
    yield running.at(grip, middle)
    x, step = grip, 1
    while True:
        if not slider.x + 20 < x + step < slider.x + 125:
            step = -step
        x += step
        yield running.at(x, middle)


def drag_instructions(side, count, keep=None):
    """Instructions of a move that changes the slider, and of painting what it changes."""
    window = (20, 20 + count)
    with bench_desktop() as desktop, \
            Running(desktop, side, PROMPT, through=CALLGRIND, count=window) as running, \
            slider_held(desktop, running) as (hand, places):
        for _ in range(window[1]):
            before = running.record.settings
            hand.do(X.MotionNotify, 0, *next(places))
            running.await_setting(before + 1)
            time.sleep(0.02)
        return running.instructions(keep) / count


@contextlib.contextmanager
def slider_held(desktop, running):
    if running.side == PANEL:
        running.show_settings()
    hand, places = Hand(desktop), _drag_places(running)
    hand.do(X.MotionNotify, 0, *next(places))
    hand.do(X.ButtonPress, 1)
    for _ in range(5):  # the first may be rounded to the value before
        hand.do(X.MotionNotify, 0, *next(places))
        time.sleep(0.05)
    yield hand, places
    hand.do(X.ButtonRelease, 1)


def drag_latency(side, count):
    """Microseconds from a move of the pointer to its request."""
    with bench_desktop() as desktop, Running(desktop, side, PROMPT) as running, \
            slider_held(desktop, running) as (hand, places):
        times = []
        for _ in range(count):
            before = running.record.settings
            sent = hand.do(X.MotionNotify, 0, *next(places))
            times.append((running.await_setting(before + 1) - sent) / 1e3)
            time.sleep(0.001)
    return statistics.median(times)


def drag_throughput(side, seconds):
    """Requests that get through to a camera while the pointer moves a thousand times a second."""
    with bench_desktop() as desktop, Running(desktop, side, VIRTUAL) as running, \
            slider_held(desktop, running) as (hand, places):
        before = running.record.settings
        hand.paced(seconds, 1000, lambda _: hand.do(X.MotionNotify, 0, *next(places)))
        return running.record.settings - before


def lost_movements(count):
    """Movements that came to the camera not at all, twice or at another place in the row."""
    with bench_desktop() as desktop, Running(desktop, PANEL, VIRTUAL, log=True) as running, \
            slider_held(desktop, running) as (hand, places):
        first = len(running.log.settings())
        pixels, number = [], running.record.settings
        for _ in range(count):
            place = next(places)
            hand.do(X.MotionNotify, 0, *place)
            number += 1
            running.await_setting(number)
            pixels.append(place[0])
        wait_for(lambda: len(running.log.settings()) >= first + count, "the last request")
        sent = [int(request.split()[-1]) for request in running.log.settings()[first:]]
    # One value for each pixel, and those in the pixels' order.
    values = {}
    wrong = sum(values.setdefault(pixel, value) != value for pixel, value in zip(pixels, sent))
    ordered = [value for _, value in sorted(values.items())]
    wrong += sum(after <= before for before, after in zip(ordered, ordered[1:]))
    return wrong + abs(len(sent) - count)


def wake_ups(seconds):
    """How often any thread of the panel ran, without a camera and with one."""
    with contextlib.ExitStack() as stack:
        panels = [stack.enter_context(Running(stack.enter_context(bench_desktop()), PANEL, camera))
                  for camera in (NOTHING, VIRTUAL)]
        time.sleep(35)  # what the start leaves to be done; the toolkit's pooled threads end after 30 s

        def switches():
            return [panel.tasks("status", lambda text: sum(
                int(line.split()[1]) for line in text.splitlines() if "ctxt_switches" in line))
                for panel in panels]
        before = switches()
        time.sleep(seconds)
        return [after - start for after, start in zip(switches(), before)]


def printed(command, count):
    """The numbers that a program of the bench prints, line by line."""
    result = subprocess.run([str(BIN / command[0]), *map(str, command[1:]), str(count)],
                            check=True, capture_output=True, text=True)
    return [[float(word) for word in line.split()] for line in result.stdout.splitlines()]
