// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

// How the window comes to life, goes to the tray and ends.

#include <QApplication>
#include <QElapsedTimer>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>

#include <functional>

#include "console/console_state.h"
#include "tests/console/connections.h"
#include "tests/console/panel_fixture.h"
#include "tests/support/uvc_call_recorder.h"
#include "widgets/no_device.h"
#include "widgets/notice_state.h"

namespace {

class Lifecycle : public PanelTest
{
protected:
    Lifecycle() { uvc_call_recorder::clear(); }

    void click(QPushButton *button) { QTest::mouseClick(button, Qt::LeftButton); }
    void activateTray(QSystemTrayIcon::ActivationReason reason)
    {
        emit Probe::trayIcon(*window)->activated(reason);
    }

    /// Runs the event loop with `action` in it.
    static int runWith(const std::function<void()> &action)
    {
        QTimer::singleShot(0, qApp, action);
        return QApplication::exec();
    }
};

// Construction
// ----------------------------------------------------------------------------------------

TEST_F(Lifecycle, MembersHaveTheirStartValues)
{
    plugIn(0);
    TopFlag = Top2Flag = 5;
    right_flag = 5;
    makeWindow();
    EXPECT_EQ(Probe::dragPosition(*window), QPoint(0, 0));
    EXPECT_TRUE(Probe::objectTable(*window).isEmpty());
    EXPECT_FALSE(Probe::dragging(*window));
    EXPECT_FALSE(Probe::afState(*window));
    EXPECT_FALSE(Probe::aiState(*window));
    EXPECT_FALSE(Probe::topState(*window));
    EXPECT_TRUE(Probe::muteState(*window));
    EXPECT_EQ(Probe::setArmed(*window), 0);
    EXPECT_EQ(Probe::clearArmed(*window), 0);
    EXPECT_TRUE(Probe::flipState(*window));
    EXPECT_TRUE(Probe::mirrorState(*window));
    EXPECT_TRUE(Probe::deviceList(*window).empty());
    EXPECT_NE(Probe::device(*window), nullptr);
    EXPECT_EQ(Probe::place(*window), 0);
    EXPECT_EQ(Probe::speedX(*window), 0);
    EXPECT_EQ(Probe::speedY(*window), 0);
    EXPECT_EQ(Probe::noMoreCameraDialog(*window), nullptr);
    EXPECT_EQ(TopFlag, 1);
    EXPECT_EQ(Top2Flag, 1);
    EXPECT_EQ(right_flag, 0);
    EXPECT_EQ(window->parent(), nullptr);
}

TEST_F(Lifecycle, MembersStandInTheirOrder)
{
    plugIn(0);
    makeWindow();
    const auto address = [](auto &member) { return reinterpret_cast<quintptr>(&member); };
    MainWindow &w = *window;
    const std::vector<quintptr> addresses = { address(Probe::dragPosition(w)),
        address(Probe::objectTable(w)), address(Probe::dragging(w)), address(Probe::afState(w)),
        address(Probe::aiState(w)), address(Probe::topState(w)), address(Probe::muteState(w)),
        address(Probe::setArmed(w)), address(Probe::clearArmed(w)), address(Probe::flipState(w)),
        address(Probe::mirrorState(w)), address(Probe::deviceList(w)), address(Probe::device(w)),
        address(Probe::timer(w)), address(Probe::spareTimer(w)), address(Probe::place(w)),
        address(Probe::speedX(w)), address(Probe::speedY(w)), address(Probe::trayIcon(w)),
        address(Probe::noDeviceDialog(w)), address(Probe::noMoreCameraDialog(w)) };
    EXPECT_TRUE(std::is_sorted(addresses.begin(), addresses.end()));
}

TEST_F(Lifecycle, PollIsDueEvery500MillisecondsAndNothingElseRuns)
{
    plugIn(0);
    constructWindow();
    const QTimer *const timer = Probe::timer(*window);
    const QTimer *const spare = Probe::spareTimer(*window);
    EXPECT_TRUE(timer->isActive());
    EXPECT_EQ(timer->interval(), 500);
    EXPECT_FALSE(timer->isSingleShot());

    const auto timers = window->findChildren<QTimer *>(QString(), Qt::FindDirectChildrenOnly);
    ASSERT_EQ(timers.size(), 3) << "one of the constructor, which was replaced";
    EXPECT_TRUE(timers.contains(const_cast<QTimer *>(timer)));
    EXPECT_TRUE(timers.contains(const_cast<QTimer *>(spare)));
    for (const QTimer *one : timers) {
        EXPECT_EQ(one->isActive(), one == timer);
        EXPECT_EQ(connectionsOf(one, SIGNAL(timeout())), one == timer ? 1 : 0);
    }
}

TEST_F(Lifecycle, EachSliderAndTheJoystickAreConnectedOnce)
{
    plugIn(0);
    makeWindow();
    for (const QSlider *slider : { form().slider_zoom, form().slider_focus }) {
        EXPECT_EQ(connectionsOf(slider, SIGNAL(valueChanged(int))), 1);
        EXPECT_EQ(connectionsOf(slider, SIGNAL(sliderReleased())), 1);
    }
    for (const char *signal :
        { SIGNAL(keyNumchanged(int)), SIGNAL(Speed_Pan(int)), SIGNAL(Speed_Tilt(int)) })
        EXPECT_EQ(connectionsOf(form().widget, signal), 1) << signal;
    EXPECT_EQ(connectionsOf(
                  Probe::trayIcon(*window), SIGNAL(activated(QSystemTrayIcon::ActivationReason))),
        0);
}

TEST_F(Lifecycle, TwoDevicesAreMadeAndNothingIsSent)
{
    plugIn(2);
    makeWindow();
    using Names = std::vector<std::string>;
    EXPECT_EQ(uvc_call_recorder::names(),
        (Names{ "uvc_init", "uvc_get_device_list", "uvc_init", "uvc_get_device_list" }));
    EXPECT_EQ(sent(), Requests());
    EXPECT_TRUE(becomesFree(1));
    EXPECT_TRUE(becomesFree(2));
}

TEST_F(Lifecycle, WindowIsShownBeforeThePollAndTheNoticeComesHalfASecondLater)
{
    plugIn(0);
    QElapsedTimer sinceStart;
    sinceStart.start();
    constructWindow();
    const NO_Device *const hidden = Probe::noDeviceDialog(*window);
    ASSERT_NE(hidden, nullptr);
    EXPECT_FALSE(hidden->isVisible());
    window->show();
    EXPECT_TRUE(window->isVisible());
    ASSERT_TRUE(QTest::qWaitFor([&] { return Probe::noDeviceDialog(*window) != hidden; }));
    // The toolkit's coarse timers keep to 5 %; a busy machine only ever makes them late.
    EXPECT_GE(sinceStart.elapsed(), 474);
    EXPECT_TRUE(Probe::noDeviceDialog(*window)->isVisible());
    EXPECT_FALSE(hidden->isVisible()) << "the notice of the start stays as it is";
    EXPECT_FALSE(Probe::timer(*window)->isActive());
}

TEST_F(Lifecycle, ControlsAreInertBeforeThePoll)
{
    plugIn(1);
    makeWindow();
    EXPECT_EQ(usb_mode, 0);
    EXPECT_EQ(maxcam, 0);
    // They do not even ask whether a camera is open.
    ASSERT_TRUE(Probe::device(*window)->OpenDevice("0", 0));
    QTest::keyClick(window.get(), Qt::Key_Left);
    click(form().btn_home);
    click(form().btn_num1);
    window->MovePlace(5);
    form().slider_zoom->setValue(60);
    EXPECT_EQ(sent(), Requests());
}

TEST_F(Lifecycle, InitValueMakesATimerAndADeviceAnew)
{
    plugIn(1);
    makeWindow();
    QTimer *const timer = Probe::timer(*window);
    BaseDevice *const made = Probe::device(*window);
    timer->start();
    TopFlag = Top2Flag = 0;
    uvc_call_recorder::clear();
    window->InitValue();
    EXPECT_NE(Probe::timer(*window), timer);
    EXPECT_EQ(Probe::timer(*window)->parent(), window.get());
    EXPECT_FALSE(Probe::timer(*window)->isActive());
    EXPECT_TRUE(timer->isActive()) << "the old one runs on";
    EXPECT_NE(Probe::device(*window), made);
    EXPECT_EQ(uvc_call_recorder::names(),
        (std::vector<std::string>{ "uvc_init", "uvc_get_device_list" }));
    EXPECT_EQ(TopFlag, 1);
    EXPECT_EQ(Top2Flag, 1);
}

TEST_F(Lifecycle, InitUSBGuidDoesNothing)
{
    start(1);
    uvc_call_recorder::clear();
    const QObjectList children = window->children();
    window->InitUSBGuid();
    EXPECT_EQ(uvc_call_recorder::names(), std::vector<std::string>());
    EXPECT_EQ(window->children(), children);
}

TEST_F(Lifecycle, NativeEventsGoOnToTheToolkit)
{
    plugIn(0);
    makeWindow();
    long result = 1234;
    int message = 5678;
    EXPECT_FALSE(window->nativeEvent("xcb_generic_event_t", &message, &result));
    EXPECT_EQ(result, 1234);
    EXPECT_EQ(message, 5678);
    EXPECT_FALSE(window->nativeEvent(QByteArray(), nullptr, nullptr));
}

TEST_F(Lifecycle, WarnExitTakesTheNoCameraNoticeDown)
{
    start(0);
    NO_Device *const notice = Probe::noDeviceDialog(*window);
    notice->setModal(true);
    ASSERT_TRUE(notice->isVisible());
    window->warn_exit();
    EXPECT_FALSE(notice->isVisible());
    EXPECT_FALSE(notice->isModal());
    EXPECT_EQ(Probe::noDeviceDialog(*window), notice);
}

// Tray
// ------------------------------------------------------------------------------------------------

class Tray : public Lifecycle
{
protected:
    void minimise() { click(form().btn_min); }
};

TEST_F(Tray, IconIsThereFromTheStartAndDoesNothingBeforeTheFirstMinimise)
{
    start(1);
    EXPECT_TRUE(Probe::trayIcon(*window)->isVisible());
    EXPECT_EQ(Probe::trayIcon(*window)->parent(), window.get());
    window->hide();
    activateTray(QSystemTrayIcon::DoubleClick);
    EXPECT_FALSE(window->isVisible());
}

TEST_F(Tray, MinimiseHidesTheWindowAndShowsTheIcon)
{
    start(1);
    Probe::trayIcon(*window)->setVisible(false);
    minimise();
    EXPECT_FALSE(window->isVisible());
    EXPECT_TRUE(Probe::trayIcon(*window)->isVisible());
    EXPECT_EQ(sent(), Requests());
}

TEST_F(Tray, OnlyADoubleClickBringsTheWindowBack)
{
    start(1);
    minimise();
    for (const auto reason : { QSystemTrayIcon::Unknown, QSystemTrayIcon::Context,
             QSystemTrayIcon::Trigger, QSystemTrayIcon::MiddleClick }) {
        activateTray(reason);
        EXPECT_FALSE(window->isVisible()) << reason;
    }
    activateTray(QSystemTrayIcon::DoubleClick);
    EXPECT_TRUE(window->isVisible());
    EXPECT_EQ(window->windowState() & (Qt::WindowMinimized | Qt::WindowMaximized), 0);
}

TEST_F(Tray, ComesBackToItsNormalState)
{
    start(1);
    window->setWindowState(Qt::WindowMinimized);
    minimise();
    activateTray(QSystemTrayIcon::DoubleClick);
    EXPECT_TRUE(window->isVisible());
    EXPECT_FALSE(window->isMinimized());
}

TEST_F(Tray, EachMinimiseConnectsOnceMoreAndShowingTwiceIsShowing)
{
    start(1);
    const QPoint place = window->pos();
    const char *const activated = SIGNAL(activated(QSystemTrayIcon::ActivationReason));
    for (int times = 1; times <= 3; ++times) {
        minimise();
        EXPECT_EQ(connectionsOf(Probe::trayIcon(*window), activated), times);
        EXPECT_FALSE(window->isVisible());
        activateTray(QSystemTrayIcon::DoubleClick);
        EXPECT_TRUE(window->isVisible());
        EXPECT_EQ(window->pos(), place);
    }
    EXPECT_EQ(sent(), Requests());
}

TEST_F(Tray, CameraIsDrivenOnWhenTheWindowIsBack)
{
    start(1);
    minimise();
    activateTray(QSystemTrayIcon::DoubleClick);
    click(form().btn_home);
    EXPECT_EQ(sent(), Requests{ command(8) });
}

// The end
// ---------------------------------------------------------------------------------------------

TEST_F(Lifecycle, CloseButtonHidesTheTrayIconAndEndsWithZero)
{
    start(1);
    uvc_call_recorder::clear();
    EXPECT_EQ(runWith([this] { click(form().btn_close); }), 0);
    EXPECT_FALSE(Probe::trayIcon(*window)->isVisible());
    EXPECT_EQ(uvc_call_recorder::names(), std::vector<std::string>());
}

TEST_F(Lifecycle, QuitOnTheNoticeLeavesTheTrayIconAndEndsWithZero)
{
    start(0);
    window->cam3_warn(); // another notice makes no difference
    const auto quit = [this] {
        click(Probe::noDeviceDialog(*window)->findChild<QPushButton *>("btn_quit"));
    };
    EXPECT_EQ(runWith(quit), 0);
    EXPECT_TRUE(Probe::trayIcon(*window)->isVisible());
}

TEST_F(Lifecycle, WindowsEndSendsNothingAndClosesNoCamera)
{
    start(1);
    QTest::keyPress(window.get(), Qt::Key_Left);
    forgetSent();
    EXPECT_TRUE(isHeld(1));
    QPointer<QObject> timer = Probe::timer(*window);
    QPointer<QObject> tray = Probe::trayIcon(*window);
    QPointer<QObject> notice = Probe::noDeviceDialog(*window);
    BaseDevice *const made = Probe::device(*window);
    uvc_call_recorder::clear();
    endWindow();
    EXPECT_EQ(sent(), Requests());
    EXPECT_EQ(uvc_call_recorder::names(), std::vector<std::string>());
    EXPECT_TRUE(isHeld(1)) << "the camera stays open";
    EXPECT_FALSE(timer);
    EXPECT_FALSE(tray);
    EXPECT_TRUE(notice) << "notices have no parent";
    // The device lives on.
    EXPECT_TRUE(made->HomePosition());
    EXPECT_EQ(sent(), Requests{ command(8) });
}

} // namespace
