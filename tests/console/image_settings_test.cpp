// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

// The settings panel as the user works on it: shown and hidden, dragged, chosen, set to default.

#include <QAbstractItemView>

#include "tests/console/image_settings_fixture.h"
#include "tests/console/slider_mouse.h"

namespace {

class SettingsPanel : public SettingsTest
{
protected:
    /// Shown, right_flag, enabled.
    using State = std::tuple<bool, int, bool>;
    State state()
    {
        return { !form().Win_Right->isHidden(), right_flag, form().Win_Right->isEnabled() };
    }
};

TEST_F(SettingsPanel, SettingButtonShowsAndHidesItInEveryModeButZeroAndOkHidesIt)
{
    startOnRanges();
    const QSize size = window->size();
    const struct
    {
        int mode;
        int flag;
        bool shown;
        QPushButton *button;
        State after;
    } rows[] = {
        { 1, 0, false, form().btn_setting, { true, 1, true } },
        { 1, 1, true, form().btn_setting, { false, 0, true } },
        { 2, 0, false, form().btn_setting, { true, 1, true } },
        { 1, 2, false, form().btn_setting, { false, 2, true } },
        { 1, 2, true, form().btn_setting, { true, 2, true } },
        { 1, -1, true, form().btn_setting, { true, -1, true } },
        { 1, 1, true, form().btn_ok, { false, 0, true } },
        { 0, 1, true, form().btn_ok, { false, 0, true } },
        // The last row: it disables the panel for good.
        { 0, 1, true, form().btn_setting, { true, 1, false } },
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(&row - rows);
        usb_mode = row.mode;
        right_flag = row.flag;
        form().Win_Right->setVisible(row.shown);
        // Not with the mouse: OK is on the panel itself.
        row.button->click();
        EXPECT_EQ(state(), row.after);
        EXPECT_EQ(window->size(), size);
    }
    EXPECT_EQ(sent(), Requests());
}

TEST_F(SettingsPanel, SettingButtonBeforeACameraIsThereDisablesItForGood)
{
    plugInOnRanges(1);
    makeWindow();
    click(form().btn_setting);
    EXPECT_EQ(state(), (State{ false, 0, false }));
    poll();
    forgetSent();
    click(form().btn_setting);
    EXPECT_EQ(state(), (State{ true, 1, false }));

    QSlider *const contrast = form().slider_contrast;
    slider_mouse::grab(contrast);
    slider_mouse::dragTo(contrast, 80);
    slider_mouse::release(contrast);
    click(form().btn_default);
    click(form().btn_ok);
    click(flickerChoice());
    EXPECT_FALSE(flickerChoice()->view()->isVisible());
    EXPECT_EQ(contrast->value(), 22);
    EXPECT_EQ(sent(), Requests()) << "its controls do not react";
    EXPECT_EQ(state(), (State{ true, 1, false }));
    click(form().btn_setting);
    EXPECT_EQ(state(), (State{ false, 0, false }));
}

// Dragging

class SettingsSlider : public SettingsTest, public testing::WithParamInterface<std::size_t>
{
protected:
    void SetUp() override
    {
        startOnRanges();
        openPanel();
        handle = slider(row);
    }

    /// The row's current value and what its box shows.
    std::pair<int, QString> noted() { return { row.cur, shown(row) }; }
    static std::pair<int, QString> noting(int value) { return { value, QString::number(value) }; }

    QStringList others()
    {
        QStringList seen;
        for (const ImageProperty &other : imageProperties()) {
            if (&other != &row)
                seen += shown(other) + '/' + QString::number(other.cur) + '/'
                    + QString::number(slider(other)->value());
        }
        return seen;
    }

