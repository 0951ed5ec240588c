// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

#pragma once

#include "resources/art/palette.h"

// The camera that stands for all cameras: a head in a yoke on a foot, seen from the front. About
// 40 pixels wide and 43 high at scale 1, around the point.
namespace art {

Shape cameraBody(double x, double y, double scale = 1.0);
void drawLens(Canvas &canvas, double x, double y, double scale = 1.0, const Colour &pupil = cut);

} // namespace art
