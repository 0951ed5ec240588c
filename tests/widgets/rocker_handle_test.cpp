// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

// The joystick at a logical resolution of 72 dots per inch, for which the panel is laid out.

#include <QElapsedTimer>

#include <cmath>
#include <vector>

#include "tests/widgets/joystick_fixture.h"

namespace {

using Probe = RockerHandleProbe;

struct WorkedRow
{
    QPoint pointer;
    QPoint handle;
    Report report;
};

void PrintTo(const WorkedRow &row, std::ostream *stream) { PrintTo(row.pointer, stream); }

class JoystickRow : public JoystickTest, public testing::WithParamInterface<WorkedRow>
{ };

TEST_P(JoystickRow, PressedThereReportsItsDirectionAndLevels)
{
    mouse::press(&joystick, GetParam().pointer);
    EXPECT_EQ(nextReport(), GetParam().report);
    EXPECT_EQ(handle(), GetParam().handle);
    mouse::release(&joystick, GetParam().pointer);
}

TEST_P(JoystickRow, DraggedThereReportsItsDirectionAndLevels)
{
    mouse::press(&joystick, { 58, 58 });
    mouse::move(&joystick, GetParam().pointer);
    mouse::move(&joystick, GetParam().pointer); // one of two moves repaints
    EXPECT_EQ(nextReport(), GetParam().report);
    EXPECT_EQ(handle(), GetParam().handle);
    mouse::release(&joystick, GetParam().pointer);
}

INSTANTIATE_TEST_SUITE_P(WorkedRows, JoystickRow,
    testing::Values(WorkedRow{ { 58, 58 }, { 58, 58 }, { 4, 0, 0 } },
        WorkedRow{ { 70, 58 }, { 58, 58 }, { 4, 0, 0 } },
        WorkedRow{ { 94, 58 }, { 58, 58 }, { 4, 0, 0 } },
        WorkedRow{ { 95, 58 }, { 94, 58 }, { 5, 7, 0 } },
        WorkedRow{ { 116, 58 }, { 94, 58 }, { 5, 7, 0 } },
        WorkedRow{ { 200, 58 }, { 94, 58 }, { 5, 7, 0 } },
        WorkedRow{ { 58, 0 }, { 58, 22 }, { 1, 0, 7 } },
        WorkedRow{ { 0, 58 }, { 22, 58 }, { 3, 7, 0 } },
        WorkedRow{ { 58, 116 }, { 58, 94 }, { 7, 0, 7 } },
        WorkedRow{ { 0, 0 }, { 32, 32 }, { 0, 5, 5 } },
        WorkedRow{ { -50, -50 }, { 32, 32 }, { 0, 5, 5 } },
        WorkedRow{ { 100, 100 }, { 83, 83 }, { 8, 5, 5 } },
        WorkedRow{ { 110, 66 }, { 93, 63 }, { 8, 7, 1 } },
        WorkedRow{ { 110, 65 }, { 93, 62 }, { 5, 7, 0 } },
        // The corners and the lower ends of the middle bands, which the rows above leave out.
        WorkedRow{ { 116, 0 }, { 83, 32 }, { 2, 5, 5 } },
        WorkedRow{ { 0, 116 }, { 32, 83 }, { 6, 5, 5 } },
        WorkedRow{ { 110, 52 }, { 93, 53 }, { 2, 7, 1 } },
        WorkedRow{ { 110, 53 }, { 93, 54 }, { 5, 7, 0 } },
        WorkedRow{ { 52, 110 }, { 53, 93 }, { 6, 1, 7 } }));

TEST_F(JoystickTest, RunsAtTheResolutionThatThePanelIsLaidOutFor)
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
}

TEST_F(JoystickTest, RestsInTheWholeTravelCircleAndStandsOnItsRimBeyond)
{
    mouse::press(&joystick, { 58, 58 });
    int moved = 0;
    for (int y = -10; y < 126; y += 2) {
        for (int x = -10; x < 126; x += 2) {
            mouse::press(&joystick, QPoint(x, y));
            paintDue();
            const bool inside = (x - 58) * (x - 58) + (y - 58) * (y - 58) <= 36 * 36;
            const double out = std::hypot(handle().x() - 58, handle().y() - 58);
            ASSERT_NEAR(out, inside ? 0.0 : 36.0, inside ? 0.0 : 1.42) << x << ", " << y;
            ASSERT_EQ(reportNow() == (Report{ 4, 0, 0 }), inside) << x << ", " << y;
            moved += inside ? 0 : 1;
        }
    }
    EXPECT_GT(moved, 1000);
    mouse::release(&joystick, { 58, 58 });
}