    const ImageProperty &row = imageProperties()[GetParam()];
    const int atStart = static_cast<int>(rangeOf(row).cur);
    QSlider *handle = nullptr;
};

TEST_P(SettingsSlider, GrabbedAndDraggedSendsEachStepInModeOneAndIsNotedInAll)
{
    const QStringList before = others();
    for (const int mode : { 1, 0, 2 }) {
        usb_mode = mode;
        const auto expectSent = [&](int value) {
            EXPECT_EQ(noted(), noting(value));
            EXPECT_EQ(handle->value(), value);
            EXPECT_EQ(sent(), mode == 1 ? Requests{ row.written(value) } : Requests());
        };
        handle->setValue(atStart);
        EXPECT_EQ(sent(), Requests()) << "set by the program";
        row.cur = -1;
        box(row)->setText("?");
        slider_mouse::grab(handle);
        expectSent(atStart);
        for (const int value : { 40, 41, 75, 30 }) {
            slider_mouse::dragTo(handle, value);
            expectSent(value);
        }
        slider_mouse::release(handle);
        EXPECT_EQ(handle->value(), 30) << "it does not spring back";
        EXPECT_EQ(sent(), Requests());
    }
    EXPECT_EQ(others(), before);
}

TEST_P(SettingsSlider, IsNotedAndShownBeforeTheCameraIsAskedEvenIfThatRefuses)
{
    camera(1).stall(row.control);
    const auto look = [this] { return noted(); };
    // The position, not the slider's value, which the toolkit sets by itself.
    EXPECT_EQ(
        seenAtRequests([this] { emit handle->sliderMoved(60); }, look), std::vector{ noting(60) });
    EXPECT_EQ(handle->value(), atStart);
    EXPECT_EQ(seenAtRequests([this] { emit handle->sliderPressed(); }, look),
        std::vector{ noting(atStart) });
}

INSTANTIATE_TEST_SUITE_P(Each, SettingsSlider, testing::Range<std::size_t>(0, 7),
    [](const auto &row) { return std::string(imageProperties()[row.param].name); });

// The anti-flicker choice

using FlickerChoice = SettingsTest;

TEST_F(FlickerChoice, SendsTheChosenFrequencyInModeOneOnly)
{
    startOnRanges();
    for (const int mode : { 1, 0, 2 }) {
        usb_mode = mode;
        for (const int index : { 2, 0, 1 }) {
            flickerChoice()->setCurrentIndex(index);
            const Requests request{ "power_line_frequency " + std::to_string(index) };
            EXPECT_EQ(sent(), mode == 1 ? request : Requests());
        }
    }
    EXPECT_EQ(cur_fliker, 1) << "not updated";
}

TEST_F(FlickerChoice, IsReadFromTheBoxToTheLetterAndNotFromTheSignal)
{
    startOnRanges();
    for (const char *argument : { "60HZ", "" }) {
        window->on_cb_fliker_currentTextChanged(argument);
        EXPECT_EQ(sent(), Requests{ "power_line_frequency 1" });
    }
    for (const char *text : { "50hz", "60Hz", "off", "50HZ ", "", "1" }) {
        flickerChoice()->setItemText(1, text);
        window->on_cb_fliker_currentTextChanged("50HZ");
        EXPECT_EQ(sent(), Requests()) << text;
    }
}

// Default

class SettingsDefault : public SettingsTest
{
protected:
    QStringList boxes()
    {
        QStringList all;
        for (const ImageProperty &row : imageProperties())
            all += shown(row);
        return all;
    }
    void expectDefaultsShown()
    {
        for (const ImageProperty &row : imageProperties()) {
            EXPECT_EQ(slider(row)->value(), rangeOf(row).def) << row.name;
            EXPECT_EQ(shown(row), QString::number(rangeOf(row).def)) << row.name;
            EXPECT_EQ(row.cur, rangeOf(row).cur) << row.name << " is not updated";
        }
        EXPECT_EQ(flickerChoice()->currentIndex(), flicker().def);
        EXPECT_EQ(cur_fliker, flicker().cur);
    }

    const Requests nine = { "white_balance_temperature 46", "backlight_compensation 40", "gamma 41",
        "contrast 42", "saturation 43", "brightness 44", "sharpness 45", "power_line_frequency 2",
        "white_balance_temperature_auto 0" };
};

TEST_F(SettingsDefault, SendsNineRequestsInTheirOrderInModeOneOnly)
{
    startOnRanges();
    openPanel();
    for (const int mode : { 0, 2, 1 }) {
        usb_mode = mode;
        flickerChoice()->setCurrentIndex(1);
        forgetSent();
        click(form().btn_default);
        EXPECT_EQ(sent(), mode == 1 ? Requests{ "power_line_frequency 2" } + nine : Requests())
            << "a changed anti-flicker choice sends itself first";
        expectDefaultsShown();
    }
    click(form().btn_default);
    EXPECT_EQ(sent(), nine);
}

TEST_F(SettingsDefault, ShowsTheDefaultsBeforeItAsksTheCameraEvenIfThatRefuses)
{
    startOnRanges();
    openPanel();
    flickerChoice()->setCurrentIndex(2);
    forgetSent();
    camera(1).stallEverything();
    const auto seen =
        seenAtRequests([this] { click(form().btn_default); }, [this] { return boxes(); });
    EXPECT_EQ(seen, std::vector(nine.size(), boxes()));
    expectDefaultsShown();
}

TEST_F(SettingsDefault, NextGrabUpdatesTheCurrentValue)
{
    startOnRanges();
    openPanel();
    click(form().btn_default);
    forgetSent();
    for (const ImageProperty &row : imageProperties()) {
        const int def = static_cast<int>(rangeOf(row).def);
        slider_mouse::grab(slider(row));
        slider_mouse::release(slider(row));
        EXPECT_EQ(row.cur, def) << row.name;
        EXPECT_EQ(sent(), Requests{ row.written(def) });
    }
    EXPECT_EQ(WhiteBalanceAutoflag, 0);
    EXPECT_EQ(PressFlag, 0);
}

TEST_F(SettingsDefault, FillsThePanelInItsOrder)
{
    startOnRanges();
    std::vector<std::string> expected;
    for (const ImageProperty &row : imageProperties())
        expected.push_back(row.name + (" at " + std::to_string(rangeOf(row).def)));
    expected.emplace_back("choice 60HZ");
    for (const ImageProperty &row : imageProperties())
        expected.push_back(row.name + (" shows " + std::to_string(rangeOf(row).def)));
    const std::vector<std::string> &order = noteOrder();
    window->on_btn_default_clicked();
    forgetSent();
    EXPECT_EQ(order, expected);
}

} // namespace
