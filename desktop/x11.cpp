// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

#include "desktop/x11.h"

#include <QGuiApplication>

#ifdef PTZ_HAVE_X11
#include <QX11Info>

#include <algorithm>
#include <array>
#include <cmath>

// Last, because they define words such as None and KeyPress.
#include <X11/XKBlib.h>
#include <X11/Xlib.h>
#endif

namespace desktop {

namespace {

// Each of these can change the logical resolution by itself or with QT_SCREEN_SCALE_FACTORS.
void fixLogicalResolution()
{
    qputenv("QT_FONT_DPI", "72");
    qputenv("QT_DPI_ADJUSTMENT_POLICY", "AdjustDpi");
    qputenv("QT_SCALE_FACTOR_ROUNDING_POLICY", "Round");
    for (const char *const name :
        { "QT_ENABLE_HIGHDPI_SCALING", "QT_AUTO_SCREEN_SCALE_FACTOR", "QT_USE_PHYSICAL_DPI" })
        qunsetenv(name);
}

#ifdef PTZ_HAVE_X11

void setUnlessSet(const char *name, const QByteArray &value)
{
    if (qEnvironmentVariableIsEmpty(name))
        qputenv(name, value);
}

double dotsPerInch(Display *display)
{
    const double setting = QByteArray(XGetDefault(display, "Xft", "dpi")).toDouble();
    if (setting > 0)
        return setting;
    const int screen = DefaultScreen(display);
    return 25.4 * DisplayWidth(display, screen) / std::max(DisplayWidthMM(display, screen), 1);
}

void fitX11()
{
    const QByteArray platform = qgetenv("QT_QPA_PLATFORM");
    Display *const display =
        platform.isEmpty() || platform.startsWith("xcb") ? XOpenDisplay(nullptr) : nullptr;
    if (!display)
        return;
    setUnlessSet("QT_QPA_PLATFORM", "xcb");
    setUnlessSet("QT_XCB_GL_INTEGRATION", "none");
    if (qEnvironmentVariableIsEmpty("QT_SCREEN_SCALE_FACTORS")) {
        const double quarters = std::round(4 * dotsPerInch(display) / 96);
        setUnlessSet("QT_SCALE_FACTOR", QByteArray::number(std::clamp(quarters / 4, 1.0, 4.0)));
    }
    XCloseDisplay(display);
}

#else

void fitX11() { }

#endif

} // namespace

void prepareEnvironment()
{
    fixLogicalResolution();
    fitX11();
}

#ifdef PTZ_HAVE_X11

bool detectAutoRepeat()
{
    return QX11Info::isPlatformX11()
        && XkbSetDetectableAutoRepeat(QX11Info::display(), True, nullptr) == True;
}

bool isKeyDown(quint32 keycode)
{
    std::array<char, 32> keys = {}; // a bit for each keycode
    if (!QX11Info::isPlatformX11() || keycode / 8 >= keys.size())
        return true;
    XQueryKeymap(QX11Info::display(), keys.data());
    return (keys[keycode / 8] >> keycode % 8 & 1) != 0;
}

#else

bool detectAutoRepeat() { return false; }

bool isKeyDown(quint32 /*keycode*/) { return true; }

#endif

} // namespace desktop