TEST_F(JoystickTest, EveryReportLiesInTheGridAndOnTheScaleOfLevels)
{
    for (int degrees = 0; degrees < 360; ++degrees) {
        const double angle = degrees * M_PI / 180;
        mouse::press(&joystick, { 58 + 100 * std::cos(angle), 58 + 100 * std::sin(angle) });
        paintDue();
        const Report report = reportNow();
        ASSERT_TRUE(report.direction >= 0 && report.direction <= 8 && report.direction != 4)
            << degrees;
        ASSERT_TRUE(report.pan >= 0 && report.pan <= 7) << degrees;
        ASSERT_TRUE(report.tilt >= 0 && report.tilt <= 7) << degrees;
    }
    mouse::release(&joystick, { 58, 58 });
}

TEST_F(JoystickTest, DraggedFarOutReportsAsAtItsEdge)
{
    mouse::press(&joystick, { 58, 58 });
    mouse::move(&joystick, { 5000, 58 });
    mouse::move(&joystick, { 5000, 58 });
    EXPECT_EQ(nextReport(), (Report{ 5, 7, 0 }));
    mouse::release(&joystick, { 5000, 58 });
}

TEST_F(JoystickTest, RoundsThePointerToTheNearestPixel)
{
    mouse::press(&joystick, { 94.4, 58.4 });
    EXPECT_EQ(Probe::mousePoint(joystick), QPoint(94, 58));
    mouse::move(&joystick, { 94.5, 57.6 });
    EXPECT_EQ(Probe::mousePoint(joystick), QPoint(95, 58));
    mouse::release(&joystick, { 58, 58 });
}

TEST_F(JoystickTest, PressReportsNothingBeforeTheFirstTick)
{
    mouse::press(&joystick, { 116, 58 });
    paintDue();
    EXPECT_TRUE(directions.isEmpty());
    EXPECT_TRUE(pans.isEmpty());
    EXPECT_TRUE(tilts.isEmpty());
    EXPECT_TRUE(Probe::pressed(joystick));
    mouse::release(&joystick, { 116, 58 });
}

TEST_F(JoystickTest, ReportsEvery100MillisecondsWhileHeld)
{
    QTimer *const ticks[] = { Probe::keyTimer(joystick), Probe::speedTimer(joystick) };
    for (const QTimer *timer : ticks) {
        EXPECT_FALSE(timer->isActive());
        EXPECT_EQ(timer->parent(), &joystick);
    }

    std::vector<qint64> times;
    QElapsedTimer clock;
    QObject::connect(&joystick, &RockerHandle::keyNumchanged, &joystick,
        [&](int) { times.push_back(clock.elapsed()); });
    clock.start();
    mouse::press(&joystick, { 116, 58 });
    for (const QTimer *timer : ticks) {
        EXPECT_TRUE(timer->isActive());
        EXPECT_EQ(timer->interval(), 100);
        EXPECT_FALSE(timer->isSingleShot());
    }
    ASSERT_TRUE(QTest::qWaitFor([&] { return times.size() == 5 && pans.size() >= 5; }));

    // The toolkit's coarse timers keep to 5 %; a busy machine only ever makes them late.
    for (size_t tick = 0; tick < times.size(); ++tick)
        EXPECT_GE(times[tick], 95 * static_cast<qint64>(tick + 1) - 5) << "tick " << tick;
    EXPECT_EQ(pans.size(), tilts.size());
    EXPECT_LE(std::abs(pans.size() - directions.size()), 1);
    mouse::release(&joystick, { 116, 58 });
}

TEST_F(JoystickTest, HeldStillInTheCentreReportsStandstillOnEveryTick)
{
    mouse::press(&joystick, { 58, 58 });
    for (int tick = 0; tick < 3; ++tick)
        EXPECT_EQ(nextReport(), (Report{ 4, 0, 0 }));
    mouse::release(&joystick, { 58, 58 });
}

TEST_F(JoystickTest, RepeatsItsReportOnEveryTickAlsoWhenNothingChanged)
{
    mouse::press(&joystick, { 58, 116 });
    ASSERT_TRUE(QTest::qWaitFor([this] { return directions.size() == 3 && tilts.size() >= 3; }));
    for (const QList<QVariant> &report : qAsConst(directions))
        EXPECT_EQ(report.at(0).toInt(), 7);
    mouse::release(&joystick, { 58, 116 });
}

TEST_F(JoystickTest, ReportsPanBeforeTiltAndKeepsTheTiltLevel)
{
    std::vector<QChar> order;
    QObject::connect(
        &joystick, &RockerHandle::Speed_Pan, &joystick, [&](int) { order.push_back('p'); });
    QObject::connect(&joystick, &RockerHandle::Speed_Tilt, &joystick, [&](int level) {
        order.push_back('t');
        EXPECT_EQ(lastTiltLevel, level);
    });
    mouse::press(&joystick, { 58, 0 });
    paintDue();
    lastTiltLevel = -1;
    EXPECT_EQ(reportNow(), (Report{ 1, 0, 7 }));
    EXPECT_EQ(order, (std::vector<QChar>{ 'p', 't' }));
    EXPECT_EQ(lastTiltLevel, 7);
    mouse::release(&joystick, { 58, 0 });
}

