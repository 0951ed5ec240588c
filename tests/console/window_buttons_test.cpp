// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

// The window's own buttons: minimise to the tray and back, close, and notices on top.

#include <QApplication>
#include <QTimer>

#include "console/console_state.h"
#include "tests/console/panel_fixture.h"
#include "tests/console/sheets.h"
#include "tests/support/uvc_call_recorder.h"
#include "widgets/no_device.h"
#include "widgets/no_mord_camera.h"
#include "widgets/notice_state.h"

namespace {

const char *const activated = SIGNAL(activated(QSystemTrayIcon::ActivationReason));

class WindowButtons : public PanelTest
{
protected:
    QSystemTrayIcon *tray() { return Probe::trayIcon(*window); }
    void activate(QSystemTrayIcon::ActivationReason reason) { tray()->activated(reason); }

    /// The program's exit code when `button` is clicked in the event loop.
    static int exitCodeAfterClick(QPushButton *button)
    {
        QTimer::singleShot(0, button, [button] { click(button); });
        return QApplication::exec();
    }
    static bool isOnTop(const QWidget *notice)
    {
        return notice->windowFlags().testFlag(Qt::WindowStaysOnTopHint);
    }
};

TEST_F(WindowButtons, OnlyADoubleClickOnTheTrayIconRestoresTheWindowAndOnlyOnceMinimised)
{
    start(1);
    window->hide();
    activate(QSystemTrayIcon::DoubleClick);
    EXPECT_FALSE(window->isVisible()) << "not before the first minimise";

    window->setWindowState(Qt::WindowMinimized);
    const QPoint place = window->pos();
    for (int times = 1; times <= 3; ++times) {
        click(form().btn_min);
        EXPECT_FALSE(window->isVisible());
        EXPECT_EQ(connectionsOf(tray(), activated), times) << "once more with every press";
        for (const auto reason : { QSystemTrayIcon::Unknown, QSystemTrayIcon::Context,
                 QSystemTrayIcon::Trigger, QSystemTrayIcon::MiddleClick }) {
            activate(reason);
            EXPECT_FALSE(window->isVisible()) << reason;
        }
        activate(QSystemTrayIcon::DoubleClick);
        EXPECT_TRUE(window->isVisible());
        EXPECT_EQ(window->windowState() & (Qt::WindowMinimized | Qt::WindowMaximized), 0);
        EXPECT_EQ(window->pos(), place);
    }
    EXPECT_EQ(sent(), Requests());
}

TEST_F(WindowButtons, NoticesStayAsTheyAreThroughThePollAndAChangeOfCamera)
{
    plugIn(2);
    makeWindow();
    click(form().btn_top);
    poll();
    click(form().btn_cam2);
    EXPECT_TRUE(Probe::topState(*window));
    forgetSent();
}

/// Notes whether the window and the icon are visible when a signal is connected.
class NotingTray : public QSystemTrayIcon
{
public:
    using QSystemTrayIcon::QSystemTrayIcon;
    std::vector<std::pair<bool, bool>> visibleAtConnects;

protected:
    void connectNotify(const QMetaMethod & /*signal*/) override
    {
        const bool windowVisible = qobject_cast<QWidget *>(parent())->isVisible();
        visibleAtConnects.emplace_back(windowVisible, isVisible());
    }
};

TEST_F(WindowButtons, MinimiseHidesTheWindowThenConnectsThenShowsTheTrayIcon)
{
    start(1);
    auto *const noting = new NotingTray(window.get());
    Probe::trayIcon(*window) = noting;
    click(form().btn_min);
    EXPECT_EQ(noting->visibleAtConnects, (std::vector{ std::pair{ false, false } }));
    EXPECT_TRUE(noting->isVisible());
}

TEST_F(WindowButtons, CloseHidesTheTrayIconSendsNothingAndEndsWithZero)
{
    start(1);
    uvc_call_recorder::clear();
    EXPECT_EQ(exitCodeAfterClick(form().btn_close), 0);
    EXPECT_FALSE(tray()->isVisible());
    EXPECT_EQ(uvc_call_recorder::names(), std::vector<std::string>());
}

TEST_F(WindowButtons, QuitOnTheNoticeLeavesTheTrayIconAndEndsWithZero)
{
    start(0);
    window->cam3_warn(); // another notice makes no difference
    QWidget *const notice = Probe::noDeviceDialog(*window);
    EXPECT_EQ(exitCodeAfterClick(notice->findChild<QPushButton *>("btn_quit")), 0);
    EXPECT_TRUE(tray()->isVisible());
}

TEST_F(WindowButtons, OnTopDecidesAboutNoticesMadeAfterwardsWithoutACameraToo)
{
    start(0);
    const Qt::WindowFlags flags = window->windowFlags();
    const QWidget *const first = Probe::noDeviceDialog(*window);
    EXPECT_EQ(style(form().btn_top), sheets::topAtStart);
    for (const bool onTop : { true, false, true, false }) {
        SCOPED_TRACE(onTop);
        EXPECT_EQ(TopFlag, onTop);
        EXPECT_EQ(Top2Flag, onTop);
        EXPECT_EQ(Probe::topState(*window), !onTop);
        window->Warn_NoDev();
        EXPECT_EQ(isOnTop(Probe::noDeviceDialog(*window)), onTop);
        window->cam5_warn();
        EXPECT_EQ(isOnTop(Probe::noMoreCameraDialog(*window)), onTop);
        EXPECT_TRUE(isOnTop(first)) << "a notice keeps what it was made with";
        click(form().btn_top);
        EXPECT_EQ(style(form().btn_top), sheets::sign(onTop ? "no_top" : "top"));
    }
    EXPECT_EQ(window->windowFlags(), flags) << "the panel itself never stays on top";
    usb_mode = 1;
    click(form().btn_top);
    EXPECT_EQ(sent(), Requests());
}

} // namespace
