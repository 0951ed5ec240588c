// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

// Sliders that are moved without being held, as a screen reader moves them.

#include <QAccessible>
#include <QTest>
#include <QTimer>
#include <QWheelEvent>

#include "desktop/accessible_sliders.h"
#include "desktop/slider_steps.h"
#include "tests/console/image_settings_fixture.h"
#include "tests/console/slider_mouse.h"

namespace {

class SliderSteps : public SettingsTest
{
protected:
    void startFitted(int cameras)
    {
        static const bool installed = (desktop::installAccessibleSliders(), true);
        Q_UNUSED(installed)
        if (cameras > 0)
            startOnRanges(cameras);
        else
            start(0);
        desktop::fitSliders(*window);
    }

    static void step(QSlider *slider, bool up)
    {
        slider->triggerAction(up ? QSlider::SliderSingleStepAdd : QSlider::SliderSingleStepSub);
    }

    /// As a screen reader sets a value.
    static void setByAssistance(QSlider *slider, int value)
    {
        QAccessibleInterface *const seen = QAccessible::queryAccessibleInterface(slider);
        ASSERT_NE(seen, nullptr);
        ASSERT_NE(seen->valueInterface(), nullptr);
        EXPECT_EQ(seen->valueInterface()->currentValue().toInt(), slider->value());
        EXPECT_EQ(seen->valueInterface()->minimumValue().toInt(), slider->minimum());
        EXPECT_EQ(seen->valueInterface()->maximumValue().toInt(), slider->maximum());
        EXPECT_EQ(seen->text(QAccessible::Value), QString::number(slider->value()));
        seen->valueInterface()->setCurrentValue(value);
    }

