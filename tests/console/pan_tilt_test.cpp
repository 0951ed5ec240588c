// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

// Driving with keys and joystick: what the camera receives, and in which order.

#include <QKeyEvent>
#include <QTest>

#include <limits>

#include "console/console_state.h"
#include "tests/console/panel_fixture.h"
#include "tests/widgets/mouse.h"
#include "widgets/rocker_handle.h"
#include "widgets/style_sheets.h"

namespace {

const char *const left21 = "pantilt_relative -1 21 0 0";
const char *const right21 = "pantilt_relative 1 21 0 0";
const char *const up14 = "pantilt_relative 0 0 1 14";
const char *const down14 = "pantilt_relative 0 0 -1 14";
const char *const stop = "pantilt_relative 0 0 0 0";
const char *const zoomStop = "zoom_relative 0 1 5";

class PanTilt : public PanelTest
{
protected:
    void press(int key) { QTest::keyPress(window.get(), static_cast<Qt::Key>(key)); }
    void release(int key) { QTest::keyRelease(window.get(), static_cast<Qt::Key>(key)); }

    /// Sends the key to the window and tells whether its base handler left it to the parent, as it
    /// does with every key.
    bool reachesBase(QEvent::Type type, int key)
    {
        QKeyEvent event(type, key, Qt::NoModifier);
        QCoreApplication::sendEvent(window.get(), &event);
        return !event.isAccepted();
    }
};

// Keys
// ----------------------------------------------------------------------------------------------

struct Key
{
    const char *name;
    int key;
    Requests onPress;
    QString framingFace; ///< null when the button keeps its face
    Requests onRelease;
};

class PanelKey : public PanTilt, public testing::WithParamInterface<Key>
{ };

TEST_P(PanelKey, SendsItsRequestsOnPressAndOnReleaseWithACameraOnly)
{
    const Key &row = GetParam();
    start(1);
    const QString untouched = QStringLiteral("QPushButton{color:red;}");
    form().btn_ai->setStyleSheet(untouched);

    press(row.key);
    EXPECT_EQ(sent(), row.onPress);
    EXPECT_EQ(style(form().btn_ai), row.framingFace.isNull() ? untouched : row.framingFace);
    EXPECT_FALSE(Probe::aiState(*window)) << "the button keeps its own state";
    release(row.key);
    EXPECT_EQ(sent(), row.onRelease);

    usb_mode = 0;
    form().btn_ai->setStyleSheet(untouched);
    press(row.key);
    release(row.key);
    EXPECT_EQ(sent(), Requests()) << "without a camera";
    EXPECT_EQ(style(form().btn_ai), untouched);
}

const char *const framingSheet =
    "QPushButton{image: url(:/img/Framing.png);background-color:black;}";
const char *const manualSheet = "QPushButton{image: url(:/img/Manual.png);background-color:black;}";

INSTANTIATE_TEST_SUITE_P(Rows, PanelKey,
    testing::Values(Key{ "Digit0", Qt::Key_0, { command(100) }, {}, {} },
        Key{ "Digit1", Qt::Key_1, { command(101) }, {}, {} },
        Key{ "Digit2", Qt::Key_2, { command(102) }, {}, {} },
        Key{ "Digit3", Qt::Key_3, { command(103) }, {}, {} },
        Key{ "Digit4", Qt::Key_4, { command(104) }, {}, {} },
        Key{ "Digit5", Qt::Key_5, { command(105) }, {}, {} },
        Key{ "Digit6", Qt::Key_6, { command(106) }, {}, {} },
        Key{ "Digit7", Qt::Key_7, { command(107) }, {}, {} },
        Key{ "Digit8", Qt::Key_8, { command(108) }, {}, {} },
        Key{ "Digit9", Qt::Key_9, { command(109) }, {}, {} },
        Key{ "F", Qt::Key_F, { command(16) }, framingSheet, {} },
        Key{ "M", Qt::Key_M, { command(17) }, manualSheet, {} },
        Key{ "P", Qt::Key_P, { command(17) }, manualSheet, {} },
        Key{ "T", Qt::Key_T, { "zoom_relative 1 1 1" }, {}, { zoomStop } },
        Key{ "W", Qt::Key_W, { "zoom_relative -1 1 1" }, {}, { zoomStop } },
        Key{ "Left", Qt::Key_Left, { left21 }, {}, { stop, stop, zoomStop } },
        Key{ "Right", Qt::Key_Right, { right21 }, {}, { stop, zoomStop } },
        Key{ "Up", Qt::Key_Up, { up14 }, {}, { stop, stop, stop, stop, zoomStop } },
        Key{ "Down", Qt::Key_Down, { down14 }, {}, { stop, stop, stop, zoomStop } },
        Key{ "A", Qt::Key_A, {}, {}, {} }, Key{ "Z", Qt::Key_Z, {}, {}, {} },
        Key{ "Escape", Qt::Key_Escape, {}, {}, {} }, Key{ "Shift", Qt::Key_Shift, {}, {}, {} },
        Key{ "PageUp", Qt::Key_PageUp, {}, {}, {} }, Key{ "Home", Qt::Key_Home, {}, {}, {} },
        Key{ "Slash", Qt::Key_Slash, {}, {}, {} }, Key{ "Colon", Qt::Key_Colon, {}, {}, {} },
        Key{ "F1", Qt::Key_F1, {}, {}, {} }),
    [](const auto &row) { return std::string(row.param.name); });

TEST_F(PanTilt, EveryKeyIsPassedOnToTheBaseHandler)
{
    start(1);
    for (const int mode : { 1, 0 }) {
        usb_mode = mode;
        for (const int key : { Qt::Key_1, Qt::Key_F, Qt::Key_M, Qt::Key_P, Qt::Key_T, Qt::Key_W,
                 Qt::Key_Left, Qt::Key_Right, Qt::Key_Up, Qt::Key_Down, Qt::Key_A }) {
            EXPECT_TRUE(reachesBase(QEvent::KeyPress, key)) << key << " in mode " << mode;
            EXPECT_TRUE(reachesBase(QEvent::KeyRelease, key)) << key << " in mode " << mode;
        }
    }
    forgetSent();
}

TEST_F(PanTilt, ModifiersDoNotMatter)
{
    start(1);
    for (const Qt::KeyboardModifier modifier : { Qt::ShiftModifier, Qt::ControlModifier,
             Qt::AltModifier, Qt::MetaModifier, Qt::KeypadModifier }) {
        QTest::keyPress(window.get(), Qt::Key_Left, modifier);
        EXPECT_EQ(sent(), Requests{ left21 }) << modifier;
        QTest::keyRelease(window.get(), Qt::Key_Left, modifier);
        EXPECT_EQ(sent(), (Requests{ stop, stop, zoomStop })) << modifier;
    }
}

TEST_F(PanTilt, RepeatedPressActsAgain)
{
    start(1);
    press(Qt::Key_Right);
    for (int repeat = 0; repeat < 3; ++repeat) {
        QKeyEvent event(QEvent::KeyPress, Qt::Key_Right, Qt::NoModifier, QString(), true);
        QCoreApplication::sendEvent(window.get(), &event);
    }
    EXPECT_EQ(sent(), (Requests{ right21, right21, right21, right21 }));
    // The window itself makes no difference; the hold guard keeps such releases away from it.
    QKeyEvent event(QEvent::KeyRelease, Qt::Key_Right, Qt::NoModifier, QString(), true);
    QCoreApplication::sendEvent(window.get(), &event);
    EXPECT_EQ(sent(), (Requests{ stop, zoomStop }));
}

TEST_F(PanTilt, SecondKeyStartsItsOwnAxisAndUpStopsEverything)
{
    start(1);
    press(Qt::Key_Right);
    press(Qt::Key_Up);
    EXPECT_EQ(sent(), (Requests{ right21, up14 }));
    release(Qt::Key_Up);
    EXPECT_EQ(sent(), (Requests{ stop, stop, stop, stop, zoomStop }));
    release(Qt::Key_Right);
    EXPECT_EQ(sent(), (Requests{ stop, zoomStop }));
}

TEST_F(PanTilt, FramingButtonFollowsItsStateWhateverTheKeysShowed)
{
    start(1);
    press(Qt::Key_M);
    EXPECT_EQ(style(form().btn_ai), manualSheet);
    QTest::mouseClick(form().btn_ai, Qt::LeftButton);
    EXPECT_EQ(style(form().btn_ai), manualSheet);
    EXPECT_EQ(sent(), (Requests{ command(17), command(17) }));
    press(Qt::Key_F);
    EXPECT_EQ(style(form().btn_ai), framingSheet);
    QTest::mouseClick(form().btn_ai, Qt::LeftButton);
    EXPECT_EQ(style(form().btn_ai), framingSheet);
    EXPECT_EQ(sent(), (Requests{ command(16), command(16) }));
}

TEST_F(PanTilt, KeysActInEveryModeButZeroAndJoystickToo)
{
    start(1);
    usb_mode = 2;
    press(Qt::Key_Down);
    release(Qt::Key_Down);
    EXPECT_EQ(sent(), (Requests{ down14, stop, stop, stop, zoomStop }));
    window->MovePlace(7);
    EXPECT_EQ(sent(), Requests{ "pantilt_relative 0 0 -1 0" });
}

// Joystick
// ------------------------------------------------------------------------------------------

/// What a direction sends at pan speed 12 and tilt speed 8.
struct Direction
{
    int place;
    Requests requests;
};

const Direction directions[] = {
    { 0, { "pantilt_relative -1 12 0 0", "pantilt_relative 0 0 1 8" } },
    { 1, { "pantilt_relative 0 0 1 8" } },
    { 2, { "pantilt_relative 1 12 0 0", "pantilt_relative 0 0 1 8" } },
    { 3, { "pantilt_relative -1 12 0 0" } },
    { 4, { stop, stop, stop, stop } },
    { 5, { "pantilt_relative 1 12 0 0" } },
    { 6, { "pantilt_relative -1 12 0 0", "pantilt_relative 0 0 -1 8" } },
    { 7, { "pantilt_relative 0 0 -1 8" } },
    { 8, { "pantilt_relative 0 0 -1 8", "pantilt_relative 1 12 0 0" } },
    { 9, {} },
    { -1, {} },
    { std::numeric_limits<int>::min(), {} },
};

class JoystickDirection : public PanTilt, public testing::WithParamInterface<Direction>
{ };

TEST_P(JoystickDirection, SendsItsRequestsInOrder)
{
    const auto &[place, requests] = GetParam();
    start(1);
    window->MoveEvent(Probe::device(*window), place, 12, 8);
    EXPECT_EQ(sent(), requests);
    usb_mode = 0;
    window->MoveEvent(Probe::device(*window), place, 12, 8);
    EXPECT_EQ(sent(), Requests()) << "without a camera";
}

TEST_P(JoystickDirection, IsSentOnceWhenReportedWithTheScaledSpeeds)
{
    const auto &[place, requests] = GetParam();
    start(1);
    Probe::place(*window) = 77;
    window->SpeedX(4);
    window->SpeedY(4);
    EXPECT_EQ(sent(), Requests()) << "77 is no direction";
    window->MovePlace(place);
    EXPECT_EQ(sent(), requests);
    EXPECT_EQ(Probe::place(*window), place);
    window->MovePlace(place);
    EXPECT_EQ(sent(), Requests()) << "nothing has changed";
}

TEST_P(JoystickDirection, IsSentAgainWhenASpeedChanges)
{
    const auto &[place, requests] = GetParam();
    start(1);
    Probe::place(*window) = place;
    Probe::speedY(*window) = 4;
    window->SpeedX(4);
    EXPECT_EQ(sent(), requests);
    window->SpeedX(4);
    EXPECT_EQ(sent(), Requests()) << "nothing has changed";
    Probe::speedY(*window) = 0;
    window->SpeedY(4);
    EXPECT_EQ(sent(), requests);
    window->SpeedY(4);
    EXPECT_EQ(sent(), Requests()) << "nothing has changed";
}

TEST_P(JoystickDirection, IsRememberedWithoutACamera)
{
    const int place = GetParam().place;
    startUnnoticed();
    Probe::place(*window) = 77;
    window->MovePlace(place);
    window->SpeedX(3);
    window->SpeedY(5);
    EXPECT_EQ(sent(), Requests());
    EXPECT_EQ(Probe::place(*window), place);
    EXPECT_EQ(Probe::speedX(*window), 3);
    EXPECT_EQ(Probe::speedY(*window), 5);
}

INSTANTIATE_TEST_SUITE_P(Rows, JoystickDirection, testing::ValuesIn(directions));

// Place and levels start at 0: up-left at no speed. A first report of direction 0 changes nothing;
// a first level drives up-left.
TEST_F(PanTilt, FirstReportIsComparedWithUpLeftAtNoSpeed)
{
    start(1);
    window->MovePlace(0);
    window->SpeedX(0);
    window->SpeedY(0);
    EXPECT_EQ(sent(), Requests());
    window->SpeedX(4);
    EXPECT_EQ(sent(), (Requests{ "pantilt_relative -1 12 0 0", "pantilt_relative 0 0 1 0" }));
    window->SpeedY(4);
    EXPECT_EQ(sent(), directions[0].requests);
}

TEST_F(PanTilt, SpeedLevelsAreScaledByThreeForPanAndByTwoForTilt)
{
    start(1);
    window->MovePlace(3);
    EXPECT_EQ(sent(), Requests{ "pantilt_relative -1 0 0 0" });
    window->SpeedX(7);
    EXPECT_EQ(sent(), Requests{ "pantilt_relative -1 21 0 0" });
    window->SpeedX(1);
    EXPECT_EQ(sent(), Requests{ "pantilt_relative -1 3 0 0" });
    window->MovePlace(7);
    window->SpeedY(7);
    window->SpeedY(1);
    EXPECT_EQ(sent(),
        (Requests{ "pantilt_relative 0 0 -1 0", "pantilt_relative 0 0 -1 14",
            "pantilt_relative 0 0 -1 2" }));
}

TEST_F(PanTilt, OnlyTheLowByteOfASpeedReachesTheCamera)
{
    start(1);
    window->MovePlace(5);
    forgetSent();
    window->SpeedX(100);
    EXPECT_EQ(sent(), Requests{ "pantilt_relative 1 44 0 0" });
}

TEST_F(PanTilt, CentreTwiceStopsOnce)
{
    start(1);
    window->MovePlace(4);
    window->MovePlace(4);
    EXPECT_EQ(sent(), (Requests{ stop, stop, stop, stop }));
}

TEST_F(PanTilt, ReportedValuesSurviveAChangeOfCamera)
{
    start(2);
    window->MovePlace(5);
    forgetSent();
    window->SpeedX(2);
    EXPECT_EQ(sent(), Requests{ "pantilt_relative 1 6 0 0" });
    window->on_btn_cam2_clicked();
    forgetSent();
    window->MovePlace(5);
    EXPECT_EQ(sent(), Requests());
    window->SpeedX(3);
    EXPECT_EQ(sent(), Requests{ "cam2: pantilt_relative 1 9 0 0" });
}

TEST_F(PanTilt, MoveEventDrivesTheDeviceThatItIsGiven)
{
    start(2);
    BaseDevice *const other = BaseDevice::CreateDevice(USB);
    ASSERT_TRUE(other->OpenDevice("1", 1));
    window->MoveEvent(other, 5, 3, 0);
    EXPECT_EQ(sent(), Requests{ "cam2: pantilt_relative 1 3 0 0" });
    other->CloseDevice();
}

TEST_F(PanTilt, JoystickDrivesTheCameraUntilItIsLetGo)
{
    start(1);
    RockerHandle *const joystick = form().widget;
    mouse::press(joystick, { 58, 58 });
    mouse::move(joystick, { 100, 16 });
    mouse::move(joystick, { 100, 16 });
    EXPECT_EQ(sent(), Requests()) << "the first tick is still to come";
    ASSERT_TRUE(QTest::qWaitFor([this] {
        return Probe::speedX(*window) == 5 && Probe::speedY(*window) == 5
            && Probe::place(*window) == 2;
    }));
    const Requests moving = sent();
    ASSERT_GE(moving.size(), 2U);
    EXPECT_EQ(Requests(moving.end() - 2, moving.end()),
        (Requests{ "pantilt_relative 1 15 0 0", "pantilt_relative 0 0 1 10" }));

    // Held still, it reports on and nothing is sent.
    int reports = 0;
    QObject::connect(joystick, &RockerHandle::Speed_Tilt, window.get(), [&](int) { ++reports; });
    ASSERT_TRUE(QTest::qWaitFor([&] { return reports >= 3; }));
    EXPECT_EQ(sent(), Requests());

    mouse::release(joystick, { 100, 16 });
    EXPECT_EQ(sent(), (Requests{ stop, stop, stop, stop }));
    EXPECT_EQ(Probe::speedX(*window), 5) << "the levels stay";
}

TEST_F(PanTilt, JoystickWithoutACameraIsRememberedAndSendsNothing)
{
    startUnnoticed();
    RockerHandle *const joystick = form().widget;
    mouse::press(joystick, { 116, 58 });
    ASSERT_TRUE(QTest::qWaitFor(
        [this] { return Probe::speedX(*window) == 7 && Probe::place(*window) == 5; }));
    mouse::release(joystick, { 116, 58 });
    EXPECT_EQ(Probe::place(*window), 4);
    EXPECT_EQ(sent(), Requests());
}

} // namespace
