// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

// What is held is released, however its hold ends.

#include "desktop/hold_guard.h"

#include <QApplication>
#include <QKeyEvent>
#include <QTest>
#include <QWindow>

#include <algorithm>
#include <memory>

#include "tests/console/panel_fixture.h"
#include "tests/console/slider_mouse.h"
#include "widgets/rocker_handle.h"

namespace {

const std::string left = "pantilt_relative -1 21 0 0";
const std::string up = "pantilt_relative 0 0 1 14";
const std::string stop = "pantilt_relative 0 0 0 0";
const std::string tele = "zoom_relative 1 1 1";
const std::string zoomStop = "zoom_relative 0 1 5";
const Requests leftReleased = { stop, stop, zoomStop };
const Requests upReleased = { stop, stop, stop, stop, zoomStop };

class Hold : public PanelTest
{
protected:
    Hold()
    {
        start(2);
        guard = std::make_unique<desktop::HoldGuard>(*window,
            std::vector<QAbstractButton *>{ form().btn_cam1, form().btn_cam2 },
            std::vector<QSlider *>{ form().slider_zoom, form().slider_focus });
        window->setFocus();
    }

    void send(QEvent::Type type, int key, bool repeated = false, quint32 place = 0)
    {
        QKeyEvent event(type, key, Qt::NoModifier, place, 0, 0, QString(), repeated);
        QCoreApplication::sendEvent(window.get(), &event);
    }
    void press(int key, quint32 place = 0) { send(QEvent::KeyPress, key, false, place); }
    void release(int key, quint32 place = 0) { send(QEvent::KeyRelease, key, false, place); }
    /// As X11 repeats a held key.
    void repeat(int key)
    {
        send(QEvent::KeyRelease, key, true);
        send(QEvent::KeyPress, key, true);
    }
    void loseKeyboard()
    {
        QFocusEvent event(QEvent::FocusOut);
        QCoreApplication::sendEvent(window->windowHandle(), &event);
    }

