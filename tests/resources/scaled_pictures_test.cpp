// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

#include <QDir>
#include <QIcon>
#include <QImage>
#include <QPainter>

#include <gtest/gtest.h>

#include "resources/img/scaled_pictures.h"

// CTest runs this program with a scale factor of 2.
namespace {

TEST(ScaledPictures, LieBesideThePlainOnesOnceTheyAreRegistered)
{
    const QStringList plain = QDir(QStringLiteral(":/img")).entryList();
    ASSERT_EQ(plain.size(), 47);
    registerScaledPictures();
    const QDir folder(QStringLiteral(":/img"));
    EXPECT_EQ(folder.entryList().size(), 47 + 2 * 46);
    for (const QString &name : plain.filter(QStringLiteral(".png"))) {
        const QSize size = QImage(folder.filePath(name)).size();
        for (const int scale : { 2, 3 }) {
            const QString scaled = name.chopped(4) + QStringLiteral("@%1x.png").arg(scale);
            const QImage image(folder.filePath(scaled));
            EXPECT_EQ(image.size(), size * scale) << qPrintable(scaled);
            EXPECT_EQ(image.format(), QImage::Format_ARGB32) << qPrintable(scaled);
        }
    }
}

TEST(ScaledPictures, AreDrawnInThePlaceOfThePlainOnes)
{
    registerScaledPictures();
    QIcon icon(QStringLiteral(":/img/Set.png"));
    EXPECT_EQ(icon.actualSize({ 70, 26 }), QSize(18, 9));

    QImage key(140, 52, QImage::Format_ARGB32_Premultiplied);
    key.setDevicePixelRatio(2);
    key.fill(Qt::transparent);
    QPainter painter(&key);
    icon.paint(&painter, { 0, 0, 70, 26 });
    painter.end();
    const QImage expected(QStringLiteral(":/img/Set@2x.png"));
    const QImage drawn =
        key.copy({ QPoint(52, 18), expected.size() }).convertToFormat(QImage::Format_ARGB32);
    for (int y = 0; y < expected.height(); ++y) {
        for (int x = 0; x < expected.width(); ++x)
            ASSERT_NEAR(qAlpha(drawn.pixel(x, y)), qAlpha(expected.pixel(x, y)), 1)
                << x << ", " << y;
    }
}

} // namespace
