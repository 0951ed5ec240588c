# Copyright (c) 2026 The PTZ panel developers
# SPDX-License-Identifier: MIT

"""The steps of the tour, and what the cameras must receive in each."""

from dataclasses import dataclass
from typing import Callable

from harness import face
from harness.desktop import JWM
from harness.pictures import selected_camera, shows
from harness.requests import (auto_white_balance, call_preset, clear_preset,
                              flicker, focus, halt, halt_focus, halt_zoom, image_property, pan,
                              reads, store_preset, tilt, vendor, zoom)

from .actions import (choose_flicker, click, close, dismiss, drag, enter, go_home, joystick, key, leave,
                      leave_by_notice, lens, minimise, notice, restore, setting, settings, start)


@dataclass
class Step:
    """One step. held is what the cameras receive until the picture is taken, released what they
    receive after that. The picture is taken when look(panel) holds, and what is in the rectangle of
    the control named changes has changed."""
    title: str
    action: Callable
    held: list = ()
    released: list = ()
    changes: str = None
    look: Callable = None


def face_of(control, picture):
    return lambda panel: shows(panel, control, picture)


def camera_marked(number):
    return lambda panel: selected_camera(panel) == number


def disc_at(x, y):
    """Whether the joystick's disc stands there, in pixels from the joystick's middle."""
    gray = (160, 160, 164)

    def look(panel):
        middle = panel.middle_of("joystick")
        return panel.desktop.screenshot(middle[0] + x, middle[1] + y, 1, 1).getpixel((0, 0)) == gray
    return look


DIGITS = [f"btn_num{n}" for n in range(10)]


def each_after(mode):
    return [button for digit in DIGITS for button in (mode, digit)]


# Where there is something to see.
HOME = Step("Home", go_home(), [vendor(8)], look=face_of("btn_home", "HOME.png"))

START = [
    Step("Half a second after the start, the first camera is opened and read twice", start(3),
         reads(1) * 2, look=camera_marked(1)),
]

KEYBOARD = [
    Step("Left arrow", key("Left"), [pan(-1, 21)], [halt(), halt(), halt_zoom()]),
    Step("Right arrow", key("Right"), [pan(+1, 21)], [halt(), halt_zoom()]),
    Step("Up arrow", key("Up"), [tilt(+1, 14)], [halt()] * 4 + [halt_zoom()]),
    Step("Down arrow", key("Down"), [tilt(-1, 14)], [halt()] * 3 + [halt_zoom()]),
    Step("T: zoom in", key("t"), [zoom(+1)], [halt_zoom()]),
    Step("W: zoom out", key("w"), [zoom(-1)], [halt_zoom()]),
    Step("F: automatic framing", key("f"), [vendor(16)], look=face_of("btn_ai", "Framing.png")),
    Step("M: framing by hand", key("m"), [vendor(17)], look=face_of("btn_ai", "Manual.png")),
    Step("F once more", key("f"), [vendor(16)], look=face_of("btn_ai", "Framing.png")),
    Step("P: framing by hand", key("p"), [vendor(17)], look=face_of("btn_ai", "Manual.png")),
    Step("Taps quicker than any finger", key(*["Right"] * 5),
         [pan(+1, 21), *[halt(), halt_zoom(), pan(+1, 21)] * 4], [halt(), halt_zoom()]),
    Step("Other keys do nothing",
         key("a", "z", "Return", "Escape", "Home", "Page_Up", "F5", "minus")),
    Step("0 to 9: recall presets", key(*"0123456789"), [call_preset(n) for n in range(10)]),
]

# The direction is sent with the speeds of the last time, then again for each speed that changes.
JOYSTICK = [
    HOME,
    Step("Held in the middle it only stops the camera", joystick(0, 0), [halt()] * 4),
    *[Step("Near the middle it drives nothing", joystick(x, y))
      for x, y in ((12, 0), (0, -18), (22, 22))],
    Step("Up", joystick(0, -57), [tilt(+1, 0), tilt(+1, 14)], [halt()] * 4,
         look=disc_at(0, -36)),
    Step("Down", joystick(0, 57), [tilt(-1, 14)], [halt()] * 4, look=disc_at(0, 36)),
    Step("Left", joystick(-57, 0), [pan(-1, 0), pan(-1, 21), pan(-1, 21)], [halt()] * 4,
         look=disc_at(-36, 0)),
    Step("Right", joystick(57, 0), [pan(+1, 21)], [halt()] * 4, look=disc_at(36, 0)),
    Step("Up and left", joystick(-57, -57),
         [pan(-1, 21), tilt(+1, 0), pan(-1, 15), tilt(+1, 0), pan(-1, 15), tilt(+1, 10)],
         [halt()] * 4, look=disc_at(-25, -25)),
    Step("Up and right", joystick(57, -57), [pan(+1, 15), tilt(+1, 10)], [halt()] * 4,
         look=disc_at(25, -25)),
    Step("Down and left", joystick(-57, 57), [pan(-1, 15), tilt(-1, 10)], [halt()] * 4,
         look=disc_at(-25, 25)),
    Step("Down and right", joystick(57, 57), [tilt(-1, 10), pan(+1, 15)], [halt()] * 4,
         look=disc_at(25, 25)),
]

