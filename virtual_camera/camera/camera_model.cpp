// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT
#include "virtual_camera/camera/camera_model.h"

#include "virtual_camera/camera/little_endian.h"
#include "virtual_camera/camera/streaming_parameters.h"

#include <algorithm>
#include <linux/usb/ch9.h>
#include <linux/usb/video.h>
#include <utility>

namespace virtual_camera {

namespace {

using Kind = ControlTraits::Kind;

constexpr std::uint8_t toInterface = USB_DIR_OUT | USB_TYPE_CLASS | USB_RECIP_INTERFACE;
constexpr std::uint8_t fromInterface = USB_DIR_IN | USB_TYPE_CLASS | USB_RECIP_INTERFACE;

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

bool isDirection(std::int64_t value) { return value >= -1 && value <= 1; }

bool isMotion(Control control, const std::vector<std::int64_t> &values)
{
    if (control == Control::PantiltRelative)
        return isDirection(values[0]) && isDirection(values[2]);
    if (control == Control::ZoomRelative)
        return isDirection(values[0]) && values[1] <= 1;
    return isDirection(values[0]);
}

bool hasRange(const ControlTraits &control, RequestCode code)
{
    return control.kind != Kind::Switch || code == RequestCode::GetDef;
}

} // namespace

CameraModel::CameraModel(CameraDescription description, Clock clock)
    : m_body(std::move(description), std::move(clock))
{ }

Answer CameraModel::refuse(RequestError error)
{
    m_lastError = error;
    return Answer::stall();
}

Answer CameraModel::succeed(const Answer &answer)
{
    m_lastError = RequestError::None;
    return answer;
}

Answer CameraModel::answer(const ControlRequest &request)
{
    if (request.requestType != toInterface && request.requestType != fromInterface)
        return refuse(RequestError::InvalidRequest);
    if (request.interfaceNumber() == streamingInterface)
        return answerStreaming(request);
    const bool known = request.entity() == 0 || description().hasEntity(request.entity());
    if (request.interfaceNumber() != controlInterface || !known)
        return refuse(RequestError::InvalidUnit);
    if ((request.value & 0xffU) != 0)
        return refuse(RequestError::InvalidControl);
    if (request.entity() == 0)
        return answerErrorCode(request);
    const ControlTraits *control = findControl(request.entity(), request.selector());
    if (control == nullptr || !description().supports(control->control))
        return refuse(RequestError::InvalidControl);
    return answerControl(*control, request);
}

Answer CameraModel::answerErrorCode(const ControlRequest &request)
{
    if (request.selector() != UVC_VC_REQUEST_ERROR_CODE_CONTROL)
        return refuse(RequestError::InvalidControl);
    if (!request.hostReads())
        return refuse(RequestError::InvalidRequest);
    switch (static_cast<RequestCode>(request.request)) {
    case RequestCode::GetCur:
        return succeed(Answer::reply(request, { static_cast<std::uint8_t>(m_lastError) }));
    case RequestCode::GetInfo:
        return succeed(Answer::reply(request, { UVC_CONTROL_CAP_GET }));
    default:
        return refuse(RequestError::InvalidRequest);
    }
}

Answer CameraModel::answerStreaming(const ControlRequest &request)
{
    if (request.entity() != 0)
        return refuse(RequestError::InvalidUnit);
    const auto outcome = answerStreamingRequest(request, description().videoClass);
    if (const auto *error = std::get_if<RequestError>(&outcome))
        return refuse(*error);
    return succeed(std::get<Answer>(outcome));
}

Answer CameraModel::answerControl(const ControlTraits &control, const ControlRequest &request)
{
    const auto code = static_cast<RequestCode>(request.request);
    if (code == RequestCode::SetCur)
        return request.hostReads() ? refuse(RequestError::InvalidRequest) : set(control, request);
    Bytes bytes;
    switch (code) {
    case RequestCode::GetCur:
        bytes = encodeFields(control, m_body.current(control));
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
        bytes = info(control);
        break;
    default:
        break;
    }
    if (bytes.empty() || !request.hostReads())
        return refuse(RequestError::InvalidRequest);
    return succeed(Answer::reply(request, std::move(bytes)));
}

Answer CameraModel::set(const ControlTraits &control, const ControlRequest &request)
{
    if (request.length != control.length() || request.data.size() != control.length())
        return refuse(RequestError::InvalidRequest);
    const std::vector<std::int64_t> values = decodeFields(control, request.data.data());
    const RequestError error = check(control, values);
    if (error != RequestError::None)
        return refuse(error);
    m_body.apply(control, values);
    return succeed(Answer::done());
}

Bytes CameraModel::limit(const ControlTraits &control, RequestCode code) const
{
    if (control.kind == Kind::Motion) {
        const MotionRange &range = motionRange(control.control);
        if (code == RequestCode::GetMax)
            return encodeFields(control, range.max);
        return encodeFields(control, code == RequestCode::GetRes ? range.res : range.min);
    }
    std::vector<std::int64_t> values;
    for (std::size_t field = 0; field < control.fields.size(); ++field)
        values.push_back(limitOf(description().range(control.control, field), code));
    return encodeFields(control, values);
}

Bytes CameraModel::info(const ControlTraits &control) const
{
    int bits = UVC_CONTROL_CAP_GET | UVC_CONTROL_CAP_SET;
    if (m_body.isAutomatic(control.control))
        bits |= UVC_CONTROL_CAP_DISABLED;
    if (control.changesByItself())
        bits |= UVC_CONTROL_CAP_AUTOUPDATE;
    return { static_cast<std::uint8_t>(bits) };
}

RequestError CameraModel::check(
    const ControlTraits &control, const std::vector<std::int64_t> &values) const
{
    bool good = control.kind != Kind::Motion || isMotion(control.control, values);
    for (std::size_t field = 0; control.kind != Kind::Motion && field < values.size(); ++field)
        good = good && description().range(control.control, field).takes(values[field]);
    if (!good)
        return RequestError::OutOfRange;
    return m_body.isAutomatic(control.control) ? RequestError::WrongState : RequestError::None;
}

void CameraModel::setRange(Control control, const Range &range, std::size_t field)
{
    m_body.setRange(control, range, field);
}

void CameraModel::switchOn()
{
    m_body.switchOn();
    m_lastError = RequestError::None;
}

} // namespace virtual_camera
