// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

// Driving with keys and joystick: what the camera receives, and in which order.

#include <QKeyEvent>

#include <limits>

#include "console/console_state.h"
#include "tests/console/panel_fixture.h"
#include "tests/console/sheets.h"
#include "tests/widgets/mouse.h"
#include "widgets/rocker_handle.h"

namespace {

const char *const stop = "pantilt_relative 0 0 0 0";
const char *const zoomStop = "zoom_relative 0 1 5";
const QString untouched = "QPushButton{color:red;}";

struct Key
{
    int key;
    Requests onPress;
    Requests onRelease;
    QString framingFace = untouched;
};

const Key keys[] = {
    { Qt::Key_0, { command(100) }, {} },
    { Qt::Key_1, { command(101) }, {} },
    { Qt::Key_2, { command(102) }, {} },
    { Qt::Key_3, { command(103) }, {} },
    { Qt::Key_4, { command(104) }, {} },
    { Qt::Key_5, { command(105) }, {} },
    { Qt::Key_6, { command(106) }, {} },
    { Qt::Key_7, { command(107) }, {} },
    { Qt::Key_8, { command(108) }, {} },
    { Qt::Key_9, { command(109) }, {} },
    { Qt::Key_F, { command(16) }, {}, sheets::key("Framing") },
    { Qt::Key_M, { command(17) }, {}, sheets::key("Manual") },
    { Qt::Key_P, { command(17) }, {}, sheets::key("Manual") },
    { Qt::Key_T, { "zoom_relative 1 1 1" }, { zoomStop } },
    { Qt::Key_W, { "zoom_relative -1 1 1" }, { zoomStop } },
    { Qt::Key_Left, { "pantilt_relative -1 21 0 0" }, { stop, stop, zoomStop } },
    { Qt::Key_Right, { "pantilt_relative 1 21 0 0" }, { stop, zoomStop } },
    { Qt::Key_Up, { "pantilt_relative 0 0 1 14" }, { stop, stop, stop, stop, zoomStop } },
    { Qt::Key_Down, { "pantilt_relative 0 0 -1 14" }, { stop, stop, stop, zoomStop } },
    // No others, and not the neighbours of the digits.
    { Qt::Key_A, {}, {} },
    { Qt::Key_Escape, {}, {} },
    { Qt::Key_Shift, {}, {} },
    { Qt::Key_PageUp, {}, {} },
    { Qt::Key_Home, {}, {} },
    { Qt::Key_Slash, {}, {} },
    { Qt::Key_Colon, {}, {} },
    { Qt::Key_F1, {}, {} },
};

class PanTilt : public PanelTest
{
protected:
    /// Sends the window a key event and expects that its base handler leaves it to the parent.
    void sendKey(QEvent::Type type, int key, Qt::KeyboardModifier modifier, bool repeated)
    {
        QKeyEvent event(type, key, modifier, QString(), repeated);
        QCoreApplication::sendEvent(window.get(), &event);
        EXPECT_FALSE(event.isAccepted());
    }

