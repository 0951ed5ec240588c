// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT
#include "virtual_camera/command/wake_up.h"

#include <utility>

namespace virtual_camera {

WakeUp::WakeUp(gint64 pauseMicroseconds, std::function<void()> function)
    : m_pause(pauseMicroseconds), m_function(std::move(function))
{
    static GSourceFuncs functions{ nullptr, nullptr, dispatch, nullptr, nullptr, nullptr };
    m_source = g_source_new(&functions, sizeof(GSource));
    g_source_set_callback(m_source, nullptr, this, nullptr);
    g_source_attach(m_source, nullptr);
}

WakeUp::~WakeUp()
{
    g_source_destroy(m_source);
    g_source_unref(m_source);
}

void WakeUp::request()
{
    if (!m_requested.exchange(true))
        g_source_set_ready_time(m_source, m_last + m_pause);
}

gboolean WakeUp::dispatch(GSource *source, GSourceFunc, void *wakeUp)
{
    auto *self = static_cast<WakeUp *>(wakeUp);
    g_source_set_ready_time(source, -1);
    self->m_last = g_get_monotonic_time();
    // What happens from now on may come too late for the function, and calls for another round.
    self->m_requested = false;
    self->m_function();
    return G_SOURCE_CONTINUE;
}

} // namespace virtual_camera
