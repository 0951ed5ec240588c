// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

#pragma once

/// Where a lens slider rests and to where it springs back: below the middle of its range 0 to 99.
constexpr int SLIDER_CENTRE = 45;
