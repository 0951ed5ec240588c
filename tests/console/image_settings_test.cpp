// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

// The settings panel as the user works on it: shown and hidden, dragged, chosen, put to default.

#include <QAbstractItemView>

#include "tests/console/image_settings_fixture.h"
#include "tests/console/slider_mouse.h"

namespace {

// Shown and hidden
// --------------------------------------------------------------------------------------

class SettingsPanel : public SettingsTest
{
protected:
    bool isShown() { return !form().Win_Right->isHidden(); }
};

TEST_F(SettingsPanel, SettingButtonShowsAndHidesItWithACamera)
{
    startOnRanges();
    const QSize size = window->size();
    EXPECT_FALSE(isShown());
    for (int round = 0; round < 2; ++round) {
        click(form().btn_setting);
        EXPECT_TRUE(isShown());
        EXPECT_EQ(right_flag, 1);
        click(form().btn_setting);
        EXPECT_FALSE(isShown());
        EXPECT_EQ(right_flag, 0);
    }
    EXPECT_TRUE(form().Win_Right->isEnabled());
    EXPECT_EQ(window->size(), size);
    EXPECT_EQ(sent(), Requests());
}

TEST_F(SettingsPanel, SettingButtonDoesNothingInAnyOtherState)
{
    startOnRanges();
    for (const int flag : { 2, -1 }) {
        for (const bool shown : { false, true }) {
            right_flag = flag;
            form().Win_Right->setVisible(shown);
            click(form().btn_setting);
            EXPECT_EQ(isShown(), shown);
            EXPECT_EQ(right_flag, flag);
        }
    }
}

TEST_F(SettingsPanel, SettingButtonActsInEveryModeButZero)
{
    startOnRanges();
    usb_mode = 2;
    click(form().btn_setting);
    EXPECT_TRUE(isShown());
    EXPECT_TRUE(form().Win_Right->isEnabled());
}

TEST_F(SettingsPanel, SettingButtonWithoutACameraDisablesItForGood)
{
    plugIn({ virtual_camera::DeviceDescription::ptzCamera(description()) });
    makeWindow();
    click(form().btn_setting);
    EXPECT_FALSE(isShown());
    EXPECT_EQ(right_flag, 0);
    EXPECT_FALSE(form().Win_Right->isEnabled());

    poll();
    forgetSent();
    click(form().btn_setting);
    EXPECT_TRUE(isShown());
    EXPECT_FALSE(form().Win_Right->isEnabled());

    QSlider *const contrast = form().slider_contrast;
    slider_mouse::grab(contrast);
    slider_mouse::dragTo(contrast, 80);
    slider_mouse::letGo(contrast);
    click(form().btn_default);
    QTest::mouseClick(flickerChoice(), Qt::LeftButton);
    EXPECT_FALSE(flickerChoice()->view()->isVisible());
    EXPECT_EQ(sent(), Requests()) << "its controls do not react";
    EXPECT_EQ(contrast->value(), 22);
    click(form().btn_ok);
    EXPECT_TRUE(isShown());
    click(form().btn_setting);
    EXPECT_FALSE(isShown());
}

TEST_F(SettingsPanel, SettingButtonWithoutACameraDisablesAShownOneToo)
{
    startOnRanges();
    openPanel();
    usb_mode = 0;
    click(form().btn_setting);
    EXPECT_TRUE(isShown());
    EXPECT_EQ(right_flag, 1);
    EXPECT_FALSE(form().Win_Right->isEnabled());
}

TEST_F(SettingsPanel, OkHidesItWithAndWithoutACamera)
{
    startOnRanges();
    for (const int mode : { 1, 0 }) {
        form().Win_Right->setVisible(true);
        right_flag = 1;
        usb_mode = mode;
        click(form().btn_ok);
        EXPECT_FALSE(isShown()) << mode;
        EXPECT_EQ(right_flag, 0) << mode;
        EXPECT_TRUE(form().Win_Right->isEnabled());
    }
    EXPECT_EQ(sent(), Requests());
}

// Dragging
// ----------------------------------------------------------------------------------------------

class SettingsSlider : public SettingsTest, public testing::WithParamInterface<std::size_t>
{
protected:
    const ImageProperty &row() { return imageProperties()[GetParam()]; }

