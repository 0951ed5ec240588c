# Copyright (c) 2026 The PTZ panel developers
# SPDX-License-Identifier: MIT

"""Faults, each at each moment: the tables of rows are in faults/."""


def test_drill(row, drill):
    row.run(drill)
    drill.finish()
