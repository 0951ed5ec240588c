// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

// The preset keypad: recall, store, clear, and how long a mode stays armed.

#include "console/console_state.h"
#include "tests/console/panel_fixture.h"

namespace {

enum Armed { Idle, Set, Clear };
constexpr int firstCode[] = { 100, 20, 60 }; ///< the code for preset 0 in each mode

class Keypad : public PanelTest
{
protected:
    void press(int digit)
    {
        click(window->findChild<QPushButton *>("btn_num" + QString::number(digit)));
    }
    /// Arms the other mode first: the later button wins.
    void arm(Armed mode)
    {
        Probe::setArmed(*window) = Probe::clearArmed(*window) = 0;
        if (mode == Idle)
            return;
        click(mode == Set ? form().btn_clear : form().btn_set);
        click(mode == Set ? form().btn_set : form().btn_clear);
    }
    std::pair<int, int> flags() { return { Probe::setArmed(*window), Probe::clearArmed(*window) }; }
    static std::pair<int, int> flagsOf(Armed mode) { return { mode == Set, mode == Clear }; }

    QStringList faces()
    {
        QStringList all;
        for (const QPushButton *button : window->findChildren<QPushButton *>())
            all += style(button);
        return all;
    }
};

TEST_F(Keypad, EachDigitRecallsStoresOrClearsItsPresetAndEndsTheMode)
{
    start(1);
    const QStringList before = faces();
    for (int digit = 0; digit < 10; ++digit) {
        for (const Armed mode : { Idle, Set, Clear }) {
            arm(mode);
            EXPECT_EQ(sent(), Requests());
            EXPECT_EQ(flags(), flagsOf(mode));
            press(digit);
            EXPECT_EQ(sent(), Requests{ command(firstCode[mode] + digit) });
            EXPECT_EQ(flags(), flagsOf(Idle));
        }
    }
    EXPECT_EQ(faces(), before) << "the modes are not shown";
}

TEST_F(Keypad, DigitIsSentInModeOneOnlyAndElseLeavesTheModeArmed)
{
    start(1);
    for (const int other : { 0, 2 }) {
        for (const Armed mode : { Idle, Set, Clear }) {
            usb_mode = other;
            arm(mode);
            press(4);
            EXPECT_EQ(sent(), Requests());
            EXPECT_EQ(flags(), flagsOf(mode));
            usb_mode = 1;
            press(4);
            EXPECT_EQ(sent(), Requests{ command(firstCode[mode] + 4) });
        }
    }
}

TEST_F(Keypad, SetWinsOverClearAndOnlyOneCountsAsArmed)
{
    start(1);
    Probe::setArmed(*window) = Probe::clearArmed(*window) = 1;
    press(2);
    press(2);
    EXPECT_EQ(sent(), (Requests{ command(22), command(62) })) << "only the mode that was used ends";
    Probe::setArmed(*window) = Probe::clearArmed(*window) = 2;
    press(2);
    EXPECT_EQ(sent(), Requests{ command(102) });
}

TEST_F(Keypad, ModeOutlastsKeyboardDigitsThePollAndAChangeOfCamera)
{
    plugIn(2);
    const struct
    {
        QPushButton *Ui::MainWindow::*button;
        int code;
    } modes[] = { { &Ui::MainWindow::btn_set, 21 }, { &Ui::MainWindow::btn_clear, 61 } };
    makeWindow();
    for (const auto &mode : modes) {
        click(form().*mode.button);
        poll();
        click(form().btn_cam2);
        forgetSent();
        QTest::keyClick(window.get(), Qt::Key_4);
        press(1);
        EXPECT_EQ(sent(), (Requests{ "cam2: " + command(104), "cam2: " + command(mode.code) }));
    }
}

TEST_F(Keypad, ModeEndsAfterTheRequestEvenIfTheCameraRefusesIt)
{
    start(1);
    camera(1).stall(virtual_camera::Control::RollAbsolute);
    for (const Armed mode : { Set, Clear }) {
        arm(mode);
        const auto seen = seenAtRequests([this] { press(3); }, [this] { return flags(); });
        EXPECT_EQ(seen, std::vector{ flagsOf(mode) });
        EXPECT_EQ(flags(), flagsOf(Idle));
    }
}

} // namespace