    /// Everything that the panel shows and notes of the other six.
    QStringList others()
    {
        QStringList seen;
        for (const ImageProperty &other : imageProperties()) {
            if (&other != &row())
                seen += shown(other) + '/' + QString::number(other.cur) + '/'
                    + QString::number(slider(other)->value());
        }
        return seen;
    }
};

TEST_P(SettingsSlider, GrabbedAndDraggedWritesEachStepToTheCamera)
{
    startOnRanges();
    openPanel();
    QSlider *const handle = slider(row());
    const int start = static_cast<int>(rangeOf(GetParam()).cur);
    const QStringList before = others();
    int movements = 0;
    QObject::connect(handle, &QSlider::sliderMoved, window.get(), [&](int) { ++movements; });

    row().cur = -1;
    (form().*row().box)->setText("?");
    slider_mouse::grab(handle);
    EXPECT_EQ(sent(), Requests{ row().written(start) }) << "sent again when it is grabbed";
    EXPECT_EQ(row().cur, start);
    EXPECT_EQ(shown(row()), QString::number(start));
    EXPECT_EQ(handle->value(), start);

    for (const int value : { 40, 41, 75, 30 }) {
        slider_mouse::dragTo(handle, value);
        EXPECT_EQ(handle->value(), value);
        EXPECT_EQ(sent(), Requests{ row().written(value) });
        EXPECT_EQ(row().cur, value);
        EXPECT_EQ(shown(row()), QString::number(value));
    }
    EXPECT_EQ(movements, 4);
    slider_mouse::letGo(handle);
    EXPECT_EQ(handle->value(), 30) << "it does not spring back";
    EXPECT_EQ(sent(), Requests());
    EXPECT_EQ(others(), before);
}

TEST_P(SettingsSlider, WithoutACameraIsShownAndNotedAndSendsNothing)
{
    startOnRanges();
    openPanel();
    usb_mode = 0;
    row().cur = -1;
    QSlider *const handle = slider(row());
    slider_mouse::grab(handle);
    EXPECT_EQ(row().cur, rangeOf(GetParam()).cur);
    slider_mouse::dragTo(handle, 40);
    EXPECT_EQ(row().cur, 40);
    EXPECT_EQ(shown(row()), "40");
    slider_mouse::letGo(handle);
    slider_mouse::grab(handle);
    EXPECT_EQ(row().cur, 40);
    slider_mouse::letGo(handle);
    EXPECT_EQ(sent(), Requests());
}

TEST_P(SettingsSlider, WritesInModeOneOnly)
{
    startOnRanges();
    usb_mode = 2;
    (window.get()->*row().moved)(50);
    EXPECT_EQ(row().cur, 50);
    EXPECT_EQ(shown(row()), "50");
    (window.get()->*row().pressed)();
    EXPECT_EQ(row().cur, slider(row())->value());
    EXPECT_EQ(sent(), Requests());
}

TEST_P(SettingsSlider, MovementTellsThePositionNotTheSlidersValue)
{
    startOnRanges();
    (window.get()->*row().moved)(55);
    EXPECT_EQ(sent(), Requests{ row().written(55) });
    EXPECT_EQ(row().cur, 55);
    EXPECT_EQ(shown(row()), "55");
    EXPECT_EQ(slider(row())->value(), rangeOf(GetParam()).cur) << "the slider moves itself";
}

TEST_P(SettingsSlider, RefusedValueIsShownAllTheSame)
{
    startOnRanges();
    camera(1).stall(row().control);
    (window.get()->*row().moved)(60);
    EXPECT_EQ(sent(), Requests{ row().written(60) + " stall" });
    EXPECT_EQ(row().cur, 60);
    EXPECT_EQ(shown(row()), "60");
}

TEST_P(SettingsSlider, ClickBesideTheHandleDoesNotMoveIt)
{
    startOnRanges();
    openPanel();
    QSlider *const handle = slider(row());
    const int before = handle->value();
    for (const QPoint &place :
        { slider_mouse::handleAt(handle, 85), QPoint(3, handle->height() / 2) }) {
        QTest::mouseClick(handle, Qt::LeftButton, Qt::NoModifier, place);
        EXPECT_EQ(handle->value(), before);
    }
    EXPECT_EQ(sent(), Requests());
}

TEST_P(SettingsSlider, ValueSetByTheProgramIsNotWritten)
{
    startOnRanges();
    slider(row())->setValue(70);
    EXPECT_EQ(sent(), Requests());
    EXPECT_EQ(row().cur, rangeOf(GetParam()).cur);
}

INSTANTIATE_TEST_SUITE_P(EachProperty, SettingsSlider, testing::Range<std::size_t>(0, 7),
    [](const auto &row) { return std::string(imageProperties()[row.param].name); });

// The anti-flicker choice
// -------------------------------------------------------------------------------

class FlickerChoice : public SettingsTest
{ };

TEST_F(FlickerChoice, WritesTheChosenFrequency)
{
    startOnRanges();
    openPanel();
    const struct
    {
        int index;
        const char *text;
    } rows[] = { { 2, "60HZ" }, { 0, "OFF" }, { 1, "50HZ" } };
    for (const auto &row : rows) {
        flickerChoice()->setCurrentText(row.text);
        EXPECT_EQ(flickerChoice()->currentIndex(), row.index);
        EXPECT_EQ(sent(), Requests{ "power_line_frequency " + std::to_string(row.index) });
        EXPECT_EQ(cur_fliker, 1) << "not brought up to date";
    }
    flickerChoice()->setCurrentText("50HZ");
    EXPECT_EQ(sent(), Requests()) << "no change";
}

TEST_F(FlickerChoice, IsMadeWithTheKeyboardToo)
{
    startOnRanges();
    openPanel();
    // Presses only: the box leaves the releases to the window, as stops of what never moved.
    QTest::keyPress(flickerChoice(), Qt::Key_Down);
    EXPECT_EQ(sent(), Requests{ "power_line_frequency 2" });
    QTest::keyPress(flickerChoice(), Qt::Key_Up);
    EXPECT_EQ(sent(), Requests{ "power_line_frequency 1" });
}

TEST_F(FlickerChoice, IsReadFromTheBoxNotFromTheSignal)
{
    startOnRanges();
    window->on_cb_fliker_currentTextChanged("60HZ");
    EXPECT_EQ(sent(), Requests{ "power_line_frequency 1" });
    window->on_cb_fliker_currentTextChanged(QString());
    EXPECT_EQ(sent(), Requests{ "power_line_frequency 1" });
}

TEST_F(FlickerChoice, ComparesToTheLetter)
{
    startOnRanges();
    for (const char *text : { "50hz", "60Hz", "off", "50HZ ", "", "1" }) {
        flickerChoice()->setItemText(1, text);
        window->on_cb_fliker_currentTextChanged("50HZ");
        EXPECT_EQ(sent(), Requests()) << text;
    }
}

TEST_F(FlickerChoice, SendsInModeOneOnly)
{
    startOnRanges();
    for (const int mode : { 0, 2 }) {
        usb_mode = mode;
        for (const int index : { 0, 2, 1 })
            flickerChoice()->setCurrentIndex(index);
        EXPECT_EQ(sent(), Requests()) << mode;
    }
}

// Default
// -----------------------------------------------------------------------------------------------

class SettingsDefault : public SettingsTest
{
protected:
    void expectDefaultsShown()
    {
        for (std::size_t index = 0; index < imageProperties().size(); ++index) {
            const ImageProperty &row = imageProperties()[index];
            const Range range = rangeOf(index);
            EXPECT_EQ(slider(row)->value(), range.def) << row.name;
            EXPECT_EQ(shown(row), QString::number(range.def)) << row.name;
            EXPECT_EQ(row.cur, range.cur) << row.name << " is not brought up to date";
        }
        EXPECT_EQ(flickerChoice()->currentIndex(), flicker().def);
        EXPECT_EQ(cur_fliker, flicker().cur);
    }