# The slider springs back, which stops the lens, and letting go stops it once more.
LENS = [
    HOME,
    Step("Zoom in", lens("slider_zoom", -40), [zoom(+1)], [halt_zoom()] * 2,
         changes="slider_zoom"),
    Step("Zoom out", lens("slider_zoom", +40), [zoom(-1)], [halt_zoom()] * 2,
         changes="slider_zoom"),
    Step("Released at rest it stops once", lens("slider_zoom", 0), [], [halt_zoom()]),
    Step("AF/MF: manual focus", click("btn_af"), [vendor(7)], look=face_of("btn_af", "MF.png")),
    Step("Focus farther", lens("slider_focus", -40), [focus(-1)], [halt_focus()] * 2,
         changes="slider_focus"),
    Step("Focus nearer", lens("slider_focus", +40), [focus(+1)], [halt_focus()] * 2,
         changes="slider_focus"),
    Step("Released at rest it stops once", lens("slider_focus", 0), [], [halt_focus()]),
    Step("AF/MF: automatic focus", click("btn_af"), [vendor(6)], look=face_of("btn_af", "AF.png")),
]

PRESETS = [
    Step("Set and a digit: store, ten times", click(*each_after("btn_set")),
         [store_preset(n) for n in range(10)]),
    Step("0 to 9: recall", click(*DIGITS), [call_preset(n) for n in range(10)]),
    Step("Clear and a digit: clear, ten times", click(*each_after("btn_clear")),
         [clear_preset(n) for n in range(10)]),
    Step("Set, then clear: the later one counts", click("btn_set", "btn_clear", "btn_num7"),
         [clear_preset(7)]),
    Step("Clear, then set", click("btn_clear", "btn_set", "btn_num7", "btn_num2"),
         [store_preset(7), call_preset(2)]),
    Step("Set twice", click("btn_set", "btn_set", "btn_num1", "btn_num1"),
         [store_preset(1), call_preset(1)]),
    Step("Another button between set and the digit", click("btn_set", "btn_home", "btn_num6"),
         [vendor(8), store_preset(6)]),
    Step("Set, to be followed by a key", click("btn_set")),
    Step("A digit of the keyboard recalls", key("4"), [call_preset(4)]),
    Step("The next digit is stored", click("btn_num5"), [store_preset(5)]),
]

FUNCTIONS = [
    HOME,
    *[Step(title, click(button), [vendor(code)], look=face_of(button, picture))
      for title, button, code, picture in [
          ("Mute", "btn_mute", 5, "mute.png"),
          ("Mute off", "btn_mute", 4, "no_mute.png"),
          ("Framing: by hand", "btn_ai", 17, "Manual.png"),
          ("Framing: automatic", "btn_ai", 16, "Framing.png"),
          ("Push: framing off", "btn_push", 17, "Push.png"),
          ("Push once more", "btn_push", 17, "Push.png"),
          ("Flip", "btn_flip", 2, "Flip.png"),
          ("Flip back", "btn_flip", 3, "Flip.png"),
          ("Mirror", "btn_mirror", 0, "Mirror.png"),
          ("Mirror back", "btn_mirror", 1, "Mirror.png"),
      ]],
]

CAMERAS = [
    Step("Camera 2", click("btn_cam2"), reads(2), changes="btn_cam2"),
    Step("Camera 2 is the one that moves", key("Right"), [pan(+1, 21, 2)],
         [halt(2), halt_zoom(2)]),
    Step("Camera 3", click("btn_cam3"), reads(3), changes="btn_cam3"),
    Step("Camera 4: there is none", notice("btn_cam4"), look=camera_marked(1)),
    Step("OK", dismiss(face.MISSING_CAMERA_NOTICE)),
    Step("Camera 3 is open still", click("btn_home"), [vendor(8, 3)]),
    Step("Notices need not stay on top", click("btn_top"), look=face_of("btn_top", "no_top.png")),
    Step("Camera 5: there is none", notice("btn_cam5"), look=camera_marked(1)),
    Step("OK", dismiss(face.MISSING_CAMERA_NOTICE)),
    Step("Notices stay on top again", click("btn_top"), look=face_of("btn_top", "top.png")),
    Step("Camera 1", click("btn_cam1"), reads(1), look=camera_marked(1)),
]


