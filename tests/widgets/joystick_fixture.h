// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

// The tests' window on the joystick's members, and a joystick in its place on the panel.
#pragma once

#include <QCoreApplication>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>
#include <QWidget>

#include <gtest/gtest.h>

#include "tests/widgets/mouse.h"
#include "widgets/rocker_handle.h"

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
struct Report
{
    int direction;
    int pan;
    int tilt;
};

inline bool operator==(const Report &a, const Report &b)
{
    return a.direction == b.direction && a.pan == b.pan && a.tilt == b.tilt;
}

inline std::ostream &operator<<(std::ostream &stream, const Report &report)
{
    return stream << "direction " << report.direction << ", pan " << report.pan << ", tilt "
                  << report.tilt;
}

inline void PrintTo(const QPoint &point, std::ostream *stream)
{
    *stream << "(" << point.x() << ", " << point.y() << ")";
}

class JoystickTest : public testing::Test
{
protected:
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

    /// The last value that a signal brought; fails when it brought none.
    static int last(const QSignalSpy &spy)
    {
        if (spy.isEmpty()) {
            ADD_FAILURE() << spy.signal().constData() << " was not emitted";
            return -1;
        }
        return spy.last().at(0).toInt();
    }

    /// What the next ticks report. Called with a button held.
    Report nextReport()
    {
        directions.clear();
        pans.clear();
        tilts.clear();
        EXPECT_TRUE(QTest::qWaitFor(
            [this] { return !directions.isEmpty() && !pans.isEmpty() && !tilts.isEmpty(); }));
        return { last(directions), last(pans), last(tilts) };
    }

    /// What a tick would report now, without waiting for it.
    Report reportNow()
    {
        QMetaObject::invokeMethod(&joystick, "getKeyNum", Qt::DirectConnection);
        QMetaObject::invokeMethod(&joystick, "SpeedChange", Qt::DirectConnection);
        return { last(directions), last(pans), last(tilts) };
    }

    QPoint handle() const { return RockerHandleProbe::handlePoint(joystick); }

    QWidget panel;
    RockerHandle joystick{ &panel };
    QSignalSpy directions{ &joystick, &RockerHandle::keyNumchanged };
    QSignalSpy pans{ &joystick, &RockerHandle::Speed_Pan };
    QSignalSpy tilts{ &joystick, &RockerHandle::Speed_Tilt };
};
