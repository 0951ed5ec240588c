// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT
#pragma once

#include "virtual_camera/command/script.h"

#include <functional>
#include <glib.h>

namespace virtual_camera {

/// Carries out the steps of a script in the main loop, each at its time.
class ScriptPlayer
{
public:
    /// The time starts now.
    ScriptPlayer(Script script, std::function<void(const ScriptStep &)> carryOut);
    ~ScriptPlayer();
    ScriptPlayer(const ScriptPlayer &) = delete;
    ScriptPlayer &operator=(const ScriptPlayer &) = delete;

private:
    void await();
    static gboolean onTime(void *player);

    const Script m_script;
    const std::function<void(const ScriptStep &)> m_carryOut;
    const gint64 m_start = g_get_monotonic_time();
    std::size_t m_next = 0;
    guint m_timer = 0;
};

} // namespace virtual_camera
