// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

// Zoom and focus: three-way switches that spring back.

#include <QStyle>
#include <QStyleOptionSlider>
#include <QTest>

#include "console/console_state.h"
#include "tests/console/panel_fixture.h"
#include "tests/console/slider_mouse.h"

namespace {

struct Lens
{
    const char *name;
    QSlider *Ui::MainWindow::*slider;
    std::string above;
    std::string below;
    std::string stop;
};

const Lens lenses[] = {
    { "Zoom", &Ui::MainWindow::slider_zoom, "zoom_relative 1 1 1", "zoom_relative -1 1 1",
        "zoom_relative 0 1 5" },
    { "Focus", &Ui::MainWindow::slider_focus, "focus_relative -1 1", "focus_relative 1 1",
        "focus_relative 0 0" },
};

class LensSlider : public PanelTest, public testing::WithParamInterface<Lens>
{
protected:
    void startEnabled()
    {
        start(1);
        slider = form().*GetParam().slider;
        slider->setEnabled(true);
    }

    QSlider *slider = nullptr;
};

TEST_P(LensSlider, RestsBelowTheMiddleOfItsRange)
{
    startEnabled();
    EXPECT_EQ(slider->value(), 45);
    EXPECT_EQ(slider->minimum(), 0);
    EXPECT_EQ(slider->maximum(), 99);
    EXPECT_EQ(slider->pageStep(), 0);
}

TEST_P(LensSlider, SendsTheStartOfItsSideForEveryValueAndTheStopForRest)
{
    startEnabled();
    for (const int value : { 46, 47, 72, 99 }) {
        slider->setValue(value);
        EXPECT_EQ(sent(), Requests{ GetParam().above }) << value;
    }
    for (const int value : { 44, 43, 10, 0 }) {
        slider->setValue(value);
        EXPECT_EQ(sent(), Requests{ GetParam().below }) << value;
    }
    slider->setValue(45);
    EXPECT_EQ(sent(), Requests{ GetParam().stop });
    slider->setValue(45);
    EXPECT_EQ(sent(), Requests()) << "the value has not changed";
}

TEST_P(LensSlider, LetGoSpringsBackAndStopsTwice)
{
    startEnabled();
    for (const int value : { 99, 46, 44, 0 }) {
        slider->setValue(value);
        forgetSent();
        emit slider->sliderReleased();
        EXPECT_EQ(slider->value(), 45);
        EXPECT_EQ(sent(), (Requests{ GetParam().stop, GetParam().stop })) << "from " << value;
    }
}

TEST_P(LensSlider, LetGoAtRestStopsOnce)
{
    startEnabled();
    emit slider->sliderReleased();
    EXPECT_EQ(slider->value(), 45);
    EXPECT_EQ(sent(), Requests{ GetParam().stop });
}

TEST_P(LensSlider, WithoutACameraSpringsBackAndSendsNothing)
{
    startEnabled();
    usb_mode = 0;
    slider->setValue(80);
    slider->setValue(10);
    emit slider->sliderReleased();
    EXPECT_EQ(slider->value(), 45);
    EXPECT_EQ(sent(), Requests());
}

TEST_P(LensSlider, ActsInModeOneOnly)
{
    startEnabled();
    usb_mode = 2;
    slider->setValue(99);
    slider->setValue(0);
    emit slider->sliderReleased();
    EXPECT_EQ(slider->value(), 45);
    EXPECT_EQ(sent(), Requests());
}

TEST_P(LensSlider, DraggedByItsHandleSendsOneStartForEachChange)
{
    startEnabled();
    int changes = 0;
    QObject::connect(slider, &QSlider::valueChanged, window.get(), [&changes](int) { ++changes; });

    slider_mouse::grab(slider);
    EXPECT_TRUE(slider->isSliderDown());
    EXPECT_EQ(sent(), Requests()) << "grabbed at rest";
    for (const int value : { 50, 60, 75, 99 })
        slider_mouse::dragTo(slider, value);
    EXPECT_EQ(changes, 4);
    EXPECT_EQ(sent(), Requests(4, GetParam().above));
    slider_mouse::dragTo(slider, 99);
    EXPECT_EQ(sent(), Requests()) << "not moved";
    for (const int value : { 30, 12 })
        slider_mouse::dragTo(slider, value);
    EXPECT_EQ(sent(), Requests(2, GetParam().below));

    slider_mouse::letGo(slider);
    EXPECT_EQ(slider->value(), 45);
    EXPECT_EQ(sent(), (Requests{ GetParam().stop, GetParam().stop }));
}

TEST_P(LensSlider, ClickBesideItsHandleDoesNotMoveIt)
{
    startEnabled();
    for (const int y : { 4, slider->height() - 4 }) {
        QTest::mouseClick(slider, Qt::LeftButton, Qt::NoModifier, { slider->width() / 2, y });
        EXPECT_EQ(slider->value(), 45) << y;
    }
    EXPECT_EQ(sent(), Requests());
}

INSTANTIATE_TEST_SUITE_P(Both, LensSlider, testing::ValuesIn(lenses),
    [](const auto &lens) { return std::string(lens.param.name); });

class LensModes : public PanelTest
{ };

TEST_F(LensModes, FocusSliderCanBeGrabbedInManualFocusOnly)
{
    start(1);
    QSlider *const slider = form().slider_focus;
    EXPECT_FALSE(slider->isEnabled());
    slider_mouse::grab(slider);
    slider_mouse::dragTo(slider, 80);
    slider_mouse::letGo(slider);
    EXPECT_EQ(sent(), Requests());
    EXPECT_EQ(slider->value(), 45);

    QTest::mouseClick(form().btn_af, Qt::LeftButton);
    forgetSent();
    slider_mouse::grab(slider);
    slider_mouse::dragTo(slider, 80);
    EXPECT_EQ(sent(), Requests{ "focus_relative -1 1" });
    slider_mouse::letGo(slider);
    forgetSent();
}

} // namespace
