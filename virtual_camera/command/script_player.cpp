// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT
#include "virtual_camera/command/script_player.h"

#include <algorithm>
#include <utility>

namespace virtual_camera {

ScriptPlayer::ScriptPlayer(Script script, std::function<void(const ScriptStep &)> carryOut)
    : m_script(std::move(script)), m_carryOut(std::move(carryOut))
{
    await();
}

ScriptPlayer::~ScriptPlayer()
{
    if (m_timer != 0)
        g_source_remove(m_timer);
}

void ScriptPlayer::await()
{
    m_timer = 0;
    if (m_next == m_script.size())
        return;
    constexpr gint64 perMillisecond = 1000;
    const gint64 passed = (g_get_monotonic_time() - m_start) / perMillisecond;
    const gint64 wait = std::max<gint64>(m_script[m_next].time.count() - passed, 0);
    m_timer = g_timeout_add(static_cast<guint>(wait), onTime, this);
}

gboolean ScriptPlayer::onTime(void *player)
{
    auto *self = static_cast<ScriptPlayer *>(player);
    self->m_carryOut(self->m_script[self->m_next++]);
    self->await();
    return G_SOURCE_REMOVE;
}

} // namespace virtual_camera
