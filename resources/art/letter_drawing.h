// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

#pragma once

#include "resources/art/alphabet.h"
#include "resources/art/canvas.h"

namespace art {

struct Style
{
    int capHeight;      // pixels
    int xHeight;        // pixels; how high a small letter without ascender is
    double stem;        // pixels, width of upright strokes
    double bar;         // pixels, width of level strokes
    int gap = 1;        // pixels between letters
    double width = 1.0; // letter widths, relative to the alphabet's
};

// One letter, fitted to the pixel grid, in a mask of the given height.
Mask drawLetter(const Letter &letter, const Style &style, int height);

} // namespace art
