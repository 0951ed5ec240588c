// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

#include <QImage>
#include <QRect>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <vector>

#include "resources/art/layout.h"

namespace {

// What small text needs to be read by people with moderately low vision (WCAG 2, level AA).
constexpr double readable = 4.5;

QImage picture(const QString &name)
{
    return QImage(QStringLiteral(":/img/%1.png").arg(name)).convertToFormat(QImage::Format_ARGB32);
}

double luminance(QRgb colour)
{
    const auto linear = [](int level) {
        const double value = level / 255.0;
        return value <= 0.03928 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(qRed(colour)) + 0.7152 * linear(qGreen(colour))
        + 0.0722 * linear(qBlue(colour));
}

double contrast(QRgb a, QRgb b)
{
    const double la = luminance(a);
    const double lb = luminance(b);
    return (std::max(la, lb) + 0.05) / (std::min(la, lb) + 0.05);
}

QRgb over(QRgb top, QRgb below)
{
    const double alpha = qAlpha(top) / 255.0;
    const auto mixed = [alpha](int a, int b) {
        return static_cast<int>(std::lround(a * alpha + b * (1 - alpha)));
    };
    return qRgb(mixed(qRed(top), qRed(below)), mixed(qGreen(top), qGreen(below)),
        mixed(qBlue(top), qBlue(below)));
}

double median(std::vector<double> values)
{
    if (values.empty())
        return 0.0;
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

// The contrast of a picture centred on a button against the ground that the button lies on:
// of the middle one of its inked pixels, softened edges included.
double faceContrast(const QString &face, const QString &ground, const art::Place &button)
{
    const QImage top = picture(face);
    const QImage below = picture(ground);
    const QPoint offset(
        button.x + (button.width - top.width()) / 2, button.y + (button.height - top.height()) / 2);
    std::vector<double> ratios;
    for (int y = 0; y < top.height(); ++y) {
        for (int x = 0; x < top.width(); ++x) {
            const QRgb groundPixel = below.pixel(offset + QPoint(x, y));
            const QRgb shown = over(top.pixel(x, y), groundPixel);
            if (qAlpha(top.pixel(x, y)) >= 64)
                ratios.push_back(contrast(shown, groundPixel));
        }
    }
    EXPECT_GT(ratios.size(), 8U) << qPrintable(face);
    return median(ratios);
}

// The same for a label that is part of a background picture. The rectangle leaves a margin of
// plain ground around the label.
double labelContrast(const QString &ground, const QRect &rect)
{
    const QImage image = picture(ground);
    const QRgb plain = image.pixel(rect.topLeft());
    std::vector<double> ratios;
    for (int y = rect.top(); y <= rect.bottom(); ++y) {
        for (int x = rect.left(); x <= rect.right(); ++x) {
            const double ratio = contrast(image.pixel(x, y), plain);
            if (ratio > 1.5)
                ratios.push_back(ratio);
        }
    }
    EXPECT_GT(ratios.size(), 20U) << "no label at " << rect.x() << ", " << rect.y();
    return median(ratios);
}

struct FaceOnKey
{
    const char *face;
    const char *ground;
    art::Place button;
};

std::vector<FaceOnKey> keyFaces()
{
    const char *const initial[] = { "AF", "Framing", "Push", "1", "2", "3", "4", "5", "6", "7", "8",
        "9", "Set", "0", "Clear", "Flip", "HOME", "Mirror" };
    std::vector<FaceOnKey> faces;
    for (size_t i = 0; i < art::keys.size(); ++i)
        faces.push_back({ initial[i], "background", art::keys[i] });
    faces.push_back({ "MF", "background", art::keys[0] });
    faces.push_back({ "Manual", "background", art::keys[1] });
    faces.push_back({ "Default", "setting_background", art::defaults });
    faces.push_back({ "OK", "setting_background", art::settingsOk });
    faces.push_back({ "Quit", "no_device", art::noticeQuit });
    faces.push_back({ "OK", "no_device", art::noticeOk });
    faces.push_back({ "OK", "no_more_camera", art::onlyNoticeOk });
    return faces;
}

TEST(PictureContrast, EveryKeysFaceReadsOnItsKey)
{
    for (const FaceOnKey &face : keyFaces()) {
        const double ratio = faceContrast(face.face, face.ground, face.button);
        EXPECT_GE(ratio, readable) << face.face;
    }
}

TEST(PictureContrast, BothStatesOfTheWindowsTogglesReadOnThePanel)
{
    const art::Place mute{ "btn_mute", 184, 12, 20, 13 };
    const art::Place top{ "btn_top", 218, 10, 17, 17 };
    for (const char *face : { "mute", "no_mute" })
        EXPECT_GE(faceContrast(face, "background", mute), readable) << face;
    for (const char *face : { "top", "no_top" })
        EXPECT_GE(faceContrast(face, "background", top), readable) << face;
}

TEST(PictureContrast, BlackAndGreenCameraLabelsReadOnTheirKeycaps)
{
    for (size_t i = 0; i < art::cameraButtons.size(); ++i) {
        for (const char *colour : { "black", "green" }) {
            const QString face = QStringLiteral("cam%1_%2").arg(i + 1).arg(QLatin1String(colour));
            const double ratio = faceContrast(face, "background", art::cameraButtons[i]);
            EXPECT_GE(ratio, readable) << qPrintable(face);
        }
    }
}

TEST(PictureContrast, EveryLabelOnThePanelsReads)
{
    struct Label
    {
        const char *text;
        const char *ground;
        QRect rect;
    };
    const std::vector<Label> labels{
        { "PTZ CONTROL", "background", { 31, 10, 90, 12 } },
        { "minimise", "background", { 250, 8, 21, 16 } },
        { "close", "background", { 282, 8, 21, 16 } },
        { "gear", "background", { 296, 361, 19, 19 } },
        { "ZOOM", "background", { 222, 31, 30, 10 } },
        { "TELE", "background", { 225, 42, 24, 8 } },
        { "WIDE", "background", { 225, 171, 24, 8 } },
        { "FOCUS slider", "background", { 273, 31, 32, 10 } },
        { "FAR", "background", { 279, 42, 20, 8 } },
        { "NEAR", "background", { 278, 171, 22, 8 } },
        { "FOCUS key", "background", { 50, 187, 36, 8 } },
        { "AUTO FRAMING", "background", { 130, 187, 68, 8 } },
        { "FRAMING OFF", "background", { 226, 187, 66, 8 } },
        { "PRESETS", "background", { 13, 255, 8, 54 } },
        { "SET + DIGIT", "background", { 31, 373, 80, 8 } },
        { "DIGIT RECALLS", "background", { 130, 373, 66, 8 } },
        { "CLEAR + DIGIT", "background", { 205, 373, 88, 8 } },
        { "up", "background", { 92, 62, 16, 12 } },
        { "IMAGE SETTINGS", "setting_background", { 31, 10, 110, 12 } },
        { "BACKLIGHT", "setting_background", { 10, 37, 80, 10 } },
        { "COMPENSATION", "setting_background", { 10, 48, 78, 9 } },
        { "GAMMA", "setting_background", { 10, 79, 80, 10 } },
        { "CONTRAST", "setting_background", { 10, 122, 80, 10 } },
        { "SATURATION", "setting_background", { 10, 165, 80, 10 } },
        { "BRIGHTNESS", "setting_background", { 10, 207, 80, 10 } },
        { "SHARPNESS", "setting_background", { 10, 251, 80, 10 } },
        { "WHITE BALANCE", "setting_background", { 10, 294, 80, 10 } },
        { "TEMPERATURE", "setting_background", { 10, 305, 78, 9 } },
        { "ANTI-FLICKER", "setting_background", { 140, 335, 82, 10 } },
        { "No camera is connected", "no_device", { 60, 86, 206, 14 } },
        { "its advice", "no_device", { 50, 109, 226, 13 } },
        { "This camera position is empty", "no_more_camera", { 40, 86, 246, 16 } },
        { "its advice", "no_more_camera", { 50, 109, 226, 13 } },
    };
    for (const Label &label : labels) {
        const double ratio = labelContrast(label.ground, label.rect);
        EXPECT_GE(ratio, readable) << label.text;
    }
}

// How much of the picture is inked, whatever its colour.
std::vector<int> ink(const QString &name)
{
    const QImage image = picture(name);
    std::vector<int> cover;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x)
            cover.push_back(qAlpha(image.pixel(x, y)));
    }
    return cover;
}

TEST(PictureContrast, TheSelectedCameraStandsOutWithoutColour)
{
    for (int camera = 1; camera <= 5; ++camera) {
        const QString name = QStringLiteral("cam%1_").arg(camera);
        double black = 0;
        double green = 0;
        for (const int cover : ink(name + "black"))
            black += cover;
        for (const int cover : ink(name + "green"))
            green += cover;
        EXPECT_GT(green, 1.3 * black) << "camera " << camera << " is bolder when selected";
    }
}

TEST(PictureContrast, BothStatesOfEachToggleDifferInShape)
{
    const std::vector<std::pair<const char *, const char *>> pairs{ { "mute", "no_mute" },
        { "top", "no_top" }, { "AF", "MF" }, { "Framing", "Manual" } };
    for (const auto &[on, off] : pairs) {
        const std::vector<int> a = ink(on);
        const std::vector<int> b = ink(off);
        if (a.size() != b.size())
            continue; // other letters, other width
        double different = 0;
        for (size_t i = 0; i < a.size(); ++i)
            different += std::abs(a[i] - b[i]) > 127 ? 1 : 0;
        EXPECT_GT(different, 20) << on;
    }
}

} // namespace
