// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

// What the application is started with, so that the desktop fits.

#include "desktop/desktop_fit.h"

#include <QByteArray>

#include <gtest/gtest.h>

#include <map>

namespace {

class Prepare : public testing::Test
{
protected:
    static constexpr const char *names[] = { "QT_FONT_DPI", "QT_DPI_ADJUSTMENT_POLICY",
        "QT_QPA_PLATFORM", "DISPLAY", "WAYLAND_DISPLAY" };

    Prepare()
    {
        for (const char *name : names) {
            if (qEnvironmentVariableIsSet(name))
                before[name] = qgetenv(name);
            qunsetenv(name);
        }
    }
    ~Prepare() override
    {
        for (const char *name : names) {
            if (const auto known = before.find(name); known != before.end())
                qputenv(name, known->second);
            else
                qunsetenv(name);
        }
    }

    std::map<std::string, QByteArray> before;
};

TEST_F(Prepare, SetsTheResolutionToSeventyTwo)
{
    desktop::prepare();
    EXPECT_EQ(qgetenv("QT_FONT_DPI"), "72");
    EXPECT_EQ(qgetenv("QT_DPI_ADJUSTMENT_POLICY"), "AdjustDpi");
}

TEST_F(Prepare, LeavesWhatTheUserHasSet)
{
    qputenv("QT_FONT_DPI", "120");
    qputenv("QT_DPI_ADJUSTMENT_POLICY", "DontAdjustDpi");
    qputenv("QT_QPA_PLATFORM", "wayland");
    desktop::prepare();
    EXPECT_EQ(qgetenv("QT_FONT_DPI"), "120");
    EXPECT_EQ(qgetenv("QT_DPI_ADJUSTMENT_POLICY"), "DontAdjustDpi");
    EXPECT_EQ(qgetenv("QT_QPA_PLATFORM"), "wayland");
}

TEST_F(Prepare, LeavesAnEmptySettingToo)
{
    qputenv("QT_DPI_ADJUSTMENT_POLICY", "");
    desktop::prepare();
    EXPECT_EQ(qgetenv("QT_DPI_ADJUSTMENT_POLICY"), "");
    EXPECT_EQ(qgetenv("QT_FONT_DPI"), "72");
}

TEST_F(Prepare, WithoutAnXServerLeavesThePlatformToTheToolkit)
{
    for (const char *display : { "", ":4711" }) {
        qputenv("DISPLAY", display);
        desktop::prepare();
        EXPECT_FALSE(qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) << display;
    }
}

} // namespace
