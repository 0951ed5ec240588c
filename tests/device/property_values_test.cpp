// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

// Reading all properties into the table, and restoring defaults from it.

#include "device/usb_device.h"
#include "tests/device/camera_fixture.h"

#include <algorithm>
#include <cstring>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using virtual_camera::Control;
using virtual_camera::Range;
using virtual_camera::RequestCode;

// A property, and a range that no other has.
struct Property
{
    PropertyId id;
    Control control;
    Range range; // min, max, default, current
};

// In the order in which they are read.
const std::vector<Property> properties{
    { PropertyBacklight, Control::BacklightCompensation, { 11, 12, 13, 14, 1 } },
    { PropertyGamma, Control::Gamma, { 21, 22, 23, 24, 1 } },
    { PropertyContrast, Control::Contrast, { 31, 32, 33, 34, 1 } },
    { PropertySaturation, Control::Saturation, { 41, 42, 43, 44, 1 } },
    { PropertyBrightness, Control::Brightness, { 51, 52, 53, 54, 1 } },
    { PropertySharpness, Control::Sharpness, { 61, 62, 63, 64, 1 } },
    { PropertyWhiteBalance, Control::WhiteBalanceTemperature, { 71, 72, 73, 74, 1 } },
    { PropertyFlicker, Control::PowerLineFrequency, { 81, 82, 83, 84, 1 } },
};

// A mark that no camera sends.
constexpr std::int64_t old = -777;

class PropertyTable : public OpenCamera
{
protected:
    void SetUp() override
    {
        OpenCamera::SetUp();
        for (const Property &property : properties)
            camera().setRange(property.control, property.range);
        device->props.fill({ old, old, old, old, old, old });
    }
    const PropertyRecord &record(PropertyId id) { return device->props.at(id); }
    // The four numbers that are read, in the order min, max, default, current.
    std::vector<std::int64_t> numbers(PropertyId id)
    {
        return { record(id).min, record(id).max, record(id).def, record(id).cur };
    }
};

TEST_F(PropertyTable, IsFilledWithWhatTheCameraReports)
{
    EXPECT_TRUE(device->GetPropertyValues());
    for (const Property &property : properties) {
        const Range &range = property.range;
        EXPECT_THAT(numbers(property.id), ElementsAre(range.min, range.max, range.def, range.cur));
        EXPECT_EQ(record(property.id).flags, 1);
        EXPECT_EQ(record(property.id).step, old) << "no resolution is asked for";
    }
}

TEST_F(PropertyTable, LeavesThe18OtherRecordsAlone)
{
    device->GetPropertyValues();
    const PropertyRecord mark{ old, old, old, old, old, old };
    EXPECT_EQ(std::count_if(device->props.begin(), device->props.end(),
                  [&](const auto &each) { return std::memcmp(&each, &mark, sizeof mark) == 0; }),
        18);
}

TEST_F(PropertyTable, BrightnessAloneHasASign)
{
    camera().setRange(Control::Brightness, Range{ -64, -1, -32768, -2, 1 });
    camera().setRange(Control::Contrast, Range{ 0xffc0, 0xffff, 0x8000, 0xfffe, 1 });
    camera().setRange(Control::PowerLineFrequency, Range{ 0x80, 0xff, 0xc0, 0xfe, 1 });
    device->GetPropertyValues();
    EXPECT_THAT(numbers(PropertyBrightness), ElementsAre(-64, -1, -32768, -2));
    EXPECT_THAT(numbers(PropertyContrast), ElementsAre(65472, 65535, 32768, 65534));
    EXPECT_THAT(numbers(PropertyFlicker), ElementsAre(128, 255, 192, 254));
}

TEST_F(PropertyTable, IsFlaggedAsFilledEvenWhenNothingWasRead)
{
    camera().stallEverything();
    EXPECT_TRUE(device->GetPropertyValues());
    EXPECT_EQ(received().size(), 32U) << "a failure does not cut the reading short";
    for (const Property &property : properties) {
        EXPECT_EQ(record(property.id).flags, 1);
        const bool flicker = property.id == PropertyFlicker;
        EXPECT_THAT(numbers(property.id), ElementsAre(0, 0, 0, flicker ? 0 : old));
    }
}

TEST_F(PropertyTable, IsFlaggedAsFilledWithoutACamera)
{
    device->CloseDevice();
    EXPECT_TRUE(device->GetPropertyValues());
    EXPECT_THAT(received(), IsEmpty());
    for (const Property &property : properties)
        EXPECT_EQ(record(property.id).flags, 1);
}

