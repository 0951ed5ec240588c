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

// Names for what libuvc has handed out and not yet taken back.
class Names
{
public:
    explicit Names(std::string kind) : m_kind(std::move(kind)) { }

    bool knows(const void *object) const { return m_names.count(object) > 0; }
    std::string of(const void *object) const
    {
        if (!object)
            return "null";
        const auto known = m_names.find(object);
        return known == m_names.end() ? "no_" + m_kind : known->second;
    }
    std::string add(const void *object)
    {
        return m_names[object] = m_kind + std::to_string(++m_last);
    }
    void add(const void *object, const std::string &name) { m_names[object] = name; }
    // The name that the object had.
    std::string remove(const void *object)
    {
        const std::string name = of(object);
        m_names.erase(object);
        return name;
    }

private:
    std::string m_kind;
    std::map<const void *, std::string> m_names;
    int m_last = 0;
};

// What shall fail, and how.
class Wishes
{
public:
    explicit Wishes(const char *text);
    // The status with which this call of the function fails; nothing when it does not.
    std::optional<int> next(const std::string &function);

private:
    std::map<std::string, int> m_failures; // by "function" or "function#n"
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
    Names devices{ "device" };
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

// Makes the call, or lets it fail, and notes it. `arguments` is asked for its text afterwards and
// is told whether the call succeeded.
template<typename Call, typename Arguments>
uvc_error_t noted(const char *function, Call call, Arguments arguments)
{
    if (depth > 0)
        return call();
    const std::lock_guard lock(recorder().mutex);
    const InsideLibuvc inside;
    const std::optional<int> wish = recorder().wishes.next(function);
    const uvc_error_t result = wish ? static_cast<uvc_error_t>(*wish) : call();
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
