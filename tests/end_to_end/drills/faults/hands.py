# Copyright (c) 2026 The PTZ panel developers
# SPDX-License-Identifier: MIT

"""The operator's hold is lost: the keyboard or the window goes while something is held."""

from drill import Row
from holds import MOTIONS, joystick_by_a_double_click

KEYS = MOTIONS[:2]
NOT_KEYS = MOTIONS[2:]
STOPS = "the camera stops at once"


def another_window(drill):
    drill.desktop.windows.open_another(10, 10)


def minimised(drill):
    drill.desktop.windows.minimise(drill.panel.window)


def another_desktop(drill):
    drill.desktop.windows.show_desktop(1)


def to_the_tray(drill):
    drill.panel.click("btn_min")


def another_camera(drill):
    drill.panel.click("btn_cam2")


def missing_camera(drill):
    drill.panel.click("btn_cam5")
    drill.wait(drill.panel.notices, "the notice")


def stops_while_held(hold, loss):
    def run(drill):
        drill.ready()
        with hold(drill) as stops:
            since = drill.now()
            loss(drill)
            drill.stopped_by(stops, since)
        if loss is another_desktop:
            drill.desktop.windows.show_desktop(0)
        for notice in drill.panel.notices():
            drill.desktop.windows.close(notice)
        drill.wait(lambda: not drill.panel.notices(), "the notices to go")
        drill.bring_back()
        drill.at_rest()
        if loss not in (another_camera, missing_camera):
            # The release was elsewhere.
            drill.panel.received()
            drill.stopped_by(stops, since)
        drill.drives(camera=2 if loss is another_camera else 1)
    return run


def lost_again_and_again(hold):
    """The key is held all the time, and repeats into the window that has the keyboard."""
    def run(drill):
        drill.ready()
        windows = drill.desktop.windows
        another = windows.open_another(10, 10)
        windows.activate(drill.panel.window)
        with hold(drill) as stops:
            for _ in range(3):
                since = drill.now()
                drill.wait(lambda: drill.panel.log.settings(since), "the key to repeat")
                since = drill.now()
                windows.activate(another)
                drill.stopped_by(stops, since)
                windows.activate(drill.panel.window)
        drill.at_rest()
        drill.drives()
    return run


def stops_at_the_release(hold, loss):
    def run(drill):
        drill.ready()
        with hold(drill) as stops:
            loss(drill)
            assert drill.moving(), "it is still driven"
            since = drill.now()
        drill.stopped_by(stops, since)
        drill.drives()
    return run


def chosen_while_the_key_repeats(drill):
    """The key is held, so it drives the camera that is chosen now."""
    drill.ready()
    with drill.desktop.keyboard.held("Right"):
        drill.moves(1)
        drill.panel.click("btn_cam2")
        drill.at_rest(1)
        drill.moves(2)
    drill.at_rest(2)
    drill.drives(camera=2)


def let_go_in_the_list(hold):
    def run(drill):
        drill.ready().panel.click("btn_setting")
        with hold(drill):
            drill.panel.open_flicker_choice()
        drill.at_rest()
        drill.desktop.keyboard.tap("Escape")
        drill.wait(lambda: not drill.panel.flicker_items(), "the list to go")
        drill.drives()
    return run


def does_not_stutter(hold):
    def run(drill):
        drill.ready()
        start = drill.now()
        with hold(drill) as stops:
            drill.wait(lambda: len(drill.panel.log.settings(start)) >= 12, "repetitions")
            assert len(set(drill.panel.log.settings(start))) == 1
        drill.stopped_by(stops, start)
    return run


def dismissed_with_escape(drill, notice):
    if drill.panel.notices():
        # The keyboard may still be on its way from the window that went. It comes for certain when
        # it comes from another one.
        another_window(drill)
        drill.desktop.windows.activate(notice)
        drill.desktop.keyboard.tap("Escape")
    return not drill.panel.notices()


def dismissed_by_the_manager(drill, notice):
    if drill.panel.notices():
        drill.desktop.windows.close(notice)
    return not drill.panel.notices()


def notice_dismissed_in_the_tray(how):
    """The notice is then the only window of the panel."""
    def run(drill):
        drill.up()
        if not drill.panel.notices():
            drill.panel.click("btn_cam4")
        notice = drill.notice()
        drill.panel.click("btn_min")
        drill.wait(lambda: not drill.panel.is_visible(), "the panel to go to the tray")
        dismissed = dismissed_with_escape if how == "Esc" else dismissed_by_the_manager
        drill.wait(lambda: dismissed(drill, notice), "the notice to go")
        drill.bring_back()
        drill.answers()
    return run


NO_CAMERA = {"faults": ["unplug 1"]}

ROWS = [
    *[Row("another window takes the keyboard", moment, STOPS,
          stops_while_held(hold, another_window)) for moment, hold in KEYS],
    *[Row("another window comes up", moment, "the camera stops at the release",
          stops_at_the_release(hold, another_window)) for moment, hold in NOT_KEYS],
    *[Row("the window manager minimises the panel", moment, STOPS,
          stops_while_held(hold, minimised))
      for moment, hold in [*MOTIONS, ("the joystick held by the second press of a double click",
                                      joystick_by_a_double_click)]],
    *[Row("another desktop is shown", moment, STOPS, stops_while_held(hold, another_desktop))
      for moment, hold in MOTIONS],
    *[Row("the panel goes to the tray", moment, STOPS, stops_while_held(hold, to_the_tray))
      for moment, hold in KEYS],
    *[Row("another camera is chosen", moment, STOPS, stops_while_held(hold, another_camera),
          {"devices": 2}) for moment, hold in KEYS],
    Row("another camera is chosen", "an arrow key held and repeating",
        "the camera stops at once, the other one at the release", chosen_while_the_key_repeats,
        {"devices": 2}),
    *[Row("the list of the anti-flicker choice is opened", moment, "the camera stops at the release",
          let_go_in_the_list(hold)) for moment, hold in KEYS],
    *[Row("the notice of a missing camera comes up", moment, STOPS,
          stops_while_held(hold, missing_camera)) for moment, hold in KEYS],
    *[Row("the keyboard is lost again and again", moment, STOPS, lost_again_and_again(hold))
      for moment, hold in KEYS],
    *[Row("a key repeats", moment, "stops at the release and not before", does_not_stutter(hold))
      for moment, hold in KEYS],
    *[Row(f"the only notice is dismissed with {how}", f"in the tray, {state}",
          "lives; comes back from the tray", notice_dismissed_in_the_tray(how), options)
      for how in ("Esc", "the window manager")
      for state, options in (("no camera", NO_CAMERA), ("missing camera", {}))],
]
