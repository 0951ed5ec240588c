# Copyright (c) 2026 The PTZ panel developers
# SPDX-License-Identifier: MIT

"""The panel as a screen reader sees it: through the desktop's accessibility bus (AT-SPI)."""

import os
import warnings

import gi

from . import processes
from .waiting import DEADLINE, wait_for

gi.require_version("Atspi", "2.0")
from gi.repository import Atspi, Gio, GLib  # noqa: E402  which version must be told first

_PROGRAMS = "/usr/libexec"


class AccessibilityBus:
    """An accessibility bus on a desktop. Programs that are started there with its environment join
    it. Use it in a with statement. The library that reads the bus holds on to the first one it
    meets, so there is one in a process."""

    def __init__(self, desktop):
        self._desktop = desktop
        self._processes = []
        self.environment = {}

    def __enter__(self):
        try:
            self._start()
        except BaseException:
            self.__exit__()
            raise
        return self

    def __exit__(self, *_):
        for process in reversed(self._processes):
            processes.stop(process)

    def _start(self):
        address = f"unix:path={self._desktop.home}/session-bus"
        self.environment["DBUS_SESSION_BUS_ADDRESS"] = address
        self._run("dbus-daemon", "--session", "--nofork", f"--address={address}")
        session = wait_for(lambda: _connect(address), "the session bus")
        self._run(f"{_PROGRAMS}/at-spi-bus-launcher", "--a11y=1", "--screen-reader=1")
        wait_for(lambda: _has_owner(session, "org.a11y.Bus"), "the accessibility bus")
        address, = _call(session, "org.a11y.Bus", "/org/a11y/bus", "GetAddress")
        # A program that is not told this joins the bus only where a screen reader runs already.
        self.environment["QT_LINUX_ACCESSIBILITY_ALWAYS_ON"] = "1"
        os.environ["AT_SPI_BUS_ADDRESS"] = address
        accessibility = _connect(address)
        self._run(f"{_PROGRAMS}/at-spi2-registryd")
        wait_for(lambda: _has_owner(accessibility, "org.a11y.atspi.Registry"), "the registry")
        Atspi.init()
        Atspi.set_timeout(int(DEADLINE * 1000), int(DEADLINE * 1000))
        Atspi.get_desktop(0).set_cache_mask(Atspi.Cache.NONE)

    def _run(self, *command):
        self._processes.append(processes.start(
            command, dict(self._desktop.environment, **self.environment)))

    def window(self, panel, role, name):
        """Waits for a window of the panel, and returns it."""
        def found():
            for application in _children(Atspi.get_desktop(0)):
                # What is asked is always asked of the program, never remembered.
                application.set_cache_mask(Atspi.Cache.NONE)
                if application.get_process_id() == panel.process_id:
                    for window in map(Control, _children(application)):
                        if (window.role, window.name) == (role, name) and window.is_shown():
                            return window
            return None
        return wait_for(found, f"the {role} {name!r} on the accessibility bus")


class Control:
    """One control, or a window with controls in it."""

    def __init__(self, accessible):
        self._accessible = accessible

    @property
    def role(self):
        """In the words of AT-SPI before 2.56, which calls a push button just a button."""
        name = self._accessible.get_role_name()
        return "push button" if name == "button" else name

    @property
    def name(self):
        return self._accessible.get_name()

    @property
    def description(self):
        return self._accessible.get_description()

    @property
    def labels(self):
        """The names of the labels that say what the control is about."""
        return [relation.get_target(i).get_name()
                for relation in self._accessible.get_relation_set()
                if relation.get_relation_type() == Atspi.RelationType.LABELLED_BY
                for i in range(relation.get_n_targets())]

    def is_shown(self):
        return self._has(Atspi.StateType.SHOWING)

    def is_enabled(self):
        return self._has(Atspi.StateType.ENABLED)

    def everything(self):
        """The controls in this one, with all that is in them."""
        for child in _children(self._accessible):
            yield Control(child)
            yield from Control(child).everything()

    def find(self, role, name=None, label=None):
        """The one control of that role and name, or role and label, that is in this one."""
        wanted = f"{role} {name or label!r}"
        found = [control for control in self.everything() if control.role == role
                 and (control.name == name if name else label in control.labels)]
        assert len(found) == 1, f"{len(found)} times on the accessibility bus: {wanted}"
        return found[0]

    def act(self, action):
        """Does what the control offers under that name: "Press", "Increase", "Decrease"."""
        with warnings.catch_warnings():
            # The toolkit does not answer the call that should be used instead.
            warnings.simplefilter("ignore", DeprecationWarning)
            names = [self._accessible.get_action_name(i)
                     for i in range(self._accessible.get_n_actions())]
        assert action in names, f"{self.name} offers {names}"
        assert self._accessible.do_action(names.index(action))

    def press(self):
        self.act("Press")

    @property
    def value(self):
        return int(self._accessible.get_current_value())

    @value.setter
    def value(self, value):
        assert self._accessible.set_current_value(value)

    @property
    def text(self):
        return Atspi.Text.get_text(self._accessible, 0, -1)

    def _has(self, state):
        return self._accessible.get_state_set().contains(state)


def _children(accessible):
    found = (accessible.get_child_at_index(i) for i in range(accessible.get_child_count()))
    return [child for child in found if child]


def _connect(address):
    """A connection to the bus at that address, or none if there is no bus."""
    flags = Gio.DBusConnectionFlags
    try:
        return Gio.DBusConnection.new_for_address_sync(
            address, flags.AUTHENTICATION_CLIENT | flags.MESSAGE_BUS_CONNECTION, None, None)
    except GLib.Error:
        return None


def _call(connection, name, path, method, arguments=None, interface=None):
    return connection.call_sync(name, path, interface or name, method, arguments, None,
                                Gio.DBusCallFlags.NONE, int(DEADLINE * 1000), None).unpack()


def _has_owner(connection, name):
    return _call(connection, "org.freedesktop.DBus", "/org/freedesktop/DBus", "NameHasOwner",
                 GLib.Variant("(s)", (name,)))[0]
