# Copyright (c) 2026 The PTZ panel developers
# SPDX-License-Identifier: MIT

"""What stands on the screen: windows, their places, the one that has the keyboard."""

import math
import time
from collections import namedtuple

import Xlib.display
from Xlib import X, Xatom, Xutil, error
from Xlib.protocol import event

from .waiting import wait_for

Place = namedtuple("Place", "x y width height")


class Windows:
    """Looks at all windows of an X server, and asks its window manager for things. Places are
    pixels of the panel, of which each is so many of the screen."""

    def __init__(self, display, scale=1):
        self._display = display
        self.scale = scale
        self._root = display.screen().root
        self._echoes = None
        self._pings = 0

    def root_property(self, name):
        return self.property(self._root, name)

    def property(self, window, name):
        """The values of a window's property, or nothing."""
        try:
            found = window.get_full_property(self._display.intern_atom(name), X.AnyPropertyType)
        except error.XError:
            return None
        return found.value if found else None

    def all(self):
        """Every window there is, the root first, each with its depth-first descendants."""
        pending = [self._root]
        while pending:
            window = pending.pop()
            yield window
            try:
                pending.extend(reversed(window.query_tree().children))
            except error.XError:
                pass

    def visible(self, title, process=None):
        """The windows of that title on the screen, the lowest first."""
        return [window for window in self.all()
                if self._title(window) == title and self.is_visible(window)
                and process in (None, self.process_of(window))]

    def is_visible(self, window):
        try:
            return window.get_attributes().map_state == X.IsViewable
        except error.XError:
            return False

    def is_unmanaged(self, window):
        """Whether the window is on the screen and no business of the window manager's."""
        try:
            attributes = window.get_attributes()
            return attributes.map_state == X.IsViewable and bool(attributes.override_redirect)
        except error.XError:
            return False

    def place(self, window):
        """Where the window's inside is on the screen, and how large it is."""
        size = window.get_geometry()
        place = (*self.corner(window), size.width / self.scale, size.height / self.scale)
        # A half always goes the same way, so that what moves by whole pixels is seen to.
        return Place(*[math.floor(length + 0.5) for length in place])

    def corner(self, window):
        """Where the corner of the window's inside is on the screen, unrounded."""
        corner = self._root.translate_coords(window, 0, 0)
        return corner.x / self.scale, corner.y / self.scale

    def process_of(self, window):
        """The id of the process that owns the window, if it told."""
        found = self.property(window, "_NET_WM_PID")
        return found[0] if found else None

    def of_same_client(self, window):
        """The windows that were made by the program that made this one."""
        base = ~self._display.display.info.resource_id_mask
        return [other for other in self.all() if other.id & base == window.id & base]

    def has_state(self, window, name):
        """Whether the window manager keeps the window in a state such as _NET_WM_STATE_ABOVE."""
        states = self.property(window, "_NET_WM_STATE")
        return states is not None and self._display.intern_atom(name) in states

    def has_keyboard(self, window):
        """Whether what is typed goes to the window."""
        try:
            focus = self._display.get_input_focus().focus
        except error.XError:
            return False
        return getattr(focus, "id", None) == window.id

    def activate(self, window):
        """Gives the window the keyboard, as a task bar does."""
        # A window that has just come up may be about to get it.
        self.settle()
        if not self.has_keyboard(window):
            self._ask(window, "_NET_ACTIVE_WINDOW", [2, X.CurrentTime, 0, 0, 0])
        self.settle()
        wait_for(lambda: self.has_keyboard(window), "the window to get the keyboard")

    def settle(self):
        """Waits until the window manager has done everything that it was asked for up to now: it
        answers one more question, about a window that is never shown."""
        unseen = self._root.create_window(-10, -10, 1, 1, 0, X.CopyFromParent)
        self._ask(unseen, "_NET_REQUEST_FRAME_EXTENTS", [0, 0, 0, 0, 0])
        wait_for(lambda: self.property(unseen, "_NET_FRAME_EXTENTS"), "the window manager")
        unseen.destroy()
        self._display.sync()

    def answers(self, window):
        """Waits until the program that owns the window has taken in all that it was sent, mouse and
        keys too. It echoes a ping when it reads it, and does by the next one what it read before."""
        for _ in range(2):
            self._ping(window)
        self.settle()

    def _ping(self, window):
        if self._echoes is None:
            self._echoes = Xlib.display.Display(self._display.get_display_name())
            self._echoes.screen().root.change_attributes(event_mask=X.StructureNotifyMask)
            self._echoes.sync()
        self._pings += 1
        ping = self._display.intern_atom("_NET_WM_PING")
        window.send_event(event.ClientMessage(
            window=window, client_type=self._display.intern_atom("WM_PROTOCOLS"),
            data=(32, [ping, self._pings, window.id, 0, 0])))
        self._display.sync()
        wait_for(self._echoed, "the program to answer its window manager")

    def _echoed(self):
        while self._echoes.pending_events():
            happened = self._echoes.next_event()
            if happened.type == X.ClientMessage and happened.data[1][1] == self._pings:
                return True
        return False

    def send_release_of_the_future(self, window, code):
        """Sends the window a key release that is dated a minute ahead of the X server's clock."""
        now = int(time.clock_gettime(time.CLOCK_MONOTONIC) * 1000)
        window.send_event(event.KeyRelease(
            time=(now + 60000) % 2**32, root=self._root, window=window, child=X.NONE, detail=code,
            root_x=0, root_y=0, event_x=0, event_y=0, state=0, same_screen=1))
        self._display.sync()

    def show_desktop(self, number):
        """Has the window manager show its desktop of that number, from 0."""
        self._ask(self._root, "_NET_CURRENT_DESKTOP", [number, X.CurrentTime, 0, 0, 0])
        # A window manager that has just started may not have said yet.
        wait_for(lambda: list(self.root_property("_NET_CURRENT_DESKTOP") or []) == [number],
                 "the other desktop")

    def minimise(self, window):
        """Has the window manager turn the window into an icon."""
        self._ask(window, "WM_CHANGE_STATE", [Xutil.IconicState, 0, 0, 0, 0])

    def close(self, window):
        """Has the window manager close the window, as its menu does."""
        self._ask(window, "_NET_CLOSE_WINDOW", [X.CurrentTime, 2, 0, 0, 0])

    def open_another(self, x, y):
        """Puts up a window of another program, which takes the keyboard."""
        window = self._root.create_window(
            x, y, 200, 100, 0, self._display.screen().root_depth,
            background_pixel=self._display.screen().white_pixel)
        window.set_wm_name("another window")
        window.set_wm_hints(flags=Xutil.InputHint | Xutil.StateHint, input=True,
                            initial_state=Xutil.NormalState)
        window.set_wm_normal_hints(flags=Xutil.USPosition, x=x, y=y)
        window.map()
        wait_for(lambda: self.is_visible(window), "another window to appear")
        self.activate(window)
        return window

    def selected_text(self, requestor_title="selection reader"):
        """What is marked on the screen, in whatever program."""
        reader = self._root.create_window(-10, -10, 1, 1, 0, X.CopyFromParent)
        try:
            answer = self._display.intern_atom("PTZ_SELECTED_TEXT")
            text = self._display.intern_atom("UTF8_STRING")
            reader.set_wm_name(requestor_title)
            reader.convert_selection(Xatom.PRIMARY, text, answer, X.CurrentTime)
            found = wait_for(lambda: self._selection_answer(reader), "the marked text")
            if found.property == X.NONE:
                return ""
            return reader.get_full_property(answer, X.AnyPropertyType).value.decode()
        finally:
            reader.destroy()
            self._display.sync()

    def _selection_answer(self, reader):
        while self._display.pending_events():
            happened = self._display.next_event()
            if happened.type == X.SelectionNotify and happened.requestor == reader:
                return happened
        return None

    def _title(self, window):
        try:
            return window.get_wm_name()
        except error.XError:
            return None

    def _ask(self, window, message, data):
        request = event.ClientMessage(
            window=window, client_type=self._display.intern_atom(message), data=(32, data))
        self._root.send_event(
            request, event_mask=X.SubstructureRedirectMask | X.SubstructureNotifyMask)
        self._display.sync()
