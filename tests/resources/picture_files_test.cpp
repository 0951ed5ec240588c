// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

#include <QDataStream>
#include <QDir>
#include <QFile>
#include <QImage>
#include <QImageReader>
#include <QResource>

#include <gtest/gtest.h>

#include <array>

namespace {

struct Entry
{
    const char *name;
    int width;
    int height;
};

constexpr std::array<Entry, 46> pngPictures{ {
    { "background.png", 326, 436 },
    { "setting_background.png", 327, 436 },
    { "0.png", 7, 9 },
    { "1.png", 5, 9 },
    { "2.png", 6, 9 },
    { "3.png", 7, 9 },
    { "4.png", 7, 9 },
    { "5.png", 7, 9 },
    { "6.png", 7, 9 },
    { "7.png", 7, 9 },
    { "8.png", 7, 9 },
    { "9.png", 7, 9 },
    { "Set.png", 18, 9 },
    { "Clear.png", 30, 9 },
    { "clear.png", 30, 9 },
    { "AF.png", 16, 9 },
    { "MF.png", 17, 9 },
    { "Framing.png", 44, 11 },
    { "Manual.png", 40, 9 },
    { "Push.png", 27, 9 },
    { "Flip.png", 19, 11 },
    { "HOME.png", 36, 9 },
    { "Mirror.png", 33, 9 },
    { "Default.png", 42, 10 },
    { "OK.png", 17, 10 },
    { "Quit.png", 26, 12 },
    { "mute.png", 20, 13 },
    { "no_mute.png", 20, 13 },
    { "top.png", 17, 17 },
    { "no_top.png", 17, 17 },
    { "cam1_black.png", 37, 10 },
    { "cam1_green.png", 37, 10 },
    { "cam2_black.png", 39, 10 },
    { "cam2_green.png", 39, 10 },
    { "cam3_black.png", 39, 10 },
    { "cam3_green.png", 39, 10 },
    { "cam4_black.png", 39, 10 },
    { "cam4_green.png", 39, 10 },
    { "cam5_black.png", 40, 10 },
    { "cam5_green.png", 40, 10 },
    { "slider_af.png", 23, 15 },
    { "slider_bg.png", 149, 8 },
    { "slider_button.png", 23, 15 },
    { "slider_now.png", 50, 5 },
    { "no_device.png", 326, 187 },
    { "no_more_camera.png", 326, 187 },
} };

const QString icon = QStringLiteral("min_img.ico");

QByteArray contents(const QString &path)
{
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << qPrintable(path);
    return file.readAll();
}

QStringList names()
{
    QStringList result{ icon };
    for (const Entry &entry : pngPictures)
        result << entry.name;
    result.sort();
    return result;
}

TEST(PictureFiles, EveryPngHasItsSize)
{
    for (const Entry &entry : pngPictures) {
        const QImage image(QStringLiteral(":/img/") + entry.name);
        EXPECT_EQ(image.size(), QSize(entry.width, entry.height)) << entry.name;
    }
}

TEST(PictureFiles, EveryPngStoresRedGreenBlueAndAlphaInEightBitsEach)
{
    for (const Entry &entry : pngPictures) {
        const QByteArray bytes = contents(QStringLiteral(":/img/") + entry.name);
        ASSERT_GT(bytes.size(), 26) << entry.name;
        EXPECT_EQ(bytes.mid(12, 4), "IHDR") << entry.name;
        EXPECT_EQ(bytes.at(24), 8) << entry.name << ": bits per channel";
        EXPECT_EQ(bytes.at(25), 6) << entry.name << ": colour type";
    }
}

TEST(PictureFiles, TheCollectionHoldsTheFortySevenPicturesAndNothingElse)
{
    QStringList entries = QDir(QStringLiteral(":/img")).entryList();
    entries.sort();
    EXPECT_EQ(entries.size(), 47);
    EXPECT_EQ(entries, names());
}

TEST(PictureFiles, TheCollectionStoresEveryPictureUncompressedAndUnchanged)
{
    for (const QString &name : names()) {
        const QResource resource(QStringLiteral(":/img/") + name);
        ASSERT_TRUE(resource.isValid()) << qPrintable(name);
        EXPECT_EQ(resource.compressionAlgorithm(), QResource::NoCompression) << qPrintable(name);
        EXPECT_EQ(contents(resource.absoluteFilePath()),
            contents(QStringLiteral(PICTURE_FOLDER "/") + name))
            << qPrintable(name);
    }
}

TEST(PictureFiles, BothSpellingsOfClearAreTheSamePicture)
{
    EXPECT_EQ(
        contents(QStringLiteral(":/img/Clear.png")), contents(QStringLiteral(":/img/clear.png")));
}

TEST(PictureFiles, TheIconListsItsFiveSizesAtThirtyTwoBitsPerPixel)
{
    const QByteArray bytes = contents(QStringLiteral(":/img/") + icon);
    QDataStream in(bytes);
    in.setByteOrder(QDataStream::LittleEndian);
    quint16 reserved = 0;
    quint16 type = 0;
    quint16 count = 0;
    in >> reserved >> type >> count;
    EXPECT_EQ(type, 1);
    ASSERT_EQ(count, 5);
    for (const int side : { 16, 24, 32, 48, 256 }) {
        quint8 width = 0;
        quint8 height = 0;
        quint8 colours = 0;
        quint8 unused = 0;
        quint16 planes = 0;
        quint16 depth = 0;
        quint32 length = 0;
        quint32 offset = 0;
        in >> width >> height >> colours >> unused >> planes >> depth >> length >> offset;
        EXPECT_EQ(width, side % 256);
        EXPECT_EQ(height, side % 256);
        EXPECT_EQ(depth, 32) << side;
        EXPECT_LE(offset + length, static_cast<quint32>(bytes.size())) << side;
    }
}

TEST(PictureFiles, TheToolkitReadsAllSizesOfTheIcon)
{
    QImageReader reader(QStringLiteral(":/img/") + icon);
    QVector<int> sides;
    for (int i = 0; i < reader.imageCount(); ++i) {
        ASSERT_TRUE(reader.jumpToImage(i));
        const QImage image = reader.read();
        EXPECT_TRUE(image.hasAlphaChannel());
        EXPECT_EQ(image.width(), image.height());
        EXPECT_LT(qAlpha(image.pixel(0, 0)), 128) << "the corner is rounded";
        EXPECT_EQ(qAlpha(image.pixel(image.width() / 2, image.height() / 2)), 255);
        sides << image.width();
    }
    EXPECT_EQ(sides, (QVector<int>{ 16, 24, 32, 48, 256 }));
}

} // namespace
