// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

// Repaints during a drag: every second move event is painted, and what is reported is what was
// painted.

#include <QEvent>

#include <cstdlib>

#include "tests/widgets/joystick_fixture.h"

namespace {

class JoystickRepaints : public JoystickTest
{
protected:
    void SetUp() override
    {
        JoystickTest::SetUp();
        joystick.installEventFilter(&counter);
    }

    /// Whether this one move event is followed by a repaint.
    bool moveRepaints(const QPoint &place)
    {
        const int before = counter.repaints;
        mouse::move(&joystick, place);
        paintDue();
        return counter.repaints > before;
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

// A process of its own: the count goes on from one joystick to the next.
TEST_F(JoystickRepaintsDeathTest, FirstMoveAfterTheStartDoesNotRepaintAndTheSecondDoes)
{
    testing::FLAGS_gtest_death_test_style = "threadsafe";
    EXPECT_EXIT(
        {
            mouse::press(&joystick, { 58, 58 });
            paintDue();
            const bool first = moveRepaints({ 60, 58 });
            const bool second = moveRepaints({ 62, 58 });
            std::_Exit((first ? 2 : 0) + (second ? 1 : 0));
        },
        testing::ExitedWithCode(1), "");
}

TEST_F(JoystickRepaints, EverySecondMoveRepaints)
{
    mouse::press(&joystick, { 58, 58 });
    paintDue();
    bool previous = moveRepaints({ 58, 60 });
    for (int move = 0; move < 10; ++move) {
        const bool repainted = moveRepaints({ 60 + move, 58 });
        EXPECT_NE(repainted, previous) << "move " << move;
        previous = repainted;
    }
    mouse::release(&joystick, { 58, 58 });
}

TEST_F(JoystickRepaints, PressAndReleaseRepaintButDoNotRestartTheCount)
{
    mouse::press(&joystick, { 58, 58 });
    paintDue();
    const bool first = moveRepaints({ 60, 58 });

    int before = counter.repaints;
    mouse::release(&joystick, { 60, 58 });
    paintDue();
    EXPECT_EQ(counter.repaints, before + 1);

    before = counter.repaints;
    mouse::press(&joystick, { 58, 58 });
    paintDue();
    EXPECT_EQ(counter.repaints, before + 1);

    EXPECT_NE(moveRepaints({ 61, 58 }), first);
    mouse::release(&joystick, { 58, 58 });
}

TEST_F(JoystickRepaints, ReportLagsByTheMoveThatWasNotPainted)
{
    mouse::press(&joystick, { 58, 58 });
    paintDue();
    while (!moveRepaints({ 58, 58 })) { }

    ASSERT_FALSE(moveRepaints({ 116, 58 }));
    EXPECT_EQ(RockerHandleProbe::mousePoint(joystick), QPoint(116, 58));
    EXPECT_EQ(reportNow(), (Report{ 4, 0, 0 }));

    ASSERT_TRUE(moveRepaints({ 58, 116 }));
    EXPECT_EQ(reportNow(), (Report{ 7, 0, 7 }));
    mouse::release(&joystick, { 58, 116 });
}

} // namespace
