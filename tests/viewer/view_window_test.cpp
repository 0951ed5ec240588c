// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLocalServer>
#include <QLocalSocket>
#include <QSignalSpy>
#include <QStackedLayout>
#include <QTemporaryDir>
#include <QTest>
#include <QToolButton>

#include <gtest/gtest.h>

#include "virtual_camera/viewer/camera_picture.h"
#include "virtual_camera/viewer/view_window.h"

namespace virtual_camera {

namespace {

QJsonObject device(int number, bool open)
{
    return { { "number", number }, { "plugged_in", true }, { "open_files", open ? 1 : 0 } };
}

// Speaks as the control socket of a bus with three cameras does.
class Window : public testing::Test
{
protected:
    void SetUp() override
    {
        ASSERT_TRUE(m_server.listen(m_folder.filePath("socket")));
        m_link.follow(m_server.fullServerName());
        ASSERT_TRUE(QTest::qWaitFor([this] { return m_server.hasPendingConnections(); }));
        m_bus = m_server.nextPendingConnection();
        push({ device(1, false), device(2, false), device(3, false) });
        ASSERT_TRUE(QTest::qWaitFor([this] { return shown() == 1; }));
    }

    void push(const QJsonArray &devices)
    {
        const QJsonDocument message(QJsonObject{ { "devices", devices } });
        m_bus->write(message.toJson(QJsonDocument::Compact) + '\n');
    }

    // The button with this tool tip, or none.
    QToolButton *button(const QString &help) const
    {
        for (QToolButton *candidate : m_window.findChildren<QToolButton *>())
            if (candidate->toolTip() == help)
                return candidate;
        return nullptr;
    }

    // Whether the next commands from the window, "watch" aside, begin with this one.
    bool received(const QByteArray &command)
    {
        const auto next = [this] {
            return m_bus->canReadLine() ? m_bus->readLine().trimmed() : QByteArray("watch");
        };
        QByteArray line;
        return QTest::qWaitFor([&] { return (line = next()) != "watch"; }) && line == command;
    }

    CameraPicture *largePicture(int number) const
    {
        auto *const stage = m_window.findChild<QStackedLayout *>();
        return stage ? qobject_cast<CameraPicture *>(stage->widget(number - 1)) : nullptr;
    }

    // The number of the camera that is shown large, 0 before there is one.
    int shown() const
    {
        for (int number = 1; largePicture(number) != nullptr; ++number)
            if (!largePicture(number)->isHidden())
                return number;
        return 0;
    }

    bool shows(int number)
    {
        return QTest::qWaitFor([this, number] { return shown() == number; });
    }

private:
    QTemporaryDir m_folder;
    QLocalServer m_server;
    QLocalSocket *m_bus = nullptr;

protected:
    CameraLink m_link;
    ViewWindow m_window{ m_link };
};

} // namespace

TEST_F(Window, ShowsTheCameraThatIsOpened)
{
    push({ device(2, true) });
    EXPECT_TRUE(shows(2));
}

TEST_F(Window, FollowsAChangeOfCamera)
{
    push({ device(2, true) });
    ASSERT_TRUE(shows(2));
    push({ device(2, false), device(3, true) });
    EXPECT_TRUE(shows(3));
}

TEST_F(Window, IgnoresACameraThatIsOnlyLookedAt)
{
    QSignalSpy changes(&m_link, &CameraLink::changed);
    push({ device(1, true), device(2, true) });
    push({ device(2, false) });
    ASSERT_TRUE(QTest::qWaitFor([&changes] { return changes.count() == 3; }));
    EXPECT_EQ(shown(), 1);
}

TEST_F(Window, ComesBackFromACameraThatWasOnlyLookedAt)
{
    push({ device(2, true) });
    ASSERT_TRUE(shows(2));
    push({ device(1, true) });
    push({ device(2, false) });
    EXPECT_TRUE(shows(1));
}

TEST_F(Window, LeavesTheOpenCameraForNoOther)
{
    push({ device(2, true) });
    ASSERT_TRUE(shows(2));
    QSignalSpy changes(&m_link, &CameraLink::changed);
    push({ device(1, true), device(3, true) });
    ASSERT_TRUE(QTest::qWaitFor([&changes] { return changes.count() == 2; }));
    EXPECT_EQ(shown(), 2);
}

TEST_F(Window, MovesTheCameraWhileAKeyOfItsRemoteControlIsHeld)
{
    push({ device(2, true) });
    ASSERT_TRUE(shows(2));
    QToolButton *const left = button("Turn the camera left while this is held");
    ASSERT_NE(left, nullptr);
    QTest::mousePress(left, Qt::LeftButton);
    EXPECT_TRUE(received("go 2 left=5"));
    push({ device(2, false), device(3, true) }); // a program changes its camera meanwhile
    ASSERT_TRUE(shows(3));
    QTest::mouseRelease(left, Qt::LeftButton);
    EXPECT_TRUE(received("go 2 stop"));
}

TEST_F(Window, KeepsTheOtherFaultWhenOneIsTakenBack)
{
    QJsonObject faulty = device(1, true);
    faulty["faults"] = QJsonObject{ { "stall", QJsonArray{ "all" } }, { "delay", 1000 } };
    push({ faulty });
    QToolButton *const refuse = button("The camera refuses every request");
    ASSERT_TRUE(QTest::qWaitFor([refuse] { return refuse->isChecked(); }));
    QTest::mouseClick(refuse, Qt::LeftButton);
    EXPECT_TRUE(received("clear 1"));
    EXPECT_TRUE(received("delay 1 1000"));
}

TEST_F(Window, SendsTheCameraHome)
{
    QTest::mouseClick(button("Send the camera to its home position"), Qt::LeftButton);
    EXPECT_TRUE(received("go 1 home"));
}

TEST_F(Window, FillsItsWidthWithThePicture)
{
    m_window.show();
    push({ device(3, true) });
    ASSERT_TRUE(shows(3));
    m_window.resize(1000, 900);
    QWidget *const picture = largePicture(3);
    EXPECT_TRUE(QTest::qWaitFor([picture] { return picture->width() > 900; }));
}

} // namespace virtual_camera