def setting_step(title, name, *values, back=None):
    return Step(title, setting(name, back is not None),
                [image_property(name, value) for value in values],
                [image_property(name, back)] if back else [],
                changes=f"slider_{name}" if values[0] != values[-1] else None)


# Each slider is taken at its value and dragged to its right end and then to its left one, and then
# back to the pixel where it was taken, which need not mean quite the same value.
SETTINGS = [
    HOME,
    Step("Gear: the image settings", settings("btn_setting", True)),
    setting_step("Backlight compensation", "blc", 0, 10, 0),
    setting_step("Gamma", "gamma", 220, 500, 100, back=218),
    setting_step("Contrast", "contrast", 128, 255, 0, back=126),
    setting_step("Saturation", "saturation", 128, 255, 0, back=126),
    setting_step("Brightness", "brightness", 128, 255, 0, back=126),
    setting_step("Sharpness", "sharpness", 7, 15, 0, back=7),
    setting_step("White balance", "wb", 4600, 6500, 2800),
    Step("Anti-flicker: 60 hertz", choose_flicker("Down"), [], [flicker(2)]),
    Step("Anti-flicker: off", choose_flicker("Up", "Up"), [], [flicker(0)]),
    Step("Anti-flicker: 50 hertz", choose_flicker("Down"), [], [flicker(1)]),
    Step("Default", click("btn_default"),
         [image_property("wb", 4600), image_property("blc", 0), image_property("gamma", 220),
          image_property("contrast", 128), image_property("saturation", 128),
          image_property("brightness", 128), image_property("sharpness", 7), flicker(1),
          auto_white_balance(0)], changes="slider_wb"),
    Step("OK hides them", settings("btn_ok", False)),
    Step("Gear: shown", settings("btn_setting", True)),
    Step("Gear: hidden", settings("btn_setting", False)),
]

WINDOW = [
    Step("Dragged by its background", drag(700, 320)),
    Step("Minimise: only the tray icon is left", minimise()),
    Step("A double click on the tray icon", restore()),
    Step("Close: the panel ends", close()),
]

# Most window managers do not let a window hide past the edges of the screen; this one does.
DOCKING = [
    Step("Started where windows may leave the screen", start(1, JWM), reads(1) * 2,
         look=camera_marked(1)),
    Step("Dragged past the left edge", drag(-50, 320)),
    Step("The pointer leaves: the panel hides", leave(-317, 320)),
    Step("The pointer comes: the panel is back", enter(-10, 320)),
    Step("Dragged past the right edge", drag(1700, 320)),
    Step("The pointer leaves: the panel hides", leave(1910, 320)),
    Step("The pointer comes: the panel is back", enter(1594, 320)),
    Step("Dragged past the upper edge", drag(760, -100)),
    Step("The pointer leaves: the panel hides", leave(760, -426)),
    Step("The pointer comes: the panel is back", enter(760, -10)),
    Step("Dragged clear of the edges", drag(700, 320)),
]

WITHOUT_CAMERA = [
    Step("Started without a camera: the notice comes by itself", start("storage"), look=lambda
         panel: shows(panel, "btn_mute", "mute.png") and panel.notices()),
    Step("OK: the panel stays", dismiss(face.NO_CAMERA_NOTICE)),
    Step("Buttons change their faces and send nothing", click("btn_af", "btn_ai"),
         changes="btn_ai"),
    Step("Close: the panel ends", close()),
    Step("Started once more without a camera", start("storage"), look=lambda panel:
         len(panel.notices()) == 1),
    Step("Quit: the panel ends", leave_by_notice()),
]

CHAPTERS = [
    ("Start", START), ("Keyboard", KEYBOARD), ("Joystick", JOYSTICK), ("Lens", LENS),
    ("Presets", PRESETS), ("Functions", FUNCTIONS), ("Cameras", CAMERAS),
    ("Image settings", SETTINGS), ("Window", WINDOW), ("Docking", DOCKING),
    ("Without a camera", WITHOUT_CAMERA),
]
