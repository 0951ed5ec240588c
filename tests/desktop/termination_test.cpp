// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

// The panel is ended from outside: what is held is released, and the signal ends the process.

#include <QProcess>
#include <QTest>

#include <gtest/gtest.h>

#include <csignal>

#include "tests/console/panel_fixture.h"

namespace {

const std::string left = "pantilt_relative -1 21 0 0";
const std::string stop = "pantilt_relative 0 0 0 0";
const std::string zoomStop = "zoom_relative 0 1 5";

class Termination : public PanelTest
{
protected:
    Termination() { plugIn(1); }
    ~Termination() override
    {
        if (panel.state() != QProcess::NotRunning) {
            panel.kill();
            panel.waitForFinished();
        }
    }

    void startProcess(const QString &held, const QString &ignoredSignal = QString())
    {
        // A shell in between, which becomes the panel, can have it ignore a signal.
        const QString ignore = ignoredSignal.isEmpty() ? QString() : "trap '' " + ignoredSignal;
        panel.start("/bin/sh",
            { "-c", ignore + "\nexec \"$0\" \"$1\"", QStringLiteral(HELD_KEY_PROGRAM), held });
    }
    /// Starts the panel, with a key held or without, and waits until it is up.
    void startPanel(const QString &held, const QString &ignoredSignal = QString())
    {
        startProcess(held, ignoredSignal);
        ASSERT_TRUE(QTest::qWaitFor(
            [this] { return panel.readAllStandardOutput().contains("ready"); }, 30000));
        EXPECT_EQ(
            sent(), allReads() + allReads() + (held == "left" ? Requests{ left } : Requests()));
    }
    void end(int signal) { ::kill(static_cast<pid_t>(panel.processId()), signal); }

    /// The signal by which the panel ended.
    int endedBy()
    {
        EXPECT_TRUE(panel.state() == QProcess::NotRunning || panel.waitForFinished());
        EXPECT_EQ(panel.exitStatus(), QProcess::CrashExit);
        return panel.exitCode();
    }

    QProcess panel;
};

class EndingSignal : public Termination, public testing::WithParamInterface<int>
{ };

TEST_P(EndingSignal, StopsTheCameraAndEndsThePanelAsIfUncaught)
{
    startPanel("left");
    end(GetParam());
    EXPECT_EQ(endedBy(), GetParam());
    EXPECT_EQ(sent(), (Requests{ stop, stop, zoomStop }));
}

TEST_P(EndingSignal, SendsNothingWhenNothingIsHeld)
{
    startPanel("nothing");
    end(GetParam());
    EXPECT_EQ(endedBy(), GetParam());
    EXPECT_EQ(sent(), Requests());
}

INSTANTIATE_TEST_SUITE_P(Each, EndingSignal, testing::Values(SIGINT, SIGTERM, SIGHUP),
    [](const auto &row) { return "Signal" + std::to_string(row.param); });

TEST_F(Termination, SignalThatWasIgnoredFromTheStartStaysIgnored)
{
    startPanel("left", "HUP");
    end(SIGHUP);
    // Signals are taken in the order of their arrival here: this one would come second.
    end(SIGTERM);
    EXPECT_EQ(endedBy(), SIGTERM);
    EXPECT_EQ(sent(), (Requests{ stop, stop, zoomStop }));
}

TEST_F(Termination, CameraThatHangsDelaysTheEndByTenSecondsHoweverManySignalsCome)
{
    // Each of the 64 reads at the start waits until its time is up.
    camera(1).delay(std::chrono::minutes(1));
    startProcess("nothing");
    ASSERT_TRUE(QTest::qWaitFor([this] { return !bus->log().requests().empty(); }, 30000));
    bool ended = false;
    for (int second = 0; second < 30 && !ended; ++second) {
        end(SIGTERM);
        ended = panel.waitForFinished(1000);
    }
    EXPECT_TRUE(ended);
    EXPECT_EQ(endedBy(), SIGALRM);
    camera(1).delay({});
    forgetSent();
}

} // namespace
