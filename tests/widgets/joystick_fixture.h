// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

// A joystick in its place on the panel, and access to its private members.
#pragma once

#include <QCoreApplication>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>

#include <gtest/gtest.h>

#include <vector>

#include "tests/widgets/mouse.h"
#include "widgets/rocker_handle.h"

inline void PrintTo(const QPoint &point, std::ostream *stream)
{
    *stream << point.x() << ", " << point.y();
}

class RockerHandleProbe
{
public:
    static QPoint mousePoint(const RockerHandle &joystick) { return joystick.mousePoint; }
    static QPoint handlePoint(const RockerHandle &joystick) { return joystick.handlePoint; }
    static int handleRadius(const RockerHandle &joystick) { return joystick.handleRadius; }
    static QPoint centerPoint(const RockerHandle &joystick) { return joystick.centerPoint; }
    static int baseRadius(const RockerHandle &joystick) { return joystick.baseRadius; }
    static double pointerDistance(const RockerHandle &joystick) { return joystick.pointerDistance; }
    static bool pressed(const RockerHandle &joystick) { return joystick.pressed; }
    static QTimer *keyTimer(const RockerHandle &joystick) { return joystick.keyTimer; }
    static QTimer *speedTimer(const RockerHandle &joystick) { return joystick.speedTimer; }
    static double dpiScale(const RockerHandle &joystick) { return joystick.dpiScale; }
    static int keyLow(const RockerHandle &joystick) { return joystick.keyLow; }
    static int keyHigh(const RockerHandle &joystick) { return joystick.keyHigh; }
};

/// Direction, pan level and tilt level.
using Report = std::vector<int>;

class JoystickTest : public testing::Test
{
protected:
    using Probe = RockerHandleProbe;

    void SetUp() override
    {
        panel.resize(200, 220);
        joystick.setGeometry(42, 56, 116, 116);
        panel.show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&panel));
        paintDue();
    }

    /// Lets every scheduled repaint happen. No timer runs meanwhile.
    static void paintDue() { QCoreApplication::sendPostedEvents(); }

    void pressAndPaint(const QPointF &place)
    {
        mouse::press(&joystick, place);
        paintDue();
    }
    void release() { mouse::release(&joystick, { 58, 58 }); }

    void forgetReports()
    {
        for (QSignalSpy *spy : { &directions, &pans, &tilts })
            spy->clear();
    }
    /// The last report; -1 for what was not reported.
    Report lastReport()
    {
        Report report;
        for (const QSignalSpy *spy : { &directions, &pans, &tilts })
            report.push_back(spy->isEmpty() ? -1 : spy->last().at(0).toInt());
        return report;
    }
    /// What the next ticks report while a button is held.
    Report nextReport()
    {
        forgetReports();
        EXPECT_TRUE(QTest::qWaitFor([this] { return !directions.isEmpty() && !tilts.isEmpty(); }));
        return lastReport();
    }
    /// What a tick would report now.
    Report reportNow()
    {
        QMetaObject::invokeMethod(&joystick, "getKeyNum", Qt::DirectConnection);
        QMetaObject::invokeMethod(&joystick, "SpeedChange", Qt::DirectConnection);
        return lastReport();
    }

    QPoint handle() const { return Probe::handlePoint(joystick); }

    QWidget panel;
    RockerHandle joystick{ &panel };
    QSignalSpy directions{ &joystick, &RockerHandle::keyNumchanged };
    QSignalSpy pans{ &joystick, &RockerHandle::Speed_Pan };
    QSignalSpy tilts{ &joystick, &RockerHandle::Speed_Tilt };
};
