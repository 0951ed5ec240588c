// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

// What a screen reader sees of sliders and choices, and what the camera gets when it moves them.

#include "desktop/accessibility.h"

#include <QAccessible>
#include <QComboBox>
#include <QSignalSpy>
#include <QTest>

#include "desktop/hold_guard.h"
#include "tests/console/image_settings_fixture.h"
#include "tests/console/slider_mouse.h"

namespace {

const std::string tele = "zoom_relative 1 1 1";
const std::string zoomStop = "zoom_relative 0 1 5";

class Accessibility : public SettingsTest
{
protected:
    void startFitted(int cameras)
    {
        desktop::exposeSliders();
        if (cameras > 0)
            startOnRanges(cameras);
        else
            start(0);
        guard = std::make_unique<desktop::HoldGuard>(*window,
            std::vector<QAbstractButton *>{ form().btn_cam1, form().btn_cam2 },
            std::vector<QSlider *>{ form().slider_zoom, form().slider_focus });
    }

    static QAccessibleValueInterface *exposed(QSlider *slider)
    {
        return QAccessible::queryAccessibleInterface(slider)->valueInterface();
    }
    /// As a screen reader sets a value.
    static void set(QSlider *slider, int value) { exposed(slider)->setCurrentValue(value); }

    QSlider *zoom() { return form().slider_zoom; }
    bool springsBack(QSlider *slider)
    {
        return QTest::qWaitFor([slider] { return slider->value() == 45; });
    }

    std::unique_ptr<desktop::HoldGuard> guard;
};

TEST_F(Accessibility, ChoiceIsLabelledByItsAccessibleName)
{
    QWidget other;
    QComboBox choice(&other);
    choice.setAccessibleName("Anti-flicker");
    desktop::labelChoice(choice);
    other.show();
    const auto labels =
        QAccessible::queryAccessibleInterface(&choice)->relations(QAccessible::Label);
    ASSERT_EQ(labels.size(), 1);
    EXPECT_EQ(labels.first().first->text(QAccessible::Name), QString("Anti-flicker"));
    EXPECT_TRUE(labels.first().first->state().invisible);
}

TEST_F(Accessibility, SliderIsASliderWithARangeAStepAValueAndAName)
{
    startFitted(0);
    zoom()->setRange(10, 90);
    zoom()->setSingleStep(5);
    QAccessibleInterface *const seen = QAccessible::queryAccessibleInterface(zoom());
    EXPECT_EQ(seen->role(), QAccessible::Slider);
    EXPECT_EQ(seen->text(QAccessible::Name), zoom()->accessibleName());
    EXPECT_EQ(seen->textInterface(), nullptr);
    EXPECT_EQ(exposed(zoom())->minimumValue().toInt(), 10);
    EXPECT_EQ(exposed(zoom())->maximumValue().toInt(), 90);
    EXPECT_EQ(exposed(zoom())->minimumStepSize().toInt(), 5);
    EXPECT_EQ(exposed(zoom())->currentValue().toInt(), 45);
    EXPECT_EQ(QAccessible::queryAccessibleInterface(form().btn_home)->role(), QAccessible::Button);
}

TEST_F(Accessibility, LensIsNudgedAndReleased)
{
    startFitted(1);
    click(form().btn_af); // the focus is manual
    forgetSent();
    struct Row
    {
        QSlider *slider;
        std::string above, below, stop;
    };
    for (const Row &row : { Row{ zoom(), tele, "zoom_relative -1 1 1", zoomStop },
             Row{ form().slider_focus, "focus_relative -1 1", "focus_relative 1 1",
                 "focus_relative 0 0" } }) {
        set(row.slider, 80);
        set(row.slider, 81);
        EXPECT_EQ(sent(), Requests(2, row.above));
        ASSERT_TRUE(springsBack(row.slider));
        EXPECT_EQ(sent(), Requests(2, row.stop)) << "once";
        set(row.slider, 44);
        EXPECT_EQ(sent(), Requests{ row.below });
        ASSERT_TRUE(springsBack(row.slider));
        EXPECT_EQ(sent(), Requests(2, row.stop));
    }
}

TEST_F(Accessibility, DisabledLensDoesNotMove)
{
    startFitted(1);
    set(form().slider_focus, 80);
    EXPECT_EQ(form().slider_focus->value(), 45);
    EXPECT_EQ(sent(), Requests());
}

TEST_F(Accessibility, LensWithoutACameraSpringsBackAndSendsNothing)
{
    startFitted(0);
    set(zoom(), 80);
    EXPECT_EQ(zoom()->value(), 80);
    ASSERT_TRUE(springsBack(zoom()));
    EXPECT_EQ(sent(), Requests());
}

TEST_F(Accessibility, EachSliderIsReleasedByItself)
{
    startFitted(1);
    openPanel();
    set(zoom(), 80);
    set(form().slider_gamma, 55);
    EXPECT_EQ(sent(), (Requests{ tele, "gamma 55" }));
    ASSERT_TRUE(springsBack(zoom()));
    EXPECT_EQ(sent(), Requests(2, zoomStop));
}

TEST_F(Accessibility, SliderThatWasReleasedIsNotReleasedAgain)
{
    startFitted(1);
    set(zoom(), 80);
    guard->releaseAll();
    ASSERT_EQ(zoom()->value(), 45);
    QSignalSpy releases(zoom(), &QSlider::sliderReleased);
    // The other one is released by itself later than this one would be.
    form().slider_focus->setEnabled(true);
    set(form().slider_focus, 80);
    ASSERT_TRUE(springsBack(form().slider_focus));
    EXPECT_EQ(releases.count(), 0);
    forgetSent();
}

TEST_F(Accessibility, LensLeftByTheWheelIsNotHeld)
{
    startFitted(1);
    zoom()->setValue(80); // as the wheel does: the slider is neither pressed nor released
    forgetSent();
    guard->releaseAll();
    EXPECT_EQ(sent(), Requests());
    EXPECT_EQ(zoom()->value(), 80);
}

TEST_F(Accessibility, HandOnTheHandleWins)
{
    startFitted(1);
    set(zoom(), 80);
    slider_mouse::grab(zoom());
    slider_mouse::dragTo(zoom(), 90);
    set(zoom(), 10);
    forgetSent();
    QTest::qWait(400); // twice as long as a nudge
    EXPECT_EQ(zoom()->value(), 90);
    EXPECT_EQ(sent(), Requests());
    slider_mouse::release(zoom());
    EXPECT_EQ(sent(), Requests(2, zoomStop));
}

TEST_F(Accessibility, NudgeEndsAtOnceWithEverythingElse)
{
    startFitted(2);
    const std::vector<std::function<void()>> ends = {
        [this] { guard->releaseAll(); },
        [this] { window->hide(); },
        [this] { click(form().btn_cam1); },
    };
    for (const auto &end : ends) {
        window->show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(window.get()));
        set(zoom(), 80);
        EXPECT_EQ(sent(), Requests{ tele });
        end();
        Requests stops = sent();
        stops.resize(2); // the other camera's reads come after them
        EXPECT_EQ(stops, Requests(2, zoomStop));
        EXPECT_EQ(zoom()->value(), 45);
    }
}

