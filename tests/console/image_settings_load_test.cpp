// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

// The settings panel as a camera fills it.

#include <cerrno>

#include "tests/console/image_settings_fixture.h"
#include "tests/console/uvc_calls.h"
#include "tests/support/uvc_call_recorder.h"

namespace {

using Names = std::vector<std::string>;

class SettingsLoad : public SettingsTest
{ };

TEST_F(SettingsLoad, TakesTheRangesOfTheCameraAndShowsThem)
{
    for (const ImageProperty &row : imageProperties())
        row.step = 9;
    startOnRanges();
    for (std::size_t index = 0; index < imageProperties().size(); ++index) {
        const ImageProperty &row = imageProperties()[index];
        SCOPED_TRACE(row.name);
        const Range range = rangeOf(index);
        EXPECT_EQ(row.cur, range.cur);
        EXPECT_EQ(row.min, range.min);
        EXPECT_EQ(row.max, range.max);
        EXPECT_EQ(row.def, range.def);
        EXPECT_EQ(row.step, 0);
        EXPECT_EQ(slider(row)->minimum(), range.min);
        EXPECT_EQ(slider(row)->maximum(), range.max);
        EXPECT_EQ(slider(row)->pageStep(), 0);
        EXPECT_EQ(slider(row)->value(), range.cur);
        EXPECT_EQ(shown(row), QString::number(range.cur));
    }
    EXPECT_EQ(cur_fliker, flicker().cur);
    EXPECT_EQ(min_fliker, flicker().min);
    EXPECT_EQ(max_fliker, flicker().max);
    EXPECT_EQ(default_fliker, flicker().def);
    EXPECT_EQ(flickerChoice()->currentIndex(), flicker().cur);
}

TEST_F(SettingsLoad, ClosesOpensAndReadsAndWritesNothing)
{
    startOnRanges();
    uvc_call_recorder::clear();
    window->Setting_Press(0);
    EXPECT_EQ(opensAndCloses(), (Names{ "close", "open 0" }));
    EXPECT_EQ(sent(), allReads());
}

TEST_F(SettingsLoad, FillsThePanelInItsOrder)
{
    plugIn({ virtual_camera::DeviceDescription::ptzCamera(description()) });
    makeWindow();
    Names order;
    for (const ImageProperty &row : imageProperties()) {
        const std::string name = row.name;
        QObject::connect(
            slider(row), &QSlider::rangeChanged, window.get(), [&order, name](int min, int max) {
                order.push_back(name + ' ' + std::to_string(min) + ".." + std::to_string(max));
            });
        QObject::connect(slider(row), &QSlider::valueChanged, window.get(),
            [&order, name](int value) { order.push_back(name + " at " + std::to_string(value)); });
        QObject::connect(form().*row.box, &QLineEdit::textChanged, window.get(),
            [&order, name](
                const QString &text) { order.push_back(name + " shows " + text.toStdString()); });
    }
    QObject::connect(flickerChoice(), QOverload<int>::of(&QComboBox::currentIndexChanged),
        window.get(), [&order](int index) { order.push_back("choice " + std::to_string(index)); });
    window->Setting_Press(0);
    forgetSent();
    EXPECT_EQ(order,
        (Names{ "backlight_compensation 1..99", "backlight_compensation at 1",
            "backlight_compensation 1..90", "backlight_compensation at 20",        //
            "gamma 2..99", "gamma at 2", "gamma 2..91", "gamma at 21",             //
            "contrast 3..99", "contrast at 3", "contrast 3..92", "contrast at 22", //
            // Its value comes first.
            "saturation at 23", "saturation 4..99", "saturation 4..93",                    //
            "brightness 5..99", "brightness at 5", "brightness 5..94", "brightness at 24", //
            "sharpness 6..99", "sharpness at 6", "sharpness 6..95", "sharpness at 25",     //
            "white_balance_temperature 7..99", "white_balance_temperature at 7",
            "white_balance_temperature 7..96", "white_balance_temperature at 26", //
            "backlight_compensation shows 20", "gamma shows 21", "contrast shows 22",
            "saturation shows 23", "brightness shows 24", "sharpness shows 25",
            "white_balance_temperature shows 26", //
            "choice 1" }));
}

TEST_F(SettingsLoad, SaturationAbove99StandsAt99UntilItIsLoadedAgain)
{
    plugIn(1); // saturation 128 of 0 to 255
    makeWindow();
    window->Setting_Press(0);
    EXPECT_EQ(form().slider_saturation->value(), 99);
    EXPECT_EQ(form().slider_saturation->maximum(), 255);
    EXPECT_EQ(form().v_saturation->text(), "128");
    EXPECT_EQ(cur_saturation, 128);
    EXPECT_EQ(form().slider_contrast->value(), 128) << "saturation alone";
    window->Setting_Press(0);
    EXPECT_EQ(form().slider_saturation->value(), 128);
    EXPECT_EQ(form().v_saturation->text(), "128");
    forgetSent();
}

TEST_F(SettingsLoad, StartLoadsTwiceSoSaturationStandsRight)
{
    start(1);
    EXPECT_EQ(form().slider_saturation->value(), 128);
}

TEST_F(SettingsLoad, NegativeBrightnessIsShownWithItsSign)
{
    virtual_camera::CameraDescription camera = description();
    camera.range(Control::Brightness) = { -64, 64, -10, -3, 1 };
    plugIn({ virtual_camera::DeviceDescription::ptzCamera(camera) });
    start(1);
    EXPECT_EQ(form().slider_brightness->minimum(), -64);
    EXPECT_EQ(form().slider_brightness->maximum(), 64);
    EXPECT_EQ(form().slider_brightness->value(), -3);
    EXPECT_EQ(form().v_brightness->text(), "-3");
    EXPECT_EQ(default_brightness, -10);
}

TEST_F(SettingsLoad, ValueOutsideItsRangeIsShownAsItIsBesideASliderAtItsEnd)
{
    virtual_camera::CameraDescription camera = description();
    camera.range(Control::Contrast) = { 10, 50, 30, 200, 1 };
    camera.range(Control::Gamma) = { 10, 50, 30, 2, 1 };
    plugIn({ virtual_camera::DeviceDescription::ptzCamera(camera) });
    start(1);
    EXPECT_EQ(form().slider_contrast->value(), 50);
    EXPECT_EQ(form().v_contrast->text(), "200");
    EXPECT_EQ(cur_contrast, 200);
    EXPECT_EQ(form().slider_gamma->value(), 10);
    EXPECT_EQ(form().v_gamma->text(), "2");
}

TEST_F(SettingsLoad, MinimumAboveTheMaximumIsTakenAsItIs)
{
    virtual_camera::CameraDescription camera = description();
    camera.range(Control::Sharpness) = { 60, 20, 30, 25, 1 };
    plugIn({ virtual_camera::DeviceDescription::ptzCamera(camera) });
    start(1);
    EXPECT_EQ(min_sharpness, 60);
    EXPECT_EQ(max_sharpness, 20);
    // The maximum is set last and takes the minimum along.
    EXPECT_EQ(form().slider_sharpness->minimum(), 20);
    EXPECT_EQ(form().slider_sharpness->maximum(), 20);
    EXPECT_EQ(form().slider_sharpness->value(), 20);
    EXPECT_EQ(form().v_sharpness->text(), "25");
}

TEST_F(SettingsLoad, KeepsTheLow32BitsOfARecord)
{
    startOnRanges();
    const ImageProperty &sharpness = imageProperties()[5];
    constexpr std::int64_t beyond = (std::int64_t{ 1 } << 32) + 33;
    // A read that fails leaves the record.
    camera(1).stall(Control::Sharpness, RequestCode::GetCur);
    Probe::device(*window)->props.at(sharpness.id).cur = beyond;
    window->Setting_Press(0);
    EXPECT_EQ(sharpness.cur, 33);
    EXPECT_EQ(shown(sharpness), "33");
    forgetSent();
}

TEST_F(SettingsLoad, UnreadableRangeShowsWhatWasReadBefore)
{
    virtual_camera::CameraDescription camera = description();
    camera.range(Control::Gamma) = { 11, 77, 66, 55, 1 };
    plugIn({ virtual_camera::DeviceDescription::ptzCamera(camera) });
    this->camera(1).stall(Control::Contrast, RequestCode::GetMin);
    this->camera(1).stall(Control::Sharpness, RequestCode::GetCur);
    start(1);
    EXPECT_EQ(min_contrast, 66) << "gamma's default was read before it";
    EXPECT_EQ(cur_contrast, 22);
    EXPECT_EQ(cur_sharpness, 0) << "never read";
    EXPECT_EQ(form().v_sharpness->text(), "0");
}

TEST_F(SettingsLoad, OpenThatFailsLeavesThePanelAndClosesTheCamera)
{
    startOnRanges(2);
    camera(2).refuseOpen(EBUSY);
    uvc_call_recorder::clear();
    window->Setting_Press(1);
    EXPECT_EQ(opensAndCloses(), (Names{ "close", "open 1 failed" }));
    EXPECT_EQ(sent(), Requests());
    EXPECT_TRUE(becomesFree(1));
    for (std::size_t index = 0; index < imageProperties().size(); ++index) {
        const ImageProperty &row = imageProperties()[index];
        EXPECT_EQ(row.cur, rangeOf(index).cur) << row.name;
        EXPECT_EQ(slider(row)->value(), rangeOf(index).cur) << row.name;
        EXPECT_EQ(shown(row), QString::number(rangeOf(index).cur)) << row.name;
    }
    EXPECT_EQ(flickerChoice()->currentIndex(), flicker().cur);
}

// The anti-flicker choice
// -----------------------------------------------------------------------------

class FlickerLoad : public SettingsTest
{
protected:
    void reportFlicker(int current)
    {
        Range range = flicker();
        range.cur = current;
        camera(1).setRange(Control::PowerLineFrequency, range);
    }
};

TEST_F(FlickerLoad, ChangedChoiceIsWrittenBackToTheCamera)
{
    startOnRanges();
    reportFlicker(2);
    window->Setting_Press(0);
    EXPECT_EQ(sent(), allReads() + Requests{ "power_line_frequency 2" });
    EXPECT_EQ(flickerChoice()->currentText(), "60HZ");
    window->Setting_Press(0);
    EXPECT_EQ(sent(), allReads()) << "no change";
    reportFlicker(0);
    window->Setting_Press(0);
    EXPECT_EQ(sent(), allReads() + Requests{ "power_line_frequency 0" });
    EXPECT_EQ(flickerChoice()->currentText(), "OFF");
}

TEST_F(FlickerLoad, NothingIsWrittenBackBeforeThePollIsDone)
{
    plugIn({ virtual_camera::DeviceDescription::ptzCamera(description()) });
    makeWindow();
    EXPECT_EQ(flickerChoice()->currentIndex(), 0);
    poll();
    EXPECT_EQ(flickerChoice()->currentIndex(), 1);
    EXPECT_EQ(sent(), allReads() + allReads());
}

TEST_F(FlickerLoad, FrequencyWithoutAnItemShowsNoneAndSendsNothing)
{
    startOnRanges();
    camera(1).setRange(Control::PowerLineFrequency, { 0, 3, 3, 3, 1 });
    window->Setting_Press(0);
    EXPECT_EQ(flickerChoice()->currentIndex(), -1);
    EXPECT_EQ(cur_fliker, 3);
    EXPECT_EQ(sent(), allReads());
}

} // namespace
