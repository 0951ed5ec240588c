// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

// Both notices: how they look, where they open, how they are dragged and dismissed.

#include <QApplication>
#include <QFile>
#include <QMetaMethod>
#include <QPushButton>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>
#include <QTranslator>

#include <gtest/gtest.h>

#include <set>
#include <utility>

#include "tests/widgets/mouse.h"
#include "widgets/no_device.h"
#include "widgets/no_mord_camera.h"
#include "widgets/notice_state.h"

namespace {

struct ButtonRow
{
    const char *name;
    QRect geometry;
    const char *styleSheet;
};

/// What sets each notice apart. The rest of this file holds for both.
template<typename Notice> struct Expected;

const char *const okFace = "QPushButton{image: url(:/img/OK.png);background-color:black;}";

template<> struct Expected<NO_Device>
{
    static constexpr const char *name = "NO_Device";
    static constexpr const char *styleSheet =
        "#widget{\n\timage: url(:/img/no_device.png);\n\tborder: 0px solid gray "
        ";\n\tbackground-repeat:no-repeat;\n\tbackground-position:center; \n\tborder-radius: "
        "32px;\n}\n\n";
    static std::vector<ButtonRow> buttons()
    {
        return { { "btn_quit", { 32, 144, 80, 23 },
                     "QPushButton{image: url(:/img/Quit.png);background-color:black;}" },
            { "btn_ok", { 214, 144, 80, 23 }, okFace } };
    }
    static QList<QByteArray> slotNames()
    {
        return { "on_btn_quit_clicked()", "on_btn_ok_clicked()" };
    }
    static int &x() { return main_position_x; }
    static int &y() { return main_position_y; }
    static int &top() { return TopFlag; }
    static int &otherTop() { return Top2Flag; }
};

template<> struct Expected<NO_Mord_Camera>
{
    static constexpr const char *name = "NO_Mord_Camera";
    static constexpr const char *styleSheet =
        "#widget{\n\timage: url(:/img/no_more_camera.png);\n\tborder: 0px solid gray "
        ";\n\tbackground-repeat:no-repeat;\n\tbackground-position:center; \n\tborder-radius: "
        "32px;\n}";
    static std::vector<ButtonRow> buttons()
    {
        return { { "btn_ok", { 124, 144, 80, 23 }, okFace } };
    }
    static QList<QByteArray> slotNames() { return { "on_btn_ok_clicked()" }; }
    static int &x() { return main2_position_x; }
    static int &y() { return main2_position_y; }
    static int &top() { return Top2Flag; }
    static int &otherTop() { return TopFlag; }
};

class NoticeTestBase : public testing::Test
{
protected:
    void SetUp() override
    {
        main_position_x = main_position_y = main2_position_x = main2_position_y = 0;
        TopFlag = Top2Flag = 0;
    }

    static void show(QDialog *notice)
    {
        notice->setModal(false);
        notice->show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(notice));
    }

    /// Runs the event loop: `action` first, then everything that it posted. Returns the exit code
    /// that this led to, or `stillRunning`.
    template<typename Action> static int exitCodeAfter(Action action)
    {
        QTimer::singleShot(0, qApp, [&] {
            action();
            // Timers come after all posted events, a posted end of the program among them.
            QTimer::singleShot(0, qApp, [] { QCoreApplication::exit(stillRunning); });
        });
        return QCoreApplication::exec();
    }
    static constexpr int stillRunning = 77;
};

template<typename Notice> class NoticeTest : public NoticeTestBase
{
protected:
    static QPushButton *button(const QDialog &notice, const char *name)
    {
        return notice.findChild<QPushButton *>(QLatin1String(name));
    }
};

using Notices = testing::Types<NO_Device, NO_Mord_Camera>;
struct NoticeName
{
    template<typename Notice> static std::string GetName(int) { return Expected<Notice>::name; }
};
TYPED_TEST_SUITE(NoticeTest, Notices, NoticeName);

// Look --------------------------------------------------------------------------------------------

