// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

// Both notices: what they look like, where they open, how they are dragged and dismissed.

#include <QApplication>
#include <QFile>
#include <QMetaMethod>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>
#include <QTranslator>

#include <gtest/gtest.h>

#include <cstring>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "tests/widgets/mouse.h"
#include "widgets/no_device.h"
#include "widgets/no_mord_camera.h"
#include "widgets/notice_state.h"

inline void PrintTo(const QString &text, std::ostream *stream) { *stream << text.toStdString(); }
inline void PrintTo(const QPoint &point, std::ostream *stream)
{
    *stream << point.x() << ", " << point.y();
}

namespace {

struct Button
{
    const char *name;
    QRect geometry;
    const char *styleSheet;
};

/// What sets each notice apart.
struct Kind
{
    const char *name;
    std::function<QDialog *()> make;
    const char *picture;
    const char *endOfSheet;
    std::vector<Button> buttons;
    QByteArrayList slotNames;
    int &x, &y, &top, &otherTop;
};

void PrintTo(const Kind &kind, std::ostream *stream) { *stream << kind.name; }

constexpr const char *okFace = "QPushButton{image: url(:/img/OK.png);background-color:black;}";
constexpr const char *quitFace = "QPushButton{image: url(:/img/Quit.png);background-color:black;}";

const Kind kinds[] = {
    { "NO_Device", [] { return new NO_Device(nullptr); }, "no_device", "}\n\n",
        { { "btn_quit", { 32, 144, 80, 23 }, quitFace },
            { "btn_ok", { 214, 144, 80, 23 }, okFace } },
        { "on_btn_quit_clicked()", "on_btn_ok_clicked()" }, main_position_x, main_position_y,
        TopFlag, Top2Flag },
    { "NO_Mord_Camera", [] { return new NO_Mord_Camera(nullptr); }, "no_more_camera", "}",
        { { "btn_ok", { 124, 144, 80, 23 }, okFace } }, { "on_btn_ok_clicked()" }, main2_position_x,
        main2_position_y, Top2Flag, TopFlag },
};

class NoticeTest : public testing::Test
{
protected:
    static void show(QDialog *shown)
    {
        shown->setModal(false);
        shown->show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(shown));
    }

    static constexpr int stillRunning = 77;
    /// Runs the event loop: `action`, then everything that it posted. Returns the exit code.
    static int exitCodeAfter(const std::function<void()> &action)
    {
        const QObject scope; // the second timer must not outlive this call
        QTimer::singleShot(0, &scope, [&] {
            action();
            QCoreApplication::sendPostedEvents();
            QTimer::singleShot(0, &scope, [] { QCoreApplication::exit(stillRunning); });
        });
        return QCoreApplication::exec();
    }
};

class Notice : public NoticeTest, public testing::WithParamInterface<Kind>
{
protected:
    Notice()
    {
        main_position_x = main_position_y = main2_position_x = main2_position_y = 1000;
        TopFlag = Top2Flag = 0;
        kind.x = 137;
        kind.y = 107;
        notice = make();
    }

    std::unique_ptr<QDialog> make() { return std::unique_ptr<QDialog>(kind.make()); }
    QPushButton *button(const char *name) { return notice->findChild<QPushButton *>(name); }
    const Kind &kind = GetParam();
    std::unique_ptr<QDialog> notice;
};

