# Copyright (c) 2026 The PTZ panel developers
# SPDX-License-Identifier: MIT

"""The tour: the shipped panel, every control of it used once, with a picture and the requests of
each step. steps.py is the table, actions.py what hands do in a step, guide.py takes each step and
compares, report.py tells of it."""