TYPED_TEST(NoticeTest, IsBuiltLikeItsForm)
{
    using Is = Expected<TypeParam>;
    TypeParam notice;
    EXPECT_STREQ(notice.metaObject()->className(), Is::name);
    EXPECT_EQ(notice.objectName(), Is::name);
    EXPECT_EQ(notice.windowTitle(), "Dialog");
    EXPECT_EQ(notice.styleSheet(), Is::styleSheet);
    EXPECT_EQ(notice.parent(), nullptr);

    ASSERT_EQ(notice.children().size(), 1);
    auto *face = qobject_cast<QWidget *>(notice.children().first());
    ASSERT_NE(face, nullptr);
    EXPECT_STREQ(face->metaObject()->className(), "QWidget");
    EXPECT_EQ(face->objectName(), "widget");
    EXPECT_EQ(face->geometry(), QRect(0, 0, 326, 187));
    EXPECT_EQ(face->styleSheet(), "");

    const std::vector<ButtonRow> rows = Is::buttons();
    ASSERT_EQ(face->children().size(), static_cast<int>(rows.size()));
    int index = 0;
    for (const ButtonRow &row : rows) {
        auto *button = qobject_cast<QPushButton *>(face->children().at(index++));
        ASSERT_NE(button, nullptr) << row.name;
        EXPECT_EQ(button->objectName(), row.name);
        EXPECT_EQ(button->geometry(), row.geometry) << row.name;
        EXPECT_EQ(button->styleSheet(), row.styleSheet) << row.name;
        EXPECT_EQ(button->text(), "") << row.name;
        EXPECT_TRUE(button->isFlat()) << row.name;
        EXPECT_FALSE(button->autoDefault()) << row.name;
        EXPECT_FALSE(button->isDefault()) << row.name;
    }
}

TYPED_TEST(NoticeTest, IsAFramelessTranslucentWindowOfFixedSize)
{
    TypeParam notice;
    EXPECT_TRUE(notice.isHidden());
    EXPECT_TRUE(notice.isWindow());
    EXPECT_EQ(notice.windowFlags(), Qt::Window | Qt::FramelessWindowHint);
    EXPECT_TRUE(notice.testAttribute(Qt::WA_TranslucentBackground));
    EXPECT_EQ(notice.size(), QSize(326, 187));
    EXPECT_EQ(notice.minimumSize(), QSize(326, 187));
    EXPECT_EQ(notice.maximumSize(), QSize(326, 187));
}

TYPED_TEST(NoticeTest, SpeaksToScreenReaders)
{
    TypeParam notice;
    std::set<QString> names;
    QList<QWidget *> controls{ &notice };
    for (QPushButton *button : notice.template findChildren<QPushButton *>())
        controls.append(button);
    for (const QWidget *control : qAsConst(controls)) {
        EXPECT_NE(control->accessibleName(), "") << qPrintable(control->objectName());
        EXPECT_NE(control->accessibleDescription(), "") << qPrintable(control->objectName());
        EXPECT_TRUE(names.insert(control->accessibleName()).second)
            << qPrintable(control->accessibleName());
    }
}

TYPED_TEST(NoticeTest, ButtonsLeaveTheKeyboardAloneWhenClicked)
{
    TypeParam notice;
    for (const QPushButton *button : notice.template findChildren<QPushButton *>())
        EXPECT_EQ(button->focusPolicy(), Qt::TabFocus) << qPrintable(button->objectName());
}

TYPED_TEST(NoticeTest, EveryPictureExists)
{
    TypeParam notice;
    QString sheets = notice.styleSheet();
    for (const QPushButton *button : notice.template findChildren<QPushButton *>())
        sheets += button->styleSheet();
    QRegularExpressionMatchIterator paths =
        QRegularExpression("url\\(([^)]*)\\)").globalMatch(sheets);
    int found = 0;
    while (paths.hasNext()) {
        const QString path = paths.next().captured(1);
        EXPECT_TRUE(QFile::exists(path)) << qPrintable(path);
        ++found;
    }
    EXPECT_EQ(found, 1 + static_cast<int>(Expected<TypeParam>::buttons().size()));
}

class Listener : public QTranslator
{
public:
    bool isEmpty() const override { return false; }
    QString translate(const char *context, const char *text, const char *, int) const override
    {
        heard.insert({ context, text });
        return QString::fromLatin1("<%1>").arg(QLatin1String(text));
    }
    mutable std::set<std::pair<std::string, std::string>> heard;
};

TYPED_TEST(NoticeTest, TitleIsTranslatedInTheContextOfTheClass)
{
    Listener listener;
    QCoreApplication::installTranslator(&listener);
    TypeParam notice;
    QCoreApplication::removeTranslator(&listener);
    EXPECT_EQ(notice.windowTitle(), "<Dialog>");
    EXPECT_EQ(listener.heard.count({ Expected<TypeParam>::name, "Dialog" }), 1U);
}

TYPED_TEST(NoticeTest, DeclaresItsSlotsInOrderAndNoSignals)
{
    const QMetaObject &meta = TypeParam::staticMetaObject;
    EXPECT_STREQ(meta.superClass()->className(), "QDialog");
    QList<QByteArray> slotNames;
    for (int index = meta.methodOffset(); index < meta.methodCount(); ++index) {
        EXPECT_EQ(meta.method(index).methodType(), QMetaMethod::Slot);
        slotNames.append(meta.method(index).methodSignature());
    }
    EXPECT_EQ(slotNames, Expected<TypeParam>::slotNames());
}

// Place and layer ---------------------------------------------------------------------------------

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
