// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

// Which requests a fault strikes, and what it does to them.

#include "tests/virtual_camera/model_test_support.h"
#include "virtual_camera/usb/faults.h"

#include <gmock/gmock.h>

using namespace virtual_camera;
using Effect = Fault::Effect;
using Result = LogRecord::Result;
using When = FaultSchedule::Kind;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

const ControlRequest readGamma = getRequest(traits(Control::Gamma), RequestCode::GetCur);
const ControlRequest gammaMinimum = getRequest(traits(Control::Gamma), RequestCode::GetMin);
const ControlRequest readGain = getRequest(traits(Control::Gain), RequestCode::GetCur);
const ControlRequest writeGamma = setRequest(traits(Control::Gamma), { 1, 1 });
const ControlRequest run = setRequest(traits(Control::PantiltRelative), { 0, 0, 0xff, 3 });
const ControlRequest stop = setRequest(traits(Control::PantiltRelative), { 0, 9, 0, 9 });
const ControlRequest zoomStop = setRequest(traits(Control::ZoomRelative), { 0, 1, 5 });
const ControlRequest zoom = setRequest(traits(Control::ZoomRelative), { 0xff, 1, 5 });

ControlRequest standardRead(std::uint8_t code)
{
    ControlRequest request;
    request.requestType = 0x80;
    request.request = code;
    request.value = 0x0302;
    request.length = 255;
    return request;
}
const ControlRequest readString = standardRead(6);
const ControlRequest readConfiguration = standardRead(8);

struct TargetRow
{
    const char *name;
    Effect effect;
    FaultTarget target;
    std::vector<ControlRequest> struck;
    std::vector<ControlRequest> spared;
};

class Target : public testing::TestWithParam<TargetRow>
{ };

TEST_P(Target, IsStruckAndNothingElse)
{
    Fault fault;
    fault.effect = GetParam().effect;
    fault.target = GetParam().target;
    for (const ControlRequest &request : GetParam().struck)
        EXPECT_TRUE(fault.strikes(request)) << int{ request.request } << ' ' << request.value;
    for (const ControlRequest &request : GetParam().spared)
        EXPECT_FALSE(fault.strikes(request)) << int{ request.request } << ' ' << request.value;
}

constexpr auto one = FaultTarget::Kind::OneControl;
INSTANTIATE_TEST_SUITE_P(Of, Target,
    testing::Values(TargetRow{ "Everything", Effect::Stall, {}, { readGamma, writeGamma, run },
                        { readString, readConfiguration } },
        TargetRow{ "EveryRead", Effect::Stall,
            { FaultTarget::Kind::Controls, {}, RequestCode::GetCur }, { readGamma, readGain },
            { gammaMinimum, writeGamma } },
        TargetRow{ "OneControl", Effect::Stall, { one, Control::Gamma, {} },
            { readGamma, gammaMinimum, writeGamma }, { readGain, run } },
        TargetRow{ "OneRequest", Effect::ProtocolError,
            { one, Control::Gamma, RequestCode::GetMin }, { gammaMinimum },
            { readGamma, writeGamma, readGain } },
        TargetRow{ "Answers", Effect::Wrong, { one, Control::Gamma, {} },
            { readGamma, gammaMinimum }, { writeGamma } },
        TargetRow{ "Descriptors", Effect::NoResponse, { FaultTarget::Kind::Descriptors, {}, {} },
            { readString }, { readConfiguration, readGamma } },
        TargetRow{ "Stops", Effect::LoseStop, { FaultTarget::Kind::Stops, {}, {} },
            { stop, zoomStop }, { run, zoom, writeGamma, readGamma } }),
    [](const auto &row) { return row.param.name; });

struct ScheduleRow
{
    const char *name;
    FaultSchedule schedule;
    std::vector<int> struck; // of ten requests, from 1
};

class Schedule : public testing::TestWithParam<ScheduleRow>
{ };

TEST_P(Schedule, CountsTheRequestsThatTheFaultIsAbout)
{
    Fault fault;
    fault.target = { one, Control::Gamma, RequestCode::GetCur };
    fault.schedule = GetParam().schedule;
    std::vector<int> struck;
    for (int number = 1; number <= 10; ++number) {
        EXPECT_FALSE(fault.strikes(readGain));
        EXPECT_FALSE(fault.strikes(gammaMinimum));
        if (fault.strikes(readGamma))
            struck.push_back(number);
    }
    EXPECT_EQ(struck, GetParam().struck);
}

