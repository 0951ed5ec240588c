// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

// The joystick at a logical resolution of 96 dots per inch. The disc and the grid of the reports
// grow with it, the form's 116 × 116 pixels do not: the grid's centre is at (77, 77), and the rest
// position reports up and left.

#include "tests/widgets/joystick_fixture.h"

namespace {

using JoystickAt96Dpi = JoystickTest;

TEST_F(JoystickAt96Dpi, ConstantsGrowWithTheResolution)
{
    ASSERT_DOUBLE_EQ(Probe::dpiScale(joystick), 96.0 / 72.0);
    EXPECT_EQ(RockerHandle(nullptr).size(), QSize(133, 133));
    EXPECT_EQ(Probe::mousePoint(RockerHandle(nullptr)), QPoint(66, 66));
    EXPECT_EQ(Probe::handleRadius(joystick), 29);
    EXPECT_EQ(Probe::baseRadius(joystick), 58) << "the form's size does not grow";
    reportNow();
    EXPECT_EQ(Probe::keyLow(joystick), 70);
    EXPECT_EQ(Probe::keyHigh(joystick), 84);
}

TEST_F(JoystickAt96Dpi, ReportsFromTheConstantCentreNotFromThePaintedOne)
{
    const struct
    {
        QPoint pointer;
        QPoint handle;
        Report report;
    } rows[] = {
        { { 58, 58 }, { 58, 58 }, { 0, 2, 2 } },
        { { 87, 58 }, { 58, 58 }, { 0, 2, 2 } }, // the travel circle's radius is 29
        { { 88, 58 }, { 87, 58 }, { 2, 1, 2 } },
        { { 0, 58 }, { 29, 58 }, { 0, 7, 2 } },
        { { 58, 116 }, { 58, 87 }, { 6, 2, 1 } },
        { { 100, 100 }, { 78, 78 }, { 4, 0, 0 } },
    };
    for (const auto &row : rows) {
        pressAndPaint(row.pointer);
        EXPECT_EQ(reportNow(), row.report) << row.pointer.x() << ", " << row.pointer.y();
        EXPECT_EQ(handle(), row.handle);
        release();
    }
}

TEST_F(JoystickAt96Dpi, DiscThatIsLargerThanTheWidgetRestsInTheMiddle)
{
    joystick.resize(40, 40);
    paintDue();
    EXPECT_EQ(handle(), QPoint(20, 20));
}

} // namespace