    std::unique_ptr<desktop::HoldGuard> guard;
};

// Keys
// ------------------------------------------------------------------------------------------------

TEST_F(Hold, RepeatedKeySendsNoStopBeforeItIsReleased)
{
    press(Qt::Key_Left);
    for (int repeats = 0; repeats < 3; ++repeats)
        repeat(Qt::Key_Left);
    EXPECT_EQ(sent(), Requests(4, left));
    release(Qt::Key_Left);
    EXPECT_EQ(sent(), leftReleased);
}

TEST_F(Hold, KeyIsReleasedWhenTheWindowLosesTheKeyboard)
{
    press(Qt::Key_Left);
    forgetSent();
    loseKeyboard();
    EXPECT_EQ(sent(), leftReleased);
    loseKeyboard();
    EXPECT_EQ(sent(), Requests()) << "released once";
}

TEST_F(Hold, EveryHeldKeyIsReleased)
{
    press(Qt::Key_Left);
    press(Qt::Key_Up);
    press(Qt::Key_T);
    EXPECT_EQ(sent(), (Requests{ left, up, tele }));
    release(Qt::Key_Left);
    EXPECT_EQ(sent(), leftReleased);
    loseKeyboard();
    const Requests stops = sent();
    // In any order: all of Up's and T's.
    EXPECT_EQ(stops.size(), upReleased.size() + 1);
    EXPECT_EQ(std::count(stops.begin(), stops.end(), stop), 4);
    EXPECT_EQ(std::count(stops.begin(), stops.end(), zoomStop), 2);
}

TEST_F(Hold, KeyIsReleasedWhenTheWindowIsHidden)
{
    press(Qt::Key_Left);
    forgetSent();
    QTest::mouseClick(form().btn_min, Qt::LeftButton);
    EXPECT_EQ(sent(), leftReleased);
}

TEST_F(Hold, RepeatAfterFocusReturnsIsHeldAgain)
{
    press(Qt::Key_Left);
    loseKeyboard();
    forgetSent();
    send(QEvent::KeyPress, Qt::Key_Left, true);
    EXPECT_EQ(sent(), Requests{ left }) << "a press that is delivered acts";
    release(Qt::Key_Left);
    EXPECT_EQ(sent(), leftReleased);
}

TEST_F(Hold, KeyIsReleasedBeforeAnotherCameraIsOpened)
{
    press(Qt::Key_Left);
    forgetSent();
    QTest::mouseClick(form().btn_cam2, Qt::LeftButton);
    EXPECT_EQ(sent(), leftReleased + allReads(2)) << "the camera that is left is the one to stop";
    release(Qt::Key_Left);
    EXPECT_EQ(sent().size(), leftReleased.size()) << "the real release goes through";
}

TEST_F(Hold, KeyThatIsReleasedInAListStopsTheCamera)
{
    press(Qt::Key_Left);
    forgetSent();
    form().cb_fliker->showPopup();
    QWidget *const list = QApplication::activePopupWidget();
    ASSERT_NE(list, nullptr);
    QKeyEvent event(QEvent::KeyRelease, Qt::Key_Left, Qt::NoModifier);
    QCoreApplication::sendEvent(list->focusWidget() ? list->focusWidget() : list, &event);
    EXPECT_EQ(sent(), leftReleased);
    loseKeyboard();
    EXPECT_EQ(sent(), Requests()) << "released once";
    form().cb_fliker->hidePopup();
}

TEST_F(Hold, NothingHeldNothingSent)
{
    press(Qt::Key_Left);
    release(Qt::Key_Left);
    forgetSent();
    loseKeyboard();
    guard->releaseAll();
    window->hide();
    EXPECT_EQ(sent(), Requests());
}

TEST_F(Hold, KeyThatChangesItsMeaningIsReleasedUnderItsOldOne)
{
    constexpr quint32 place = 28;
    press(Qt::Key_T, place);
    EXPECT_EQ(sent(), Requests{ tele });
    release(0x0415, place); // the same key after a switch of the layout
    EXPECT_EQ(sent(), Requests{ zoomStop });
    loseKeyboard();
    EXPECT_EQ(sent(), Requests());
}

TEST_F(Hold, KeysAreDistinguishedByTheirPlace)
{
    press(Qt::Key_Left, 113);
    press(Qt::Key_Left, 83); // on the keypad
    EXPECT_EQ(sent(), (Requests{ left, left }));
    release(Qt::Key_Left, 113);
    EXPECT_EQ(sent(), leftReleased);
    loseKeyboard();
    EXPECT_EQ(sent(), leftReleased) << "the other one is still held";
}

TEST_F(Hold, ReleaseWithoutAPressGoesThrough)
{
    release(Qt::Key_Left);
    EXPECT_EQ(sent(), leftReleased);
}

TEST_F(Hold, KeyThatAButtonTakesDrivesNothing)
{
    form().btn_home->setFocus(Qt::TabFocusReason);
    // An arrow goes on to the next button.
    QTest::keyPress(form().btn_home, Qt::Key_Right);
    EXPECT_NE(window->focusWidget(), form().btn_home);
    loseKeyboard();
    EXPECT_EQ(sent(), Requests());
}

TEST_F(Hold, KeyPressedOnAButtonIsHeldToo)
{
    form().btn_home->setFocus(Qt::TabFocusReason);
    // A button leaves letters to its window.
    QKeyEvent event(QEvent::KeyPress, Qt::Key_T, Qt::NoModifier, 28, 0, 0);
    QCoreApplication::sendEvent(form().btn_home, &event);
    EXPECT_EQ(sent(), Requests{ tele });
    loseKeyboard();
    EXPECT_EQ(sent(), Requests{ zoomStop });
}

TEST_F(Hold, KeysOfOtherWindowsReachThemAndAreNotHeld)
{
    struct Other : QWidget
    {
        int presses = 0;
        void keyPressEvent(QKeyEvent *) override { ++presses; }
    } other;
    other.show();
    press(Qt::Key_Left, 113);
    forgetSent();
    for (const quint32 place : { 113U, 114U }) {
        QKeyEvent event(QEvent::KeyPress, Qt::Key_Left, Qt::NoModifier, place, 0, 0);
        QCoreApplication::sendEvent(&other, &event);
    }
    EXPECT_EQ(other.presses, 2);
    QFocusEvent lost(QEvent::FocusOut);
    QCoreApplication::sendEvent(other.windowHandle(), &lost);
    other.hide();
    EXPECT_EQ(sent(), Requests()) << "the key is still held";
    loseKeyboard();
    EXPECT_EQ(sent(), leftReleased) << "one key";
}

// Mouse
// -----------------------------------------------------------------------------------------------

TEST_F(Hold, JoystickIsReleasedWhenTheWindowIsHidden)
{
    RockerHandle *const joystick = form().widget;
    mouse::press(joystick, { 116, 58 });
    ASSERT_TRUE(QTest::qWaitFor([this] { return Probe::place(*window) == 5; }));
    forgetSent();
    window->hide();
    EXPECT_EQ(sent(), (Requests{ stop, stop, stop, stop }));
    window->show();
    window->hide();
    EXPECT_EQ(sent(), Requests()) << "released once";
}

TEST_F(Hold, LensSliderIsReleasedWhenTheWindowIsHidden)
{
    slider_mouse::grab(form().slider_zoom);
    slider_mouse::dragTo(form().slider_zoom, 90);
    EXPECT_EQ(sent(), Requests{ tele });
    window->hide();
    EXPECT_EQ(sent(), (Requests{ zoomStop, zoomStop }));
    EXPECT_EQ(form().slider_zoom->value(), 45);
    EXPECT_FALSE(form().slider_zoom->isSliderDown());
}

TEST_F(Hold, SecondPressOfADoubleClickIsReleasedTooWhenTheWindowIsHidden)
{
    RockerHandle *const joystick = form().widget;
    mouse::press(joystick, { 116, 58 });
    mouse::release(joystick, { 116, 58 });
    forgetSent();
    mouse::send(joystick, QEvent::MouseButtonDblClick, { 116, 58 }, Qt::LeftButton, Qt::LeftButton);
    ASSERT_TRUE(QTest::qWaitFor([this] { return Probe::place(*window) == 5; }));
    forgetSent();
    window->hide();
    EXPECT_EQ(sent(), (Requests{ stop, stop, stop, stop }));
}

TEST_F(Hold, SecondMouseButtonDoesNotHideTheFirst)
{
    slider_mouse::grab(form().slider_zoom);
    slider_mouse::dragTo(form().slider_zoom, 90);
    mouse::send(form().slider_zoom, QEvent::MouseButtonPress, { 10, 20 }, Qt::RightButton,
        Qt::LeftButton | Qt::RightButton);
    mouse::send(form().slider_zoom, QEvent::MouseButtonRelease, { 10, 20 }, Qt::RightButton,
        Qt::LeftButton);
    forgetSent();
    window->hide();
    EXPECT_EQ(sent(), (Requests{ zoomStop, zoomStop }));
}

TEST_F(Hold, ButtonIsReleasedWithoutBeingClicked)
{
    mouse::press(form().btn_home, { 10, 10 });
    EXPECT_TRUE(form().btn_home->isDown());
    window->hide();
    EXPECT_FALSE(form().btn_home->isDown());
    EXPECT_EQ(sent(), Requests());
}

TEST_F(Hold, WindowDragEndsWhenTheWindowIsHidden)
{
    mouse::press(form().Win_Left, { 5, 200 });
    EXPECT_TRUE(Probe::dragging(*window));
    window->hide();
    EXPECT_FALSE(Probe::dragging(*window));
}

TEST_F(Hold, MouseThatWasReleasedIsNotReleasedAgain)
{
    RockerHandle *const joystick = form().widget;
    mouse::press(joystick, { 58, 58 });
    mouse::release(joystick, { 58, 58 });
    forgetSent();
    Probe::place(*window) = 5; // another report of the centre would stop it
    window->hide();
    EXPECT_EQ(sent(), Requests());
}

TEST_F(Hold, MouseStaysHeldWhenOnlyTheKeyboardIsLost)
{
    slider_mouse::grab(form().slider_zoom);
    slider_mouse::dragTo(form().slider_zoom, 90);
    forgetSent();
    loseKeyboard();
    EXPECT_EQ(sent(), Requests());
    EXPECT_EQ(form().slider_zoom->value(), 90);
    slider_mouse::release(form().slider_zoom);
    forgetSent();
}

// The guard's own life
// --------------------------------------------------------------------------------

TEST_F(Hold, EverythingIsReleasedOnDemand)
{
    press(Qt::Key_Left);
    slider_mouse::grab(form().slider_zoom);
    slider_mouse::dragTo(form().slider_zoom, 10);
    forgetSent();
    guard->releaseAll();
    const Requests springsBack = { zoomStop, zoomStop };
    EXPECT_EQ(sent(), leftReleased + springsBack);
    guard->releaseAll();
    EXPECT_EQ(sent(), Requests());
}

TEST_F(Hold, EndOfGuardAndWindowSendsNothing)
{
    press(Qt::Key_Left);
    forgetSent();
    guard.reset();
    endWindow();
    EXPECT_EQ(sent(), Requests());
}

TEST_F(Hold, WithoutTheGuardRepeatsStutter)
{
    guard.reset();
    press(Qt::Key_Left);
    repeat(Qt::Key_Left);
    EXPECT_EQ(sent(), Requests{ left } + leftReleased + Requests{ left });
    loseKeyboard();
    EXPECT_EQ(sent(), Requests()) << "and nothing is released";
}

} // namespace
