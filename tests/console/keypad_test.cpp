// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

// The preset keypad: recall, store, clear, and how long a mode stays armed.

#include <QTest>

#include <array>

#include "console/console_state.h"
#include "tests/console/panel_fixture.h"

namespace {

enum Armed { Idle, Set, Clear };

class Keypad : public PanelTest
{
protected:
    std::array<QPushButton *, 10> digits()
    {
        const Ui::MainWindow &ui = form();
        return { ui.btn_num0, ui.btn_num1, ui.btn_num2, ui.btn_num3, ui.btn_num4, ui.btn_num5,
            ui.btn_num6, ui.btn_num7, ui.btn_num8, ui.btn_num9 };
    }

    void press(QPushButton *button) { QTest::mouseClick(button, Qt::LeftButton); }
    void pressDigit(int digit) { press(digits().at(static_cast<std::size_t>(digit))); }
    void pressSet() { press(form().btn_set); }
    void pressClear() { press(form().btn_clear); }

    void arm(Armed state)
    {
        if (state == Set)
            pressSet();
        else if (state == Clear)
            pressClear();
    }

    Armed armed()
    {
        const int set = Probe::setArmed(*window);
        const int clear = Probe::clearArmed(*window);
        EXPECT_TRUE(set == 0 || set == 1) << set;
        EXPECT_TRUE(clear == 0 || clear == 1) << clear;
        EXPECT_LE(set + clear, 1);
        return set == 1 ? Set : clear == 1 ? Clear : Idle;
    }