TEST_P(Notice, IsBuiltLikeItsForm)
{
    EXPECT_STREQ(notice->metaObject()->className(), kind.name);
    EXPECT_EQ(notice->objectName(), kind.name);
    EXPECT_EQ(notice->styleSheet(),
        QString("#widget{\n\timage: url(:/img/%1.png);\n\tborder: 0px solid gray ;\n"
                "\tbackground-repeat:no-repeat;\n\tbackground-position:center; \n"
                "\tborder-radius: 32px;\n%2")
            .arg(kind.picture, kind.endOfSheet));
    ASSERT_EQ(notice->children().size(), 1);
    const auto *const face = qobject_cast<QWidget *>(notice->children().first());
    EXPECT_STREQ(face->metaObject()->className(), "QWidget");
    EXPECT_EQ(face->objectName(), "widget");
    EXPECT_EQ(face->geometry(), notice->rect());
    EXPECT_EQ(face->styleSheet(), "");
    ASSERT_EQ(face->children().size(), static_cast<int>(kind.buttons.size()));
    int index = 0;
    for (const Button &row : kind.buttons) {
        const auto *const button = qobject_cast<QPushButton *>(face->children().at(index++));
        ASSERT_NE(button, nullptr) << row.name;
        EXPECT_EQ(button->objectName(), row.name);
        EXPECT_EQ(button->geometry(), row.geometry) << row.name;
        EXPECT_EQ(button->styleSheet(), row.styleSheet) << row.name;
        EXPECT_EQ(button->text(), "") << row.name;
        EXPECT_EQ(button->focusPolicy(), Qt::TabFocus) << row.name;
        EXPECT_TRUE(button->isFlat()) << row.name;
        EXPECT_FALSE(button->autoDefault() || button->isDefault()) << row.name;
        EXPECT_NE(button->accessibleName(), notice->accessibleName()) << row.name;
        EXPECT_FALSE(button->accessibleName().isEmpty()) << row.name;
        EXPECT_FALSE(button->accessibleDescription().isEmpty()) << row.name;
    }
    EXPECT_FALSE(notice->accessibleName().isEmpty());
    EXPECT_FALSE(notice->accessibleDescription().isEmpty());
    for (const char *picture : { kind.picture, "OK", "Quit" })
        EXPECT_TRUE(QFile::exists(QString(":/img/%1.png").arg(picture))) << picture;
}

TEST_P(Notice, IsAHiddenFramelessWindowOfFixedSizeHalfItsSizeFromTheMainWindowsCorner)
{
    EXPECT_TRUE(notice->isHidden());
    EXPECT_EQ(notice->parent(), nullptr);
    EXPECT_TRUE(notice->testAttribute(Qt::WA_TranslucentBackground));
    for (const QSize &size : { notice->size(), notice->minimumSize(), notice->maximumSize() })
        EXPECT_EQ(size, QSize(326, 187));
    EXPECT_EQ(notice->pos(), QPoint(137 + 163, 107 + 93));
    kind.x = -400;
    EXPECT_EQ(make()->pos(), QPoint(-400 + 163, 107 + 93));
}

TEST_P(Notice, StaysOnTopOnlyIfItsOwnFlagIsOneWhenItIsMade)
{
    const Qt::WindowFlags frameless = Qt::Window | Qt::FramelessWindowHint;
    for (const int flag : { 0, 1, 2 }) {
        kind.top = flag;
        kind.otherTop = 1 - flag;
        const auto made = make();
        kind.top = 1 - flag;
        EXPECT_EQ(
            made->windowFlags(), flag == 1 ? frameless | Qt::WindowStaysOnTopHint : frameless);
    }
}

/// Translates the texts of one context.
class Brackets : public QTranslator
{
public:
    explicit Brackets(const char *of) : context(of) { }
    bool isEmpty() const override { return false; }
    QString translate(const char *of, const char *text, const char *, int) const override
    {
        return std::strcmp(of, context) == 0 ? '<' + QString(text) + '>' : QString();
    }

private:
    const char *context;
};

TEST_P(Notice, TitleIsTranslatedInTheContextOfTheClass)
{
    EXPECT_EQ(notice->windowTitle(), "Dialog");
    Brackets brackets(kind.name);
    QCoreApplication::installTranslator(&brackets);
    EXPECT_EQ(make()->windowTitle(), "<Dialog>");
}

TEST_P(Notice, DeclaresItsSlotsInOrderAndNoSignals)
{
    const QMetaObject &meta = *notice->metaObject();
    EXPECT_STREQ(meta.superClass()->className(), "QDialog");
    QByteArrayList slotNames;
    for (int index = meta.methodOffset(); index < meta.methodCount(); ++index) {
        EXPECT_EQ(meta.method(index).methodType(), QMetaMethod::Slot);
        slotNames += meta.method(index).methodSignature();
    }
    EXPECT_EQ(slotNames, kind.slotNames);
}

