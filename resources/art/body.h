// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

#pragma once

#include "resources/art/layout.h"
#include "resources/art/palette.h"

// What the two panels and the two notices are made of.
namespace art {

// The outline of a panel or notice of this size.
Shape outline(int width, int height);
// An empty plate with that outline, its upper edge caught by the light.
Canvas plate(int width, int height);
// A black key let into the plate. The ground under the button itself is pure black, so that the
// key looks the same while the button is pressed and paints its own black.
void sinkKey(Canvas &canvas, const Place &place);
// The strip along the upper edge that bears the title.
void drawHead(Canvas &canvas, const char *title);
// A level line cut into the plate.
void scoreLine(Canvas &canvas, double x, double y, double width);

} // namespace art
