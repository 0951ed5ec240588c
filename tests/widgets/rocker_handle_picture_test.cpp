// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

// What the joystick paints, and the order of what it declares.

#include <QImage>
#include <QMetaMethod>
#include <QPainter>
#include <QPalette>

#include <cmath>

#include "tests/widgets/joystick_fixture.h"

namespace {

TEST_F(JoystickTest, GroundIsFullyTransparentInEveryColourGroup)
{
    for (const auto group : { QPalette::Active, QPalette::Inactive, QPalette::Disabled }) {
        const QBrush brush = joystick.palette().brush(group, QPalette::Window);
        EXPECT_EQ(brush.style(), Qt::SolidPattern);
        EXPECT_EQ(brush.color(), QColor(0, 255, 0, 0));
    }
    EXPECT_TRUE(joystick.autoFillBackground());
    EXPECT_TRUE(joystick.windowFlags().testFlag(Qt::FramelessWindowHint));
    EXPECT_FALSE(joystick.isWindow());
    EXPECT_FALSE(joystick.hasMouseTracking());
}

/// What the joystick paints over a ground of one colour.
QImage picture(RockerHandle *joystick, const QColor &ground)
{
    QImage image(joystick->size(), QImage::Format_ARGB32);
    image.fill(ground);
    QPainter painter(&image);
    joystick->render(&painter, QPoint(), QRegion(), QWidget::DrawWindowBackground);
    return image;
}

/// Flat gray inside of a circle of radius 22 around `middle`, untouched outside; the pixels of the
/// edge itself are mixed.
void expectOnlyDisc(const QImage &image, const QPoint &middle, const QColor &ground)
{
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            // Pixel (x, y) covers the unit square right of and below that point.
            const double distance = std::hypot(x + 0.5 - middle.x(), y + 0.5 - middle.y());
            if (distance < 21.2) {
                ASSERT_EQ(image.pixelColor(x, y), QColor(0xa0, 0xa0, 0xa4)) << x << ", " << y;
            } else if (distance > 22.8) {
                ASSERT_EQ(image.pixelColor(x, y), ground) << x << ", " << y;
            }
        }
    }
}

TEST_F(JoystickTest, PaintsOneFlatGrayDiscInItsCentre)
{
    expectOnlyDisc(picture(&joystick, Qt::magenta), { 58, 58 }, Qt::magenta);
}

TEST_F(JoystickTest, PaintsTheDiscWhereItReportsIt)
{
    mouse::press(&joystick, { 116, 58 });
    expectOnlyDisc(picture(&joystick, Qt::blue), { 94, 58 }, Qt::blue);
    mouse::press(&joystick, { 0, 0 });
    expectOnlyDisc(picture(&joystick, Qt::blue), { 32, 32 }, Qt::blue);
    mouse::release(&joystick, { 0, 0 });
}

TEST_F(JoystickTest, DiscHasASmoothEdge)
{
    const QImage image = picture(&joystick, Qt::magenta);
    int mixed = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            const QColor colour = image.pixelColor(x, y);
            mixed += colour != QColor(Qt::magenta) && colour != QColor(Qt::gray) ? 1 : 0;
        }
    }
    EXPECT_GT(mixed, 40);
}

TEST(JoystickInterface, SignalsAndSlotsStandInTheirOrder)
{
    const QMetaObject &meta = RockerHandle::staticMetaObject;
    const struct
    {
        const char *signature;
        QMetaMethod::MethodType type;
        QMetaMethod::Access access;
    } expected[] = {
        { "keyNumchanged(int)", QMetaMethod::Signal, QMetaMethod::Public },
        { "Speed_Pan(int)", QMetaMethod::Signal, QMetaMethod::Public },
        { "Speed_Tilt(int)", QMetaMethod::Signal, QMetaMethod::Public },
        { "SpeedChange()", QMetaMethod::Slot, QMetaMethod::Private },
        { "getKeyNum()", QMetaMethod::Slot, QMetaMethod::Private },
    };
    ASSERT_EQ(meta.methodCount() - meta.methodOffset(), 5);
    int index = meta.methodOffset();
    for (const auto &row : expected) {
        const QMetaMethod method = meta.method(index++);
        EXPECT_STREQ(method.methodSignature().constData(), row.signature);
        EXPECT_EQ(method.methodType(), row.type) << row.signature;
        EXPECT_EQ(method.access(), row.access) << row.signature;
        if (row.type == QMetaMethod::Signal) {
            EXPECT_EQ(method.parameterNames(), QList<QByteArray>{ "num" }) << row.signature;
        }
    }
    EXPECT_STREQ(meta.superClass()->className(), "QWidget");
}

} // namespace
