# Copyright (c) 2026 The PTZ panel developers
# SPDX-License-Identifier: MIT

"""The steps of the tour, and what the cameras must receive in each."""

from dataclasses import dataclass
from typing import Callable

from harness import face
from harness.desktop import JWM
from harness.pictures import selected_camera, shows
from harness.requests import (READ_ON_OPENING, auto_white_balance, call_preset, clear_preset,
                              flicker, focus, halt, halt_focus, halt_zoom, image_property, pan,
                              store_preset, tilt, vendor, zoom)

from .actions import (choose_flicker, click, close, dismiss, drag, enter, joystick, key, leave,
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


def reads(camera):
    return [f"cam{camera} {code} {control}" for code, control in READ_ON_OPENING]


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
    Step("M: framing by hand", key("m"), [vendor(17)], look=face_of("btn_ai", "Manual.png")),
    Step("F: automatic framing", key("f"), [vendor(16)], look=face_of("btn_ai", "Framing.png")),
    Step("P: framing by hand", key("p"), [vendor(17)], look=face_of("btn_ai", "Manual.png")),
    Step("F once more", key("f"), [vendor(16)], look=face_of("btn_ai", "Framing.png")),
    Step("0 to 9: recall presets", key(*"0123456789"), [call_preset(n) for n in range(10)]),
]

# The direction is sent with the speeds of the last time, then again for each speed that changes.
JOYSTICK = [
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
    Step("Zoom in", lens("slider_zoom", -40), [zoom(+1)], [halt_zoom()] * 2,
         changes="slider_zoom"),
    Step("Zoom out", lens("slider_zoom", +40), [zoom(-1)], [halt_zoom()] * 2,
         changes="slider_zoom"),
    Step("AF/MF: manual focus", click("btn_af"), [vendor(7)], changes="btn_af"),
    Step("Focus farther", lens("slider_focus", -40), [focus(-1)], [halt_focus()] * 2,
         changes="slider_focus"),
    Step("Focus nearer", lens("slider_focus", +40), [focus(+1)], [halt_focus()] * 2,
         changes="slider_focus"),
    Step("AF/MF: automatic focus", click("btn_af"), [vendor(6)], changes="btn_af"),
]

PRESETS = [
    Step("Set and a digit: store, ten times", click(*each_after("btn_set")),
         [store_preset(n) for n in range(10)]),
    Step("0 to 9: recall", click(*DIGITS), [call_preset(n) for n in range(10)]),
    Step("Clear and a digit: clear, ten times", click(*each_after("btn_clear")),
         [clear_preset(n) for n in range(10)]),
    Step("Set, then clear: the later one counts", click("btn_set", "btn_clear", "btn_num7"),
         [clear_preset(7)]),
]

FUNCTIONS = [
    Step("Mute", click("btn_mute"), [vendor(5)], changes="btn_mute"),
    Step("Mute off", click("btn_mute"), [vendor(4)], changes="btn_mute"),
    Step("Framing: by hand", click("btn_ai"), [vendor(17)], changes="btn_ai"),
    Step("Framing: automatic", click("btn_ai"), [vendor(16)], changes="btn_ai"),
    Step("Push: framing off", click("btn_push"), [vendor(17)]),
    Step("Flip", click("btn_flip"), [vendor(2)]),
    Step("Flip back", click("btn_flip"), [vendor(3)]),
    Step("Mirror", click("btn_mirror"), [vendor(0)]),
    Step("Mirror back", click("btn_mirror"), [vendor(1)]),
    Step("Home", click("btn_home"), [vendor(8)]),
]

CAMERAS = [
    Step("Camera 2", click("btn_cam2"), reads(2), changes="btn_cam2"),
    Step("Camera 2 is the one that moves", key("Right"), [pan(+1, 21, 2)],
         [halt(2), halt_zoom(2)]),
    Step("Camera 3", click("btn_cam3"), reads(3), changes="btn_cam3"),
    Step("Camera 4: there is none", notice("btn_cam4"), look=camera_marked(1)),
    Step("OK", dismiss(face.MISSING_CAMERA_NOTICE)),
    Step("Camera 3 is open still", click("btn_home"), [vendor(8, 3)]),
    Step("Notices need not stay on top", click("btn_top"), changes="btn_top"),
    Step("Camera 5: there is none", notice("btn_cam5"), look=camera_marked(1)),
    Step("OK", dismiss(face.MISSING_CAMERA_NOTICE)),
    Step("Notices stay on top again", click("btn_top"), changes="btn_top"),
    Step("Camera 1", click("btn_cam1"), reads(1), look=camera_marked(1)),
]


def setting_step(title, name, way, before, after):
    return Step(title, setting(name, way), [image_property(name, before), image_property(name, after)],
                changes=f"slider_{name}")


SETTINGS = [
    Step("Gear: the image settings", settings("btn_setting", True)),
    setting_step("Backlight compensation", "blc", +1, 0, 10),
    setting_step("Gamma", "gamma", -1, 220, 100),
    setting_step("Contrast", "contrast", +1, 128, 255),
    setting_step("Saturation", "saturation", -1, 128, 0),
    setting_step("Brightness", "brightness", +1, 128, 255),
    setting_step("Sharpness", "sharpness", -1, 7, 0),
    setting_step("White balance", "wb", +1, 4600, 6500),
    Step("Anti-flicker: 60 hertz", choose_flicker("Down"), [], [flicker(2)]),
    Step("Anti-flicker: off", choose_flicker("Up", "Up"), [], [flicker(0)]),
    Step("Anti-flicker: 50 hertz", choose_flicker("Down"), [], [flicker(1)]),
    Step("Default", click("btn_default"),
         [image_property("wb", 4600), image_property("blc", 0), image_property("gamma", 220),
          image_property("contrast", 128), image_property("saturation", 128),
          image_property("brightness", 128), image_property("sharpness", 7), flicker(1),
          auto_white_balance(0)], changes="slider_brightness"),
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
