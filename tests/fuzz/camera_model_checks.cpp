// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT
#include "tests/fuzz/camera_model_checks.h"

#include "tests/fuzz/compare.h"
#include "virtual_camera/camera/little_endian.h"
#include "virtual_camera/camera/vendor_command.h"
#include "virtual_camera/usb/request_log.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace fuzz {

using namespace virtual_camera;
using Kind = ControlTraits::Kind;

namespace {

// The slowest motor takes three days from one end of the widest range to the other.
constexpr std::chrono::hours untilAtRest{ 1000 };

// What the log says of a request, whatever it is.
void checkLogLine(const ControlRequest &request, const Answer &answer)
{
    LogRecord record;
    record.device = 1;
    record.request = request;
    if (request.hostReads())
        record.request.data = answer.data;
    record.result = answer.stalled ? LogRecord::Result::Stall : LogRecord::Result::Ok;
    expectOneLine(toTimedText(record));
}

std::int64_t withinEnds(const Range &range, std::int64_t value)
{
    return std::clamp(value, std::min(range.min, range.max), std::max(range.min, range.max));
}

void checkMotor(const AxisState &motor, const Range &range)
{
    const auto lowest = static_cast<double>(std::min({ range.min, range.max, range.cur }));
    const auto highest = static_cast<double>(std::max({ range.min, range.max, range.cur }));
    expect(std::isfinite(motor.velocity), "a motor's velocity is a number");
    expect(motor.position >= lowest && motor.position <= highest,
        "a motor stays between its ends and where it stood at first");
}

bool announces(const Range &range, std::int64_t value)
{
    return range.min > range.max || (value >= range.min && value <= range.max);
}

ControlRequest requestTo(const ControlTraits &control, RequestCode code)
{
    ControlRequest request;
    request.request = static_cast<std::uint8_t>(code);
    request.value = static_cast<std::uint16_t>(control.selector << 8);
    request.index = static_cast<std::uint16_t>(control.entity << 8 | controlInterface);
    return request;
}

bool isAutomatic(const ControlRequest &request, const CameraState &state)
{
    const ControlTraits *control = findControl(request.entity(), request.selector());
    if (control == nullptr || request.interfaceNumber() != controlInterface)
        return false;
    const bool focus =
        control->control == Control::FocusAbsolute || control->control == Control::FocusRelative;
    return (focus && state.autoFocus)
        || (control->control == Control::WhiteBalanceTemperature && state.autoWhiteBalance);
}

} // namespace

ControlRequest setRequest(const ControlTraits &control, Bytes data)
{
    ControlRequest request = requestTo(control, RequestCode::SetCur);
    request.requestType = 0x21;
    request.length = static_cast<std::uint16_t>(data.size());
    request.data = std::move(data);
    return request;
}

ControlRequest getRequest(const ControlTraits &control, RequestCode code, std::uint16_t length)
{
    ControlRequest request = requestTo(control, code);
    request.requestType = 0xa1;
    request.length = length;
    return request;
}

CheckedCamera::CheckedCamera(CameraDescription description)
    : m_made(std::move(description)), m_camera(m_made, [this] { return m_now; })
{
    checkState();
}

void CheckedCamera::request(const ControlRequest &request)
{
    const CameraState before = m_camera.state();
    const Bytes valueBefore = valueOf(request);
    const Answer answer = m_camera.answer(request);
    checkLogLine(request, answer);
    checkState();
    expect((m_camera.lastError() != RequestError::None) == answer.stalled,
        "there is an error code when a request stalled, and only then");
    if (answer.stalled || request.hostReads())
        expect(same(before, m_camera.state()) && valueBefore == valueOf(request),
            "a request that stalls or reads changes nothing");
    if (answer.stalled) {
        expect(answer.data.empty(), "a request that stalls has no answer");
        return;
    }
    expect(answer.data.size() <= request.length, "an answer is not longer than was asked for");
    if (request.hostReads())
        return checkRead(request, answer.data);
    expect(!isAutomatic(request, before), "what an automatic controls cannot be set");
    checkWritten(request);
}

