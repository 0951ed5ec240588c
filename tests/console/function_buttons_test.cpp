// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

// The camera's function buttons: five switches and two one-shot commands.

#include "console/console_state.h"
#include "tests/console/panel_fixture.h"
#include "tests/console/sheets.h"

namespace {

struct Switch
{
    const char *name;
    QPushButton *Ui::MainWindow::*button;
    bool &(*state)(MainWindow &);
    bool stateAtStart;
    int firstCode; ///< the vendor command of the first click
    int secondCode;
    QString firstFace; ///< after the first click
    QString secondFace;
};

const Switch switches[] = {
    { "Mute", &Ui::MainWindow::btn_mute, MainWindowProbe::muteState, true, 5, 4,
        sheets::sign("mute"), sheets::sign("no_mute") },
    { "FocusMode", &Ui::MainWindow::btn_af, MainWindowProbe::afState, false, 7, 6,
        sheets::key("MF"), sheets::key("AF") },
    { "Framing", &Ui::MainWindow::btn_ai, MainWindowProbe::aiState, false, 17, 16,
        sheets::key("Manual"), sheets::key("Framing") },
    { "Flip", &Ui::MainWindow::btn_flip, MainWindowProbe::flipState, true, 2, 3,
        sheets::key("Flip"), sheets::key("Flip") },
    { "Mirror", &Ui::MainWindow::btn_mirror, MainWindowProbe::mirrorState, true, 0, 1,
        sheets::key("Mirror"), sheets::key("Mirror") },
};

class CameraSwitch : public PanelTest, public testing::WithParamInterface<Switch>
{
protected:
    const Switch &row() { return GetParam(); }
    QPushButton *button() { return form().*row().button; }

    void expectFirst(bool first)
    {
        EXPECT_EQ(row().state(*window), row().stateAtStart != first);
        EXPECT_EQ(style(button()), first ? row().firstFace : row().secondFace);
    }
    void expectFocusSlider() // of all switches only the focus mode's enables it
    {
        EXPECT_EQ(form().slider_focus->isEnabled(), Probe::afState(*window));
    }
};

TEST_P(CameraSwitch, TurnsWithEveryClickAndSendsInModeOneOnly)
{
    start(1);
    EXPECT_EQ(row().state(*window), row().stateAtStart);
    for (const int mode : { 1, 0, 2 }) {
        usb_mode = mode;
        for (const bool first : { true, false }) {
            click(button());
            expectFirst(first);
            expectFocusSlider();
            const Requests request{ command(first ? row().firstCode : row().secondCode) };
            EXPECT_EQ(sent(), mode == 1 ? request : Requests()) << mode;
        }
    }
}

TEST_P(CameraSwitch, KeepsItsStateThroughThePollAndAChangeOfCamera)
{
    plugIn(2);
    makeWindow();
    click(button());
    poll();
    EXPECT_EQ(row().state(*window), !row().stateAtStart);
    expectFocusSlider();
    click(form().btn_cam2);
    EXPECT_EQ(row().state(*window), !row().stateAtStart);
    expectFocusSlider();
    forgetSent();
    click(button());
    EXPECT_EQ(sent(), Requests{ "cam2: " + command(row().secondCode) });
}

TEST_P(CameraSwitch, TurnsBeforeItAsksTheCameraEvenIfThatRefuses)
{
    start(1);
    camera(1).stallEverything();
    using Seen = std::tuple<bool, QString, bool>;
    const auto seen = seenAtRequests([this] { click(button()); },
        [this] {
            return Seen{ row().state(*window), style(button()), form().slider_focus->isEnabled() };
        });
    const Seen turned{ !row().stateAtStart, row().firstFace, false };
    EXPECT_EQ(seen, std::vector{ turned }) << "the focus slider follows after the camera was asked";
    expectFirst(true);
    expectFocusSlider();
}

INSTANTIATE_TEST_SUITE_P(Each, CameraSwitch, testing::ValuesIn(switches),
    [](const auto &row) { return std::string(row.param.name); });

using FunctionButtons = PanelTest;

TEST_F(FunctionButtons, MuteWearsTheMutedFaceUntilThePoll)
{
    plugIn(1);
    makeWindow();
    click(form().btn_mute);
    EXPECT_EQ(style(form().btn_mute), sheets::sign("mute")) << "the first click sets it again";
    poll();
    EXPECT_EQ(style(form().btn_mute), sheets::sign("no_mute"));
    forgetSent();
}

TEST_F(FunctionButtons, HomeAndPushSendTheirCommandEveryTimeAndChangeNothing)
{
    start(1);
    const struct
    {
        QPushButton *button;
        int code;
    } rows[] = { { form().btn_home, 8 }, { form().btn_push, 17 } };
    for (const auto &row : rows) {
        for (const bool framing : { false, true }) {
            Probe::aiState(*window) = framing;
            const QStringList faces = { style(row.button), style(form().btn_ai) };
            usb_mode = 1;
            click(row.button);
            click(row.button);
            EXPECT_EQ(sent(), (Requests{ command(row.code), command(row.code) }));
            for (const int mode : { 0, 2 }) {
                usb_mode = mode;
                click(row.button);
                EXPECT_EQ(sent(), Requests()) << mode;
            }
            EXPECT_EQ((QStringList{ style(row.button), style(form().btn_ai) }), faces);
            EXPECT_EQ(Probe::aiState(*window), framing);
        }
    }
}

} // namespace