    const Requests nine = { "white_balance_temperature 46", "backlight_compensation 40", "gamma 41",
        "contrast 42", "saturation 43", "brightness 44", "sharpness 45", "power_line_frequency 2",
        "white_balance_temperature_auto 0" };
};

TEST_F(SettingsDefault, SendsNineRequestsInTheirOrder)
{
    startOnRanges();
    openPanel();
    click(form().btn_default);
    EXPECT_EQ(sent(), Requests{ "power_line_frequency 2" } + nine)
        << "a changed anti-flicker choice speaks for itself first";
    expectDefaultsShown();
    click(form().btn_default);
    EXPECT_EQ(sent(), nine);
    expectDefaultsShown();
}

TEST_F(SettingsDefault, WithoutACameraIsShownAndSendsNothing)
{
    startOnRanges();
    openPanel();
    usb_mode = 0;
    click(form().btn_default);
    expectDefaultsShown();
    usb_mode = 2;
    click(form().btn_default);
    EXPECT_EQ(sent(), Requests());
}

TEST_F(SettingsDefault, NextGrabBringsACurrentValueUpToDate)
{
    startOnRanges();
    openPanel();
    click(form().btn_default);
    forgetSent();
    for (std::size_t index = 0; index < imageProperties().size(); ++index) {
        const ImageProperty &row = imageProperties()[index];
        const int def = static_cast<int>(rangeOf(index).def);
        slider_mouse::grab(slider(row));
        slider_mouse::letGo(slider(row));
        EXPECT_EQ(row.cur, def) << row.name;
        EXPECT_EQ(sent(), Requests{ row.written(def) });
    }
}

TEST_F(SettingsDefault, GoesThroughAllNineWhenTheCameraRefuses)
{
    startOnRanges();
    flickerChoice()->setCurrentIndex(2);
    forgetSent();
    openPanel();
    camera(1).stallEverything();
    click(form().btn_default);
    Requests refused = nine;
    for (std::string &request : refused)
        request += " stall";
    EXPECT_EQ(sent(), refused);
}

TEST_F(SettingsDefault, FillsThePanelInItsOrder)
{
    startOnRanges();
    std::vector<std::string> order;
    for (const ImageProperty &row : imageProperties()) {
        const std::string name = row.name;
        QObject::connect(slider(row), &QSlider::valueChanged, window.get(),
            [&order, name](int) { order.push_back(name); });
        QObject::connect(form().*row.box, &QLineEdit::textChanged, window.get(),
            [&order, name](const QString &) { order.push_back("box of " + name); });
    }
    QObject::connect(flickerChoice(), &QComboBox::currentTextChanged, window.get(),
        [&order](const QString &) { order.emplace_back("choice"); });
    window->on_btn_default_clicked();
    forgetSent();
    std::vector<std::string> expected;
    for (const ImageProperty &row : imageProperties())
        expected.emplace_back(row.name);
    expected.emplace_back("choice");
    for (const ImageProperty &row : imageProperties())
        expected.push_back(std::string("box of ") + row.name);
    EXPECT_EQ(order, expected);
}

TEST_F(SettingsDefault, BeforeAnyCameraShowsZeros)
{
    start(0);
    form().slider_gamma->setValue(50);
    form().v_gamma->setText("50");
    window->on_btn_default_clicked();
    EXPECT_EQ(form().slider_gamma->value(), 0);
    EXPECT_EQ(form().v_gamma->text(), "0");
    EXPECT_EQ(sent(), Requests());
}

TEST_F(SettingsDefault, FlagsWithoutAUseStayZero)
{
    startOnRanges();
    openPanel();
    click(form().btn_default);
    slider_mouse::grab(form().slider_wb);
    slider_mouse::letGo(form().slider_wb);
    forgetSent();
    EXPECT_EQ(WhiteBalanceAutoflag, 0);
    EXPECT_EQ(PressFlag, 0);
}

} // namespace
