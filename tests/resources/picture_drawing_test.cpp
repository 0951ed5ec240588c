// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

#include <QDir>
#include <QFile>
#include <QImage>
#include <QSysInfo>

#include <gtest/gtest.h>

#include <map>

#include "resources/art/alphabet.h"
#include "resources/art/lettering.h"
#include "resources/art/pictures.h"

namespace {

QByteArray committed(const QString &name)
{
    QFile file(QStringLiteral(PICTURE_FOLDER "/") + name);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << qPrintable(name);
    return file.readAll();
}

// The pixels are computed alike everywhere; how they are packed into a PNG is up to the version of
// zlib. The committed files were packed on Debian 12.
bool packsAsCommitted()
{
    return QSysInfo::productType() == QLatin1String("debian")
        && QSysInfo::productVersion() == QLatin1String("12");
}

TEST(PictureDrawing, DrawsEveryFileOfTheFolderOnce)
{
    QStringList drawn;
    for (const art::Picture &picture : art::drawPictures())
        drawn << picture.name;
    drawn.sort();
    QStringList files = QDir(QStringLiteral(PICTURE_FOLDER)).entryList({ "*.png", "*.ico" });
    files.sort();
    EXPECT_EQ(drawn, files);
}

TEST(PictureDrawing, DrawsTheSameBytesAgain)
{
    const std::vector<art::Picture> first = art::drawPictures();
    const std::vector<art::Picture> second = art::drawPictures();
    ASSERT_EQ(first.size(), second.size());
    for (size_t i = 0; i < first.size(); ++i)
        EXPECT_TRUE(first[i].bytes == second[i].bytes) << qPrintable(first[i].name);
}

TEST(PictureDrawing, TheFolderHoldsWhatItsSourcesDraw)
{
    for (const art::Picture &picture : art::drawPictures()) {
        const QByteArray file = committed(picture.name);
        EXPECT_EQ(QImage::fromData(file), QImage::fromData(picture.bytes))
            << qPrintable(picture.name) << " is not what resources/art draws; draw it anew";
        EXPECT_TRUE(file == picture.bytes || !packsAsCommitted())
            << qPrintable(picture.name) << " has other bytes";
    }
}

TEST(Lettering, TextIsAsHighAsItsLettersAndGrowsByEachOfThem)
{
    const art::Style style{ 9, 6, 1.5, 1.3, 2, 1.0 };
    EXPECT_EQ(art::lettered("H", style).height, 9);
    EXPECT_EQ(art::lettered("p", style).height, 12) << "with descender";
    const int one = art::lettered("H", style).width;
    EXPECT_EQ(art::lettered("HH", style).width, 2 * one + style.gap);
}

TEST(Lettering, UprightStrokesFillWholePixels)
{
    const art::Mask letter = art::lettered("H", { 9, 6, 2.0, 1.0, 1, 1.0 });
    const auto cover = [&](int x) { return letter.cover[static_cast<size_t>(letter.width + x)]; };
    EXPECT_EQ(cover(0), 1.0);
    EXPECT_EQ(cover(1), 1.0);
    EXPECT_EQ(cover(2), 0.0);
    EXPECT_EQ(cover(letter.width - 1), 1.0);
}

TEST(Lettering, FittedTextIsNoWiderThanItsPlace)
{
    const art::Style style{ 9, 6, 1.5, 1.3, 1, 1.0 };
    EXPECT_GT(art::lettered("MIRROR", style).width, 33);
    EXPECT_LE(art::lettered("MIRROR", art::fitted("MIRROR", style, 33)).width, 33);
}

TEST(Lettering, ACharacterThatItDoesNotHaveIsRefused)
{
    EXPECT_EQ(art::findLetter('%'), nullptr);
    EXPECT_THROW(art::lettered("%", { 9, 6, 1.5, 1.3, 1, 1.0 }), std::invalid_argument);
}

} // namespace