    QStringList faces()
    {
        QStringList all = { style(form().btn_set), style(form().btn_clear) };
        for (const QPushButton *button : digits())
            all += style(button);
        return all;
    }
};

class KeypadDigit : public Keypad, public testing::WithParamInterface<int>
{ };

TEST_P(KeypadDigit, RecallsStoresAndClearsItsOwnPreset)
{
    const int digit = GetParam();
    start(1);
    const QStringList before = faces();

    pressDigit(digit);
    EXPECT_EQ(sent(), Requests{ command(100 + digit) });
    EXPECT_EQ(armed(), Idle);

    pressSet();
    EXPECT_EQ(sent(), Requests());
    EXPECT_EQ(armed(), Set);
    pressDigit(digit);
    EXPECT_EQ(sent(), Requests{ command(20 + digit) });
    EXPECT_EQ(armed(), Idle);
    pressDigit(digit);
    EXPECT_EQ(sent(), Requests{ command(100 + digit) }) << "a mode lasts for one digit";

    pressClear();
    EXPECT_EQ(sent(), Requests());
    EXPECT_EQ(armed(), Clear);
    pressDigit(digit);
    EXPECT_EQ(sent(), Requests{ command(60 + digit) });
    EXPECT_EQ(armed(), Idle);
    pressDigit(digit);
    EXPECT_EQ(sent(), Requests{ command(100 + digit) });

    EXPECT_EQ(faces(), before) << "the modes are not shown";
}

INSTANTIATE_TEST_SUITE_P(EachDigit, KeypadDigit, testing::Range(0, 10));

/// One row of the state machine: in `before`, `event` sends `sent` and leads to `after`.
struct Transition
{
    const char *name;
    Armed before;
    bool camera;
    enum Event { SetButton, ClearButton, Digit4 } event;
    Requests sent;
    Armed after;
};

class KeypadTransition : public Keypad, public testing::WithParamInterface<Transition>
{ };

TEST_P(KeypadTransition, SendsAndLeadsOn)
{
    const Transition &row = GetParam();
    if (row.camera)
        start(1);
    else
        startUnnoticed();
    arm(row.before);
    switch (row.event) {
    case Transition::SetButton:
        pressSet();
        break;
    case Transition::ClearButton:
        pressClear();
        break;
    case Transition::Digit4:
        pressDigit(4);
        break;
    }
    EXPECT_EQ(sent(), row.sent);
    EXPECT_EQ(armed(), row.after);
}

constexpr auto set = Transition::SetButton;
constexpr auto clear = Transition::ClearButton;
constexpr auto digit = Transition::Digit4;

INSTANTIATE_TEST_SUITE_P(Rows, KeypadTransition,
    testing::Values(Transition{ "SetArmsWhenIdle", Idle, true, set, {}, Set },
        Transition{ "SetStaysArmedBySet", Set, true, set, {}, Set },
        Transition{ "SetTakesOverFromClear", Clear, true, set, {}, Set },
        Transition{ "SetArmsWithoutCamera", Idle, false, set, {}, Set },
        Transition{ "SetTakesOverFromClearWithoutCamera", Clear, false, set, {}, Set },
        Transition{ "ClearArmsWhenIdle", Idle, true, clear, {}, Clear },
        Transition{ "ClearTakesOverFromSet", Set, true, clear, {}, Clear },
        Transition{ "ClearStaysArmedByClear", Clear, true, clear, {}, Clear },
        Transition{ "ClearArmsWithoutCamera", Idle, false, clear, {}, Clear },
        Transition{ "ClearTakesOverFromSetWithoutCamera", Set, false, clear, {}, Clear },
        Transition{ "DigitRecalls", Idle, true, digit, { command(104) }, Idle },
        Transition{ "DigitWithoutCameraDoesNothing", Idle, false, digit, {}, Idle },
        Transition{ "DigitStores", Set, true, digit, { command(24) }, Idle },
        Transition{ "DigitWithoutCameraKeepsSetArmed", Set, false, digit, {}, Set },
        Transition{ "DigitClears", Clear, true, digit, { command(64) }, Idle },
        Transition{ "DigitWithoutCameraKeepsClearArmed", Clear, false, digit, {}, Clear }),
    [](const auto &row) { return std::string(row.param.name); });

TEST_F(Keypad, LaterModeWins)
{
    start(1);
    pressSet();
    pressClear();
    pressDigit(7);
    EXPECT_EQ(sent(), Requests{ command(67) });
    pressClear();
    pressSet();
    pressDigit(7);
    EXPECT_EQ(sent(), Requests{ command(27) });
}

TEST_F(Keypad, SetWinsWhenBothModesAreArmed)
{
    start(1);
    Probe::setArmed(*window) = 1;
    Probe::clearArmed(*window) = 1;
    pressDigit(2);
    EXPECT_EQ(sent(), Requests{ command(22) });
    EXPECT_EQ(Probe::setArmed(*window), 0);
    EXPECT_EQ(Probe::clearArmed(*window), 1) << "only the mode that was used ends";
    pressDigit(2);
    EXPECT_EQ(sent(), Requests{ command(62) });
}

TEST_F(Keypad, KeyboardDigitRecallsAndLeavesTheModeArmed)
{
    start(1);
    pressSet();
    QTest::keyClick(window.get(), Qt::Key_4);
    EXPECT_EQ(sent(), Requests{ command(104) });
    EXPECT_EQ(armed(), Set);
    pressDigit(1);
    EXPECT_EQ(sent(), Requests{ command(21) });
    pressClear();
    QTest::keyClick(window.get(), Qt::Key_9);
    EXPECT_EQ(sent(), Requests{ command(109) });
    EXPECT_EQ(armed(), Clear);
}

TEST_F(Keypad, ModeArmedBeforeThePollStoresOnceACameraIsThere)
{
    plugIn(1);
    makeWindow();
    pressSet();
    pressDigit(5);
    EXPECT_EQ(sent(), Requests());
    poll();
    forgetSent();
    EXPECT_EQ(armed(), Set);
    pressDigit(5);
    EXPECT_EQ(sent(), Requests{ command(25) });
}

TEST_F(Keypad, RefusedCommandEndsTheModeAllTheSame)
{
    start(1);
    camera(1).stall(virtual_camera::Control::RollAbsolute);
    pressSet();
    pressDigit(3);
    EXPECT_EQ(sent(), Requests{ command(23) + " stall" });
    EXPECT_EQ(armed(), Idle);
    pressClear();
    pressDigit(3);
    EXPECT_EQ(sent(), Requests{ command(63) + " stall" });
    EXPECT_EQ(armed(), Idle);
}

TEST_F(Keypad, ModeStaysArmedWhenAnotherCameraIsChosen)
{
    start(2);
    pressSet();
    press(form().btn_cam2);
    forgetSent();
    EXPECT_EQ(armed(), Set);
    pressDigit(6);
    EXPECT_EQ(sent(), Requests{ "cam2: " + command(26) });
}

TEST_F(Keypad, ActsOnlyWhenTheModeIsExactlyOne)
{
    start(1);
    usb_mode = 2;
    pressDigit(1);
    EXPECT_EQ(sent(), Requests());
    usb_mode = 1;
    Probe::setArmed(*window) = 2;
    Probe::clearArmed(*window) = 2;
    pressDigit(1);
    EXPECT_EQ(sent(), Requests{ command(101) });
}

} // namespace
