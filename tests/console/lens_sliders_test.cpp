// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

// Zoom and focus: three-way switches that spring back.

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
    void SetUp() override
    {
        start(1);
        slider = form().*GetParam().slider;
        // Focus can be driven in manual focus only.
        QTest::mouseClick(form().btn_af, Qt::LeftButton);
        forgetSent();
    }

    const Lens &lens() { return GetParam(); }
    QSlider *slider = nullptr;
};

TEST_P(LensSlider, EveryChangeOfValueSendsTheStartOfItsSideAndRestTheStop)
{
    for (const int value : { 46, 47, 72, 99, 44, 43, 10, 0, 45 }) {
        slider->setValue(value);
        EXPECT_EQ(sent(),
            Requests{ value > 45 ? lens().above
                    : value < 45 ? lens().below
                                 : lens().stop });
    }
    slider->setValue(45);
    EXPECT_EQ(sent(), Requests()) << "no change";
}

TEST_P(LensSlider, ReleaseSpringsBackAndStopsTwiceAtRestOnce)
{
    for (const int value : { 99, 46, 45, 44, 0 }) {
        slider->setValue(value);
        forgetSent();
        emit slider->sliderReleased();
        EXPECT_EQ(slider->value(), 45);
        EXPECT_EQ(sent(), Requests(value == 45 ? 1 : 2, lens().stop)) << "from " << value;
    }
}

TEST_P(LensSlider, SendsInModeOneOnlyAndSpringsBackAlways)
{
    for (const int mode : { 0, 2 }) {
        usb_mode = mode;
        slider->setValue(80);
        slider->setValue(10);
        emit slider->sliderReleased();
        EXPECT_EQ(slider->value(), 45);
        EXPECT_EQ(sent(), Requests()) << mode;
    }
}

TEST_P(LensSlider, DraggedByItsHandleSendsOneStartForEachChange)
{
    slider_mouse::grab(slider);
    EXPECT_TRUE(slider->isSliderDown());
    EXPECT_EQ(sent(), Requests()) << "grabbed at rest";
    for (const int value : { 50, 60, 99, 99 })
        slider_mouse::dragTo(slider, value);
    for (const int value : { 30, 12 })
        slider_mouse::dragTo(slider, value);
    EXPECT_EQ(sent(), Requests(3, lens().above) + Requests(2, lens().below));
    slider_mouse::release(slider);
    EXPECT_EQ(slider->value(), 45);
    EXPECT_EQ(sent(), Requests(2, lens().stop));
}

INSTANTIATE_TEST_SUITE_P(Both, LensSlider, testing::ValuesIn(lenses),
    [](const auto &lens) { return std::string(lens.param.name); });

using LensModes = PanelTest;

TEST_F(LensModes, FocusSliderMovesInManualFocusOnlyWhicheverCameraIsChosen)
{
    start(2);
    QSlider *const slider = form().slider_focus;
    for (const bool manual : { false, true, true }) {
        slider_mouse::grab(slider);
        slider_mouse::dragTo(slider, 80);
        EXPECT_EQ(slider->value(), manual ? 80 : 45);
        slider_mouse::release(slider);
        if (!manual)
            click(form().btn_af);
        click(form().btn_cam2);
    }
    forgetSent();
}

} // namespace