// What a bound that cannot be read shows: the value of the last read of the same kind. Current
// values are read on their own, but for anti-flicker.
struct StaleRow
{
    const char *name;
    Control control;
    std::vector<RequestCode> failing;
    PropertyId id;
    std::vector<std::int64_t> expected; // min, max, default, current
};

class StaleBound : public PropertyTable, public testing::WithParamInterface<StaleRow>
{ };

TEST_P(StaleBound, ShowsTheValueReadBefore)
{
    for (const RequestCode code : GetParam().failing)
        camera().stall(GetParam().control, code);
    EXPECT_TRUE(device->GetPropertyValues());
    EXPECT_THAT(numbers(GetParam().id), testing::ElementsAreArray(GetParam().expected));
    EXPECT_EQ(record(GetParam().id).flags, 1);
    EXPECT_EQ(received().size(), 32U);
    for (const Property &other : properties) {
        const Range &range = other.range;
        if (other.id != GetParam().id) {
            EXPECT_THAT(numbers(other.id), ElementsAre(range.min, range.max, range.def, range.cur));
        }
    }
}

constexpr RequestCode cur = RequestCode::GetCur;
constexpr RequestCode min = RequestCode::GetMin;
constexpr RequestCode max = RequestCode::GetMax;
constexpr RequestCode def = RequestCode::GetDef;

INSTANTIATE_TEST_SUITE_P(Kept, StaleBound,
    testing::Values(
        // The first read of all starts from 0.
        StaleRow{ "FirstOfAll", Control::BacklightCompensation, { min }, PropertyBacklight,
            { 0, 12, 13, 14 } },
        StaleRow{ "FirstProperty", Control::BacklightCompensation, { cur, min, max, def },
            PropertyBacklight, { 0, 0, 0, old } },
        // Unsigned 16-bit properties share one chain.
        StaleRow{ "Minimum", Control::Gamma, { min }, PropertyGamma, { 13, 22, 23, 24 } },
        StaleRow{ "Maximum", Control::Gamma, { max }, PropertyGamma, { 21, 21, 23, 24 } },
        StaleRow{ "Default", Control::Gamma, { def }, PropertyGamma, { 21, 22, 22, 24 } },
        StaleRow{ "Current", Control::Gamma, { cur }, PropertyGamma, { 21, 22, 23, old } },
        StaleRow{ "AllOfContrast", Control::Contrast, { min, max, def }, PropertyContrast,
            { 23, 23, 23, 34 } },
        StaleRow{ "AllOfSaturation", Control::Saturation, { min, max, def }, PropertySaturation,
            { 33, 33, 33, 44 } },
        // Brightness, read in between, has its own.
        StaleRow{ "AcrossBrightness", Control::Sharpness, { min, max, def }, PropertySharpness,
            { 43, 43, 43, 64 } },
        StaleRow{ "WhiteBalance", Control::WhiteBalanceTemperature, { min, max, def },
            PropertyWhiteBalance, { 63, 63, 63, 74 } },
        StaleRow{ "Brightness", Control::Brightness, { min, max, def }, PropertyBrightness,
            { 0, 0, 0, 54 } },
        StaleRow{ "BrightnessMaximum", Control::Brightness, { max }, PropertyBrightness,
            { 51, 51, 53, 54 } },
        StaleRow{ "BrightnessDefault", Control::Brightness, { def }, PropertyBrightness,
            { 51, 52, 52, 54 } },
        // Anti-flicker has a third, which its current value goes through as well.
        StaleRow{ "Flicker", Control::PowerLineFrequency, { cur, min, max, def }, PropertyFlicker,
            { 0, 0, 0, 0 } },
        StaleRow{ "FlickerCurrent", Control::PowerLineFrequency, { cur }, PropertyFlicker,
            { 81, 82, 83, 0 } },
        StaleRow{ "FlickerMinimum", Control::PowerLineFrequency, { min }, PropertyFlicker,
            { 84, 82, 83, 84 } },
        StaleRow{ "FlickerMaximum", Control::PowerLineFrequency, { max }, PropertyFlicker,
            { 81, 81, 83, 84 } },
        StaleRow{ "FlickerDefault", Control::PowerLineFrequency, { def }, PropertyFlicker,
            { 81, 82, 82, 84 } }),
    [](const auto &row) { return row.param.name; });