// What the control that the request is for answers now. The camera does not notice.
Bytes CheckedCamera::valueOf(const ControlRequest &request) const
{
    const ControlTraits *control = findControl(request.entity(), request.selector());
    if (control == nullptr || request.interfaceNumber() != controlInterface)
        return {};
    CameraModel asked = m_camera;
    return asked.answer(getRequest(*control, RequestCode::GetCur, 255)).data;
}

void CheckedCamera::wait(std::chrono::microseconds time)
{
    m_now += time;
    checkState();
}

void CheckedCamera::announce(const ControlTraits &control, const Range &range, std::size_t field)
{
    m_camera.setRange(control.control, range, field);
    expect(
        same(m_camera.description().range(control.control, field), range), "a range is announced");
    checkState();
}

void CheckedCamera::go(const Place &place)
{
    const CameraState before = m_camera.state();
    RemoteOrder order;
    order.moves = { place.pan, place.tilt, place.zoom, place.focus };
    const auto problem = m_camera.go(order);
    checkState();
    if (problem)
        return expect(same(before, m_camera.state()), "a camera that does not go stays as it is");
    checkArrival(place);
}

void CheckedCamera::cutPower()
{
    m_camera.cutPower();
    expect(!m_camera.state().moving(), "nothing moves without power");
    checkState();
}

void CheckedCamera::switchOn()
{
    const std::map<int, Place> presets = m_camera.state().presets;
    m_camera.switchOn();
    m_made = m_camera.description();
    CameraModel another(m_made, [] { return std::chrono::microseconds(0); });
    CameraState fresh = another.state();
    fresh.presets = presets;
    expect(same(m_camera.state(), fresh), "a camera forgets all but its presets");
    checkState();
}

void CheckedCamera::finish() { stateAtRest(); }

void CheckedCamera::checkState()
{
    const CameraState state = m_camera.state();
    checkMotor(state.pan, m_made.range(Control::PantiltAbsolute));
    checkMotor(state.tilt, m_made.range(Control::PantiltAbsolute, 1));
    checkMotor(state.zoom, m_made.range(Control::ZoomAbsolute));
    checkMotor(state.focus, m_made.range(Control::FocusAbsolute));
    expect(state.autoFocus == (state.value(Control::FocusAuto) != 0),
        "the focus switch shows whether focus is automatic");
    expect(state.autoWhiteBalance == (state.value(Control::WhiteBalanceTemperatureAuto) != 0),
        "the white balance switch shows whether white balance is automatic");
    for (const auto &[preset, place] : state.presets)
        expect(preset >= 0 && preset < 40, "a preset has one of the numbers that can be stored");
}

// What comes after the motors stop by themselves; the camera itself does not get older.
CameraState CheckedCamera::stateAtRest()
{
    CameraModel later = m_camera;
    m_now += untilAtRest;
    const CameraState state = later.state();
    m_now -= untilAtRest;
    expect(!state.moving(), "every motion comes to an end");
    return state;
}

// The other motors may be under way to somewhere else.
void CheckedCamera::checkArrival(Control control, const std::vector<std::int64_t> &values)
{
    const Place there = stateAtRest().place();
    const std::int64_t reached = withinEnds(m_made.range(control), values[0]);
    if (control == Control::PantiltAbsolute)
        expect(there.pan == reached && there.tilt == withinEnds(m_made.tilt, values[1]),
            "the camera arrives where it was sent");
    else
        expect((control == Control::ZoomAbsolute ? there.zoom : there.focus) == reached,
            "the lens arrives where it was sent");
}

void CheckedCamera::checkArrival(const Place &place)
{
    checkArrival(Control::PantiltAbsolute, { place.pan, place.tilt });
    checkArrival(Control::ZoomAbsolute, { place.zoom });
    checkArrival(Control::FocusAbsolute, { place.focus });
}

