// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

// Where both notices open, how they are dragged, and how they are dismissed.

#include <QSignalSpy>

#include "tests/widgets/mouse.h"
#include "tests/widgets/notice_fixture.h"

namespace {

TYPED_TEST_SUITE(NoticeTest, Notices, NoticeName);

TYPED_TEST(NoticeTest, OpensHalfItsSizeFromTheMainWindowsCorner)
{
    using Is = Expected<TypeParam>;
    main_position_x = main_position_y = main2_position_x = main2_position_y = 1000;
    Is::x() = 100;
    Is::y() = 50;
    EXPECT_EQ(TypeParam().pos(), QPoint(263, 143));
    Is::x() = -400;
    Is::y() = -95;
    EXPECT_EQ(TypeParam().pos(), QPoint(-237, -2));
}

TYPED_TEST(NoticeTest, StaysOnTopOnlyIfItsOwnFlagIsOneWhenItIsMade)
{
    using Is = Expected<TypeParam>;
    const auto onTop = Qt::Window | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint;
    const auto notOnTop = Qt::Window | Qt::FramelessWindowHint;

    Is::top() = 1;
    TypeParam first;
    EXPECT_EQ(first.windowFlags(), onTop);

    Is::top() = 0;
    Is::otherTop() = 1;
    TypeParam second;
    EXPECT_EQ(second.windowFlags(), notOnTop);
    EXPECT_EQ(first.windowFlags(), onTop) << "a notice keeps what it was made with";

    Is::top() = 2;
    EXPECT_EQ(TypeParam().windowFlags(), notOnTop);
}

// Drag --------------------------------------------------------------------------------------------

TYPED_TEST(NoticeTest, FollowsADragWithTheLeftButton)
{
    TypeParam notice;
    notice.move(300, 200);
    mouse::press(&notice, { 20, 30 });
    // Each place is relative to where the notice stands by then.
    mouse::move(&notice, { 25, 28 });
    EXPECT_EQ(notice.pos(), QPoint(305, 198));
    mouse::move(&notice, { 120, 30 });
    EXPECT_EQ(notice.pos(), QPoint(405, 198)) << "the grip point stays under the pointer";
    mouse::release(&notice, { 20, 30 });
    mouse::move(&notice, { 90, 90 });
    EXPECT_EQ(notice.pos(), QPoint(405, 198));
}

TYPED_TEST(NoticeTest, RoundsTheGlobalPositionToTheNearestPixel)
{
    TypeParam notice;
    notice.move(300, 200);
    mouse::press(&notice, { 20.4, 30.4 });
    mouse::move(&notice, { 24.6, 30.4 });
    EXPECT_EQ(notice.pos(), QPoint(305, 200));
    mouse::press(&notice, { 20.6, 30.4 });
    mouse::move(&notice, { 24.6, 30.4 });
    EXPECT_EQ(notice.pos(), QPoint(309, 200));
    mouse::release(&notice, { 20, 30 });
}

TYPED_TEST(NoticeTest, OtherButtonsDoNotDragIt)
{
    for (const Qt::MouseButton other : { Qt::RightButton, Qt::MiddleButton }) {
        TypeParam notice;
        notice.move(300, 200);
        mouse::press(&notice, { 20, 30 }, other);
        mouse::move(&notice, { 80, 80 }, other);
        // Not even when the left button is reported held, since it was not pressed on the notice.
        mouse::move(&notice, { 80, 80 }, other | Qt::LeftButton);
        EXPECT_EQ(notice.pos(), QPoint(300, 200));
    }
}

TYPED_TEST(NoticeTest, RightButtonGoingUpDoesNotEndALeftDrag)
{
    TypeParam notice;
    notice.move(300, 200);
    mouse::press(&notice, { 20, 30 });
    mouse::release(&notice, { 20, 30 }, Qt::RightButton);
    mouse::move(&notice, { 22, 33 });
    EXPECT_EQ(notice.pos(), QPoint(302, 203));
    mouse::move(&notice, { 80, 80 }, Qt::RightButton);
    EXPECT_EQ(notice.pos(), QPoint(302, 203)) << "the left button is not held any more";
}

TYPED_TEST(NoticeTest, ADragThatStartsOnAButtonDoesNotMoveIt)
{
    TypeParam notice;
    this->show(&notice);
    notice.move(300, 200);
    QWindow *window = notice.windowHandle();
    for (const ButtonRow &row : Expected<TypeParam>::buttons()) {
        const QPoint start = row.geometry.center();
        const QPoint end = start - QPoint(60, 90);
        QTest::mousePress(window, Qt::LeftButton, Qt::NoModifier, start);
        QTest::mouseMove(window, end);
        QTest::mouseRelease(window, Qt::LeftButton, Qt::NoModifier, end);
        EXPECT_EQ(notice.pos(), QPoint(300, 200)) << row.name;
    }
    // The same way, started beside the buttons, moves it: the grip point stays under the pointer.
    QTest::mousePress(window, Qt::LeftButton, Qt::NoModifier, { 160, 130 });
    QTest::mouseMove(window, { 100, 40 });
    QTest::mouseRelease(window, Qt::LeftButton, Qt::NoModifier, { 160, 130 });
    EXPECT_EQ(notice.pos(), QPoint(240, 110));
}

TYPED_TEST(NoticeTest, LeavesMouseEventsAsAcceptedAsTheyCame)
{
    TypeParam notice;
    for (const auto type :
        { QEvent::MouseButtonPress, QEvent::MouseMove, QEvent::MouseButtonRelease }) {
        for (const bool accepted : { true, false }) {
            QMouseEvent event(type, { 20, 30 }, { 20, 30 }, { 20, 30 }, Qt::RightButton,
                Qt::RightButton, Qt::NoModifier);
            event.setAccepted(accepted);
            QCoreApplication::sendEvent(&notice, &event);
            EXPECT_EQ(event.isAccepted(), accepted) << "event " << type;
        }
    }
}

// Dismissal ---------------------------------------------------------------------------------------

TYPED_TEST(NoticeTest, OkHidesThisNoticeOnly)
{
    TypeParam notice;
    NO_Device otherDevice;
    NO_Mord_Camera otherCamera;
    for (QDialog *shown : { static_cast<QDialog *>(&notice), static_cast<QDialog *>(&otherDevice),
             static_cast<QDialog *>(&otherCamera) })
        this->show(shown);
    QSignalSpy finished(&notice, &QDialog::finished);
    const int exitCode = this->exitCodeAfter(
        [&] { QTest::mouseClick(this->button(notice, "btn_ok"), Qt::LeftButton); });
    EXPECT_EQ(exitCode, this->stillRunning);
    EXPECT_TRUE(notice.isHidden());
    EXPECT_EQ(notice.result(), 0);
    EXPECT_TRUE(finished.isEmpty()) << "neither accepted nor rejected";
    EXPECT_TRUE(otherDevice.isVisible());
    EXPECT_TRUE(otherCamera.isVisible());
}

TYPED_TEST(NoticeTest, DismissingTheLastWindowDoesNotEndTheProgram)
{
    for (const bool byKey : { true, false }) {
        TypeParam notice;
        this->show(&notice);
        const int exitCode = this->exitCodeAfter([&] {
            if (byKey)
                QTest::keyClick(&notice, Qt::Key_Escape);
            else
                QTest::mouseClick(this->button(notice, "btn_ok"), Qt::LeftButton);
        });
        EXPECT_TRUE(notice.isHidden());
        EXPECT_EQ(exitCode, this->stillRunning) << (byKey ? "Escape" : "OK");
    }
}

TYPED_TEST(NoticeTest, ClosedByTheWindowManagerDoesNotEndTheProgram)
{
    TypeParam notice;
    this->show(&notice);
    EXPECT_EQ(this->exitCodeAfter([&] { notice.close(); }), this->stillRunning);
    EXPECT_TRUE(notice.isHidden());
}

using NoDeviceTest = NoticeTestBase;

TEST_F(NoDeviceTest, QuitEndsTheProgramWithZeroAlsoWhileOtherNoticesAreOpen)
{
    NO_Device notice;
    NO_Mord_Camera other;
    show(&notice);
    show(&other);
    const int exitCode = exitCodeAfter(
        [&] { QTest::mouseClick(notice.findChild<QPushButton *>("btn_quit"), Qt::LeftButton); });
    EXPECT_EQ(exitCode, 0);
    EXPECT_TRUE(other.isVisible());
}

TEST_F(NoDeviceTest, SpaceOnTheFocusedButtonPressesIt)
{
    NO_Device notice;
    show(&notice);
    auto *quit = notice.findChild<QPushButton *>("btn_quit");
    quit->setFocus(Qt::TabFocusReason);
    EXPECT_EQ(exitCodeAfter([&] { QTest::keyClick(quit, Qt::Key_Space); }), 0);
}

} // namespace
