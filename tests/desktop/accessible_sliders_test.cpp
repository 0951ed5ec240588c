// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

// What a screen reader is told of a slider, and what it may do with it.

#include "desktop/accessible_sliders.h"

#include <QAccessible>
#include <QPushButton>
#include <QSignalSpy>
#include <QSlider>

#include <gtest/gtest.h>

namespace {

class AccessibleSliders : public testing::Test
{
protected:
    AccessibleSliders()
    {
        desktop::installAccessibleSliders();
        slider.setRange(10, 90);
        slider.setSingleStep(5);
        slider.setValue(45);
        slider.setAccessibleName("Zoom");
    }

    QAccessibleInterface *told() { return QAccessible::queryAccessibleInterface(&slider); }

    QSlider slider;
};

TEST_F(AccessibleSliders, TellTheirRangeStepAndValue)
{
    ASSERT_NE(told(), nullptr);
    EXPECT_EQ(told()->role(), QAccessible::Slider);
    QAccessibleValueInterface *const value = told()->valueInterface();
    ASSERT_NE(value, nullptr);
    EXPECT_EQ(value->minimumValue().toInt(), 10);
    EXPECT_EQ(value->maximumValue().toInt(), 90);
    EXPECT_EQ(value->minimumStepSize().toInt(), 5);
    EXPECT_EQ(value->currentValue().toInt(), 45);
}

TEST_F(AccessibleSliders, TellTheirNameAndTheirValueInWords)
{
    EXPECT_EQ(told()->text(QAccessible::Name), "Zoom");
    EXPECT_EQ(told()->text(QAccessible::Value), "45");
}

TEST_F(AccessibleSliders, HaveNoTextToEdit) { EXPECT_EQ(told()->textInterface(), nullptr); }

TEST_F(AccessibleSliders, MoveByAStepAsFarAsTheyAreTold)
{
    const QSignalSpy steps(&slider, &QSlider::actionTriggered);
    told()->valueInterface()->setCurrentValue(70);
    EXPECT_EQ(slider.sliderPosition(), 70);
    EXPECT_EQ(steps.count(), 1);
}

TEST_F(AccessibleSliders, DoNotMoveWhenTheyAreDisabled)
{
    slider.setEnabled(false);
    told()->valueInterface()->setCurrentValue(70);
    EXPECT_EQ(slider.sliderPosition(), 45);
}

TEST_F(AccessibleSliders, LeaveOtherWidgetsToTheToolkit)
{
    QPushButton button("Mute");
    QAccessibleInterface *const other = QAccessible::queryAccessibleInterface(&button);
    ASSERT_NE(other, nullptr);
    EXPECT_EQ(other->role(), QAccessible::Button);
}

} // namespace
