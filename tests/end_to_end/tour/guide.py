# Copyright (c) 2026 The PTZ panel developers
# SPDX-License-Identifier: MIT

"""Takes the steps of the tour one by one: does what is to be done, compares what the cameras
received, and takes the picture."""

import contextlib
import itertools
from dataclasses import dataclass, field

from harness import face
from harness.desktop import HEIGHT, WIDTH, Desktop
from harness.panel import Panel
from harness.pictures import missing_share, settings_panel_shown
from harness.waiting import wait_for

from .actions import NOBODYS_PLACE
from .screen import Screen, settled

MISSING = 0.01
"""A picture that lacks more of the panel is a failure."""

AROUND = 24
"""How much of the desktop a picture shows around the panel."""


@dataclass
class Taken:
    """A step that was taken. The requests are in the words of the camera log."""
    number: int
    title: str
    picture: object = None
    frame: object = None
    """What the open camera sees."""
    held: list = field(default_factory=list)
    released: list = field(default_factory=list)
    failure: str = None


class Guide:
    """A desktop with everything that belongs to one, and the panel on it. see(panel), if there is
    one, returns what the open camera sees. Use it in a with statement."""

    def __init__(self, see=None):
        self._see = see
        self._desktop_ends = contextlib.ExitStack()
        self._panel_ends = contextlib.ExitStack()
        self._window_manager = None
        self._first_line = 0
        self._has_ended = False
        self._touched = set()
        self.desktop = None
        self.panel = None

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self._panel_ends.close()
        self._desktop_ends.close()

    # What steps ask for.

    def start(self, devices, window_manager):
        """Starts a panel in place of the last one, and a desktop if it is to be another one."""
        self._note_touched()
        self._panel_ends.close()
        self._has_ended = False
        self._first_line = 0
        if window_manager != self._window_manager:
            self._desktop_ends.close()
            self.desktop = self._desktop_ends.enter_context(
                Desktop(window_manager, tray=True, compositor=True))
            self._screen = self._desktop_ends.enter_context(
                contextlib.closing(Screen(self.desktop)))
            self._window_manager = window_manager
        self.desktop.mouse.move_to(*NOBODYS_PLACE)
        self.panel = self._panel_ends.enter_context(Panel(self.desktop, devices))

    def ended(self):
        """Waits for the end of the panel."""
        code = self.panel.ended()
        self._has_ended = True
        assert code == 0, f"the panel's exit code is {code}"

    def left_out(self):
        """The controls that no panel was operated by."""
        self._note_touched()
        return sorted(set(face.OPERATED) - self._touched)

    def _note_touched(self):
        if self.panel:
            self._touched |= self.panel.touched

    # Taking a step.

    def take(self, number, step):
        """Takes a step. If it fails, what is returned tells why."""
        taken = Taken(number, step.title)
        try:
            self._take(step, taken)
        except Exception as failure:  # Whatever it is, the report tells of it.
            taken.failure = " ".join(str(failure).split()) or type(failure).__name__
            taken.picture = self.desktop.screenshot() if self.desktop else None
        return taken

    def _take(self, step, taken):
        before = self._face_of(step.changes) if step.changes else None
        if self.panel:
            self._first_line = len(self.panel.log.lines())
        doing = step.action(self)
        next(doing)
        self._await(step.held)
        if step.look:
            wait_for(lambda: step.look(self.panel), "the panel to look as it should")
        if before:
            wait_for(lambda: self._face_of(step.changes) != before,
                     f"{step.changes} to look different")
        taken.picture = wait_for(self._picture, "the panel to be in the picture")
        if self._see and self.panel.log.lines() and not self._has_ended:
            taken.frame = self._see(self.panel)
        next(doing, None)
        requests = self._compare([*step.held, *step.released])
        taken.held, taken.released = requests[:len(step.held)], requests[len(step.held):]

    def _face_of(self, control):
        return settled(lambda: self.panel.picture_of(control)).tobytes()

    def _await(self, expected):
        """Waits until the cameras have received as much as is expected."""
        with contextlib.suppress(AssertionError):
            wait_for(lambda: len(self.panel.so_far()) >= len(expected), "the requests")
        _check(expected, self.panel.so_far())

    def _compare(self, expected):
        """Waits for what is expected, learns that nothing else came, and returns it in words."""
        self._await(expected)
        if self._has_ended or not self.panel.log.lines() or not self.panel.has_keyboard():
            received = list(self.panel.so_far())
            self.panel.forget()
        else:
            received = self.panel.received()
        _check(expected, received)
        return self.panel.log.texts(self._first_line)[:len(received)]

    # Where to look.

    def _picture(self):
        """The picture of a step, or none if it does not show the panel as a compositing manager
        should."""
        left, top, width, height = self._frame()
        picture = self._screen.picture(left, top, width, height)
        if self._has_ended or not self.panel.is_visible():
            return picture
        place = self.panel.place()
        above = [*self.panel.notices(), *filter(None, [self.panel.flicker_items()])]
        covered = [self.desktop.windows.place(window) for window in above]
        shown = face.WIDTH if settings_panel_shown(self.panel) else face.LEFT_PANEL_WIDTH
        missing = missing_share(picture, (place.x - left, place.y - top), shown, [
            at._replace(x=at.x - place.x, y=at.y - place.y) for at in covered])
        return picture if missing < MISSING else None

    def _frame(self):
        """The part of the screen that is worth a picture: everything of the panel that shows, and
        some desktop around it; the corner with the tray when nothing of it does."""
        width, height = face.LEFT_PANEL_WIDTH + 2 * AROUND, face.HEIGHT + 2 * AROUND
        if self._has_ended or not self.panel.is_visible():
            return WIDTH - width, HEIGHT - height, width, height
        place = self.panel.place()
        whole = 0 <= place.x <= WIDTH - face.WIDTH and 0 <= place.y <= HEIGHT - face.HEIGHT
        if whole and settings_panel_shown(self.panel):
            width = face.WIDTH + 2 * AROUND
        for notice in self.panel.notices():
            at = self.desktop.windows.place(notice)
            width = max(width, at.x + at.width - place.x + 2 * AROUND)
            height = max(height, at.y + at.height - place.y + 2 * AROUND)
        return (min(max(place.x - AROUND, 0), WIDTH - width),
                min(max(place.y - AROUND, 0), HEIGHT - height), width, height)


def _check(expected, received):
    """Fails at the first request that is not the expected one."""
    for number, pair in enumerate(itertools.zip_longest(expected, received), 1):
        wanted, came = (request or "none" for request in pair)
        assert wanted == came, f"request {number} should be {wanted}; it is {came}"
