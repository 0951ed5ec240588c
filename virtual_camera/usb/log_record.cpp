// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT
#include "virtual_camera/usb/log_record.h"

#include "virtual_camera/camera/control_table.h"
#include "virtual_camera/camera/little_endian.h"
#include "virtual_camera/camera/vendor_command.h"

#include <array>
#include <cerrno>
#include <cstdio>

namespace virtual_camera {

namespace {

using Result = LogRecord::Result;

std::string hex(unsigned number, int digits)
{
    std::array<char, 16> text{};
    std::snprintf(text.data(), text.size(), "0x%0*x", digits, number);
    return text.data();
}

std::string bytesText(const Bytes &bytes)
{
    std::string text = "[";
    for (const std::uint8_t byte : bytes) {
        if (text.size() > 1)
            text += ' ';
        text += hex(byte, 2).substr(2);
    }
    return text + "]";
}

std::string fieldsText(const ControlTraits &control, const Bytes &bytes)
{
    std::string text;
    const std::vector<std::int64_t> values = decodeFields(control, bytes.data());
    for (std::size_t i = 0; i < values.size(); ++i) {
        const Field &field = control.fields[i];
        // Directions are one signed byte; their sign is what a reader looks for.
        const bool direction = field.isSigned && field.size == 1 && values[i] > 0;
        text += ' ' + std::string(field.name) + '=' + (direction ? "+" : "")
            + std::to_string(values[i]);
    }
    return text;
}

// What the bytes mean; empty when they are too few or too many to mean it.
std::string meaning(const ControlTraits &control, const ControlRequest &request)
{
    const Bytes &bytes = request.data;
    const auto code = static_cast<RequestCode>(request.request);
    if (code == RequestCode::GetInfo)
        return bytes.size() == 1 ? " info=" + hex(bytes[0], 2) : "";
    if (code == RequestCode::GetLen)
        return bytes.size() == 2 ? " length=" + std::to_string(readUnsigned(bytes.data(), 2)) : "";
    if (bytes.size() != control.length())
        return {};
    std::string text = fieldsText(control, bytes);
    if (code == RequestCode::SetCur && control.control == Control::RollAbsolute) {
        const int command = static_cast<int>(readSigned(bytes.data(), bytes.size()));
        text += " (" + decodeVendorCommand(command).words() + ")";
    }
    return text;
}

std::string target(const ControlRequest &request)
{
    if (request.interfaceNumber() == streamingInterface && request.entity() == 0) {
        if (request.selector() == 1)
            return "streaming_probe";
        if (request.selector() == 2)
            return "streaming_commit";
    }
    if (request.interfaceNumber() == controlInterface && request.entity() == 0
        && request.selector() == 2)
        return "request_error_code";
    return "unit=" + std::to_string(request.entity()) + " selector=" + hex(request.selector(), 2)
        + " interface=" + std::to_string(request.interfaceNumber());
}

std::string controlRequestText(const ControlRequest &request)
{
    std::string code(requestCodeName(request.request));
    if (code.empty())
        code = "request=" + hex(request.request, 2);
    const ControlTraits *control = request.interfaceNumber() == controlInterface
        ? findControl(request.entity(), request.selector())
        : nullptr;
    if (control == nullptr)
        return code + ' ' + target(request);
    return code + ' ' + control->name + meaning(*control, request);
}

std::string otherRequestText(const ControlRequest &request)
{
    return "REQUEST type=" + hex(request.requestType, 2) + " request=" + hex(request.request, 2)
        + " value=" + hex(request.value, 4) + " index=" + hex(request.index, 4)
        + " length=" + std::to_string(request.length);
}

std::string requestText(const LogRecord &record)
{
    const ControlRequest &request = record.request;
    std::string text = request.isClass() ? controlRequestText(request) : otherRequestText(request);
    if (!request.data.empty())
        text += ' ' + bytesText(request.data);
    return text + ' ' + resultName(record.result);
}

} // namespace

const char *resultName(Result result)
{
    switch (result) {
    case Result::Ok:
        return "ok";
    case Result::Stall:
        return "stall";
    case Result::Gone:
        return "gone";
    case Result::Cancelled:
        return "cancelled";
    case Result::Short:
        return "short";
    case Result::Long:
        return "long";
    case Result::Overflow:
        return "overflow";
    case Result::Wrong:
        return "wrong";
    case Result::Lost:
        return "lost";
    case Result::ProtocolError:
        return "eproto";
    case Result::NoResponse:
        return "etime";
    }
    return "";
}

const char *eventName(LogRecord::Event event)
{
    switch (event) {
    case LogRecord::Event::Request:
        return "request";
    case LogRecord::Event::Open:
        return "open";
    case LogRecord::Event::Close:
        return "close";
    case LogRecord::Event::Unplug:
        return "unplug";
    case LogRecord::Event::Replug:
        return "replug";
    case LogRecord::Event::Reset:
        return "reset";
    }
    return "";
}

int statusOf(LogRecord::Result result)
{
    switch (result) {
    case LogRecord::Result::Ok:
    case LogRecord::Result::Short:
    case LogRecord::Result::Long:
    case LogRecord::Result::Wrong:
    case LogRecord::Result::Lost:
        return 0;
    case LogRecord::Result::Stall:
        return -EPIPE;
    case LogRecord::Result::Gone:
        return -ESHUTDOWN;
    case LogRecord::Result::Cancelled:
        return -ENOENT;
    case LogRecord::Result::Overflow:
        return -EOVERFLOW;
    case LogRecord::Result::ProtocolError:
        return -EPROTO;
    case LogRecord::Result::NoResponse:
        return -ETIME;
    }
    return 0;
}

std::string toText(const LogRecord &record)
{
    std::string text = "cam" + std::to_string(record.device) + ' ';
    switch (record.event) {
    case LogRecord::Event::Request:
        return text + requestText(record);
    case LogRecord::Event::Open:
        return text + "OPEN file=" + std::to_string(record.file);
    case LogRecord::Event::Close:
        return text + "CLOSE file=" + std::to_string(record.file);
    case LogRecord::Event::Unplug:
        return text + "UNPLUG";
    case LogRecord::Event::Replug:
        return text + "REPLUG";
    case LogRecord::Event::Reset:
        return text + "RESET file=" + std::to_string(record.file);
    }
    return text;
}

std::string toTimedText(const LogRecord &record)
{
    constexpr long long perSecond = 1000000;
    const auto time = static_cast<long long>(record.time.count());
    std::array<char, 32> seconds{};
    std::snprintf(
        seconds.data(), seconds.size(), "%lld.%06lld ", time / perSecond, time % perSecond);
    return seconds.data() + toText(record);
}

} // namespace virtual_camera
