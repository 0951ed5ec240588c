# Copyright (c) 2026 The PTZ panel developers
# SPDX-License-Identifier: MIT

"""What else is plugged in: nothing, other things, other cameras, more cameras than buttons, and
cameras with unusual names."""

from drill import Row, use_every_control
from harness import face
from harness.pictures import shows

NOTICE = "the notice comes up; every control is harmless"


def green(drill, number):
    drill.wait(lambda: shows(drill.panel, f"btn_cam{number}", f"cam{number}_green.png"),
               f"camera {number} to be green")


def press(drill, notice, button, places=face.NO_CAMERA_NOTICE):
    place = drill.desktop.windows.place(notice)
    x, y = face.centre(places[button])
    drill.desktop.mouse.click(place.x + x, place.y + y)


def dismissed(drill):
    press(drill, drill.notice(), "btn_ok")
    drill.wait(lambda: not drill.panel.notices(), "the notice to go")
    for number in range(1, 6):
        assert shows(drill.panel, f"btn_cam{number}", f"cam{number}_black.png")
    drill.receives_nothing_from_controls()


def quit_from_the_notice(drill):
    press(drill, drill.notice(), "btn_quit")
    drill.ends_with(0)


def chooses(*cameras):
    """The button of each number drives that device."""
    def run(drill):
        drill.ready()
        for number, device in enumerate(cameras, start=1):
            drill.panel.click(f"btn_cam{number}")
            green(drill, number)
            drill.drives(device)
        # What comes after the last has no camera.
        if len(cameras) < 5:
            drill.panel.click(f"btn_cam{len(cameras) + 1}")
            press(drill, drill.notice(), "btn_ok", face.MISSING_CAMERA_NOTICE)
            drill.drives(cameras[-1])
    return run


def lives_and_drives_the_other(drill):
    drill.ready()
    use_every_control(drill)
    drill.panel.click("btn_cam2")
    drill.drives(camera=2)


def is_harmless(drill):
    """Its brightness cannot be read, so it is not opened the second time."""
    drill.ready().receives_nothing_from_controls()


def named(product):
    return {"descriptions": [f"product={product}"]}


KNOWN = "the device of the same place is driven in its stead: a known limit of the numbering"

ROWS = [
    Row("no camera", "notice dismissed", NOTICE, dismissed, {"faults": ["unplug 1"]}),
    Row("no camera", "quit from the notice", "ends with 0", quit_from_the_notice,
        {"faults": ["unplug 1"]}),
    Row("no camera but another device", "notice dismissed", NOTICE, dismissed,
        {"devices": "storage"}),
    Row("no camera but one of another kind", "notice dismissed", NOTICE, dismissed,
        {"devices": "other-camera"}),
    Row("another device before the camera", "", "each button drives its camera", chooses(2),
        {"devices": "storage,camera"}),
    Row("another device between two cameras", "", "each button drives its camera", chooses(1, 3),
        {"devices": "camera,storage,camera"}),
    Row("another device after the camera", "", "each button drives its camera", chooses(1),
        {"devices": "camera,storage"}),
    Row("a camera of another kind after the camera", "", "each button drives its camera", chooses(1),
        {"devices": "camera,other-camera"}),
    Row("a camera of another kind before the camera", "", KNOWN, chooses(1),
        {"devices": "other-camera,camera"}),
    Row("a camera of another kind between two cameras", "", KNOWN, chooses(1, 2),
        {"devices": "camera,other-camera,camera"}),
    Row("nine cameras", "", "the five buttons drive the first five", chooses(1, 2, 3, 4, 5),
        {"devices": 9}),
    Row("a camera without a camera terminal before the camera", "",
        "lives; the other camera is driven", lives_and_drives_the_other,
        {"devices": 2, "descriptions": ["1.without=camera_terminal"]}),
    Row("a camera without a processing unit", "", "lives; every control is harmless", is_harmless,
        {"descriptions": ["without=processing_unit"]}),
    *[Row(fault, "", "lives; the camera is driven", chooses(1), named(product))
      for fault, product in (
          ("no product string", ""),
          ("product string of 126 characters", "PTZ " * 31 + "en"),
          ("product string not in ASCII", "Kamera für Süden \u4f1a\u8bae \U0001f3a5"),
          ("product string of a percent sign and a line end", "%s%n\n\t%x"))],
]
