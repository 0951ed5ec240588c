// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

#include <QImage>
#include <QWidget>

#include <gtest/gtest.h>

#include "resources/art/layout.h"
#include "tests/resources/form_file.h"

namespace {

QImage picture(const char *name)
{
    return QImage(QStringLiteral(":/img/%1.png").arg(QLatin1String(name)))
        .convertToFormat(QImage::Format_ARGB32);
}

QRect rectOf(const art::Place &place) { return { place.x, place.y, place.width, place.height }; }

template<typename Places> void expectPlaces(const FormFile &form, const Places &places)
{
    for (const art::Place &place : places)
        EXPECT_EQ(form.geometry.value(place.widget), rectOf(place)) << place.widget;
}

void expectBlackKey(const QImage &ground, const art::Place &place)
{
    const QRect key = rectOf(place);
    for (int y = key.top(); y <= key.bottom(); ++y) {
        for (int x = key.left(); x <= key.right(); ++x)
            ASSERT_EQ(ground.pixel(x, y), 0xff000000) << place.widget << " at " << x << ", " << y;
    }
    const int middle = key.center().x();
    EXPECT_NE(ground.pixel(middle, key.bottom() + 1), 0xff000000) << place.widget << ": lower edge";
    EXPECT_NE(ground.pixel(middle, key.top() - 1), 0xff000000) << place.widget << ": upper edge";
    EXPECT_NE(ground.pixel(key.left() - 1, key.center().y()), 0xff000000) << place.widget;
    EXPECT_NE(ground.pixel(key.right() + 1, key.center().y()), 0xff000000) << place.widget;
}

// The rectangle around all bright pixels inside the button.
QRect signUnder(const QImage &ground, const art::Place &button)
{
    QRect sign;
    const QRect rect = rectOf(button);
    for (int y = rect.top(); y <= rect.bottom(); ++y) {
        for (int x = rect.left(); x <= rect.right(); ++x) {
            if (qGray(ground.pixel(x, y)) > 140)
                sign |= QRect(x, y, 1, 1);
        }
    }
    return sign;
}

TEST(PicturePlaces, AgreeWithTheWindowsForm)
{
    const FormFile form = readForm(QStringLiteral("main_window.ui"));
    expectPlaces(form, art::keys);
    expectPlaces(form, art::cameraButtons);
    expectPlaces(form, art::settingSliders);
    expectPlaces(form,
        std::initializer_list<art::Place>{ art::minimise, art::close, art::setting, art::joystick,
            art::zoom, art::focus, art::antiFlicker, art::defaults, art::settingsOk });
}

TEST(PicturePlaces, AgreeWithTheNoticesForms)
{
    expectPlaces(readForm(QStringLiteral("no_device.ui")),
        std::initializer_list<art::Place>{ art::noticeQuit, art::noticeOk });
    expectPlaces(readForm(QStringLiteral("no_mord_camera.ui")),
        std::initializer_list<art::Place>{ art::onlyNoticeOk });
}

TEST(PicturePlaces, EveryKeyStandsBlackUnderItsButtonAndEndsWhereItEnds)
{
    for (const art::Place &key : art::keys)
        expectBlackKey(picture("background"), key);
    expectBlackKey(picture("setting_background"), art::defaults);
    expectBlackKey(picture("setting_background"), art::settingsOk);
    expectBlackKey(picture("no_device"), art::noticeQuit);
    expectBlackKey(picture("no_device"), art::noticeOk);
    expectBlackKey(picture("no_more_camera"), art::onlyNoticeOk);
}

TEST(PicturePlaces, ButtonsWithoutAFaceHaveTheirSignInTheBackground)
{
    const QImage ground = picture("background");
    for (const art::Place &button : { art::minimise, art::close, art::setting }) {
        const QRect sign = signUnder(ground, button);
        EXPECT_GE(sign.width(), 9) << button.widget;
        EXPECT_NEAR(QRectF(sign).center().x(), button.centreX(), 0.6) << button.widget;
        EXPECT_TRUE(rectOf(button).adjusted(1, 1, -1, -1).contains(sign)) << button.widget;
    }
    EXPECT_NEAR(QRectF(signUnder(ground, art::setting)).center().y(), art::setting.centreY(), 0.6);
}

TEST(PicturePlaces, CornersOfPanelsAndNoticesAreRoundAndClean)
{
    for (const char *name : { "background", "setting_background", "no_device", "no_more_camera" }) {
        const QImage image = picture(name);
        const int right = image.width() - 1;
        const int bottom = image.height() - 1;
        // On the diagonal the arc of radius 32 passes 9.4 pixels from both edges.
        for (const bool mirrored : { false, true }) {
            for (const bool flipped : { false, true }) {
                const auto alpha = [&](int x, int y) {
                    return qAlpha(image.pixel(mirrored ? right - x : x, flipped ? bottom - y : y));
                };
                EXPECT_EQ(alpha(0, 0), 0) << name;
                EXPECT_EQ(alpha(8, 8), 0) << name;
                EXPECT_GT(alpha(9, 9), 0) << name;
                EXPECT_LT(alpha(9, 9), 255) << name << ": the edge is smooth";
                EXPECT_EQ(alpha(10, 10), 255) << name;
                EXPECT_EQ(alpha(32, 0), 255) << name;
                EXPECT_EQ(alpha(0, 32), 255) << name;
            }
        }
    }
}

// The style draws a border of two pixels and centres the picture inside of it.
void expectPictureUnmoved(const char *panel, const char *name)
{
    const QImage image = picture(name);
    QWidget window;
    window.setStyleSheet(readForm(QStringLiteral("main_window.ui")).styleSheet);
    QWidget ground(&window);
    ground.setObjectName(QLatin1String(panel));
    ground.setAttribute(Qt::WA_StyledBackground);
    ground.resize(image.size());
    const QImage shown = ground.grab().toImage().convertToFormat(QImage::Format_ARGB32);
    for (int y = 40; y < image.height() - 40; ++y) {
        for (int x = 2; x < image.width() - 2; ++x)
            ASSERT_EQ(shown.pixel(x, y), image.pixel(x, y)) << panel << " at " << x << ", " << y;
    }
    EXPECT_EQ(QColor(shown.pixel(0, 200)), QColor(Qt::darkGray).rgb()) << "the border";
}

TEST(PicturePlaces, TheStyleShowsBothBackgroundsUnmoved)
{
    expectPictureUnmoved("Win_Left", "background");
    expectPictureUnmoved("Win_Right", "setting_background");
}

} // namespace
