// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

// The environment that the toolkit finds; its effects are tested on a real X server.

#include "desktop/x11.h"

#include <QByteArray>

#include <gtest/gtest.h>

#include <map>

namespace {

class Environment : public testing::Test
{
protected:
    Environment()
    {
        for (const char *const name :
            { "QT_FONT_DPI", "QT_DPI_ADJUSTMENT_POLICY", "QT_SCALE_FACTOR_ROUNDING_POLICY",
                "QT_ENABLE_HIGHDPI_SCALING", "QT_AUTO_SCREEN_SCALE_FACTOR", "QT_USE_PHYSICAL_DPI",
                "QT_SCALE_FACTOR", "QT_XCB_GL_INTEGRATION", "QT_QPA_PLATFORM", "DISPLAY" }) {
            if (qEnvironmentVariableIsSet(name))
                before[name] = qgetenv(name);
            else
                before[name] = {};
            qunsetenv(name);
        }
    }
    ~Environment() override
    {
        for (const auto &[name, value] : before) {
            if (value.isNull())
                qunsetenv(name);
            else
                qputenv(name, value);
        }
    }

private:
    std::map<const char *, QByteArray> before;
};

TEST_F(Environment, WithoutAnXServerIsOtherwiseLeftToTheToolkit)
{
    for (const char *const display : { "", ":4711" }) {
        qputenv("DISPLAY", display);
        desktop::prepareEnvironment();
        for (const char *const name :
            { "QT_QPA_PLATFORM", "QT_SCALE_FACTOR", "QT_XCB_GL_INTEGRATION" })
            EXPECT_FALSE(qEnvironmentVariableIsSet(name)) << display << name;
    }
}

} // namespace
