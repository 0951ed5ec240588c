// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

#include "desktop/desktop_fit.h"

#include <QByteArray>

#ifdef PTZ_HAVE_XCB
#include <xcb/xcb.h>
#endif

namespace desktop {

namespace {

void setUnlessSet(const char *name, const char *value)
{
    if (!qEnvironmentVariableIsSet(name))
        qputenv(name, value);
}

bool xServerReachable()
{
#ifdef PTZ_HAVE_XCB
    xcb_connection_t *const connection = xcb_connect(nullptr, nullptr);
    const bool reachable = xcb_connection_has_error(connection) == 0;
    xcb_disconnect(connection);
    return reachable;
#else
    return false;
#endif
}

} // namespace

void prepare()
{
    setUnlessSet("QT_FONT_DPI", "72");
    setUnlessSet("QT_DPI_ADJUSTMENT_POLICY", "AdjustDpi");
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM") && xServerReachable())
        qputenv("QT_QPA_PLATFORM", "xcb");
}

} // namespace desktop