    QSlider *zoom() { return form().slider_zoom; }
};

TEST_F(SliderSteps, StepNudgesTheZoomAndLetsItGo)
{
    startFitted(1);
    step(zoom(), true);
    EXPECT_GT(zoom()->value(), 45);
    EXPECT_EQ(sent(), Requests{ "zoom_relative 1 1 1" });
    step(zoom(), true);
    EXPECT_EQ(sent(), Requests{ "zoom_relative 1 1 1" });
    ASSERT_TRUE(QTest::qWaitFor([this] { return zoom()->value() == 45; }));
    EXPECT_EQ(sent(), (Requests{ "zoom_relative 0 1 5", "zoom_relative 0 1 5" })) << "once";
    step(zoom(), false);
    EXPECT_EQ(sent(), Requests{ "zoom_relative -1 1 1" });
    ASSERT_TRUE(QTest::qWaitFor([this] { return zoom()->value() == 45; }));
    forgetSent();
}

TEST_F(SliderSteps, StepNudgesTheFocusAndLetsItGo)
{
    startFitted(1);
    QSlider *const focus = form().slider_focus;
    click(form().btn_af);
    forgetSent();
    step(focus, true);
    EXPECT_EQ(sent(), Requests{ "focus_relative -1 1" });
    ASSERT_TRUE(QTest::qWaitFor([focus] { return focus->value() == 45; }));
    EXPECT_EQ(sent(), (Requests{ "focus_relative 0 0", "focus_relative 0 0" }));
}

TEST_F(SliderSteps, StepIsNotLetGoWhileTheHandleIsHeld)
{
    startFitted(1);
    step(zoom(), true);
    // Grabbed within the fifth of a second, or the step is let go before; the outcome is the same.
    slider_mouse::grab(zoom());
    slider_mouse::dragTo(zoom(), 90);
    forgetSent();
    QTimer *const pending = zoom()->findChild<QTimer *>();
    ASSERT_NE(pending, nullptr);
    ASSERT_TRUE(QTest::qWaitFor([pending] { return !pending->isActive(); }));
    EXPECT_EQ(zoom()->value(), 90);
    EXPECT_EQ(sent(), Requests());
    slider_mouse::letGo(zoom());
    forgetSent();
}

TEST_F(SliderSteps, LensWithoutACameraSpringsBackAndSendsNothing)
{
    startFitted(0);
    step(zoom(), true);
    EXPECT_GT(zoom()->value(), 45);
    ASSERT_TRUE(QTest::qWaitFor([this] { return zoom()->value() == 45; }));
    EXPECT_EQ(sent(), Requests());
}

TEST_F(SliderSteps, DraggedLensSliderIsNotTouched)
{
    startFitted(1);
    slider_mouse::grab(zoom());
    slider_mouse::dragTo(zoom(), 70);
    EXPECT_FALSE(zoom()->findChild<QTimer *>()->isActive());
    slider_mouse::letGo(zoom());
    EXPECT_FALSE(zoom()->findChild<QTimer *>()->isActive());
    EXPECT_EQ(
        sent(), (Requests{ "zoom_relative 1 1 1", "zoom_relative 0 1 5", "zoom_relative 0 1 5" }));
}

TEST_F(SliderSteps, EachStepOfASettingIsWrittenOnce)
{
    startFitted(1);
    openPanel();
    for (const ImageProperty &row : imageProperties()) {
        const int before = slider(row)->value();
        step(slider(row), true);
        const int after = slider(row)->value();
        EXPECT_NE(after, before);
        EXPECT_EQ(sent(), Requests{ row.written(after) });
        EXPECT_EQ(row.cur, after);
        EXPECT_EQ(shown(row), QString::number(after));
    }
}

TEST_F(SliderSteps, SettingAtItsEndIsNotWrittenAgain)
{
    startFitted(1);
    openPanel();
    for (const ImageProperty &row : imageProperties()) {
        slider(row)->setValue(slider(row)->maximum());
        step(slider(row), true);
        EXPECT_EQ(sent(), Requests()) << row.name;
    }
}

TEST_F(SliderSteps, DraggedSettingIsWrittenOnceForEachMovement)
{
    startFitted(1);
    openPanel();
    for (const ImageProperty &row : imageProperties()) {
        slider_mouse::grab(slider(row));
        forgetSent();
        slider_mouse::dragTo(slider(row), 60);
        EXPECT_EQ(sent(), Requests{ row.written(60) });
        slider_mouse::letGo(slider(row));
    }
}

TEST_F(SliderSteps, LensSetByAnAssistiveProgramIsNudgedAndLetGo)
{
    startFitted(1);
    setByAssistance(zoom(), 80);
    EXPECT_EQ(zoom()->value(), 80);
    EXPECT_EQ(sent(), Requests{ "zoom_relative 1 1 1" });
    ASSERT_TRUE(QTest::qWaitFor([this] { return zoom()->value() == 45; }));
    EXPECT_EQ(sent(), (Requests{ "zoom_relative 0 1 5", "zoom_relative 0 1 5" }));
    setByAssistance(form().slider_focus, 80);
    EXPECT_EQ(form().slider_focus->value(), 45) << "disabled: the focus is automatic";
    EXPECT_EQ(sent(), Requests());
}

TEST_F(SliderSteps, SettingSetByAnAssistiveProgramIsWritten)
{
    startFitted(1);
    openPanel();
    for (const ImageProperty &row : imageProperties()) {
        setByAssistance(slider(row), 55);
        EXPECT_EQ(slider(row)->value(), 55);
        EXPECT_EQ(sent(), Requests{ row.written(55) });
        EXPECT_EQ(row.cur, 55);
        EXPECT_EQ(shown(row), "55");
    }
}

/// With a page step of 0 the toolkit leaves the wheel without effect, camera sliders and lens
/// alike.
TEST_F(SliderSteps, MouseWheelMovesNothing)
{
    startFitted(1);
    openPanel();
    std::vector<QSlider *> sliders = { form().slider_zoom };
    for (const ImageProperty &row : imageProperties())
        sliders.push_back(slider(row));
    for (QSlider *wheeled : sliders) {
        const int before = wheeled->value();
        const QPoint place = wheeled->rect().center();
        QWheelEvent event(place, wheeled->mapToGlobal(place), QPoint(), QPoint(0, 120),
            Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(wheeled, &event);
        EXPECT_EQ(wheeled->value(), before) << wheeled->objectName().toStdString();
    }
    EXPECT_EQ(sent(), Requests());
}

} // namespace