INSTANTIATE_TEST_SUITE_P(Of, Schedule,
    testing::Values(ScheduleRow{ "Always", {}, { 1, 2, 3, 4, 5, 6, 7, 8, 9, 10 } },
        ScheduleRow{ "First", { When::At, 1, 1 }, { 1 } },
        ScheduleRow{ "Third", { When::At, 3, 1 }, { 3 } },
        ScheduleRow{ "EveryFourth", { When::Every, 4, 1 }, { 4, 8 } },
        ScheduleRow{ "None", { When::Share, 0, 1 }, {} },
        ScheduleRow{ "All", { When::Share, 100, 1 }, { 1, 2, 3, 4, 5, 6, 7, 8, 9, 10 } }),
    [](const auto &row) { return row.param.name; });

std::vector<bool> draw(unsigned percent, std::uint32_t seed)
{
    Fault fault;
    fault.schedule = { When::Share, percent, seed };
    std::vector<bool> struck;
    for (int i = 0; i < 1000; ++i)
        struck.push_back(fault.strikes(readGamma));
    return struck;
}

TEST(Share, IsDrawnBySeed)
{
    const std::vector<bool> first = draw(30, 1);
    EXPECT_EQ(draw(30, 1), first);
    EXPECT_NE(draw(30, 2), first);
    EXPECT_NEAR(static_cast<double>(std::count(first.begin(), first.end(), true)), 300, 50);
}

Fault fault(Effect effect, FaultTarget target = {}, std::size_t bytes = 0)
{
    Fault made;
    made.effect = effect;
    made.target = target;
    made.bytes = bytes;
    return made;
}

struct DamageRow
{
    const char *name;
    std::vector<Fault> faults;
    Bytes answer; // of { 1, 2 }, when two bytes were asked for
    Result result;
};

class Answers : public testing::TestWithParam<DamageRow>
{ };

TEST_P(Answers, AreSpoilt)
{
    Faults faults;
    for (const Fault &each : GetParam().faults)
        faults.add(each);
    Bytes answer{ 1, 2 };
    const Damage damage = faults.strike(readGamma);
    EXPECT_FALSE(damage.instead);
    EXPECT_EQ(damage.spoil(answer, readGamma.length), GetParam().result);
    EXPECT_EQ(answer, GetParam().answer);
}

INSTANTIATE_TEST_SUITE_P(By, Answers,
    testing::Values(DamageRow{ "Nothing", {}, { 1, 2 }, Result::Ok },
        DamageRow{ "Short", { fault(Effect::Short, {}, 1) }, { 1 }, Result::Short },
        DamageRow{ "Empty", { fault(Effect::Short, {}, 0) }, {}, Result::Short },
        DamageRow{ "NotShortEnough", { fault(Effect::Short, {}, 2) }, { 1, 2 }, Result::Ok },
        DamageRow{ "Babble", { fault(Effect::Long, {}, 3) }, { 1, 2 }, Result::Overflow },
        DamageRow{ "Wrong", { fault(Effect::Wrong) }, { 0xfe, 0xfd }, Result::Wrong },
        DamageRow{ "WrongAndShort", { fault(Effect::Wrong), fault(Effect::Short, {}, 1) }, { 0xfe },
            Result::Short }),
    [](const auto &row) { return row.param.name; });

TEST(Answers, AreFilledUpToWhatTheHostHasRoomFor)
{
    Faults faults;
    faults.add(fault(Effect::Long, {}, 4));
    Bytes answer{ 1, 2 };
    EXPECT_EQ(faults.strike(readGamma).spoil(answer, 8), Result::Long);
    EXPECT_THAT(answer, ElementsAre(1, 2, 0, 0));
}

TEST(Faults, OfTheWireHideAStall)
{
    for (const auto &[effect, result] : { std::pair(Effect::ProtocolError, Result::ProtocolError),
             std::pair(Effect::NoResponse, Result::NoResponse) }) {
        Faults faults;
        faults.add(fault(effect));
        EXPECT_EQ(faults.strike(readGamma).instead, result);
        faults.add(fault(Effect::Stall));
        EXPECT_EQ(faults.strike(readGamma).instead, result);
        faults.remove(effect);
        EXPECT_EQ(faults.strike(readGamma).instead, Result::Stall);
    }
}

TEST(Faults, AreReplacedByThoseOfTheSameKind)
{
    Faults faults;
    faults.add(fault(Effect::Short, { one, Control::Gamma, {} }, 1));
    faults.add(fault(Effect::Short, { one, Control::Gamma, {} }, 0));
    faults.add(fault(Effect::Short, { one, Control::Gain, {} }, 1));
    faults.add(fault(Effect::Short, { one, Control::Gamma, RequestCode::GetMin }, 1));
    EXPECT_EQ(faults.requests.size(), 3U);
    EXPECT_EQ(faults.strike(readGamma).shortened, 0U);
    faults.remove(Effect::Stall);
    EXPECT_EQ(faults.requests.size(), 3U);
    faults.remove(Effect::Short);
    EXPECT_THAT(faults.requests, IsEmpty());
}

} // namespace