    void expectKey(const Key &row, Qt::KeyboardModifier modifier, bool repeated)
    {
        form().btn_ai->setStyleSheet(untouched);
        sendKey(QEvent::KeyPress, row.key, modifier, repeated);
        EXPECT_EQ(sent(), usb_mode == 0 ? Requests() : row.onPress);
        EXPECT_EQ(style(form().btn_ai), usb_mode == 0 ? untouched : row.framingFace);
        EXPECT_FALSE(Probe::aiState(*window)) << "the button's own state";
        sendKey(QEvent::KeyRelease, row.key, modifier, repeated);
        EXPECT_EQ(sent(), usb_mode == 0 ? Requests() : row.onRelease);
    }
};

TEST_F(PanTilt, EachKeySendsItsRequestsWhateverItsModifiersAndRepeated)
{
    start(1);
    for (const int mode : { 1, 2, 0 }) {
        usb_mode = mode;
        for (const Key &row : keys) {
            SCOPED_TRACE(testing::Message() << "key " << row.key << ", mode " << mode);
            for (const bool repeated : { false, true }) {
                for (const Qt::KeyboardModifier modifier :
                    { Qt::NoModifier, Qt::ShiftModifier, Qt::ControlModifier, Qt::AltModifier,
                        Qt::MetaModifier, Qt::KeypadModifier })
                    expectKey(row, modifier, repeated);
            }
        }
    }
}

TEST_F(PanTilt, FramingButtonFollowsItsOwnStateWhateverFaceAKeyHasSet)
{
    start(1);
    const struct
    {
        Qt::Key key;
        int code;
        QString face;
    } rows[] = { { Qt::Key_M, 17, sheets::key("Manual") },
        { Qt::Key_F, 16, sheets::key("Framing") } };
    for (const auto &row : rows) {
        QTest::keyClick(window.get(), row.key);
        EXPECT_EQ(style(form().btn_ai), row.face);
        click(form().btn_ai);
        EXPECT_EQ(style(form().btn_ai), row.face);
        EXPECT_EQ(sent(), (Requests{ command(row.code), command(row.code) }));
    }
}

/// What a direction sends at pan speed 12 and tilt speed 8.
const struct
{
    int place;
    Requests requests;
} directions[] = {
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

TEST_F(PanTilt, JoystickReportSendsItsDirectionOnEachChangeOfDirectionOrLevel)
{
    start(1);
    for (const auto &[place, requests] : directions) {
        for (const int mode : { 1, 2, 0 }) {
            SCOPED_TRACE(testing::Message() << "direction " << place << ", mode " << mode);
            const Requests expected = mode == 0 ? Requests() : requests;
            usb_mode = mode;
            window->MoveEvent(Probe::device(*window), place, 12, 8);
            EXPECT_EQ(sent(), expected);

            // From no direction at all and no speed.
            Probe::place(*window) = 77;
            Probe::speedX(*window) = Probe::speedY(*window) = 0;
            window->SpeedX(4);
            window->SpeedY(4);
            EXPECT_EQ(sent(), Requests());
            window->MovePlace(place);
            EXPECT_EQ(sent(), expected);
            Probe::speedX(*window) = 1;
            window->SpeedX(4);
            EXPECT_EQ(sent(), expected);
            Probe::speedY(*window) = 1;
            window->SpeedY(4);
            EXPECT_EQ(sent(), expected);

            window->MovePlace(place);
            window->SpeedX(4);
            window->SpeedY(4);
            EXPECT_EQ(sent(), Requests()) << "nothing has changed";
            EXPECT_EQ(Probe::place(*window), place) << "stored in every mode";
            EXPECT_EQ(Probe::speedX(*window), 4);
            EXPECT_EQ(Probe::speedY(*window), 4);
        }
    }
}

// Place and levels start at 0: up-left at no speed. A first report of direction 0 is no change, and
// a first level drives up-left.
TEST_F(PanTilt, FirstJoystickReportIsComparedWithUpLeftAtNoSpeed)
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

TEST_F(PanTilt, JoystickReportsSurviveAChangeOfCamera)
{
    start(2);
    window->MovePlace(5);
    window->SpeedX(2);
    click(form().btn_cam2);
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

TEST_F(PanTilt, JoystickDrivesTheCameraUntilItIsReleased)
{
    start(1);
    RockerHandle *const joystick = form().widget;
    mouse::press(joystick, { 58, 58 });
    mouse::move(joystick, { 100, 16 });
    mouse::move(joystick, { 100, 16 });
    EXPECT_EQ(sent(), Requests()) << "before the first tick";
    ASSERT_TRUE(QTest::qWaitFor([this] {
        return Probe::speedX(*window) == 5 && Probe::speedY(*window) == 5
            && Probe::place(*window) == 2;
    }));
    const Requests moving = sent();
    EXPECT_EQ(Requests(moving.end() - 2, moving.end()),
        (Requests{ "pantilt_relative 1 15 0 0", "pantilt_relative 0 0 1 10" }));

    int reports = 0;
    QObject::connect(joystick, &RockerHandle::Speed_Tilt, window.get(), [&](int) { ++reports; });
    ASSERT_TRUE(QTest::qWaitFor([&] { return reports >= 3; }));
    EXPECT_EQ(sent(), Requests()) << "held still";

    mouse::release(joystick, { 100, 16 });
    EXPECT_EQ(sent(), (Requests{ stop, stop, stop, stop }));
    EXPECT_EQ(Probe::speedX(*window), 5) << "the levels stay";
}

} // namespace
