// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT
#include "virtual_camera/viewer/development.h"

#include <QColor>
#include <QImage>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <vector>

namespace virtual_camera {

namespace {

constexpr double lampMains = 50; // hertz, of the lamps in the room

using Curve = std::array<std::uint8_t, 256>;

// Below 0 down to low, at 0 one, above 0 up to high.
double factor(double setting, double low, double high)
{
    return setting < 0 ? 1 + setting * (1 - low) : 1 + setting * (high - 1);
}

Curve curveFor(const View &view, double channelGain)
{
    Curve curve{};
    const double contrast = factor(view.contrast, 0.15, 2.6);
    const double exponent = 1 / factor(view.gamma, 0.45, 2.2);
    const double gain = channelGain * factor(view.gain, 0.75, 2.2);
    for (std::size_t level = 0; level < curve.size(); ++level) {
        double light = static_cast<double>(level) / 255 * gain;
        // What lies in the shadow is lifted, what is bright stays.
        light += view.backlight * 0.45 * light * std::pow(std::max(0.0, 1 - light), 2) * 3;
        light = std::pow(std::clamp(light, 0.0, 1.0), exponent);
        light = (light - 0.5) * contrast + 0.5 + view.brightness * 0.5;
        curve[level] = static_cast<std::uint8_t>(std::lround(std::clamp(light, 0.0, 1.0) * 255));
    }
    return curve;
}

struct Curves
{
    Curve red;
    Curve green;
    Curve blue;
};

Curves curvesFor(const View &view)
{
    return { curveFor(view, 1 + 0.35 * view.whiteBalance), curveFor(view, 1),
        curveFor(view, 1 - 0.35 * view.whiteBalance) };
}

bool tonesAtDefault(const View &view)
{
    return view.brightness == 0 && view.contrast == 0 && view.gamma == 0 && view.gain == 0
        && view.whiteBalance == 0 && view.backlight == 0;
}

// Written so that the compiler makes vectors of the loops below; std::clamp works on references.
int clampByte(int value)
{
    value = value < 0 ? 0 : value;
    return value > 255 ? 255 : value;
}

void applyCurves(QRgb *line, int width, const Curves &curves)
{
    for (int x = 0; x < width; ++x) {
        const QRgb pixel = line[x];
        line[x] = qRgb(curves.red[pixel >> 16 & 0xff], curves.green[pixel >> 8 & 0xff],
            curves.blue[pixel & 0xff]);
    }
}

// Fixed point: 256 is one.
void saturate(QRgb *line, int width, int saturation)
{
    for (int x = 0; x < width; ++x) {
        const int red = qRed(line[x]);
        const int green = qGreen(line[x]);
        const int blue = qBlue(line[x]);
        const int grey = (77 * red + 150 * green + 29 * blue) >> 8; // the weights of BT.601
        line[x] = qRgb(clampByte(grey + ((red - grey) * saturation >> 8)),
            clampByte(grey + ((green - grey) * saturation >> 8)),
            clampByte(grey + ((blue - grey) * saturation >> 8)));
    }
}

// Adds `amount` / 256 of what a pixel differs from the mean of four others around it; below 0 it is
// taken away, which softens. A large frame is shown smaller than it is, so the others are farther
// away there. The bytes of a line are all alike, so the loop knows no colours.
void sharpen(QImage &frame, int amount)
{
    const QImage source = frame.copy();
    const int bytes = frame.width() * 4;
    const int lines = std::max(1, frame.width() / 400);
    const int away = 4 * lines;
    for (int y = lines; y + lines < frame.height(); ++y) {
        const uchar *const above = source.constScanLine(y - lines);
        const uchar *const here = source.constScanLine(y);
        const uchar *const below = source.constScanLine(y + lines);
        uchar *const out = frame.scanLine(y);
        for (int x = away; x + away < bytes; ++x) {
            const int detail = 4 * here[x] - above[x] - below[x] - here[x - away] - here[x + away];
            out[x] = static_cast<uchar>(clampByte(here[x] + (detail * amount >> 10)));
        }
    }
}

// A rolling shutter that does not keep time with the lamps shows their flicker as dark bands.
void band(QImage &frame, double depth)
{
    constexpr double bands = 5;
    const int bytes = frame.width() * 4;
    for (int y = 0; y < frame.height(); ++y) {
        const double phase = 2 * M_PI * bands * y / frame.height();
        const int level = static_cast<int>(256 * (1 - depth * (0.5 - 0.5 * std::cos(phase))));
        uchar *const line = frame.scanLine(y);
        for (int x = 0; x < bytes; ++x)
            line[x] = static_cast<uchar>(line[x] * level >> 8);
    }
}

} // namespace

void develop(QImage &frame, const View &view)
{
    if (view.mains != static_cast<int>(lampMains))
        band(frame, view.mains == 0 ? 0.3 : 0.15);
    const Curves curves = curvesFor(view);
    const int saturation = static_cast<int>(256 * factor(view.saturation, 0, 2.5));
    for (int y = 0; y < frame.height(); ++y) {
        auto *const line = reinterpret_cast<QRgb *>(frame.scanLine(y));
        if (!tonesAtDefault(view))
            applyCurves(line, frame.width(), curves);
        if (view.saturation != 0)
            saturate(line, frame.width(), saturation);
    }
    if (view.sharpness != 0)
        sharpen(frame, static_cast<int>(256 * (view.sharpness > 0 ? 2.4 : 0.7) * view.sharpness));
}

} // namespace virtual_camera
