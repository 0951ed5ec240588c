# Copyright (c) 2026 The PTZ panel developers
# SPDX-License-Identifier: MIT

"""Getting the panel back after its window was lost."""


def bring_back(drill):
    """Has the panel on the screen again, and its keyboard."""
    panel = drill.panel
    if not panel.is_visible():
        drill.wait(panel.tray_icon, "the icon in the tray")
        panel.double_click_tray_icon()
    if not panel.is_visible():
        drill.desktop.windows.activate(panel.window)
    drill.wait(panel.is_visible, "the panel to come back")
    drill.desktop.windows.activate(panel.window)


def notice_of_missing_camera(drill):
    return drill.wait(drill.panel.notices, "the notice")[0]
