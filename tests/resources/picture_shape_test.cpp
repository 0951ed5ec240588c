// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

#include <QImage>

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <numeric>
#include <utility>
#include <vector>

namespace {

// How much of each pixel is inked, whatever the colour, from the ink's own upper left corner on:
// the same sign in another colour or place has the same shape.
std::vector<int> ink(const QString &name)
{
    constexpr int side = 50;
    const QImage image(QStringLiteral(":/img/%1.png").arg(name));
    int left = side;
    int top = side;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (qAlpha(image.pixel(x, y)) > 0) {
                left = std::min(left, x);
                top = std::min(top, y);
            }
        }
    }
    std::vector<int> cover(static_cast<size_t>(side * side));
    for (int y = top; y < image.height(); ++y) {
        for (int x = left; x < image.width(); ++x)
            cover[static_cast<size_t>((y - top) * side + x - left)] = qAlpha(image.pixel(x, y));
    }
    return cover;
}

TEST(PictureShapes, BothStatesOfEachToggleDifferInShape)
{
    const std::vector<std::pair<const char *, const char *>> pairs{ { "mute", "no_mute" },
        { "top", "no_top" }, { "AF", "MF" }, { "Framing", "Manual" } };
    for (const auto &[one, other] : pairs) {
        const std::vector<int> a = ink(QLatin1String(one));
        const std::vector<int> b = ink(QLatin1String(other));
        int different = 0;
        for (size_t i = 0; i < a.size(); ++i)
            different += std::abs(a[i] - b[i]) > 127 ? 1 : 0;
        EXPECT_GT(different, 20) << one << " and " << other;
    }
}

TEST(PictureShapes, TheSelectedCameraIsBolderThanTheOthers)
{
    for (int camera = 1; camera <= 5; ++camera) {
        const QString name = QStringLiteral("cam%1_").arg(camera);
        const std::vector<int> black = ink(name + "black");
        const std::vector<int> green = ink(name + "green");
        EXPECT_GT(std::accumulate(green.begin(), green.end(), 0),
            1.3 * std::accumulate(black.begin(), black.end(), 0))
            << "camera " << camera;
    }
}

} // namespace
