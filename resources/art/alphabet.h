// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

#pragma once

namespace art {

// A letter as the path of a pen. Strokes are separated by ';', points by blanks. A point is "x,y":
// x from 0 (left) to 10 (right); y from 0 (top of a capital) to 12 (the line), 4 is the top of a
// small letter, 15 the bottom of a descender. '~' behind a point rounds that corner as far as its
// sides allow, '~' and a digit that many tenths as far. '!' behind a point sets it on whole pixels,
// which keeps an upright in the middle of a letter crisp. A closing 'z' returns to the first point.
struct Letter
{
    char character;
    double width; // of a capital's height of 12; 0 is the width of one upright stroke
    const char *path;
};

// Null for a character that the panel's lettering does not have.
const Letter *findLetter(char character);

} // namespace art
