// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

#include "tests/support/uvc_call_recorder.h"

#include "tests/support/uvc_call_notes.h"

#include <dlfcn.h>

#include <cstdio>
#include <cstdlib>
#include <sstream>

namespace uvc_call_recorder {

Wishes::Wishes(const char *text)
{
    std::istringstream wishes(text ? text : "");
    for (std::string wish; std::getline(wishes, wish, ',');) {
        const std::size_t equals = wish.find('=');
        if (equals == std::string::npos) {
            std::fprintf(stderr, "uvc_call_recorder: '%s' is not function=status\n", wish.c_str());
            std::abort();
        }
        m_statuses[wish.substr(0, equals)] = std::atoi(wish.c_str() + equals + 1);
    }
}

std::optional<int> Wishes::next(const std::string &function)
{
    const std::string nth = function + "#" + std::to_string(++m_counts[function]);
    for (const std::string &key : { nth, function, std::string("*") }) {
        if (const auto found = m_statuses.find(key); found != m_statuses.end())
            return found->second;
    }
    return std::nullopt;
}

Recorder::Recorder() : wishes(std::getenv("UVC_CALLS_FAIL"))
{
    if (const char *path = std::getenv("UVC_CALLS_FILE"))
        file.open(path, std::ios::app);
}

void Recorder::note(const char *function, const std::string &arguments, const std::string &result)
{
    names.emplace_back(function);
    lines.push_back(function + ("(" + arguments + ")") + result);
    if (file.is_open())
        file << lines.back() << std::endl;
}

Recorder &recorder()
{
    // Never destroyed: libuvc may be called while the program ends.
    static auto *const instance = new Recorder;
    return *instance;
}

void *libuvcsOwn(const char *name)
{
    void *const address = dlsym(RTLD_NEXT, name);
    if (!address) {
        std::fprintf(stderr, "uvc_call_recorder: libuvc has no %s\n", name);
        std::abort();
    }
    return address;
}

std::vector<std::string> calls()
{
    const std::lock_guard lock(recorder().mutex);
    return recorder().lines;
}

std::vector<std::string> names()
{
    const std::lock_guard lock(recorder().mutex);
    return recorder().names;
}

void clear()
{
    const std::lock_guard lock(recorder().mutex);
    recorder().names.clear();
    recorder().lines.clear();
    for (Names *names :
        { &recorder().contexts, &recorder().lists, &recorder().descriptors, &recorder().handles })
        names->numberAnew();
}

void failOnDemand(const std::string &wishes)
{
    const std::lock_guard lock(recorder().mutex);
    recorder().wishes = Wishes(wishes.c_str());
}

} // namespace uvc_call_recorder