TEST_F(Accessibility, SettingIsWrittenOnce)
{
    startFitted(1);
    openPanel();
    for (const ImageProperty &row : imageProperties()) {
        set(slider(row), 55);
        EXPECT_EQ(slider(row)->value(), 55);
        EXPECT_EQ(sent(), Requests{ row.written(55) });
        EXPECT_EQ(row.cur, 55);
        EXPECT_EQ(shown(row), "55");
        set(slider(row), 55);
        EXPECT_EQ(sent(), Requests()) << "not moved";
    }
}

TEST_F(Accessibility, MouseOnASliderIsLeftToTheToolkit)
{
    startFitted(1);
    openPanel();
    for (const ImageProperty &row : imageProperties()) {
        const int before = slider(row)->value();
        mouse::press(slider(row), slider_mouse::handleAt(slider(row), 60), Qt::MiddleButton);
        mouse::release(slider(row), slider_mouse::handleAt(slider(row), 60), Qt::MiddleButton);
        EXPECT_NE(slider(row)->value(), before);
        EXPECT_EQ(sent(), Requests{ row.written(slider(row)->value()) });
        slider_mouse::grab(slider(row));
        forgetSent();
        slider_mouse::dragTo(slider(row), 70);
        EXPECT_EQ(sent(), Requests{ row.written(70) });
        slider_mouse::release(slider(row));
    }
    mouse::press(zoom(), slider_mouse::handleAt(zoom(), 80), Qt::MiddleButton);
    mouse::release(zoom(), slider_mouse::handleAt(zoom(), 80), Qt::MiddleButton);
    QTest::qWait(400); // twice as long as a nudge
    EXPECT_EQ(sent(), (Requests{ tele, zoomStop, zoomStop }));
}

} // namespace
