# Copyright (c) 2026 The PTZ panel developers
# SPDX-License-Identifier: MIT

"""What is done in a step. Each makes a generator that stops once, at the moment of the picture: what
comes before it is done while something is held, what comes after it is letting go."""

import re

from harness import face
from harness.desktop import HEIGHT, OPENBOX, WIDTH
from harness.pictures import settings_panel_shown
from harness.waiting import wait_for

NOBODYS_PLACE = (WIDTH // 2, HEIGHT - 80)


def start(devices, window_manager=OPENBOX):
    """Starts a panel with these devices plugged in."""
    def run(guide):
        guide.start(devices, window_manager)
        yield
    return run


def key(*names):
    """Presses keys, the last of which is held."""
    def run(guide):
        keyboard = guide.desktop.keyboard
        with keyboard.without_repeat():
            for name in names[:-1]:
                keyboard.tap(name)
            with keyboard.held(names[-1]):
                yield
    return run


def click(*controls):
    """Clicks on controls, one after the other."""
    def run(guide):
        for control in controls:
            guide.panel.click(control)
        yield
    return run


def go_home():
    """Sends the camera to its home position, and waits until it is there."""
    there = re.compile(r" pan=0 pan_velocity=0 tilt=0 tilt_velocity=0 zoom=0 zoom_velocity=0 ")

    def run(guide):
        guide.panel.click("btn_home")
        wait_for(lambda: there.search(guide.panel.cameras.tell("state 1")), "the camera to be home")
        yield
    return run


def joystick(x, y):
    """Holds the joystick at that place of it, in pixels from its middle."""
    def run(guide):
        middle = guide.panel.middle_of("joystick")
        with guide.desktop.mouse.held(middle[0] + x, middle[1] + y):
            yield
    return run


def lens(slider, by):
    """Takes a lens slider at its rest and holds it so many pixels lower."""
    def run(guide):
        rest = face.CONTROLS[slider].y + 65
        guide.panel.touched.add(slider)
        x, y = guide.panel.on_screen(face.centre(face.CONTROLS[slider])[0], rest)
        with guide.desktop.mouse.held(x, y) as mouse:
            mouse.move_to(x, y + by)
            yield
    return run


def setting(name, back):
    """Takes a settings slider at its handle and drags it all the way to the right, then to the left,
    and back where it was unless it is to stay there. The handle is where the value is between the
    ends of the slider's range."""
    handle_width = 24

    def run(guide):
        panel = guide.panel
        low, high, value = (panel.log.value_read(code, name)
                            for code in ("GET_MIN", "GET_MAX", "GET_CUR"))
        groove = face.CONTROLS[f"slider_{name}"]
        along = (value - low) * (groove.width - handle_width) // (high - low)
        panel.touched.add(f"slider_{name}")
        x, y = panel.on_screen(groove.x + handle_width // 2 + along, groove.y + groove.height // 2)
        with guide.desktop.mouse.held(x, y) as mouse:
            for count, end in enumerate((+1, -1), start=2):
                mouse.move_to(x + end * groove.width, y)
                wait_for(lambda: len(panel.so_far()) >= count, "the value at the end")
            yield
            if back:
                mouse.move_to(x, y)
    return run


def choose_flicker(*moves):
    """Opens the anti-flicker choice, goes through it by arrow keys and takes what is reached."""
    def run(guide):
        items = guide.panel.open_flicker_choice()
        for move in moves:
            guide.desktop.keyboard.tap(move)
        yield
        guide.desktop.keyboard.tap("Return")
        wait_for(lambda: not guide.desktop.windows.is_visible(items), "the items to go")
    return run


def settings(button, shown):
    """Clicks on a button that shows or hides the settings panel."""
    def run(guide):
        place = guide.panel.place()
        guide.panel.click(button)
        wait_for(lambda: settings_panel_shown(guide.panel) == shown, "the settings panel")
        assert guide.panel.place() == place, "the window moved"
        yield
    return run


def notice(button=None):
    """Clicks on a button that brings a notice up, or awaits the one that comes by itself."""
    def run(guide):
        if button:
            guide.panel.click(button)
        guide.panel.await_notices(1)
        yield
    return run


def dismiss(buttons):
    """Clicks on the OK button of the notice whose buttons these are."""
    def run(guide):
        raised, = guide.panel.await_notices(1)
        guide.panel.click_notice(raised, buttons["btn_ok"])
        guide.panel.await_notices(0)
        guide.desktop.windows.activate(guide.panel.window)
        yield
    return run


def drag(x, y):
    """Drags the window until its corner is there."""
    def run(guide):
        guide.panel.drag_to(x, y)
        yield
    return run


def leave(x, y):
    """Moves the pointer away from the window, which then goes there."""
    def run(guide):
        guide.desktop.mouse.move_to(*NOBODYS_PLACE)
        guide.panel.await_place(x, y)
        yield
    return run


def enter(x, y):
    """Moves the pointer onto what is to be seen of the window, which then goes there."""
    def run(guide):
        place = guide.panel.place()
        left, right = max(place.x, 0), min(place.x + face.LEFT_PANEL_WIDTH, WIDTH)
        top, bottom = max(place.y, 0), min(place.y + place.height, HEIGHT)
        guide.desktop.mouse.move_to((left + right) // 2, (top + bottom) // 2)
        guide.panel.await_place(x, y)
        yield
    return run


def minimise():
    def run(guide):
        guide.panel.click("btn_min")
        wait_for(lambda: not guide.panel.is_visible(), "the panel to go")
        yield
    return run


def restore():
    """Double-clicks on the icon in the tray."""
    def run(guide):
        guide.panel.double_click_tray_icon()
        wait_for(guide.panel.is_visible, "the panel to come back")
        guide.desktop.windows.activate(guide.panel.window)
        yield
    return run


def close():
    """Clicks on the close button: the panel ends with exit code 0."""
    def run(guide):
        guide.panel.click("btn_close")
        guide.ended()
        yield
    return run


def leave_by_notice():
    """Clicks on the quit button of the notice: the panel ends with exit code 0."""
    def run(guide):
        raised, = guide.panel.await_notices(1)
        guide.panel.click_notice(raised, face.NO_CAMERA_NOTICE["btn_quit"])
        guide.ended()
        yield
    return run