TEST_F(JoystickTest, ShortPressReportsOnlyTheStop)
{
    mouse::press(&joystick, { 116, 58 });
    mouse::release(&joystick, { 116, 58 });
    ASSERT_EQ(directions.size(), 1);
    EXPECT_EQ(last(directions), 4);
    EXPECT_TRUE(pans.isEmpty());
    EXPECT_TRUE(tilts.isEmpty());
}

TEST_F(JoystickTest, ReleaseStopsTheTicksAndReportsTheStopOnce)
{
    mouse::press(&joystick, { 116, 58 });
    nextReport();
    directions.clear();
    pans.clear();
    tilts.clear();
    bool ticking = true;
    QObject::connect(&joystick, &RockerHandle::keyNumchanged, &joystick,
        [&](int) { ticking = Probe::keyTimer(joystick)->isActive(); });
    mouse::release(&joystick, { 116, 58 });
    EXPECT_FALSE(ticking) << "the ticks end before the stop is reported";
    EXPECT_FALSE(Probe::speedTimer(joystick)->isActive());
    EXPECT_FALSE(Probe::pressed(joystick));
    ASSERT_EQ(directions.size(), 1);
    EXPECT_EQ(last(directions), 4);
    EXPECT_TRUE(pans.isEmpty());
    EXPECT_TRUE(tilts.isEmpty());
}

TEST_F(JoystickTest, ReturnsToTheCentreAtThePaintAfterTheRelease)
{
    mouse::press(&joystick, { 116, 58 });
    paintDue();
    ASSERT_EQ(handle(), QPoint(94, 58));
    mouse::release(&joystick, { 116, 58 });
    EXPECT_EQ(Probe::mousePoint(joystick), QPoint(58, 58));
    EXPECT_EQ(handle(), QPoint(94, 58)) << "it moves when it is painted";
    paintDue();
    EXPECT_EQ(handle(), QPoint(58, 58));
    EXPECT_EQ(reportNow(), (Report{ 4, 0, 0 }));
}

class JoystickButton : public JoystickTest, public testing::WithParamInterface<Qt::MouseButton>
{ };

TEST_P(JoystickButton, DrivesTheJoystick)
{
    mouse::press(&joystick, { 0, 58 }, GetParam());
    EXPECT_EQ(nextReport(), (Report{ 3, 7, 0 }));
    mouse::move(&joystick, { 58, 0 }, GetParam());
    mouse::move(&joystick, { 58, 0 }, GetParam());
    EXPECT_EQ(nextReport(), (Report{ 1, 0, 7 }));
    directions.clear();
    mouse::release(&joystick, { 58, 0 }, GetParam());
    EXPECT_EQ(last(directions), 4);
}

INSTANTIATE_TEST_SUITE_P(AnyButton, JoystickButton,
    testing::Values(Qt::LeftButton, Qt::RightButton, Qt::MiddleButton, Qt::BackButton));

TEST_F(JoystickTest, CentreIsHalfTheSmallerSideOnBothAxes)
{
    joystick.resize(150, 116);
    paintDue();
    EXPECT_EQ(handle(), QPoint(58, 58));
    EXPECT_EQ(Probe::baseRadius(joystick), 58);
    joystick.resize(116, 151);
    paintDue();
    EXPECT_EQ(handle(), QPoint(58, 58));
    joystick.resize(101, 130);
    paintDue();
    EXPECT_EQ(handle(), QPoint(50, 50));
    EXPECT_EQ(Probe::baseRadius(joystick), 50);
}

TEST_F(JoystickTest, MeasuresDistancesIn32BitIntegers)
{
    EXPECT_DOUBLE_EQ(joystick.Pointdis(1, 2, 4, 6), 5.0);
    EXPECT_DOUBLE_EQ(joystick.Pointdis(4, 6, 1, 2), 5.0);
    EXPECT_DOUBLE_EQ(joystick.Pointdis(58, 58, 59, 59), std::sqrt(2.0));
    EXPECT_DOUBLE_EQ(joystick.Pointdis(0, 0, 65536, 3), 3.0) << "65536 squared wraps to 0";
    mouse::press(&joystick, { 61, 62 });
    paintDue();
    EXPECT_DOUBLE_EQ(Probe::pointerDistance(joystick), 5.0);
    mouse::release(&joystick, { 61, 62 });
}

TEST_F(JoystickTest, WaitsInTheCentreOfTheCircleNotOfTheWidget)
{
    joystick.resize(300, 116);
    mouse::press(&joystick, { 250, 58 });
    mouse::release(&joystick, { 250, 58 });
    EXPECT_EQ(Probe::mousePoint(joystick), QPoint(150, 58));
    paintDue();
    EXPECT_EQ(Probe::mousePoint(joystick), QPoint(58, 58));
    EXPECT_EQ(handle(), QPoint(58, 58));
}

} // namespace
