# Copyright (c) 2026 The PTZ panel developers
# SPDX-License-Identifier: MIT

"""The panel on desktops of a higher resolution: the same tests as on any other."""

import pytest

import test_left_panel
import test_settings_panel
from harness import face
from test_docking import *  # noqa: F403

# All on the desktop and the panel of test_docking.
manual_focus = test_left_panel.manual_focus
settings = test_settings_panel.settings
test_joystick = test_left_panel.test_the_joystick_drives_in_all_directions_until_it_is_let_go
test_lens_slider = test_left_panel.test_a_lens_slider_moves_the_lens_until_it_is_let_go
test_settings_slider = test_settings_panel.test_a_settings_slider_sends_each_value_that_it_is_dragged_to


@pytest.fixture(scope="module", params=[1.5, 2])
def scale(request):
    return request.param


def test_a_notice_stands_half_its_size_from_the_corner_and_follows_the_pointer(start):
    panel = start("storage")
    notice, = panel.await_notices(1)
    x, y = panel.place()[:2]
    assert panel.desktop.windows.place(notice) == (
        x + face.NOTICE_WIDTH // 2, y + face.NOTICE_HEIGHT // 2,
        face.NOTICE_WIDTH, face.NOTICE_HEIGHT)
    panel.drag_notice(notice, 40, 20)
    panel.desktop.windows.answers(notice)
    assert panel.desktop.windows.place(notice)[:2] == (
        x + face.NOTICE_WIDTH // 2 + 40, y + face.NOTICE_HEIGHT // 2 + 20)
