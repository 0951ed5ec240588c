// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

#include "resources/art/palette.h"
#include "resources/art/pictures.h"

namespace art {

namespace {

struct Face
{
    const char *name;
    int width;
    int height;
    const char *text;
    const Style &style;
    const Colour &colour;
};

// Green is a function that is on: automatic focus, automatic framing.
const Face faces[] = {
    { "0.png", 7, 9, "0", digitStyle, bright },
    { "1.png", 5, 9, "1", digitStyle, bright },
    { "2.png", 6, 9, "2", digitStyle, bright },
    { "3.png", 7, 9, "3", digitStyle, bright },
    { "4.png", 7, 9, "4", digitStyle, bright },
    { "5.png", 7, 9, "5", digitStyle, bright },
    { "6.png", 7, 9, "6", digitStyle, bright },
    { "7.png", 7, 9, "7", digitStyle, bright },
    { "8.png", 7, 9, "8", digitStyle, bright },
    { "9.png", 7, 9, "9", digitStyle, bright },
    { "Set.png", 18, 9, "SET", wordStyle, plain },
    { "Clear.png", 30, 9, "CLEAR", wordStyle, plain },
    { "clear.png", 30, 9, "CLEAR", wordStyle, plain },
    { "AF.png", 16, 9, "AF", wordStyle, lamp },
    { "MF.png", 17, 9, "MF", wordStyle, plain },
    { "Framing.png", 44, 11, "FRAMING", wordStyle, lamp },
    { "Manual.png", 40, 9, "MANUAL", wordStyle, plain },
    { "Push.png", 27, 9, "PUSH", wordStyle, plain },
    { "Flip.png", 19, 11, "FLIP", wordStyle, plain },
    { "HOME.png", 36, 9, "HOME", wordStyle, plain },
    { "Mirror.png", 33, 9, "MIRROR", wordStyle, plain },
    { "Default.png", 42, 10, "DEFAULT", wordStyle, plain },
    { "OK.png", 17, 10, "OK", wordStyle, plain },
    { "Quit.png", 26, 12, "QUIT", wordStyle, plain },
};

Drawing draw(const Face &face)
{
    Canvas canvas(face.width, face.height);
    const Mask text = lettered(face.text, fitted(face.text, face.style, face.width));
    canvas.stamp(
        text, (face.width - text.width) / 2, (face.height - face.style.capHeight) / 2, face.colour);
    return { face.name, canvas };
}

} // namespace

std::vector<Drawing> drawFaces()
{
    std::vector<Drawing> drawings;
    for (const Face &face : faces)
        drawings.push_back(draw(face));
    return drawings;
}

} // namespace art
