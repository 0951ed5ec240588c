// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

// What a camera does by itself: it focuses and frames.

#include <gtest/gtest.h>

#include <cmath>
#include <vector>

#include "virtual_camera/viewer/eye.h"

namespace virtual_camera {

namespace {

constexpr double tick = 1.0 / 30;

View at(double pan)
{
    View view;
    view.pan = pan;
    view.focus = 0.9;
    return view;
}

// Lets time pass until nothing is to be done any more; false after ten seconds.
bool settles(Eye &eye)
{
    for (int ticks = 0; ticks < 300 && eye.busy(); ++ticks)
        eye.pass(tick);
    return !eye.busy();
}

} // namespace

TEST(AutoFocus, OvershootsAndSettlesOnWhatIsInTheMiddle)
{
    Eye eye;
    eye.report(at(-12)); // a person at the table, three metres away
    ASSERT_TRUE(settles(eye));
    EXPECT_DOUBLE_EQ(eye.view().focus, 1 / 3.0);

    eye.report(at(-90)); // the wall, at six
    EXPECT_TRUE(eye.busy());
    double nearest = 1;
    while (eye.busy()) {
        eye.pass(tick);
        nearest = std::min(nearest, eye.view().focus);
    }
    EXPECT_LT(nearest, 1 / 6.0 - 0.02);
    EXPECT_DOUBLE_EQ(eye.view().focus, 1 / 6.0);
}

TEST(AutoFocus, LeavesAManualFocusAlone)
{
    Eye eye;
    View manual = at(-12);
    manual.autoFocus = false;
    eye.report(manual);
    EXPECT_FALSE(eye.busy());
    eye.pass(1);
    EXPECT_DOUBLE_EQ(eye.view().focus, 0.9);
}

TEST(AutoFocus, LeavesTheLensWhereItIs)
{
    Eye eye;
    eye.report(at(-12));
    ASSERT_TRUE(settles(eye));
    View manual = at(-12);
    manual.autoFocus = false;
    eye.report(manual);
    EXPECT_DOUBLE_EQ(eye.view().focus, 1 / 3.0);
    manual.focus += 0.1; // the motor moves
    eye.report(manual);
    EXPECT_NEAR(eye.view().focus, 1 / 3.0 + 0.1, 1e-9);
}

TEST(Framing, FindsThePresenterAndFollows)
{
    Eye eye;
    View view = at(-100);
    view.framing = true;
    eye.report(view);
    for (int ticks = 0; ticks < 60; ++ticks)
        eye.pass(tick);
    const double first = eye.view().pan;
    EXPECT_DOUBLE_EQ(first, eye.room().presenter().x());
    EXPECT_LT(eye.view().angle, 30);
    for (int ticks = 0; ticks < 120; ++ticks)
        eye.pass(tick);
    EXPECT_GT(std::abs(eye.view().pan - first), 1);
    EXPECT_DOUBLE_EQ(eye.view().pan, eye.room().presenter().x());
}

TEST(Framing, GivesWayToTheMotorsWhileTheyMove)
{
    Eye eye;
    View view = at(-100);
    view.framing = true;
    eye.report(view);
    eye.pass(2);
    for (view.pan = -99; view.pan < -60; ++view.pan) {
        eye.report(view);
        eye.pass(tick);
    }
    EXPECT_DOUBLE_EQ(eye.view().pan, -61);
    for (int ticks = 0; ticks < 120; ++ticks)
        eye.pass(tick);
    EXPECT_DOUBLE_EQ(eye.view().pan, eye.room().presenter().x());
}

TEST(Framing, GoesBackToWhereTheMotorsPoint)
{
    Eye eye;
    View view = at(-100);
    view.framing = true;
    eye.report(view);
    eye.pass(2);
    view.framing = false;
    eye.report(view);
    EXPECT_TRUE(settles(eye));
    EXPECT_DOUBLE_EQ(eye.view().pan, -100);
    EXPECT_NEAR(eye.view().angle, 60, 1e-9);
}

TEST(Eye, HasNothingToDoWithoutPower)
{
    Eye eye;
    View view = at(-90);
    view.framing = true;
    view.powered = false;
    eye.report(view);
    EXPECT_FALSE(eye.busy());
}

} // namespace virtual_camera
