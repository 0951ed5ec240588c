// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

// Construction, connections and end of the window.

#include <QElapsedTimer>
#include <QPointer>
#include <QTimer>

#include <algorithm>

#include "console/console_state.h"
#include "tests/console/panel_fixture.h"
#include "tests/support/uvc_call_recorder.h"
#include "widgets/no_device.h"
#include "widgets/notice_state.h"

namespace {

using Names = std::vector<std::string>;
using Window = PanelTest;

// Read before main: what the process starts with.
const std::vector<int> atProcessStart = [] {
    std::vector<int> values;
    for (const int *const variable : processState())
        values.push_back(*variable);
    return values;
}();

TEST(Process, StartsWithAllItsSharedIntegersAtZero)
{
    EXPECT_EQ(atProcessStart, std::vector<int>(12 + 4 + 7 * 5, 0));
}

TEST_F(Window, MembersHaveTheirStartValuesAndStandInTheirOrder)
{
    plugIn(0);
    TopFlag = Top2Flag = right_flag = 5;
    makeWindow();
    EXPECT_EQ(uvc_call_recorder::names(),
        (Names{ "uvc_init", "uvc_get_device_list", "uvc_init", "uvc_get_device_list" }))
        << "the device, and one that is thrown away";
    MainWindow &w = *window;
    EXPECT_EQ(Probe::dragPosition(w), QPoint(0, 0));
    EXPECT_TRUE(Probe::objectTable(w).isEmpty());
    EXPECT_TRUE(Probe::deviceList(w).empty());
    EXPECT_NE(Probe::device(w), nullptr);
    EXPECT_EQ(Probe::noMoreCameraDialog(w), nullptr);
    for (const bool *state :
        { &Probe::dragging(w), &Probe::afState(w), &Probe::aiState(w), &Probe::topState(w) })
        EXPECT_FALSE(*state);
    for (const bool *state : { &Probe::muteState(w), &Probe::flipState(w), &Probe::mirrorState(w) })
        EXPECT_TRUE(*state);
    for (const int *number : { &Probe::setArmed(w), &Probe::clearArmed(w), &Probe::place(w),
             &Probe::speedX(w), &Probe::speedY(w), &right_flag })
        EXPECT_EQ(*number, 0);
    EXPECT_EQ(TopFlag, 1);
    EXPECT_EQ(Top2Flag, 1);

    const std::vector<const void *> members = { &Probe::dragPosition(w), &Probe::objectTable(w),
        &Probe::dragging(w), &Probe::afState(w), &Probe::aiState(w), &Probe::topState(w),
        &Probe::muteState(w), &Probe::setArmed(w), &Probe::clearArmed(w), &Probe::flipState(w),
        &Probe::mirrorState(w), &Probe::deviceList(w), &Probe::device(w), &Probe::timer(w),
        &Probe::spareTimer(w), &Probe::place(w), &Probe::speedX(w), &Probe::speedY(w),
        &Probe::trayIcon(w), &Probe::noDeviceDialog(w), &Probe::noMoreCameraDialog(w) };
    EXPECT_TRUE(std::is_sorted(members.begin(), members.end()));
}

TEST_F(Window, ConnectsThePollTheLensSlidersAndTheJoystickOnce)
{
    plugIn(0);
    constructWindow();
    QTimer *const timer = Probe::timer(*window);
    const auto timers = window->findChildren<QTimer *>(QString(), Qt::FindDirectChildrenOnly);
    EXPECT_EQ(timers.size(), 3) << "the constructor's own, which was replaced, the poll, the spare";
    EXPECT_TRUE(timers.contains(timer) && timers.contains(Probe::spareTimer(*window)));
    for (const QTimer *one : timers) {
        EXPECT_EQ(one->isActive(), one == timer);
        EXPECT_EQ(connectionsOf(one, SIGNAL(timeout())), one == timer ? 1 : 0);
    }
    EXPECT_EQ(timer->interval(), 500);
    EXPECT_FALSE(timer->isSingleShot());

    for (const QSlider *slider : { form().slider_zoom, form().slider_focus }) {
        EXPECT_EQ(connectionsOf(slider, SIGNAL(valueChanged(int))), 1);
        EXPECT_EQ(connectionsOf(slider, SIGNAL(sliderReleased())), 1);
    }
    for (const char *signal :
        { SIGNAL(keyNumchanged(int)), SIGNAL(Speed_Pan(int)), SIGNAL(Speed_Tilt(int)) })
        EXPECT_EQ(connectionsOf(form().widget, signal), 1) << signal;
}

TEST_F(Window, IsShownBeforeThePollWhichComesHalfASecondAfterTheStart)
{
    plugIn(0);
    QElapsedTimer sinceStart;
    sinceStart.start();
    constructWindow();
    const QPointer<NO_Device> hidden = Probe::noDeviceDialog(*window);
    window->show();
    EXPECT_TRUE(window->isVisible());
    ASSERT_TRUE(QTest::qWaitFor([&] { return Probe::noDeviceDialog(*window) != hidden; }));
    // The toolkit's coarse timers keep to 5 %; a busy machine only ever makes them late.
    EXPECT_GE(sinceStart.elapsed(), 474);
    EXPECT_FALSE(Probe::timer(*window)->isActive());
}

TEST_F(Window, ControlsAreInertBeforeThePollEvenIfACameraIsOpen)
{
    plugIn(1);
    makeWindow();
    ASSERT_TRUE(Probe::device(*window)->OpenDevice("0", 0));
    useEveryControl();
    EXPECT_EQ(sent(), Requests());
}

TEST_F(Window, InitValueMakesATimerAndADeviceAnewAndInitUSBGuidDoesNothing)
{
    start(1);
    QTimer *const timer = Probe::timer(*window);
    BaseDevice *const made = Probe::device(*window);
    timer->start();
    TopFlag = Top2Flag = 0;
    uvc_call_recorder::clear();
    window->InitValue();
    EXPECT_EQ(uvc_call_recorder::names(), (Names{ "uvc_init", "uvc_get_device_list" }));
    EXPECT_NE(Probe::timer(*window), timer);
    EXPECT_EQ(Probe::timer(*window)->parent(), window.get());
    EXPECT_FALSE(Probe::timer(*window)->isActive());
    EXPECT_TRUE(timer->isActive()) << "the old one runs on";
    EXPECT_NE(Probe::device(*window), made);
    EXPECT_EQ(TopFlag, 1);
    EXPECT_EQ(Top2Flag, 1);

    uvc_call_recorder::clear();
    const QObjectList children = window->children();
    window->InitUSBGuid();
    EXPECT_EQ(uvc_call_recorder::names(), Names());
    EXPECT_EQ(window->children(), children);
}

TEST_F(Window, LeavesNativeEventsToTheToolkitUntouched)
{
    plugIn(0);
    makeWindow();
    long result = 1234;
    int message = 5678;
    EXPECT_FALSE(window->nativeEvent("xcb_generic_event_t", &message, &result));
    EXPECT_EQ(result, 1234);
    EXPECT_EQ(message, 5678);
}

TEST_F(Window, EndSendsNothingAndClosesNoCamera)
{
    start(1);
    QTest::keyPress(window.get(), Qt::Key_Left);
    forgetSent();
    const QPointer<QObject> timer = Probe::timer(*window);
    const QPointer<QObject> tray = Probe::trayIcon(*window);
    const QPointer<QObject> notice = Probe::noDeviceDialog(*window);
    BaseDevice *const made = Probe::device(*window);
    uvc_call_recorder::clear();
    endWindow();
    EXPECT_EQ(uvc_call_recorder::names(), Names());
    EXPECT_EQ(sent(), Requests());
    EXPECT_TRUE(isHeld(1)) << "the camera stays open";
    EXPECT_FALSE(timer);
    EXPECT_FALSE(tray);
    EXPECT_TRUE(notice) << "notices have no parent";
    EXPECT_TRUE(made->HomePosition()) << "the device lives on";
    EXPECT_EQ(sent(), Requests{ command(8) });
}

} // namespace
