// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

#include <QImage>
#include <QWidget>

#include <gtest/gtest.h>

#include <string>

#include "tests/resources/form_file.h"

namespace {

QImage picture(const char *name)
{
    return QImage(QStringLiteral(":/img/%1.png").arg(QLatin1String(name)))
        .convertToFormat(QImage::Format_ARGB32);
}

QRect placeOf(const char *form, const char *widget)
{
    const QRect place = readForm(QLatin1String(form)).geometry.value(QLatin1String(widget));
    EXPECT_FALSE(place.isEmpty()) << widget;
    return place;
}

void expectBlackKey(const char *background, const char *form, const char *widget)
{
    const QImage ground = picture(background);
    const QRect key = placeOf(form, widget);
    for (int y = key.top(); y <= key.bottom(); ++y) {
        for (int x = key.left(); x <= key.right(); ++x)
            ASSERT_EQ(ground.pixel(x, y), 0xff000000) << widget << " at " << x << ", " << y;
    }
    const int middle = key.center().x();
    EXPECT_NE(ground.pixel(middle, key.bottom() + 1), 0xff000000) << widget << ": lower edge";
    EXPECT_NE(ground.pixel(middle, key.top() - 1), 0xff000000) << widget << ": upper edge";
    EXPECT_NE(ground.pixel(key.left() - 1, key.center().y()), 0xff000000) << widget;
    EXPECT_NE(ground.pixel(key.right() + 1, key.center().y()), 0xff000000) << widget;
}

// The rectangle around all bright pixels inside the button.
QRect signUnder(const QImage &ground, const QRect &rect)
{
    QRect sign;
    for (int y = rect.top(); y <= rect.bottom(); ++y) {
        for (int x = rect.left(); x <= rect.right(); ++x) {
            if (qGray(ground.pixel(x, y)) > 140)
                sign |= QRect(x, y, 1, 1);
        }
    }
    return sign;
}

TEST(PicturePlaces, EveryKeyStandsBlackUnderItsButtonAndEndsWhereItEnds)
{
    for (const char *key : { "btn_af", "btn_ai", "btn_push", "btn_num1", "btn_num2", "btn_num3",
             "btn_num4", "btn_num5", "btn_num6", "btn_num7", "btn_num8", "btn_num9", "btn_set",
             "btn_num0", "btn_clear", "btn_flip", "btn_home", "btn_mirror" })
        expectBlackKey("background", "main_window.ui", key);
    expectBlackKey("setting_background", "main_window.ui", "btn_default");
    expectBlackKey("setting_background", "main_window.ui", "btn_ok");
    expectBlackKey("no_device", "no_device.ui", "btn_quit");
    expectBlackKey("no_device", "no_device.ui", "btn_ok");
    expectBlackKey("no_more_camera", "no_mord_camera.ui", "btn_ok");
}

TEST(PicturePlaces, ButtonsWithoutAFaceHaveTheirSignInTheBackground)
{
    const QImage ground = picture("background");
    for (const char *button : { "btn_min", "btn_close", "btn_setting" }) {
        const QRect place = placeOf("main_window.ui", button);
        const QRect sign = signUnder(ground, place);
        EXPECT_GE(sign.width(), 9) << button;
        EXPECT_NEAR(QRectF(sign).center().x(), QRectF(place).center().x(), 0.6) << button;
        EXPECT_TRUE(place.adjusted(1, 1, -1, -1).contains(sign)) << button;
    }
    const QRect setting = placeOf("main_window.ui", "btn_setting");
    EXPECT_NEAR(QRectF(signUnder(ground, setting)).center().y(), QRectF(setting).center().y(), 0.6);
}

// A label lies on the middle of its cap: as far from the left edge as from the right one.
TEST(PicturePlaces, EveryCameraLabelStandsInTheMiddleOfItsCap)
{
    const QImage ground = picture("background");
    for (int camera = 1; camera <= 5; ++camera) {
        const std::string number = std::to_string(camera);
        const QRect button = placeOf("main_window.ui", ("btn_cam" + number).c_str());
        const QImage label = picture(("cam" + number + "_black").c_str());
        QRect ink;
        for (int y = 0; y < label.height(); ++y) {
            for (int x = 0; x < label.width(); ++x) {
                if (qAlpha(label.pixel(x, y)) > 100)
                    ink |= QRect(x, y, 1, 1);
            }
        }
        ink.translate(button.x() + (button.width() - label.width()) / 2, button.y() + 21);
        const auto isCap = [&](int x) {
            return ground.valid(x, 410) && qGray(ground.pixel(x, 410)) > 150;
        };
        int left = 0;
        int right = 0;
        while (isCap(ink.left() - left - 1))
            ++left;
        while (isCap(ink.right() + right + 1))
            ++right;
        EXPECT_NEAR(left, right, 2) << "camera " << camera;
    }
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
