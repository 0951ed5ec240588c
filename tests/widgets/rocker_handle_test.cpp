// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

// What the joystick reports, and when, at a logical resolution of 72 dots per inch, for which the
// panel is laid out.

#include <QElapsedTimer>

#include <cmath>

#include "tests/widgets/joystick_fixture.h"

namespace {

TEST_F(JoystickTest, StartsAtItsSizeAndScale)
{
    EXPECT_DOUBLE_EQ(Probe::dpiScale(joystick), 1.0);
    EXPECT_EQ(RockerHandle(nullptr).size(), QSize(100, 100));
    EXPECT_EQ(Probe::mousePoint(RockerHandle(nullptr)), QPoint(50, 50));
    EXPECT_EQ(Probe::handleRadius(joystick), 22);
    EXPECT_EQ(Probe::baseRadius(joystick), 58);
    EXPECT_EQ(Probe::centerPoint(joystick), QPoint(58, 58));
    reportNow();
    EXPECT_EQ(Probe::keyLow(joystick), 53);
    EXPECT_EQ(Probe::keyHigh(joystick), 63);
    for (const QTimer *timer : { Probe::keyTimer(joystick), Probe::speedTimer(joystick) }) {
        EXPECT_EQ(timer->timerType(), Qt::PreciseTimer);
        EXPECT_FALSE(timer->isActive());
        EXPECT_EQ(timer->parent(), &joystick);
    }
}

TEST_F(JoystickTest, PressedOrDraggedToAPlaceReportsItsDirectionAndLevels)
{
    const struct
    {
        QPoint pointer;
        QPoint handle;
        Report report;
    } rows[] = {
        { { 58, 58 }, { 58, 58 }, { 4, 0, 0 } },
        { { 70, 58 }, { 58, 58 }, { 4, 0, 0 } },
        { { 94, 58 }, { 58, 58 }, { 4, 0, 0 } },
        { { 95, 58 }, { 94, 58 }, { 5, 7, 0 } },
        { { 116, 58 }, { 94, 58 }, { 5, 7, 0 } },
        { { 200, 58 }, { 94, 58 }, { 5, 7, 0 } },
        { { 5000, 58 }, { 94, 58 }, { 5, 7, 0 } },
        { { 58, 0 }, { 58, 22 }, { 1, 0, 7 } },
        { { 0, 58 }, { 22, 58 }, { 3, 7, 0 } },
        { { 58, 116 }, { 58, 94 }, { 7, 0, 7 } },
        { { 0, 0 }, { 32, 32 }, { 0, 5, 5 } },
        { { -50, -50 }, { 32, 32 }, { 0, 5, 5 } },
        { { 100, 100 }, { 83, 83 }, { 8, 5, 5 } },
        // The corners and both ends of the middle bands.
        { { 116, 0 }, { 83, 32 }, { 2, 5, 5 } },
        { { 0, 116 }, { 32, 83 }, { 6, 5, 5 } },
        { { 110, 66 }, { 93, 63 }, { 8, 7, 1 } },
        { { 110, 65 }, { 93, 62 }, { 5, 7, 0 } },
        { { 110, 52 }, { 93, 53 }, { 2, 7, 1 } },
        { { 110, 53 }, { 93, 54 }, { 5, 7, 0 } },
        { { 52, 110 }, { 53, 93 }, { 6, 1, 7 } },
    };
    for (const auto &row : rows) {
        for (const bool dragged : { false, true }) {
            SCOPED_TRACE(testing::PrintToString(row.pointer) + (dragged ? " dragged" : " pressed"));
            mouse::press(&joystick, dragged ? QPoint(58, 58) : row.pointer);
            for (int moves = 0; dragged && moves < 2; ++moves) // one of two moves repaints
                mouse::move(&joystick, row.pointer);
            paintDue();
            EXPECT_EQ(reportNow(), row.report);
            EXPECT_EQ(handle(), row.handle);
            release();
        }
    }
}

TEST_F(JoystickTest, RestsInTheWholeTravelCircleAndStandsOnItsRimBeyond)
{
    int moved = 0;
    for (int y = -10; y < 126; y += 2) {
        for (int x = -10; x < 126; x += 2) {
            pressAndPaint(QPoint(x, y));
            const bool inside = (x - 58) * (x - 58) + (y - 58) * (y - 58) <= 36 * 36;
            const double out = std::hypot(handle().x() - 58, handle().y() - 58);
            ASSERT_NEAR(out, inside ? 0.0 : 36.0, inside ? 0.0 : 1.42) << x << ", " << y;
            const Report report = reportNow();
            ASSERT_EQ(report == (Report{ 4, 0, 0 }), inside) << x << ", " << y;
            ASSERT_TRUE(report[0] >= 0 && report[0] <= 8 && report[1] <= 7 && report[2] <= 7);
            moved += inside ? 0 : 1;
        }
    }
    EXPECT_GT(moved, 1000);
    release();
}

TEST_F(JoystickTest, RoundsThePointerToTheNearestPixel)
{
    mouse::press(&joystick, { 94.4, 58.4 });
    EXPECT_EQ(Probe::mousePoint(joystick), QPoint(94, 58));
    mouse::move(&joystick, { 94.5, 57.6 });
    EXPECT_EQ(Probe::mousePoint(joystick), QPoint(95, 58));
    release();
}

TEST_F(JoystickTest, ReportsEvery100MillisecondsWhileHeldChangedOrNot)
{
    std::vector<qint64> times;
    QElapsedTimer clock;
    QObject::connect(&joystick, &RockerHandle::keyNumchanged, &joystick,
        [&](int) { times.push_back(clock.elapsed()); });
    clock.start();
    pressAndPaint({ 116, 58 });
    EXPECT_TRUE(Probe::pressed(joystick));
    EXPECT_EQ(lastReport(), (Report{ -1, -1, -1 })) << "nothing at the press itself";
    for (const QTimer *timer : { Probe::keyTimer(joystick), Probe::speedTimer(joystick) }) {
        EXPECT_TRUE(timer->isActive());
        EXPECT_EQ(timer->interval(), 100);
        EXPECT_FALSE(timer->isSingleShot());
    }
    ASSERT_TRUE(QTest::qWaitFor([&] { return times.size() == 5 && pans.size() >= 5; }));
    // The toolkit's coarse timers keep to 5 %; a busy machine only ever makes them late.
    for (std::size_t tick = 0; tick < times.size(); ++tick)
        EXPECT_GE(times[tick], 95 * static_cast<qint64>(tick + 1) - 5) << "tick " << tick;
    EXPECT_EQ(pans.size(), tilts.size());
    EXPECT_LE(std::abs(pans.size() - directions.size()), 1);
    for (int tick = 0; tick < 5; ++tick) {
        EXPECT_EQ(directions[tick].at(0).toInt(), 5);
        EXPECT_EQ(pans[tick].at(0).toInt(), 7);
        EXPECT_EQ(tilts[tick].at(0).toInt(), 0);
    }
    release();
}

TEST_F(JoystickTest, ReportsPanBeforeTiltAndKeepsTheTiltLevel)
{
    std::string order;
    QObject::connect(&joystick, &RockerHandle::Speed_Pan, &joystick, [&](int) { order += "pan "; });
    QObject::connect(&joystick, &RockerHandle::Speed_Tilt, &joystick, [&](int level) {
        order += "tilt";
        EXPECT_EQ(lastTiltLevel, level);
    });
    pressAndPaint({ 58, 0 });
    lastTiltLevel = -1;
    EXPECT_EQ(reportNow(), (Report{ 1, 0, 7 }));
    EXPECT_EQ(order, "pan tilt");
    EXPECT_EQ(lastTiltLevel, 7);
    release();
}

TEST_F(JoystickTest, AnyButtonsReleaseEndsTheTicksThenReportsTheStopOnce)
{
    const struct
    {
        Qt::MouseButton button;
        Qt::MouseButtons stillHeld;
    } rows[] = { { Qt::LeftButton, Qt::NoButton }, { Qt::RightButton, Qt::NoButton },
        { Qt::MiddleButton, Qt::NoButton }, { Qt::BackButton, Qt::NoButton },
        { Qt::LeftButton, Qt::RightButton } };
    bool ended = false;
    QObject::connect(&joystick, &RockerHandle::keyNumchanged, &joystick, [&](int) {
        ended = !Probe::keyTimer(joystick)->isActive() && !Probe::speedTimer(joystick)->isActive()
            && !Probe::pressed(joystick) && Probe::mousePoint(joystick) == QPoint(58, 58);
    });
    for (const auto &row : rows) {
        SCOPED_TRACE(row.button);
        mouse::press(&joystick, { 0, 58 }, row.button);
        EXPECT_EQ(nextReport(), (Report{ 3, 7, 0 }));
        mouse::move(&joystick, { 58, 0 }, row.button);
        mouse::move(&joystick, { 58, 0 }, row.button);
        EXPECT_EQ(nextReport(), (Report{ 1, 0, 7 }));
        forgetReports();
        mouse::release(&joystick, { 58, 0 }, row.button, row.stillHeld);
        EXPECT_TRUE(ended) << "before the stop is reported";
        EXPECT_EQ(lastReport(), (Report{ 4, -1, -1 }));
        EXPECT_EQ(directions.size(), 1);
        EXPECT_EQ(handle(), QPoint(58, 22)) << "the disc moves when it is painted";
        paintDue();
        EXPECT_EQ(handle(), QPoint(58, 58));
    }
}

TEST_F(JoystickTest, ShortPressReportsOnlyTheStop)
{
    mouse::press(&joystick, { 116, 58 });
    mouse::release(&joystick, { 116, 58 });
    EXPECT_EQ(lastReport(), (Report{ 4, -1, -1 }));
    EXPECT_EQ(directions.size(), 1);
}

TEST_F(JoystickTest, CentreIsHalfTheSmallerSideOnBothAxesOnceItIsPainted)
{
    for (const QSize &size :
        { QSize(150, 116), QSize(116, 151), QSize(101, 130), QSize(300, 116) }) {
        joystick.resize(size);
        mouse::press(&joystick, { 90, 58 });
        release();
        EXPECT_EQ(Probe::mousePoint(joystick), QPoint(size.width() / 2, size.height() / 2));
        paintDue();
        const int half = std::min(size.width(), size.height()) / 2;
        EXPECT_EQ(Probe::mousePoint(joystick), QPoint(half, half));
        EXPECT_EQ(handle(), QPoint(half, half));
        EXPECT_EQ(Probe::baseRadius(joystick), half);
    }
}

TEST_F(JoystickTest, MeasuresDistancesIn32BitIntegers)
{
    EXPECT_DOUBLE_EQ(joystick.Pointdis(1, 2, 4, 6), 5.0);
    EXPECT_DOUBLE_EQ(joystick.Pointdis(4, 6, 1, 2), 5.0);
    EXPECT_DOUBLE_EQ(joystick.Pointdis(58, 58, 59, 59), std::sqrt(2.0));
    EXPECT_DOUBLE_EQ(joystick.Pointdis(0, 0, 65536, 3), 3.0) << "65536 squared wraps to 0";
    pressAndPaint({ 61, 62 });
    EXPECT_DOUBLE_EQ(Probe::pointerDistance(joystick), 5.0);
    release();
}

} // namespace
