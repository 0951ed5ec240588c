// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

// Single image properties: widths and signs of what is read and written.

#include "tests/device/camera_fixture.h"
#include "tests/device/operations.h"

#include <climits>
#include <cstring>

namespace {

using testing::ElementsAre;
using virtual_camera::Control;
using virtual_camera::Range;

struct Getter
{
    const char *name;
    bool (BaseDevice::*get)(long *);
    Control control;
    std::size_t bytes;
    bool isSigned;
};

const Getter getters[] = {
    { "Brightness", &BaseDevice::GetBrightness, Control::Brightness, 2, true },
    { "Contrast", &BaseDevice::GetContrast, Control::Contrast, 2, false },
    { "Gamma", &BaseDevice::GetGamma, Control::Gamma, 2, false },
    { "BLC", &BaseDevice::GetBLC, Control::BacklightCompensation, 2, false },
    { "Saturation", &BaseDevice::GetSaturation, Control::Saturation, 2, false },
    { "Sharpness", &BaseDevice::GetSharpness, Control::Sharpness, 2, false },
    { "WhiteBalance", &BaseDevice::GetWhiteBalance, Control::WhiteBalanceTemperature, 2, false },
    { "Gain", &BaseDevice::GetGain, Control::Gain, 2, false },
    { "Flicker", &BaseDevice::GetFlicker, Control::PowerLineFrequency, 1, false },
};
const Getter positions[] = {
    { "Zoom", &BaseDevice::GetZoom, Control::ZoomAbsolute, 2, false },
    { "Focus", &BaseDevice::GetFocus, Control::FocusAbsolute, 2, false },
};

class Reading : public OpenCamera, public testing::WithParamInterface<Getter>
{
protected:
    // What the getter makes of a value that the camera has.
    long read(long value)
    {
        camera().setRange(GetParam().control, Range{ 0, 1, 0, value, 1 });
        long out = untouched;
        EXPECT_TRUE((device->*GetParam().get)(&out));
        return out;
    }
};

TEST_P(Reading, ReturnsEveryValueOfItsWidth)
{
    const long top = 1L << (8 * GetParam().bytes);
    for (const long value : { 0L, 1L, top / 2 - 1, top / 2, top - 64, top - 1 }) {
        const long expected = GetParam().isSigned && value >= top / 2 ? value - top : value;
        EXPECT_EQ(read(expected), expected);
    }
}

std::string nameOf(const testing::TestParamInfo<Getter> &row) { return row.param.name; }
INSTANTIATE_TEST_SUITE_P(Property, Reading, testing::ValuesIn(getters), nameOf);

// Fills the stack below with bytes that a forgotten variable would show.
[[gnu::noinline]] void soilTheStack()
{
    volatile unsigned char dirt[4096];
    for (volatile unsigned char &byte : dirt)
        byte = 0xa5;
}

class ShortAnswer : public OpenCamera, public testing::WithParamInterface<Getter>
{ };

TEST_P(ShortAnswer, ReadsAsZeroNeverAsWhatMemoryHeld)
{
    for (std::size_t bytes = 0; bytes < GetParam().bytes; ++bytes) {
        camera().answerShort(GetParam().control, bytes);
        long out = untouched;
        soilTheStack();
        EXPECT_TRUE((device->*GetParam().get)(&out)) << "libuvc takes it for success";
        EXPECT_EQ(out, 0) << bytes << " bytes answered";
    }
}

INSTANTIATE_TEST_SUITE_P(Property, ShortAnswer, testing::ValuesIn(getters), nameOf);
INSTANTIATE_TEST_SUITE_P(Lens, ShortAnswer, testing::ValuesIn(positions), nameOf);

struct Setter
{
    const char *name;
    bool (BaseDevice::*set)(int);
    wire::Control control;
};

class Writing : public OpenCamera, public testing::WithParamInterface<Setter>
{ };

TEST_P(Writing, SendsTheLowBits)
{
    for (const int value : { 0, 1, -1, -64, 127, 128, 255, 256, 257, 32767, 32768, -32768, 65535,
             65536, 70000, INT_MAX, INT_MIN }) {
        log().clear();
        EXPECT_TRUE((device->*GetParam().set)(value)) << value;
        wire::Bytes bytes{ static_cast<std::uint8_t>(value & 0xff) };
        if (GetParam().control.length == 2)
            bytes.push_back(static_cast<std::uint8_t>(value >> 8 & 0xff));
        EXPECT_THAT(received(), ElementsAre(wire::set(GetParam().control, bytes))) << value;
    }
}

INSTANTIATE_TEST_SUITE_P(Property, Writing,
    testing::Values(Setter{ "Brightness", &BaseDevice::SetBrightness, wire::brightness },
        Setter{ "Contrast", &BaseDevice::SetContrast, wire::contrast },
        Setter{ "Gamma", &BaseDevice::SetGamma, wire::gamma },
        Setter{ "BLC", &BaseDevice::SetBLC, wire::backlight },
        Setter{ "Saturation", &BaseDevice::SetSaturation, wire::saturation },
        Setter{ "Sharpness", &BaseDevice::SetSharpness, wire::sharpness },
        Setter{ "WhiteBalance", &BaseDevice::SetWhiteBalance, wire::whiteBalance },
        Setter{ "WhiteBalanceAuto", &BaseDevice::SetWhiteBalanceAuto, wire::whiteBalanceAuto },
        Setter{ "Flicker", &BaseDevice::SetFlicker, wire::powerLineFrequency }),
    [](const auto &row) { return row.param.name; });

} // namespace
