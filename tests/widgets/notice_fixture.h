// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

// What the tests of both notices share: what sets each apart, and a typed suite over both.
#pragma once

#include <QApplication>
#include <QPushButton>
#include <QTest>
#include <QTimer>

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "widgets/no_device.h"
#include "widgets/no_mord_camera.h"
#include "widgets/notice_state.h"

struct ButtonRow
{
    const char *name;
    QRect geometry;
    const char *styleSheet;
};

/// What sets each notice apart. All else holds for both.
template<typename Notice> struct Expected;

constexpr const char *okFace = "QPushButton{image: url(:/img/OK.png);background-color:black;}";

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
        const QObject scope; // the second timer must not outlive this call
        QTimer::singleShot(0, &scope, [&] {
            action();
            QCoreApplication::sendPostedEvents();
            QTimer::singleShot(0, &scope, [] { QCoreApplication::exit(stillRunning); });
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