// Places of the mouse are relative to where the notice is by then.
TEST_P(Notice, FollowsADragWithTheLeftButtonInWholePixels)
{
    mouse::press(notice.get(), { 20.4, 30.4 });
    mouse::move(notice.get(), { 24.6, 28 });
    EXPECT_EQ(notice->pos(), QPoint(305, 198));
    mouse::move(notice.get(), { 120, 30 });
    EXPECT_EQ(notice->pos(), QPoint(405, 198)) << "the grip point stays under the pointer";
    mouse::release(notice.get(), { 20, 30 }, Qt::RightButton);
    mouse::move(notice.get(), { 22, 33 });
    EXPECT_EQ(notice->pos(), QPoint(407, 201)) << "the right button ends no drag";
    mouse::move(notice.get(), { 80, 80 }, Qt::RightButton);
    EXPECT_EQ(notice->pos(), QPoint(407, 201)) << "the left button is no longer held";
    mouse::release(notice.get(), { 20, 30 });
    mouse::move(notice.get(), { 90, 90 });
    EXPECT_EQ(notice->pos(), QPoint(407, 201));
}

TEST_P(Notice, OtherButtonsDoNotDragIt)
{
    for (const Qt::MouseButton other : { Qt::RightButton, Qt::MiddleButton }) {
        mouse::press(notice.get(), { 20, 30 }, other);
        mouse::move(notice.get(), { 80, 80 }, other);
        mouse::move(notice.get(), { 80, 80 }, other | Qt::LeftButton);
        EXPECT_EQ(notice->pos(), QPoint(300, 200));
    }
}

TEST_P(Notice, LeavesMouseEventsAsAcceptedAsTheyCame)
{
    for (const auto type :
        { QEvent::MouseButtonPress, QEvent::MouseMove, QEvent::MouseButtonRelease }) {
        for (const bool accepted : { true, false }) {
            QMouseEvent event(type, { 20, 30 }, { 20, 30 }, { 20, 30 }, Qt::RightButton,
                Qt::RightButton, Qt::NoModifier);
            event.setAccepted(accepted);
            QCoreApplication::sendEvent(notice.get(), &event);
            EXPECT_EQ(event.isAccepted(), accepted) << "event " << type;
        }
    }
}

TEST_P(Notice, OkHidesThisNoticeOnlyAndIsNoResult)
{
    NO_Device otherDevice(nullptr);
    NO_Mord_Camera otherCamera(nullptr);
    for (QDialog *shown : { notice.get(), static_cast<QDialog *>(&otherDevice),
             static_cast<QDialog *>(&otherCamera) })
        show(shown);
    const QSignalSpy finished(notice.get(), &QDialog::finished);
    QTest::mouseClick(button("btn_ok"), Qt::LeftButton);
    EXPECT_TRUE(notice->isHidden());
    EXPECT_EQ(notice->result(), 0);
    EXPECT_TRUE(finished.isEmpty()) << "neither accepted nor rejected";
    EXPECT_TRUE(otherDevice.isVisible() && otherCamera.isVisible());
}

TEST_P(Notice, DismissingTheLastWindowDoesNotEndTheProgram)
{
    const std::function<void()> ways[] = {
        [this] { QTest::mouseClick(button("btn_ok"), Qt::LeftButton); },
        [this] { QTest::keyClick(notice.get(), Qt::Key_Escape); },
        [this] { notice->close(); }, // as the window manager does
    };
    for (const auto &dismiss : ways) {
        show(notice.get());
        EXPECT_EQ(exitCodeAfter(dismiss), stillRunning);
        EXPECT_TRUE(notice->isHidden());
    }
}

INSTANTIATE_TEST_SUITE_P(Each, Notice, testing::ValuesIn(kinds),
    [](const auto &kind) { return std::string(kind.param.name); });

TEST_F(NoticeTest, QuitEndsTheProgramWithZeroWhileOtherNoticesAreOpen)
{
    NO_Device notice(nullptr);
    NO_Mord_Camera other(nullptr);
    show(&notice);
    show(&other);
    auto *const quit = notice.findChild<QPushButton *>("btn_quit");
    EXPECT_EQ(exitCodeAfter([&] { QTest::mouseClick(quit, Qt::LeftButton); }), 0);
    EXPECT_TRUE(other.isVisible());
    quit->setFocus(Qt::TabFocusReason);
    EXPECT_EQ(exitCodeAfter([&] { QTest::keyClick(quit, Qt::Key_Space); }), 0);
}

} // namespace