TEST_F(PropertyTable, KeepsTheValueReadBeforeWhenAnAnswerIsShort)
{
    for (const std::size_t bytes : { 0U, 1U }) {
        camera().answerShort(Control::Contrast, bytes);
        device->GetPropertyValues();
        EXPECT_THAT(numbers(PropertyContrast), ElementsAre(23, 23, 23, 0)) << bytes;
    }
    camera().answerShort(Control::PowerLineFrequency, 0);
    device->GetPropertyValues();
    EXPECT_THAT(numbers(PropertyFlicker), ElementsAre(0, 0, 0, 0));
}

TEST_F(PropertyTable, ReadsEachTimeFromScratch)
{
    device->GetPropertyValues();
    camera().stall(Control::BacklightCompensation, min);
    camera().stall(Control::Brightness, min);
    camera().stall(Control::PowerLineFrequency, cur);
    device->GetPropertyValues();
    EXPECT_EQ(record(PropertyBacklight).min, 0);
    EXPECT_EQ(record(PropertyBrightness).min, 0);
    EXPECT_EQ(record(PropertyFlicker).cur, 0);
}

// Brightness is the last of the four reads that decide about opening, and its value alone decides,
// not its bounds.
TEST_F(PropertyTable, DecidesAboutOpeningByTheCurrentBrightnessAlone)
{
    const auto opensAfterReading = [this] {
        device->GetPropertyValues();
        device->CloseDevice();
        camera().unstall();
        return device->OpenDevice("0", 0);
    };
    for (const Control control :
        { Control::BacklightCompensation, Control::Gamma, Control::Contrast }) {
        camera().stall(control);
        EXPECT_TRUE(opensAfterReading());
    }
    for (const RequestCode code : { min, max, def }) {
        camera().stall(Control::Brightness, code);
        EXPECT_TRUE(opensAfterReading());
    }
    camera().stall(Control::Brightness, cur);
    EXPECT_FALSE(opensAfterReading());
}

TEST_F(PropertyTable, ReadsCurrentValuesThroughTheInterface)
{
    struct Answering99 final : USBDevice
    {
        static bool answer(long *out)
        {
            *out = 99;
            return true;
        }
        bool GetBLC(long *out) override { return answer(out); }
        bool GetGamma(long *out) override { return answer(out); }
        bool GetContrast(long *out) override { return answer(out); }
        bool GetSaturation(long *out) override { return answer(out); }
        bool GetBrightness(long *out) override { return answer(out); }
        bool GetSharpness(long *out) override { return answer(out); }
        bool GetWhiteBalance(long *out) override { return answer(out); }
    };
    static auto *const other = new Answering99; // kept, as all devices are
    other->GetPropertyValues();
    for (const Property &property : properties)
        EXPECT_EQ(other->props.at(property.id).cur, property.id == PropertyFlicker ? 0 : 99);
}

TEST_F(PropertyTable, GivesThreeDefaultsBackAndNoOther)
{
    device->GetPropertyValues();
    log().clear();
    EXPECT_TRUE(device->SetDefaultValues());
    EXPECT_THAT(received(),
        ElementsAre(wire::set(wire::brightness, { 53, 0 }), wire::set(wire::saturation, { 43, 0 }),
            wire::set(wire::sharpness, { 63, 0 })));
}

TEST_F(PropertyTable, NarrowsDefaultsToTheirControls)
{
    device->props[PropertyBrightness].def = -5;
    device->props[PropertySaturation].def = 70000;
    device->props[PropertySharpness].def = -1;
    camera().setRange(Control::Saturation, Range{ 0, 65535, 0, 0, 1 });
    camera().setRange(Control::Sharpness, Range{ 0, 65535, 0, 0, 1 });
    device->SetDefaultValues();
    EXPECT_THAT(received(),
        ElementsAre(wire::set(wire::brightness, { 0xfb, 0xff }),
            wire::set(wire::saturation, { 0x70, 0x11 }),
            wire::set(wire::sharpness, { 0xff, 0xff })));
}

TEST_F(PropertyTable, SendsTheOtherDefaultsAfterOneIsRefused)
{
    for (const Control control : { Control::Brightness, Control::Saturation, Control::Sharpness }) {
        log().clear();
        camera().stall(control);
        EXPECT_TRUE(device->SetDefaultValues());
        EXPECT_EQ(received().size(), 3U);
        camera().unstall();
    }
}

} // namespace
