// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

// How a call is noted: the recorder's inside, for the definitions in uvc_functions.cpp.
#pragma once

#include <libuvc/libuvc.h>

#include <fstream>
#include <map>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

namespace uvc_call_recorder {

// Names for what libuvc has handed out and not yet taken back. A number is given at the first
// mention.
class Names
{
public:
    explicit Names(std::string kind) : m_kind(std::move(kind)) { }

    bool knows(const void *object) const { return m_numbers.count(object) > 0; }
    std::string of(const void *object)
    {
        if (!object)
            return "null";
        const auto known = m_numbers.find(object);
        if (known == m_numbers.end())
            return "no_" + m_kind;
        if (known->second == 0)
            known->second = ++m_last;
        return m_kind + std::to_string(known->second);
    }
    std::string add(const void *object)
    {
        m_numbers[object] = 0;
        return of(object);
    }
    // The name that the object had.
    std::string remove(const void *object)
    {
        const std::string name = of(object);
        m_numbers.erase(object);
        return name;
    }
    void numberAnew()
    {
        m_last = 0;
        for (auto &object : m_numbers)
            object.second = 0;
    }

private:
    std::string m_kind;
    std::map<const void *, int> m_numbers;
    int m_last = 0;
};

// What shall be answered instead of libuvc's own status.
class Wishes
{
public:
    explicit Wishes(const char *text);
    // The status that this call of the function answers; nothing when it is libuvc's.
    std::optional<int> next(const std::string &function);

private:
    std::map<std::string, int> m_statuses; // by "function", "function#n" or "*"
    std::map<std::string, int> m_counts;
};

struct Recorder
{
    Recorder();
    void note(const char *function, const std::string &arguments, const std::string &result);

    std::recursive_mutex mutex;
    std::vector<std::string> names;
    std::vector<std::string> lines;
    std::ofstream file;
    Wishes wishes;
    Names contexts{ "context" };
    Names lists{ "list" };
    std::map<const void *, std::pair<const void *, int>> devices; // list and place in it
    Names descriptors{ "descriptor" };
    Names handles{ "handle" };
};
// The one of this process.
Recorder &recorder();

// The address of libuvc's own function.
void *libuvcsOwn(const char *name);
template<typename Function> Function *libuvcsOwn(const char *name)
{
    return reinterpret_cast<Function *>(libuvcsOwn(name));
}

// Marks that this thread is inside libuvc, whose calls to itself are not noted.
inline thread_local int depth = 0;
struct InsideLibuvc
{
    InsideLibuvc() { ++depth; }
    ~InsideLibuvc() { --depth; }
    InsideLibuvc(const InsideLibuvc &) = delete;
    InsideLibuvc &operator=(const InsideLibuvc &) = delete;
};

// Makes the call, unless it shall fail, and notes it. `arguments` is asked for its text afterwards
// and is told whether the call succeeded.
template<typename Call, typename Arguments>
uvc_error_t noted(const char *function, Call call, Arguments arguments)
{
    if (depth > 0)
        return call();
    const std::lock_guard lock(recorder().mutex);
    const InsideLibuvc inside;
    const std::optional<int> wish = recorder().wishes.next(function);
    uvc_error_t result = wish.value_or(0) < 0 ? UVC_SUCCESS : call();
    if (wish && result >= 0)
        result = static_cast<uvc_error_t>(*wish);
    recorder().note(function, arguments(result >= 0), " = " + std::to_string(result));
    return result;
}

// The same for functions that answer nothing and end an object; they are noted first.
template<typename Call> void notedEnd(const char *function, const std::string &arguments, Call call)
{
    if (depth == 0)
        recorder().note(function, arguments, "");
    const InsideLibuvc inside;
    call();
}

inline std::string text(uvc_req_code code)
{
    switch (code) {
    case UVC_GET_CUR:
        return ", GET_CUR";
    case UVC_GET_MIN:
        return ", GET_MIN";
    case UVC_GET_MAX:
        return ", GET_MAX";
    case UVC_GET_DEF:
        return ", GET_DEF";
    default:
        return ", request " + std::to_string(code);
    }
}
inline std::string text(int number) { return ", " + std::to_string(number); }
// Where a value is to be stored says nothing.
inline std::string text(const void * /*place*/) { return {}; }

template<typename... Arguments>
uvc_error_t control(const char *function, uvc_device_handle_t *handle, Arguments... arguments)
{
    const auto call = [=] {
        if (!recorder().handles.knows(handle))
            return UVC_ERROR_INVALID_DEVICE;
        return libuvcsOwn<uvc_error_t(uvc_device_handle_t *, Arguments...)>(function)(
            handle, arguments...);
    };
    return noted(function, call, [=](bool /*succeeded*/) {
        return (recorder().handles.of(handle) + ... + text(arguments));
    });
}

} // namespace uvc_call_recorder
