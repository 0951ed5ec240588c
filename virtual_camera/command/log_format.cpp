// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT
#include "virtual_camera/command/log_format.h"

#include "virtual_camera/camera/control_table.h"
#include "virtual_camera/camera/vendor_command.h"
#include "virtual_camera/command/json.h"

#include <glib.h>

namespace virtual_camera {

namespace {

std::string startTime()
{
    GDateTime *now = g_date_time_new_now_utc();
    gchar *text = g_date_time_format(now, "%Y-%m-%dT%H:%M:%SZ");
    const std::string time = text;
    g_free(text);
    g_date_time_unref(now);
    return time;
}

bool isWorthALine(const LogRecord &record)
{
    return record.isControlRequest() || record.event != LogRecord::Event::Request;
}

std::string bytesText(const Bytes &bytes)
{
    constexpr char digits[] = "0123456789abcdef";
    std::string text;
    for (const std::uint8_t byte : bytes) {
        text += text.empty() ? "" : " ";
        text += digits[byte >> 4U];
        text += digits[byte & 0xfU];
    }
    return text;
}

std::string setupText(const ControlRequest &request)
{
    Bytes bytes{ request.requestType, request.request };
    for (const std::uint16_t number : { request.value, request.index, request.length }) {
        bytes.push_back(static_cast<std::uint8_t>(number & 0xffU));
        bytes.push_back(static_cast<std::uint8_t>(number >> 8U));
    }
    return bytesText(bytes);
}

void addMeaning(json::Object &object, const ControlRequest &request)
{
    const ControlTraits *control = request.interfaceNumber() == controlInterface
        ? findControl(request.entity(), request.selector())
        : nullptr;
    if (control == nullptr)
        return;
    object.add("control", control->name);
    const auto code = static_cast<RequestCode>(request.request);
    const bool value = code != RequestCode::GetInfo && code != RequestCode::GetLen;
    if (!value || request.data.size() != control->length())
        return;
    const std::vector<std::int64_t> numbers = decodeFields(*control, request.data.data());
    json::Object values;
    for (std::size_t i = 0; i < numbers.size(); ++i)
        values.add(control->fields[i].name, numbers[i]);
    object.add("values", values);
    if (code == RequestCode::SetCur && control->control == Control::RollAbsolute)
        object.add("command", decodeVendorCommand(static_cast<int>(numbers[0])).words());
}

std::string recordJson(const LogRecord &record)
{
    const ControlRequest &request = record.request;
    json::Object object{ { "time", std::chrono::duration<double>(record.time).count() },
        { "device", record.device }, { "event", eventName(record.event) } };
    if (record.file != 0)
        object.add("file", record.file);
    if (record.event == LogRecord::Event::Request) {
        if (const std::string_view code = requestCodeName(request.request); !code.empty())
            object.add("request", code);
        addMeaning(object, request);
        object.add("setup", setupText(request))
            .add("data", bytesText(request.data))
            .add("result", resultName(record.result));
    }
    return object.text();
}

} // namespace

LogFormat textLog()
{
    return { [] {
                return "# virtual-camera log " + std::to_string(logVersion) + ' ' + startTime()
                    + '\n';
            },
        [](const LogRecord &record) {
            return isWorthALine(record) ? toTimedText(record) + '\n' : "";
        },
        [](std::uint64_t count) {
            return "# " + std::to_string(count) + " records lost: nobody read them in time\n";
        } };
}

LogFormat jsonLog()
{
    return { [] {
                return json::Object{
                    { "log", logVersion }, { "version", PTZ_VERSION }, { "start", startTime() }
                }.text()
                    + '\n';
            },
        [](const LogRecord &record) {
            return isWorthALine(record) ? recordJson(record) + '\n' : "";
        },
        [](std::uint64_t count) {
            return json::Object{ { "event", "lost" }, { "records", count } }.text() + '\n';
        } };
}

} // namespace virtual_camera
