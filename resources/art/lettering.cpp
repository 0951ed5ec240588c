// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

#include "resources/art/lettering.h"

#include <algorithm>
#include <cmath>
#include <stdexcept>

namespace art {

namespace {

int lineHeight(const std::string &text, const Style &style)
{
    const bool descends = text.find_first_of("gpqyjQ,") != std::string::npos;
    return style.capHeight + (descends ? (style.capHeight * 4 + 6) / 12 : 0);
}

} // namespace

Mask lettered(const std::string &text, const Style &style)
{
    const int height = lineHeight(text, style);
    std::vector<std::pair<int, Mask>> letters;
    int end = 0;
    for (const char character : text) {
        if (character == ' ') {
            end += style.capHeight / 3 + style.gap;
            continue;
        }
        const Letter *letter = findLetter(character);
        if (!letter)
            throw std::invalid_argument(std::string("no letter for ") + character);
        const int start = letters.empty() ? 0 : end + style.gap;
        letters.emplace_back(start, drawLetter(*letter, style, height));
        end = start + letters.back().second.width;
    }
    Mask line{ end, height, std::vector<double>(static_cast<size_t>(end * height)) };
    for (const auto &[start, letter] : letters) {
        for (int y = 0; y < height; ++y) {
            for (int x = 0; x < letter.width; ++x)
                line.cover[static_cast<size_t>(y * end + start + x)] =
                    letter.cover[static_cast<size_t>(y * letter.width + x)];
        }
    }
    return line;
}

Style fitted(const std::string &text, Style style, int width)
{
    while (lettered(text, style).width > width && style.width > 0.5)
        style.width -= 0.01;
    return style;
}

void letterCentred(Canvas &canvas, const std::string &text, const Style &style, double centreX,
    int top, const Colour &colour)
{
    const Mask line = lettered(text, style);
    canvas.stamp(line, static_cast<int>(std::floor(centreX - line.width / 2.0 + 0.5)), top, colour);
}

void letterRight(Canvas &canvas, const std::string &text, const Style &style, int right, int top,
    const Colour &colour)
{
    const Mask line = lettered(text, style);
    canvas.stamp(line, right - line.width, top, colour);
}

void letterFrom(Canvas &canvas, const std::string &text, const Style &style, int left, int top,
    const Colour &colour)
{
    canvas.stamp(lettered(text, style), left, top, colour);
}

} // namespace art
