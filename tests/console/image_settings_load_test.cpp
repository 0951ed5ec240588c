// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

// The settings panel as a camera fills it.

#include <cerrno>

#include "tests/console/image_settings_fixture.h"
#include "tests/support/uvc_call_recorder.h"

namespace {

using Names = std::vector<std::string>;

class SettingsLoad : public SettingsTest
{
protected:
    /// The current value, the slider's value and what the box shows.
    struct Shown
    {
        int cur, slider;
        QString box;
    };
    void expectRow(const ImageProperty &row, const Shown &expected)
    {
        EXPECT_EQ(row.cur, expected.cur) << row.name;
        EXPECT_EQ(slider(row)->value(), expected.slider) << row.name;
        EXPECT_EQ(shown(row), expected.box) << row.name;
    }
    void expectRangesOfTheCamera()
    {
        for (const ImageProperty &row : imageProperties()) {
            const Range range = rangeOf(row);
            const int cur = static_cast<int>(range.cur);
            expectRow(row, { cur, cur, QString::number(cur) });
            EXPECT_EQ(row.min, range.min) << row.name;
            EXPECT_EQ(row.max, range.max) << row.name;
            EXPECT_EQ(row.def, range.def) << row.name;
            EXPECT_EQ(row.step, 0) << row.name;
            EXPECT_EQ(slider(row)->minimum(), range.min) << row.name;
            EXPECT_EQ(slider(row)->maximum(), range.max) << row.name;
            EXPECT_EQ(slider(row)->pageStep(), 0) << row.name;
        }
        EXPECT_EQ((std::vector{ cur_fliker, min_fliker, max_fliker, default_fliker }),
            (std::vector{ 1, 0, 2, 2 }));
        EXPECT_EQ(flickerChoice()->currentIndex(), 1);
    }
    const ImageProperty &property(Control control)
    {
        return *std::find_if(imageProperties().begin(), imageProperties().end(),
            [control](const ImageProperty &row) { return row.control == control; });
    }
};

TEST_F(SettingsLoad, ClosesOpensReadsAndShowsTheRangesOfTheCamera)
{
    for (const ImageProperty &row : imageProperties())
        row.step = 9;
    startOnRanges();
    expectRangesOfTheCamera();
    uvc_call_recorder::clear();
    window->Setting_Press(0);
    EXPECT_EQ(opensAndCloses(), (Names{ "close", "open 0" }));
    EXPECT_EQ(sent(), allReads());
    expectRangesOfTheCamera();
}

TEST_F(SettingsLoad, FailedOpenLeavesThePanelAndClosesTheCamera)
{
    startOnRanges(2);
    camera(2).refuseOpen(EBUSY);
    uvc_call_recorder::clear();
    window->Setting_Press(1);
    EXPECT_EQ(opensAndCloses(), (Names{ "close", "open 1 failed" }));
    EXPECT_TRUE(becomesFree(1));
    expectRangesOfTheCamera();
}

TEST_F(SettingsLoad, FillsThePanelInItsOrder)
{
    plugInOnRanges(1);
    makeWindow();
    const Names &order = noteOrder();
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
            "white_balance_temperature shows 26", "choice 50HZ" }));
}

TEST_F(SettingsLoad, SaturationAbove99StandsAt99UntilItIsLoadedAgain)
{
    const Range wide{ 0, 255, 128, 128, 1 };
    plugInOnRanges(1, { { Control::Saturation, wide }, { Control::Contrast, wide } });
    makeWindow();
    window->Setting_Press(0);
    expectRow(property(Control::Saturation), { 128, 99, "128" });
    expectRow(property(Control::Contrast), { 128, 128, "128" });
    window->Setting_Press(0);
    expectRow(property(Control::Saturation), { 128, 128, "128" });
    forgetSent();
}

TEST_F(SettingsLoad, ShowsOddRangesAsTheyAreBesideASliderThatIsClamped)
{
    const struct
    {
        Control control;
        Range range; // min, max, def, cur, step
        Shown shown;
    } rows[] = {
        { Control::Brightness, { -64, 64, -10, -3, 1 }, { -3, -3, "-3" } },
        { Control::Contrast, { 10, 50, 30, 200, 1 }, { 200, 50, "200" } },
        { Control::Gamma, { 10, 50, 30, 2, 1 }, { 2, 10, "2" } },
        // The maximum is set last and takes the minimum along.
        { Control::Sharpness, { 60, 20, 30, 25, 1 }, { 25, 20, "25" } },
    };
    std::vector<std::pair<Control, Range>> odd;
    for (const auto &row : rows)
        odd.emplace_back(row.control, row.range);
    plugInOnRanges(1, odd);
    start(1);
    for (const auto &row : rows) {
        expectRow(property(row.control), row.shown);
        EXPECT_EQ(property(row.control).min, row.range.min);
        EXPECT_EQ(property(row.control).max, row.range.max);
        EXPECT_EQ(property(row.control).def, row.range.def);
    }
    EXPECT_EQ(form().slider_sharpness->minimum(), 20);
}

TEST_F(SettingsLoad, KeepsTheLow32BitsOfEachRecord)
{
    startOnRanges();
    constexpr std::int64_t beyond = std::int64_t{ 1 } << 32;
    for (PropertyRecord &record : Probe::device(*window)->props)
        record = { beyond + 1, beyond + 2, beyond + 3, beyond + 4, beyond + 5, 1 };
    Probe::takeRanges(*window);
    for (const ImageProperty &row : imageProperties())
        EXPECT_EQ((std::vector{ row.min, row.max, row.step, row.def, row.cur }),
            (std::vector{ 1, 2, 0, 4, 5 }))
            << row.name;
    EXPECT_EQ((std::vector{ min_fliker, max_fliker, default_fliker, cur_fliker }),
        (std::vector{ 1, 2, 4, 5 }));
}

TEST_F(SettingsLoad, UnreadableValueIsShownAsTheRecordHasIt)
{
    plugInOnRanges(1);
    camera(1).stall(Control::Sharpness, RequestCode::GetCur);
    start(1);
    expectRow(property(Control::Sharpness), { 0, 6, "0" }); // never read; the slider's minimum
}

TEST_F(SettingsLoad, ChangedAntiFlickerChoiceIsWrittenBackOnceThePollIsDone)
{
    plugInOnRanges(1);
    makeWindow();
    poll();
    EXPECT_EQ(sent(), allReads() + allReads()) << "from OFF to 50HZ, before the poll is done";
    const struct
    {
        int reported;
        Requests written;
        int index;
    } rows[] = { { 2, { "power_line_frequency 2" }, 2 }, { 2, {}, 2 },
        { 0, { "power_line_frequency 0" }, 0 }, { 3, {}, -1 } };
    for (const auto &row : rows) {
        camera(1).setRange(Control::PowerLineFrequency, { 0, 3, 2, row.reported, 1 });
        window->Setting_Press(0);
        EXPECT_EQ(sent(), allReads() + row.written) << row.reported;
        EXPECT_EQ(flickerChoice()->currentIndex(), row.index);
        EXPECT_EQ(cur_fliker, row.reported);
    }
}

} // namespace
