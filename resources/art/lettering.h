// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

#pragma once

#include "resources/art/letter_drawing.h"

#include <string>

// The panel's lettering: drawn from the strokes of alphabet.h and fitted to the pixel grid, so
// that stems and bars fill whole pixels at any size.
namespace art {

// One line of text, as wide and high as its ink.
Mask lettered(const std::string &text, const Style &style);

// The style with its letters made narrower until the text fits the width.
Style fitted(const std::string &text, Style style, int width);

void letterCentred(Canvas &canvas, const std::string &text, const Style &style, double centreX,
    int top, const Colour &colour);
// `right` is the column behind the last letter.
void letterRight(Canvas &canvas, const std::string &text, const Style &style, int right, int top,
    const Colour &colour);
void letterFrom(Canvas &canvas, const std::string &text, const Style &style, int left, int top,
    const Colour &colour);

} // namespace art
