// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT
#include "virtual_camera/camera/camera_model.h"

#include "virtual_camera/camera/little_endian.h"
#include "virtual_camera/camera/streaming_parameters.h"
#include "virtual_camera/camera/vendor_command.h"

#include <algorithm>
#include <utility>

namespace virtual_camera {

namespace {

using Kind = ControlTraits::Kind;

constexpr std::uint8_t toInterface = 0x21;
constexpr std::uint8_t fromInterface = 0xa1;
constexpr std::uint8_t errorCodeSelector = 0x02;
constexpr std::uint8_t canBeReadAndWritten = 0x03;

// What a relative control answers for its range: directions are 0, speeds are these.
struct MotionRange
{
    Control control;
    std::vector<std::int64_t> min;
    std::vector<std::int64_t> max;
    std::vector<std::int64_t> res;
};

const MotionRange &motionRange(Control control)
{
    static const std::vector<MotionRange> ranges{
        { Control::PantiltRelative, { 0, 1, 0, 1 }, { 0, fastestPan, 0, fastestTilt },
            { 0, 1, 0, 1 } },
        { Control::ZoomRelative, { 0, 0, 1 }, { 0, 1, fastestZoom }, { 0, 0, 1 } },
        { Control::FocusRelative, { 0, 1 }, { 0, fastestFocus }, { 0, 1 } },
    };
    return *std::find_if(ranges.begin(), ranges.end(),
        [control](const MotionRange &range) { return range.control == control; });
}

std::int64_t limitOf(const Range &range, RequestCode code)
{
    switch (code) {
    case RequestCode::GetMin:
        return range.min;
    case RequestCode::GetMax:
        return range.max;
    case RequestCode::GetRes:
        return range.res;
    default:
        return range.def;
    }
}

// A camera whose range is upside down does not know what to refuse.
bool within(const Range &range, std::int64_t value)
{
    return range.min > range.max || (value >= range.min && value <= range.max);
}

bool isDirection(std::int64_t value) { return value >= -1 && value <= 1; }

bool hasRange(const ControlTraits &control, RequestCode code)
{
    return control.kind != Kind::Switch || code == RequestCode::GetDef;
}

} // namespace

CameraModel::CameraModel(CameraDescription description, Clock clock)
    : m_description(std::move(description)), m_mechanics(m_description, std::move(clock)),
      m_streamingProbe(defaultStreamingParameters())
{
    for (const ControlTraits &control : allControls()) {
        m_motion[indexOf(control.control)].assign(control.length(), 0);
        store(control.control, m_description.range(control.control).cur);
    }
}

Answer CameraModel::refuse(RequestError error)
{
    m_lastError = error;
    return Answer::stall();
}

Answer CameraModel::answer(const ControlRequest &request)
{
    if (request.requestType != toInterface && request.requestType != fromInterface)
        return refuse(RequestError::InvalidRequest);
    if (request.interfaceNumber() == streamingInterface)
        return answerStreaming(request);
    if (request.interfaceNumber() != controlInterface || request.entity() > outputTerminal)
        return refuse(RequestError::InvalidUnit);
    if ((request.value & 0xffU) != 0)
        return refuse(RequestError::InvalidControl);
    if (request.entity() == 0)
        return answerErrorCode(request);
    const ControlTraits *control = findControl(request.entity(), request.selector());
    if (control == nullptr || !m_description.supports(control->control))
        return refuse(RequestError::InvalidControl);
    return answerControl(*control, request);
}

Answer CameraModel::answerErrorCode(const ControlRequest &request)
{
    if (request.selector() != errorCodeSelector)
        return refuse(RequestError::InvalidControl);
    if (!request.hostReads() || request.length == 0)
        return refuse(RequestError::InvalidRequest);
    switch (static_cast<RequestCode>(request.request)) {
    case RequestCode::GetCur:
        return Answer::done({ static_cast<std::uint8_t>(m_lastError) });
    case RequestCode::GetInfo:
        return Answer::done({ 0x01 });
    default:
        return refuse(RequestError::InvalidRequest);
    }
}

Answer CameraModel::answerStreaming(const ControlRequest &request)
{
    if (request.entity() != 0)
        return refuse(RequestError::InvalidUnit);
    const std::optional<Answer> answer = answerStreamingRequest(request, m_streamingProbe);
    if (!answer)
        return refuse(RequestError::InvalidRequest);
    m_lastError = RequestError::None;
    return *answer;
}

Answer CameraModel::answerControl(const ControlTraits &control, const ControlRequest &request)
{
    const auto code = static_cast<RequestCode>(request.request);
    if (code == RequestCode::SetCur)
        return request.hostReads() ? refuse(RequestError::InvalidRequest) : set(control, request);
    Bytes bytes;
    switch (code) {
    case RequestCode::GetCur:
        bytes = current(control);
        break;
    case RequestCode::GetMin:
    case RequestCode::GetMax:
    case RequestCode::GetRes:
    case RequestCode::GetDef:
        if (hasRange(control, code))
            bytes = limit(control, code);
        break;
    case RequestCode::GetLen:
        append(bytes, static_cast<std::int64_t>(control.length()), 2);
        break;
    case RequestCode::GetInfo:
        bytes = { canBeReadAndWritten };
        break;
    default:
        break;
    }
    // A host that asks for less than the whole value would misread it.
    if (bytes.empty() || !request.hostReads() || request.length < bytes.size())
        return refuse(RequestError::InvalidRequest);
    m_lastError = RequestError::None;
    return Answer::done(bytes);
}

Answer CameraModel::set(const ControlTraits &control, const ControlRequest &request)
{
    if (request.length != control.length() || request.data.size() != control.length())
        return refuse(RequestError::InvalidRequest);
    const std::vector<std::int64_t> values = decodeFields(control, request.data.data());
    const RequestError error = checkValues(control, values);
    if (error != RequestError::None)
        return refuse(error);
    if (control.kind == Kind::Motion)
        m_motion[indexOf(control.control)] = request.data;
    apply(control, values);
    m_lastError = RequestError::None;
    return Answer::done();
}

Bytes CameraModel::current(const ControlTraits &control)
{
    if (control.kind == Kind::Motion)
        return m_motion[indexOf(control.control)];
    const Place place = state().place();
    switch (control.control) {
    case Control::PantiltAbsolute:
        return encodeFields(control, { place.pan, place.tilt });
    case Control::ZoomAbsolute:
        return encodeFields(control, { place.zoom });
    case Control::FocusAbsolute:
        return encodeFields(control, { place.focus });
    default:
        return encodeFields(control, { m_state.value(control.control) });
    }
}

Bytes CameraModel::limit(const ControlTraits &control, RequestCode code) const
{
    if (control.kind == Kind::Motion) {
        const MotionRange &range = motionRange(control.control);
        if (code == RequestCode::GetMax)
            return encodeFields(control, range.max);
        return encodeFields(control, code == RequestCode::GetRes ? range.res : range.min);
    }
    std::vector<std::int64_t> values{ limitOf(m_description.range(control.control), code) };
    if (control.control == Control::PantiltAbsolute)
        values.push_back(limitOf(m_description.tilt, code));
    return encodeFields(control, values);
}

RequestError CameraModel::checkValues(
    const ControlTraits &control, const std::vector<std::int64_t> &values) const
{
    bool good = true;
    switch (control.control) {
    case Control::PantiltRelative:
        good = isDirection(values[0]) && isDirection(values[2]);
        break;
    case Control::ZoomRelative:
        good = isDirection(values[0]) && values[1] <= 1;
        break;
    case Control::FocusRelative:
        good = isDirection(values[0]);
        break;
    case Control::PantiltAbsolute:
        good = within(m_description.range(control.control), values[0])
            && within(m_description.tilt, values[1]);
        break;
    default:
        good = within(m_description.range(control.control), values[0]);
        break;
    }
    if (!good)
        return RequestError::OutOfRange;
    // The temperature belongs to the automatic while that is on.
    if (control.control == Control::WhiteBalanceTemperature && m_state.autoWhiteBalance)
        return RequestError::WrongState;
    return RequestError::None;
}

void CameraModel::apply(const ControlTraits &control, const std::vector<std::int64_t> &values)
{
    const auto number = [&values](std::size_t i) { return static_cast<int>(values[i]); };
    switch (control.control) {
    case Control::PantiltRelative:
        m_mechanics.runPan(number(0), number(1));
        m_mechanics.runTilt(number(2), number(3));
        return;
    case Control::ZoomRelative:
        m_mechanics.runZoom(number(0), number(2));
        return;
    case Control::FocusRelative:
        m_mechanics.runFocus(number(0), number(1));
        return;
    case Control::PantiltAbsolute:
        m_mechanics.travelPanTilt(values[0], values[1]);
        return;
    case Control::ZoomAbsolute:
        m_mechanics.travelZoom(values[0]);
        return;
    case Control::FocusAbsolute:
        m_mechanics.travelFocus(values[0]);
        return;
    case Control::RollAbsolute:
        applyVendorCommand(number(0));
        break;
    default:
        break;
    }
    store(control.control, values[0]);
}

void CameraModel::store(Control control, std::int64_t value)
{
    m_state.values[indexOf(control)] = value;
    if (control == Control::FocusAuto)
        m_state.autoFocus = value != 0;
    else if (control == Control::WhiteBalanceTemperatureAuto)
        m_state.autoWhiteBalance = value != 0;
}

void CameraModel::applyVendorCommand(int code)
{
    const VendorCommand command = decodeVendorCommand(code);
    switch (command.kind) {
    case VendorCommand::Kind::Mirror:
        m_state.mirror = command.on;
        break;
    case VendorCommand::Kind::Flip:
        m_state.flip = command.on;
        break;
    case VendorCommand::Kind::Mute:
        m_state.mute = command.on;
        break;
    case VendorCommand::Kind::AutoFocus:
        store(Control::FocusAuto, command.on ? 1 : 0);
        break;
    case VendorCommand::Kind::Home:
        m_mechanics.travel({ m_description.range(Control::PantiltAbsolute).def,
            m_description.tilt.def, m_description.range(Control::ZoomAbsolute).def,
            m_description.range(Control::FocusAbsolute).def });
        break;
    case VendorCommand::Kind::Menu:
        m_state.menu = command.on;
        break;
    case VendorCommand::Kind::Framing:
        m_state.framing = command.on;
        break;
    case VendorCommand::Kind::Freeze:
        m_state.freeze = command.on;
        break;
    case VendorCommand::Kind::StorePreset:
        m_state.presets[command.preset] = state().place();
        break;
    case VendorCommand::Kind::ClearPreset:
        m_state.presets.erase(command.preset);
        break;
    case VendorCommand::Kind::RecallPreset:
        if (const auto preset = m_state.presets.find(command.preset);
            preset != m_state.presets.end())
            m_mechanics.travel(preset->second);
        break;
    case VendorCommand::Kind::Unknown:
        break;
    }
}

CameraState CameraModel::state()
{
    m_mechanics.describe(m_state);
    return m_state;
}

void CameraModel::setRange(Control control, const Range &range)
{
    m_description.range(control) = range;
    store(control, range.cur);
}

void CameraModel::cutPower() { m_mechanics.stop(); }

} // namespace virtual_camera
