// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

// Each control changes the picture the way its name says.

#include <QImage>

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <functional>
#include <ostream>

#include "virtual_camera/viewer/frame.h"

namespace virtual_camera {

namespace {

constexpr QSize size(480, 270);

View inFocus()
{
    View view;
    view.focus = 1 / 3.0;
    return view;
}

QImage frameOf(const View &view) { return renderFrame(Room(), view, size); }

template<typename Measure> double meanOf(const QImage &frame, Measure measure)
{
    double sum = 0;
    for (int y = 0; y < frame.height(); ++y) {
        for (int x = 0; x < frame.width(); ++x)
            sum += measure(frame.pixel(x, y), x, y);
    }
    return sum / (frame.width() * frame.height());
}

double brightness(const QImage &frame)
{
    return meanOf(frame, [](QRgb pixel, int, int) { return qGray(pixel); });
}

double spread(const QImage &frame)
{
    const double mean = brightness(frame);
    return std::sqrt(
        meanOf(frame, [mean](QRgb pixel, int, int) { return std::pow(qGray(pixel) - mean, 2); }));
}

double colourfulness(const QImage &frame)
{
    return meanOf(frame, [](QRgb pixel, int, int) {
        const auto [low, high] = std::minmax({ qRed(pixel), qGreen(pixel), qBlue(pixel) });
        return high - low;
    });
}

double warmth(const QImage &frame)
{
    return meanOf(frame, [](QRgb pixel, int, int) { return qRed(pixel) - qBlue(pixel); });
}

// The energy of what changes from one pixel to the next.
double detail(const QImage &frame)
{
    return meanOf(frame, [&frame](QRgb pixel, int x, int y) {
        return x == 0 ? 0 : std::pow(qGray(pixel) - qGray(frame.pixel(x - 1, y)), 2);
    });
}

// Of what is dark, as seen without the change.
double shadows(const QImage &frame)
{
    static const QImage plain = frameOf(inFocus());
    return meanOf(frame,
        [](QRgb pixel, int x, int y) { return qGray(plain.pixel(x, y)) < 90 ? qGray(pixel) : 0; });
}

double highlights(const QImage &frame)
{
    static const QImage plain = frameOf(inFocus());
    return meanOf(frame,
        [](QRgb pixel, int x, int y) { return qGray(plain.pixel(x, y)) > 230 ? qGray(pixel) : 0; });
}

double difference(const QImage &a, const QImage &b)
{
    return meanOf(a,
        [&b](QRgb pixel, int x, int y) { return std::abs(qGray(pixel) - qGray(b.pixel(x, y))); });
}

struct Control
{
    const char *name;
    double View::*setting;
    double (*measure)(const QImage &);
    double atLeast; // how much the measure differs between the ends
};

std::ostream &operator<<(std::ostream &out, const Control &control) { return out << control.name; }

class ImageControl : public testing::TestWithParam<Control>
{ };

} // namespace

TEST_P(ImageControl, RaisesWhatItIsNamedAfter)
{
    const Control &control = GetParam();
    View low = inFocus();
    View high = inFocus();
    low.*control.setting = -1;
    high.*control.setting = 1;
    const double before = control.measure(frameOf(low));
    const double between = control.measure(frameOf(inFocus()));
    const double after = control.measure(frameOf(high));
    EXPECT_LT(before + control.atLeast / 4, between);
    EXPECT_LT(between + control.atLeast / 4, after);
    EXPECT_LT(before + control.atLeast, after);
}

INSTANTIATE_TEST_SUITE_P(All, ImageControl,
    testing::Values(Control{ "brightness", &View::brightness, brightness, 60 },
        Control{ "contrast", &View::contrast, spread, 30 },
        Control{ "saturation", &View::saturation, colourfulness, 30 },
        Control{ "sharpness", &View::sharpness, detail, 100 },
        Control{ "gamma", &View::gamma, brightness, 40 },
        Control{ "gain", &View::gain, brightness, 30 },
        Control{ "white balance", &View::whiteBalance, warmth, 60 }));

TEST(Frame, IsLeftAloneByControlsAtTheirDefaults)
{
    View moved = inFocus();
    moved.contrast = 0.2;
    EXPECT_NE(frameOf(inFocus()), frameOf(moved));
    moved.contrast = 0;
    EXPECT_EQ(frameOf(inFocus()), frameOf(moved));
}

TEST(Frame, ShowsSharpnessWhenItIsShownAtHalfItsSize)
{
    const auto shown = [](double sharpness) {
        View view = inFocus();
        view.sharpness = sharpness;
        return renderFrame(Room(), view, { 1280, 720 })
            .scaled(640, 360, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    };
    const double before = detail(shown(-1));
    const double between = detail(shown(0));
    EXPECT_LT(1.3 * before, between);
    EXPECT_LT(1.3 * between, detail(shown(1)));
}

TEST(Frame, IsNowhereOfOneColour)
{
    for (const double angle : { 60.0, 3.4 })
        for (const double tilt : { 0.0, 45.0, 90.0 })
            for (double pan = -170; pan <= 170; pan += 20) {
                View view = inFocus();
                view.pan = pan;
                view.tilt = tilt;
                view.angle = angle;
                view.focus = 1 / 6.0;
                EXPECT_GT(detail(frameOf(view)), 0.1) << pan << ' ' << tilt << ' ' << angle;
            }
}

TEST(Frame, IsWithoutColourAtTheLowestSaturation)
{
    View grey = inFocus();
    grey.saturation = -1;
    EXPECT_LT(colourfulness(frameOf(grey)), 1);
}

TEST(Frame, BacklightCompensationLiftsTheShadowsAndKeepsTheHighlights)
{
    View lifted = inFocus();
    lifted.backlight = 1;
    const QImage frame = frameOf(lifted);
    EXPECT_GT(shadows(frame), 1.2 * shadows(frameOf(inFocus())));
    EXPECT_NEAR(highlights(frame), highlights(frameOf(inFocus())), 3);
}

TEST(Frame, ShowsBandsWhenExposureDoesNotKeepTimeWithTheLamps)
{
    const auto depth = [](int mains) {
        View view = inFocus();
        view.mains = mains;
        return difference(frameOf(view), frameOf(inFocus()));
    };
    EXPECT_EQ(depth(50), 0);
    EXPECT_GT(depth(60), 3);
    EXPECT_GT(depth(0), depth(60) + 3);
}

TEST(Frame, IsReflectedByMirrorAndTurnedOverByFlip)
{
    for (const auto &[mirror, flip] : { std::pair(true, false), { false, true }, { true, true } }) {
        View view = inFocus();
        view.mirror = mirror;
        view.flip = flip;
        EXPECT_EQ(frameOf(view), frameOf(inFocus()).mirrored(mirror, flip));
    }
}

TEST(Frame, ShiftsByThePanAndTiltAngle)
{
    View moved = inFocus();
    moved.pan = 7.5; // an eighth of the picture's 60 degrees
    moved.tilt = 3.75;
    const QImage plain = frameOf(inFocus());
    const QImage frame = frameOf(moved);
    const int right = size.width() / 8;
    const int up = size.width() / 16;
    const QSize common(size.width() - right, size.height() - up);
    EXPECT_LT(
        difference(plain.copy({ QPoint(right, 0), common }), frame.copy({ QPoint(0, up), common })),
        2);
}

TEST(Frame, ZoomNarrowsTheField)
{
    View tele = inFocus();
    tele.angle = 30;
    const QImage middle =
        frameOf(inFocus())
            .copy(size.width() / 4, size.height() / 4, size.width() / 2, size.height() / 2)
            .scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    EXPECT_LT(difference(middle, frameOf(tele)), 12);
    EXPECT_GT(difference(frameOf(inFocus()), frameOf(tele)), 25);
}

TEST(Frame, IsBlurredOutOfFocusTheMoreTheFarther)
{
    View near = inFocus();
    near.focus = 0.8;
    View nearer = inFocus();
    nearer.focus = 1.2;
    EXPECT_LT(detail(frameOf(near)), 0.7 * detail(frameOf(inFocus())));
    EXPECT_LT(detail(frameOf(nearer)), detail(frameOf(near)));
}

TEST(Frame, TheMenuCoversItsCornerAndNothingElse)
{
    View menu = inFocus();
    menu.menu = true;
    const QImage frame = frameOf(menu);
    const QImage plain = frameOf(inFocus());
    const QRect corner(0, 0, size.width() / 2, size.height() * 2 / 3);
    const QRect rest(size.width() / 2, 0, size.width() / 2, size.height());
    EXPECT_GT(difference(frame.copy(corner), plain.copy(corner)), 20);
    EXPECT_EQ(frame.copy(rest), plain.copy(rest));
}

} // namespace virtual_camera
