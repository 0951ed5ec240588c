// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

#include "desktop/key_repeat.h"

#ifdef PTZ_HAVE_XKB

#include <QX11Info>

// Last, because it defines words such as None and KeyPress.
#include <X11/XKBlib.h>

namespace desktop {

bool withoutReleases()
{
    return QX11Info::isPlatformX11()
        && XkbSetDetectableAutoRepeat(QX11Info::display(), True, nullptr) == True;
}

std::uint32_t serverTime()
{
    return QX11Info::isPlatformX11() ? static_cast<std::uint32_t>(QX11Info::getTimestamp()) : 0;
}

} // namespace desktop

#else

namespace desktop {

bool withoutReleases() { return false; }

std::uint32_t serverTime() { return 0; }

} // namespace desktop

#endif