void CheckedCamera::checkRead(const ControlRequest &request, const Bytes &data)
{
    if (request.interfaceNumber() != controlInterface)
        return;
    const auto code = static_cast<RequestCode>(request.request);
    const auto asMuchOf = [&](std::size_t whole) {
        return data.size() == std::min<std::size_t>(request.length, whole);
    };
    if (request.entity() == 0) {
        expect(asMuchOf(1) && (data.empty() || data[0] <= 7), "an error has one of the numbers");
        return;
    }
    const ControlTraits *control = findControl(request.entity(), request.selector());
    expect(control != nullptr && m_camera.description().supports(control->control),
        "only a control that the camera has answers");
    if (code == RequestCode::GetInfo) {
        expect(asMuchOf(1), "information is one byte");
        expect(data.empty()
                || (data[0] & 0x04U) == (isAutomatic(request, m_camera.state()) ? 0x04U : 0U),
            "what an automatic controls says that it is disabled");
    } else if (code == RequestCode::GetLen) {
        expect(asMuchOf(2) && (data.size() < 2 || readUnsigned(&data[0], 2) == control->length()),
            "the length is that of the control");
    } else {
        expect(asMuchOf(control->length()), "a value is as long as the control");
    }
}

void CheckedCamera::checkWritten(const ControlRequest &request)
{
    if (request.interfaceNumber() != controlInterface)
        return;
    const ControlTraits *control = findControl(request.entity(), request.selector());
    expect(request.request == static_cast<std::uint8_t>(RequestCode::SetCur) && control != nullptr
            && m_camera.description().supports(control->control)
            && request.data.size() == control->length(),
        "only a whole value for a control that the camera has is accepted");
    checkReadBack(*control, request.data);
}

void CheckedCamera::checkReadBack(const ControlTraits &control, const Bytes &written)
{
    const std::vector<std::int64_t> values = decodeFields(control, written.data());
    for (std::size_t i = 0; control.kind != Kind::Motion && i < values.size(); ++i)
        expect(announces(m_camera.description().range(control.control, i), values[i]),
            "only what is in the range is accepted");
    if (control.kind == Kind::Position)
        return checkArrival(control.control, values);
    if (control.control == Control::RollAbsolute)
        checkCommand(static_cast<int>(values[0]));
    const Answer answer = m_camera.answer(
        getRequest(control, RequestCode::GetCur, static_cast<std::uint16_t>(control.length())));
    expect(!answer.stalled, "what can be written can be read");
    if (control.kind == Kind::Motion)
        checkMotion(control, values, decodeFields(control, answer.data.data()));
    else
        expect(answer.data == written, "what was accepted is read back");
}

// A motor does what it was asked for, as fast as it can, or stands still at its end.
void CheckedCamera::checkMotion(const ControlTraits &control,
    const std::vector<std::int64_t> &asked, const std::vector<std::int64_t> &answered)
{
    const auto check = [&](std::size_t direction, std::size_t speed, std::int64_t fastest) {
        const std::int64_t possible = std::min(asked[speed], fastest);
        const bool runs = answered[direction] == asked[direction] && answered[speed] == possible;
        expect(runs || (answered[direction] == 0 && answered[speed] == 0),
            "a motor does what it is asked for or stands still");
        expect(answered[direction] != 0 || answered[speed] == 0, "what stands still has no speed");
    };
    switch (control.control) {
    case Control::PantiltRelative:
        check(0, 1, fastestPan);
        check(2, 3, fastestTilt);
        break;
    case Control::ZoomRelative:
        expect(answered[1] == asked[1], "digital zoom is read back");
        check(0, 2, fastestZoom);
        break;
    default:
        check(0, 1, fastestFocus);
        break;
    }
}

void CheckedCamera::checkCommand(int code)
{
    const VendorCommand command = decodeVendorCommand(code);
    const CameraState state = m_camera.state();
    const auto preset = state.presets.find(command.preset);
    switch (command.kind) {
    case VendorCommand::Kind::StorePreset:
        expect(preset != state.presets.end() && preset->second == state.place(),
            "a preset remembers where the camera looks");
        break;
    case VendorCommand::Kind::ClearPreset:
        expect(preset == state.presets.end(), "a cleared preset is gone");
        break;
    case VendorCommand::Kind::RecallPreset:
        if (preset != state.presets.end())
            checkArrival(preset->second);
        break;
    case VendorCommand::Kind::Home:
        checkArrival({ m_camera.description().range(Control::PantiltAbsolute).def,
            m_camera.description().tilt.def,
            m_camera.description().range(Control::ZoomAbsolute).def,
            m_camera.description().range(Control::FocusAbsolute).def });
        break;
    default:
        break;
    }
}

} // namespace fuzz
