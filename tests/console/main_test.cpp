// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

// The program's own entry, from its first line to its last.

#define main panelMain
#include "console/main.cpp"
#undef main

#include <QTimer>

#include <gtest/gtest.h>

namespace {

bool scalesFromTheStart = false;

// Runs inside the application's constructor.
void lookAndQuit()
{
    scalesFromTheStart = QCoreApplication::testAttribute(Qt::AA_EnableHighDpiScaling);
    QTimer::singleShot(0, QCoreApplication::instance(), &QCoreApplication::quit);
}
Q_COREAPP_STARTUP_FUNCTION(lookAndQuit)

} // namespace

TEST(Main, TurnsHighDpiScalingOnBeforeTheApplicationIsMade)
{
    char name[] = "ptz-panel";
    char *arguments[] = { name, nullptr };
    EXPECT_EQ(panelMain(1, arguments), 0);
    EXPECT_TRUE(scalesFromTheStart);
}
