# Copyright (c) 2026 The PTZ panel developers
# SPDX-License-Identifier: MIT

"""What an operator may do at random. Each operation leaves nothing held."""

from harness import face
from harness.hands import LEFT, MIDDLE, RIGHT, WHEEL_DOWN, WHEEL_UP
from harness.pictures import shows
from harness.waiting import wait_for

CAMERAS = 4
PULLED = (4, 3)

ARROWS_AND_LENS = ("Left", "Right", "Up", "Down", "t", "w")
TAPPED = ("f", "m", "p", *map(str, range(10)), "a", "Escape", "Shift_L")
BUTTONS = [name for name in face.BUTTONS
           if name not in ("btn_close", "btn_min", "btn_setting", "btn_ok", "btn_default", "btn_top",
                            "btn_af")
           and not name.startswith("btn_cam")]


class Operator:
    """Does random things to a panel, the same for the same random generator."""

    def __init__(self, panel, random):
        self.panel, self.random = panel, random
        self.mouse, self.keyboard = panel.desktop.mouse, panel.desktop.keyboard
        self.settings_open = self.manual_focus = False
        self.kept = {"notices": 0, "switches": 0, "minimises": 0}
        self._coming_and_going = {}
        """Whether they are plugged in, of the cameras that were pulled once."""
        self._corner = None
        self._operations = {
            self.hold_keys: 12, self.tap_keys: 8, self.push_joystick: 12, self.push_lens: 8,
            self.switch_focus_mode: 2, self.turn_wheel: 3, self.click_buttons: 12, self.change_image: 8,
            self.toggle_settings: 2, self.change_flicker: 1, self.restore_defaults: 1,
            self.choose_camera: 5, self.choose_camera_with_a_key_held: 2, self.drag_window: 2,
            self.choose_missing_camera: 0.1, self.minimise: 0.3, self.pull_or_plug_cable: 1.5,
            self.slow_camera_down: 0.5,
        }

    def choose(self):
        """What to do next: call it."""
        return self.random.choices(*map(list, zip(*self._operations.items())))[0]

    # Where things are. Only drag_window moves the window, so its place need not be asked for.

    def _middle(self, control):
        if self._corner is None:
            self._corner = self.panel.place()[:2]
        x, y = face.centre(face.CONTROLS[control])
        return self._corner[0] + x, self._corner[1] + y

    def _near(self, place, x, y):
        return place[0] + self.random.randint(-x, x), place[1] + self.random.randint(-y, y)

    # Keys.

    def hold_keys(self):
        held = self.random.sample(ARROWS_AND_LENS, self.random.choice((1, 1, 1, 2, 3)))
        for key in held:
            self.keyboard.press(key)
        self.random.shuffle(held)
        for key in held:
            self.keyboard.release(key)

    def tap_keys(self):
        for key in self.random.choices(TAPPED, k=self.random.randint(1, 4)):
            self.keyboard.tap(key)

    # The left panel.

    def push_joystick(self):
        button = self.random.choice((LEFT, LEFT, RIGHT, MIDDLE))
        middle = self._middle("joystick")
        with self.mouse.held(*self._near(middle, 30, 30), button=button):
            for _ in range(self.random.randint(1, 12)):
                self.mouse.move_to(*self._near(middle, 90, 90))

    def switch_focus_mode(self):
        self.mouse.click(*self._middle("btn_af"))
        self.manual_focus = not self.manual_focus

    def push_lens(self):
        # A disabled slider lets the window be dragged by it.
        sliders = ("slider_zoom", "slider_focus") if self.manual_focus else ("slider_zoom",)
        middle = self._middle(self.random.choice(sliders))
        with self.mouse.held(middle[0], middle[1] + 4):
            for _ in range(self.random.randint(1, 8)):
                self.mouse.move_to(*self._near(middle, 3, 70))

    def turn_wheel(self):
        sliders = ["slider_zoom", "slider_focus"]
        if self.settings_open:
            sliders += [f"slider_{name}" for name in face.SETTINGS]
        place = self._middle(self.random.choice(sliders))
        self.mouse.click(*place, button=self.random.choice((WHEEL_UP, WHEEL_DOWN)))

    def click_buttons(self):
        for button in self.random.choices(BUTTONS, k=self.random.randint(1, 4)):
            self.mouse.click(*self._middle(button))

    # The right panel.

    def toggle_settings(self):
        closes = ("btn_setting", "btn_ok") if self.settings_open else ("btn_setting",)
        self.mouse.click(*self._middle(self.random.choice(closes)))
        self.settings_open = not self.settings_open

    def _open_settings(self):
        if not self.settings_open:
            self.toggle_settings()

    def change_image(self):
        self._open_settings()
        middle = self._middle(f"slider_{self.random.choice(list(face.SETTINGS))}")
        with self.mouse.held(*self._near(middle, 70, 2)):
            for _ in range(self.random.randint(1, 8)):
                self.mouse.move_to(*self._near(middle, 90, 5))

    def change_flicker(self):
        self._open_settings()
        self.mouse.click(*self._middle("cb_fliker"),
                         button=self.random.choice((WHEEL_UP, WHEEL_DOWN)))

    def restore_defaults(self):
        self._open_settings()
        self.mouse.click(*self._middle("btn_default"))

    # Cameras.

    def choose_camera(self, number=None):
        number = number or self.random.randint(1, CAMERAS)
        self.mouse.click(*self._middle(f"btn_cam{number}"))
        self.kept["switches"] += 1

    def choose_camera_with_a_key_held(self):
        with self.keyboard.held(self.random.choice(ARROWS_AND_LENS)):
            self.choose_camera()

    def choose_missing_camera(self):
        self.mouse.click(*self._middle(f"btn_cam{self.random.randint(CAMERAS + 1, 5)}"))
        self.kept["notices"] += 1
        self.panel.await_notices(1)
        self.panel.dismiss_notices()
        self.panel.desktop.windows.activate(self.panel.window)

    def pull_or_plug_cable(self):
        """Two cameras come and go. None goes while it is being read: a camera whose brightness could
        not be read is not opened any more, nor is any other."""
        if len(self._coming_and_going) < len(PULLED):
            self._pull_cable_while_driving()
            return
        camera = self.random.choice(PULLED)
        plugged = self._coming_and_going[camera]
        self.settle()
        self.panel.cameras.tell(f"{'unplug' if plugged else 'replug'} {camera}")
        self._coming_and_going[camera] = not plugged

    @property
    def pulled_while_driven(self):
        return len(self._coming_and_going)

    def _pull_cable_while_driving(self):
        """From then on the camera cannot be opened any more, so this is done once to each."""
        camera = PULLED[len(self._coming_and_going)]
        self.choose_camera(camera)
        self.settle()
        start = len(self.panel.log.lines())
        with self.keyboard.held(self.random.choice(ARROWS_AND_LENS)):
            wait_for(lambda: self.panel.log.settings(start), "the camera to be driven")
            self.panel.cameras.tell(f"unplug {camera}")
        self._coming_and_going[camera] = False

    def slow_camera_down(self):
        camera = self.random.randint(1, CAMERAS - 1)
        self.panel.cameras.tell(f"delay {camera} {self.random.choice((0, 0, 1, 5))}")

    # The window.

    def drag_window(self):
        self._middle("joystick")
        self.settle()
        self.panel.drag_to(self.random.randint(100, 900), self.random.randint(50, 500))
        self._corner = None

    def minimise(self):
        self.settle()
        self.mouse.click(*self._middle("btn_min"))
        self.kept["minimises"] += 1
        wait_for(lambda: not self.panel.is_visible(), "the panel to go")
        self.panel.double_click_tray_icon()
        wait_for(self.panel.is_visible, "the panel to come back")
        self.panel.desktop.windows.activate(self.panel.window)
        self._corner = None

    # Coming to rest.

    def settle(self):
        """Returns once the panel has done everything that was asked of it: the on-top button, which
        asks nothing of a camera, changes its face twice."""
        self.mouse.move_to(*self._middle("btn_top"))
        for picture in ("no_top.png", "top.png"):
            self.mouse.press()
            self.mouse.release()
            wait_for(lambda: shows(self.panel, "btn_top", picture),
                     f"the on-top button to show {picture}")
        assert self._corner == self.panel.place()[:2], "the window moved unasked"
