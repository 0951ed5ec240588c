// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT
#include "virtual_camera/usb/faults.h"

#include <algorithm>
#include <linux/usb/ch9.h>
#include <tuple>
#include <utility>

namespace virtual_camera {

namespace {

using Effect = Fault::Effect;
using Result = LogRecord::Result;

const ControlTraits *controlOf(const ControlRequest &request)
{
    if (!request.isClass() || request.interfaceNumber() != controlInterface)
        return nullptr;
    return findControl(request.entity(), request.selector());
}

bool readsDescriptor(const ControlRequest &request)
{
    return request.isStandard() && request.hostReads() && request.request == USB_REQ_GET_DESCRIPTOR;
}

// A direction byte of 0 stands still, whatever the speed; pan and tilt must both.
bool isStop(const ControlRequest &request)
{
    const ControlTraits *control = controlOf(request);
    if (control == nullptr || control->kind != ControlTraits::Kind::Motion
        || request.request != static_cast<std::uint8_t>(RequestCode::SetCur)
        || request.data.size() != control->length())
        return false;
    const bool pantilt = control->control == Control::PantiltRelative;
    return request.data[0] == 0 && (!pantilt || request.data[2] == 0);
}

// Only what is read has an answer that can be damaged.
bool damagesAnswers(Effect effect)
{
    return effect == Effect::Short || effect == Effect::Long || effect == Effect::Wrong;
}

auto identity(const Fault &fault)
{
    const FaultTarget &target = fault.target;
    const bool one = target.kind == FaultTarget::Kind::OneControl;
    return std::make_tuple(
        fault.effect, target.kind, one ? target.control : Control{}, target.code);
}

std::string targetText(const FaultTarget &target)
{
    std::string text;
    switch (target.kind) {
    case FaultTarget::Kind::Controls:
        text = "all";
        break;
    case FaultTarget::Kind::OneControl:
        text = traits(target.control).name;
        break;
    case FaultTarget::Kind::Descriptors:
        return "descriptors";
    case FaultTarget::Kind::Stops:
        return {};
    }
    if (target.code)
        text += ' ' + std::string(requestCodeName(static_cast<std::uint8_t>(*target.code)));
    return text;
}

std::string scheduleText(const FaultSchedule &schedule)
{
    const std::string number = std::to_string(schedule.number);
    switch (schedule.kind) {
    case FaultSchedule::Kind::Always:
        break;
    case FaultSchedule::Kind::At:
        return "at " + number;
    case FaultSchedule::Kind::Every:
        return "every " + number;
    case FaultSchedule::Kind::Share:
        return "share " + number + ' ' + std::to_string(schedule.seed);
    }
    return {};
}

} // namespace

bool FaultTarget::matches(const ControlRequest &request) const
{
    if (code && static_cast<std::uint8_t>(*code) != request.request)
        return false;
    switch (kind) {
    case Kind::Controls:
        return request.isClass();
    case Kind::OneControl: {
        const ControlTraits *asked = controlOf(request);
        return asked != nullptr && asked->control == control;
    }
    case Kind::Descriptors:
        return readsDescriptor(request);
    case Kind::Stops:
        return isStop(request);
    }
    return false;
}

bool Fault::strikes(const ControlRequest &request)
{
    if (!target.matches(request) || (damagesAnswers(effect) && !request.hostReads()))
        return false;
    if (m_seen++ == 0)
        m_random.seed(schedule.seed);
    switch (schedule.kind) {
    case FaultSchedule::Kind::Always:
        return true;
    case FaultSchedule::Kind::At:
        return m_seen == schedule.number;
    case FaultSchedule::Kind::Every:
        return schedule.number > 0 && m_seen % schedule.number == 0;
    case FaultSchedule::Kind::Share:
        return m_random() % 100 < schedule.number;
    }
    return false;
}

const char *faultWord(Effect effect)
{
    switch (effect) {
    case Effect::Stall:
        return "stall";
    case Effect::Short:
        return "short";
    case Effect::Long:
        return "long";
    case Effect::Wrong:
        return "wrong";
    case Effect::ProtocolError:
    case Effect::NoResponse:
        return "fail";
    case Effect::LoseStop:
        return "lose-stop";
    }
    return "";
}

std::string faultText(const Fault &fault)
{
    std::string text = targetText(fault.target);
    const auto add = [&text](const std::string &word) {
        text += (text.empty() || word.empty() ? "" : " ") + word;
    };
    if (fault.effect == Effect::Short || fault.effect == Effect::Long)
        add(std::to_string(fault.bytes));
    if (fault.effect == Effect::ProtocolError)
        add("EPROTO");
    if (fault.effect == Effect::NoResponse)
        add("ETIME");
    add(scheduleText(fault.schedule));
    return text;
}

Result Damage::spoil(Bytes &answer, std::size_t asked) const
{
    Result result = Result::Ok;
    if (inverted && !answer.empty()) {
        std::transform(answer.begin(), answer.end(), answer.begin(),
            [](std::uint8_t byte) { return static_cast<std::uint8_t>(~byte); });
        result = Result::Wrong;
    }
    if (shortened && *shortened < answer.size()) {
        answer.resize(*shortened);
        result = Result::Short;
    } else if (lengthened && *lengthened > answer.size()) {
        answer.resize(std::min(*lengthened, asked));
        result = *lengthened > asked ? Result::Overflow : Result::Long;
    }
    return stopLost ? Result::Lost : result;
}

void Faults::add(Fault fault)
{
    const auto same = std::find_if(requests.begin(), requests.end(),
        [&fault](const Fault &known) { return identity(known) == identity(fault); });
    if (same == requests.end())
        requests.push_back(std::move(fault));
    else
        *same = std::move(fault);
}

void Faults::remove(Effect effect)
{
    requests.erase(std::remove_if(requests.begin(), requests.end(),
                       [effect](const Fault &fault) { return fault.effect == effect; }),
        requests.end());
}

Damage Faults::strike(const ControlRequest &request)
{
    Damage damage;
    for (Fault &fault : requests) {
        if (!fault.strikes(request))
            continue;
        switch (fault.effect) {
        case Effect::Stall:
            damage.instead = damage.instead.value_or(Result::Stall);
            break;
        case Effect::Short:
            damage.shortened = fault.bytes;
            break;
        case Effect::Long:
            damage.lengthened = fault.bytes;
            break;
        case Effect::Wrong:
            damage.inverted = true;
            break;
        case Effect::ProtocolError:
            damage.instead = Result::ProtocolError;
            break;
        case Effect::NoResponse:
            damage.instead = Result::NoResponse;
            break;
        case Effect::LoseStop:
            damage.stopLost = true;
            break;
        }
    }
    return damage;
}

} // namespace virtual_camera
