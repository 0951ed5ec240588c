// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

// What the joystick paints, how often, and the order of what it declares.

#include <QImage>
#include <QMetaMethod>
#include <QPainter>
#include <QPalette>

#include <cmath>
#include <cstdlib>

#include "tests/widgets/joystick_fixture.h"

namespace {

using JoystickPicture = JoystickTest;

TEST_F(JoystickPicture, GroundIsFullyTransparentInEveryColourGroup)
{
    for (const auto group : { QPalette::Active, QPalette::Inactive, QPalette::Disabled }) {
        const QBrush brush = joystick.palette().brush(group, QPalette::Window);
        EXPECT_EQ(brush.style(), Qt::SolidPattern);
        EXPECT_EQ(brush.color(), QColor(0, 255, 0, 0));
    }
    EXPECT_TRUE(joystick.autoFillBackground());
    EXPECT_TRUE(joystick.windowFlags().testFlag(Qt::FramelessWindowHint));
    EXPECT_FALSE(joystick.isWindow() || joystick.hasMouseTracking());
}

// Flat gray inside of a circle of radius 22, untouched outside, and mixed at the edge.
TEST_F(JoystickPicture, PaintsOneFlatGrayDiscWithASmoothEdgeWhereItReportsIt)
{
    const QColor ground(Qt::blue);
    const struct
    {
        QPoint pointer;
        QPoint disc;
    } rows[] = { { { 58, 58 }, { 58, 58 } }, { { 116, 58 }, { 94, 58 } },
        { { 0, 0 }, { 32, 32 } } };
    for (const auto &row : rows) {
        pressAndPaint(row.pointer);
        QImage image(joystick.size(), QImage::Format_ARGB32);
        image.fill(ground);
        joystick.render(&image, QPoint(), QRegion(), QWidget::DrawWindowBackground);
        int mixed = 0;
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x) {
                // Pixel (x, y) covers the unit square right of and below that point.
                const double distance = std::hypot(x + 0.5 - row.disc.x(), y + 0.5 - row.disc.y());
                const QColor colour = image.pixelColor(x, y);
                if (distance < 21.2) {
                    ASSERT_EQ(colour, QColor(0xa0, 0xa0, 0xa4)) << x << ", " << y;
                } else if (distance > 22.8) {
                    ASSERT_EQ(colour, ground) << x << ", " << y;
                }
                mixed += colour != ground && colour != QColor(Qt::gray) ? 1 : 0;
            }
        }
        EXPECT_GT(mixed, 40);
        release();
    }
}

// Repaints during a drag: every second move event of the process.

class JoystickRepaints : public JoystickTest
{
protected:
    void SetUp() override
    {
        JoystickTest::SetUp();
        joystick.installEventFilter(&counter);
    }

    /// Whether this is followed by a repaint of the joystick.
    bool repaints(const std::function<void()> &action)
    {
        const int before = counter.repaints;
        action();
        paintDue();
        return counter.repaints > before;
    }
    bool moveRepaints(const QPoint &place)
    {
        return repaints([&] { mouse::move(&joystick, place); });
    }

    struct Counter : QObject
    {
        bool eventFilter(QObject *watched, QEvent *event) override
        {
            repaints += event->type() == QEvent::Paint ? 1 : 0;
            return QObject::eventFilter(watched, event);
        }
        int repaints = 0;
    } counter;
};

using JoystickRepaintsDeathTest = JoystickRepaints;

TEST_F(JoystickRepaintsDeathTest, FirstMoveOfAProcessDoesNotRepaintAndTheSecondDoes)
{
    testing::FLAGS_gtest_death_test_style = "threadsafe";
    EXPECT_EXIT(
        {
            pressAndPaint({ 58, 58 });
            const bool first = moveRepaints({ 60, 58 });
            const bool second = moveRepaints({ 62, 58 });
            std::_Exit((first ? 2 : 0) + (second ? 1 : 0));
        },
        testing::ExitedWithCode(1), "");
}

TEST_F(JoystickRepaints, CountOfMovesGoesOnOverPressReleaseAndOtherJoysticks)
{
    RockerHandle other(&panel);
    bool next = !moveRepaints({ 60, 58 });
    for (int round = 0; round < 4; ++round) {
        EXPECT_TRUE(repaints([this] { mouse::press(&joystick, { 58, 58 }); }));
        EXPECT_EQ(moveRepaints({ 60 + round, 58 }), next);
        EXPECT_EQ(moveRepaints({ 70 + round, 58 }), !next);
        EXPECT_EQ(moveRepaints({ 80 + round, 58 }), next);
        EXPECT_TRUE(repaints([this] { release(); }));
        if (round % 2 == 0)
            mouse::move(&other, { 50, 50 });
        else
            next = !next;
    }
}

TEST_F(JoystickRepaints, ReportLagsByTheMoveThatWasNotPainted)
{
    pressAndPaint({ 58, 58 });
    while (!moveRepaints({ 58, 58 })) { }
    ASSERT_FALSE(moveRepaints({ 116, 58 }));
    EXPECT_EQ(Probe::mousePoint(joystick), QPoint(116, 58));
    EXPECT_EQ(reportNow(), (Report{ 4, 0, 0 }));
    ASSERT_TRUE(moveRepaints({ 58, 116 }));
    EXPECT_EQ(reportNow(), (Report{ 7, 0, 7 }));
    release();
}

TEST(JoystickInterface, DeclaresItsSignalsAndSlotsInTheirOrder)
{
    const QMetaObject &meta = RockerHandle::staticMetaObject;
    EXPECT_STREQ(meta.superClass()->className(), "QWidget");
    const char *const signatures[] = { "keyNumchanged(int)", "Speed_Pan(int)", "Speed_Tilt(int)",
        "SpeedChange()", "getKeyNum()" };
    ASSERT_EQ(meta.methodCount() - meta.methodOffset(), 5);
    for (int index = 0; index < 5; ++index) {
        const QMetaMethod method = meta.method(meta.methodOffset() + index);
        EXPECT_STREQ(method.methodSignature().constData(), signatures[index]);
        const bool isSignal = index < 3;
        EXPECT_EQ(method.methodType(), isSignal ? QMetaMethod::Signal : QMetaMethod::Slot);
        EXPECT_EQ(method.access(), isSignal ? QMetaMethod::Public : QMetaMethod::Private);
        EXPECT_EQ(method.parameterNames(), isSignal ? QByteArrayList{ "num" } : QByteArrayList());
    }
}

} // namespace
