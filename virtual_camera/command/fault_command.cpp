// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT
#include "virtual_camera/command/fault_command.h"

#include "virtual_camera/camera/words.h"

#include <algorithm>
#include <limits>

namespace virtual_camera {

namespace {

using Effect = Fault::Effect;
using Problem = std::optional<std::string>;
using Words = std::vector<std::string_view>;

std::string quoted(std::string_view word) { return "'" + std::string(word) + "'"; }

template<typename Number>
Problem readNumber(Number &number, std::string_view word, std::int64_t lowest, std::int64_t highest)
{
    const std::optional<std::int64_t> given = parseNumber(word);
    if (!given || *given < lowest || *given > highest)
        return "expected a number from " + std::to_string(lowest) + " to " + std::to_string(highest)
            + ", not " + quoted(word);
    number = static_cast<Number>(*given);
    return std::nullopt;
}

// Takes "at K", "every K" or "share PERCENT [SEED]" off the end.
Problem readSchedule(FaultSchedule &schedule, Words &words)
{
    using Kind = FaultSchedule::Kind;
    constexpr std::int64_t most = 1000000;
    const auto start = std::find_if(words.begin(), words.end(),
        [](std::string_view word) { return word == "at" || word == "every" || word == "share"; });
    if (start == words.end())
        return std::nullopt;
    const Words given(start, words.end());
    words.erase(start, words.end());
    const bool share = given[0] == "share";
    if (given.size() < 2 || given.size() > (share ? 3U : 2U))
        return "expected 'at NUMBER', 'every NUMBER' or 'share PERCENT [SEED]' at the end";
    schedule.kind = share ? Kind::Share : given[0] == "at" ? Kind::At : Kind::Every;
    if (Problem problem = readNumber(schedule.number, given[1], share ? 0 : 1, share ? 100 : most))
        return problem;
    if (given.size() < 3)
        return std::nullopt;
    return readNumber(schedule.seed, given[2], 0, std::numeric_limits<std::uint32_t>::max());
}

Problem readWireError(Effect &effect, std::string_view word)
{
    if (word != "EPROTO" && word != "ETIME")
        return "expected EPROTO or ETIME, not " + quoted(word);
    effect = word == "EPROTO" ? Effect::ProtocolError : Effect::NoResponse;
    return std::nullopt;
}

// Takes off the end what the effect needs besides its target.
Problem readDetail(Fault &fault, Words &words)
{
    constexpr std::int64_t longestAnswer = 4096;
    const bool length = fault.effect == Effect::Short || fault.effect == Effect::Long;
    const bool error = fault.effect == Effect::ProtocolError || fault.effect == Effect::NoResponse;
    if (!length && !error)
        return std::nullopt;
    if (words.size() < 2)
        return length ? "expected a number of bytes" : "expected EPROTO or ETIME";
    const std::string_view last = words.back();
    words.pop_back();
    return length ? readNumber(fault.bytes, last, 0, longestAnswer)
                  : readWireError(fault.effect, last);
}

Problem readTarget(FaultTarget &target, const Words &words)
{
    if (words.empty())
        return "expected a control, 'all' or 'descriptors'";
    if (words[0] == "descriptors") {
        target.kind = FaultTarget::Kind::Descriptors;
    } else if (words[0] != "all") {
        const ControlTraits *control = findControl(words[0]);
        if (control == nullptr)
            return "no control is called " + quoted(words[0]);
        target.kind = FaultTarget::Kind::OneControl;
        target.control = control->control;
    }
    if (words.size() == 1)
        return std::nullopt;
    target.code = requestCodeFromName(words[1]);
    if (!target.code || target.kind == FaultTarget::Kind::Descriptors || words.size() > 2)
        return "no request is called " + quoted(words.back());
    return std::nullopt;
}

} // namespace

std::optional<std::string> readFault(Fault &fault, std::vector<std::string_view> words)
{
    if (Problem problem = readSchedule(fault.schedule, words))
        return problem;
    if (fault.effect == Effect::LoseStop) {
        fault.target.kind = FaultTarget::Kind::Stops;
        return words.empty() ? Problem() : "unexpected " + quoted(words[0]);
    }
    if (Problem problem = readDetail(fault, words))
        return problem;
    return readTarget(fault.target, words);
}

} // namespace virtual_camera
