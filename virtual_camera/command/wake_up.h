// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT
#pragma once

#include <atomic>
#include <functional>
#include <glib.h>

namespace virtual_camera {

/// Runs a function in the main loop after any thread has asked for it: once for many requests, and
/// not again before the pause is over.
class WakeUp
{
public:
    WakeUp(gint64 pauseMicroseconds, std::function<void()> function);
    ~WakeUp();
    WakeUp(const WakeUp &) = delete;
    WakeUp &operator=(const WakeUp &) = delete;

    void request();

private:
    static gboolean dispatch(GSource *source, GSourceFunc callback, void *wakeUp);

    gint64 m_pause;
    std::function<void()> m_function;
    GSource *m_source;
    std::atomic<bool> m_requested{ false };
    std::atomic<gint64> m_last{ 0 };
};

} // namespace virtual_camera
