// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

// The function buttons: two-state switches, one-shot commands, and the choice about the notices.

#include <QTest>

#include "console/console_state.h"
#include "tests/console/panel_fixture.h"
#include "widgets/no_device.h"
#include "widgets/no_mord_camera.h"
#include "widgets/notice_state.h"

namespace {

const QString mute =
    "QPushButton{border-image: url(:/img/mute.png);background-attachment;border:none;}";
const QString noMute =
    "QPushButton{border-image: url(:/img/no_mute.png);background-attachment;border:none;}";
const QString af = "QPushButton{image: url(:/img/AF.png);background-color:black;}";
const QString mf = "QPushButton{image: url(:/img/MF.png);background-color:black;}";
const QString framing = "QPushButton{image: url(:/img/Framing.png);background-color:black;}";
const QString manual = "QPushButton{image: url(:/img/Manual.png);background-color:black;}";
const QString flip = "QPushButton{image: url(:/img/Flip.png);background-color:black;}";
const QString mirror = "QPushButton{image: url(:/img/Mirror.png);background-color:black;}";
const QString top =
    "QPushButton{border-image: url(:/img/top.png);background-attachment;border:none;}";
const QString noTop =
    "QPushButton{border-image: url(:/img/no_top.png);background-attachment;border:none;}";
const QString topAtStart =
    "QPushButton{border-image: url(:/img/top.png);border:none;background:transparent;}";

class FunctionButtons : public PanelTest
{
protected:
    void click(QPushButton *button) { QTest::mouseClick(button, Qt::LeftButton); }
};

// Two-state switches
// --------------------------------------------------------------------------------

/// One click: what the button wears before it, which state it finds, what it does.
struct Click
{
    QString face; ///< afterwards
    int code;     ///< the vendor command
    bool state;   ///< afterwards
};

struct Switch
{
    const char *name;
    QPushButton *Ui::MainWindow::*button;
    bool &(*state)(MainWindow &);
    QString faceAfterPoll;
    bool stateAtStart;
    Click first;
    Click second;
};

const Switch switches[] = {
    { "Mute", &Ui::MainWindow::btn_mute, MainWindowProbe::muteState, noMute, true,
        { mute, 5, false }, { noMute, 4, true } },
    { "FocusMode", &Ui::MainWindow::btn_af, MainWindowProbe::afState, af, false, { mf, 7, true },
        { af, 6, false } },
    { "Framing", &Ui::MainWindow::btn_ai, MainWindowProbe::aiState, framing, false,
        { manual, 17, true }, { framing, 16, false } },
    { "Flip", &Ui::MainWindow::btn_flip, MainWindowProbe::flipState, flip, true, { flip, 2, false },
        { flip, 3, true } },
    { "Mirror", &Ui::MainWindow::btn_mirror, MainWindowProbe::mirrorState, mirror, true,
        { mirror, 0, false }, { mirror, 1, true } },
};

class CameraSwitch : public FunctionButtons, public testing::WithParamInterface<Switch>
{
protected:
    QPushButton *button() { return form().*GetParam().button; }
    bool state() { return GetParam().state(*window); }
    /// The one command of a click, or none.
    Requests commandOf(const Click &click)
    {
        return usb_mode == 1 ? Requests{ command(click.code) } : Requests();
    }

    void expectClick(const Click &expected)
    {
        click(button());
        EXPECT_EQ(style(button()), expected.face);
        EXPECT_EQ(state(), expected.state);
        EXPECT_EQ(sent(), commandOf(expected));
    }
};

TEST_P(CameraSwitch, TurnsWithEveryClickAndTellsTheCamera)
{
    start(1);
    EXPECT_EQ(style(button()), GetParam().faceAfterPoll);
    EXPECT_EQ(state(), GetParam().stateAtStart);
    for (int round = 0; round < 2; ++round) {
        expectClick(GetParam().first);
        expectClick(GetParam().second);
    }
}

TEST_P(CameraSwitch, TurnsWithoutACameraAndSendsNothing)
{
    startUnnoticed();
    expectClick(GetParam().first);
    expectClick(GetParam().second);
}

TEST_P(CameraSwitch, SendsInModeOneOnly)
{
    start(1);
    usb_mode = 2;
    expectClick(GetParam().first);
    expectClick(GetParam().second);
}

TEST_P(CameraSwitch, KeepsItsNewStateWhenTheCameraRefuses)
{
    start(1);
    camera(1).stallEverything();
    click(button());
    EXPECT_EQ(sent(), Requests{ command(GetParam().first.code) + " stall" });
    EXPECT_EQ(style(button()), GetParam().first.face);
    EXPECT_EQ(state(), GetParam().first.state);
}

TEST_P(CameraSwitch, KeepsItsStateWhenAnotherCameraIsChosen)
{
    start(2);
    click(button());
    click(form().btn_cam2);
    forgetSent();
    EXPECT_EQ(state(), GetParam().first.state);
    EXPECT_EQ(style(button()), GetParam().first.face);
    click(button());
    EXPECT_EQ(sent(), Requests{ "cam2: " + command(GetParam().second.code) });
}

/// The device as the button's click finds it: face and state have already turned.
TEST_P(CameraSwitch, ShowsAndKeepsTheNewStateBeforeItTellsTheCamera)
{
    start(1);
    // The camera takes its time; what the window shows meanwhile is asked from the bus's thread.
    const Click &expected = GetParam().first;
    bool turnedInTime = false;
    QPushButton *const asked = button();
    bus->log().setWriter([&](const virtual_camera::LogRecord &record) {
        if (record.isControlRequest())
            turnedInTime = state() == expected.state && asked->styleSheet() == expected.face;
    });
    click(asked);
    bus->log().setWriter({});
    EXPECT_TRUE(turnedInTime);
    forgetSent();
}

INSTANTIATE_TEST_SUITE_P(Rows, CameraSwitch, testing::ValuesIn(switches),
    [](const auto &row) { return std::string(row.param.name); });

TEST_F(FunctionButtons, MuteWearsTheMutedFaceUntilACameraIsThere)
{
    plugIn(1);
    makeWindow();
    EXPECT_EQ(style(form().btn_mute), mute);
    EXPECT_TRUE(Probe::muteState(*window));
    click(form().btn_mute);
    EXPECT_EQ(style(form().btn_mute), mute) << "the first click shows the same picture again";
    EXPECT_EQ(sent(), Requests());
}

TEST_F(FunctionButtons, ManualFocusAloneEnablesTheFocusSlider)
{
    start(1);
    for (const int mode : { 1, 0 }) {
        usb_mode = mode;
        EXPECT_FALSE(form().slider_focus->isEnabled());
        click(form().btn_af);
        EXPECT_TRUE(form().slider_focus->isEnabled()) << mode;
        click(form().btn_af);
        EXPECT_FALSE(form().slider_focus->isEnabled()) << mode;
        EXPECT_EQ(sent(), mode == 1 ? (Requests{ command(7), command(6) }) : Requests());
    }
}

TEST_F(FunctionButtons, FocusSliderFollowsAfterTheCameraWasTold)
{
    start(1);
    bool enabledWhileAsking = true;
    QSlider *const slider = form().slider_focus;
    bus->log().setWriter([&](const virtual_camera::LogRecord &record) {
        if (record.isControlRequest())
            enabledWhileAsking = slider->isEnabled();
    });
    click(form().btn_af);
    bus->log().setWriter({});
    EXPECT_FALSE(enabledWhileAsking);
    EXPECT_TRUE(slider->isEnabled());
    forgetSent();
}

// One-shot commands
// ---------------------------------------------------------------------------------

TEST_F(FunctionButtons, HomeSendsTheCameraHomeEveryTime)
{
    start(1);
    const QString face = style(form().btn_home);
    click(form().btn_home);
    click(form().btn_home);
    EXPECT_EQ(sent(), (Requests{ command(8), command(8) }));
    EXPECT_EQ(style(form().btn_home), face);
}

TEST_F(FunctionButtons, PushTurnsFramingOffAndLeavesTheFramingButtonAlone)
{
    start(1);
    for (const bool state : { false, true }) {
        Probe::aiState(*window) = state;
        const QString face = style(form().btn_ai);
        const QString own = style(form().btn_push);
        click(form().btn_push);
        click(form().btn_push);
        EXPECT_EQ(sent(), (Requests{ command(17), command(17) }));
        EXPECT_EQ(Probe::aiState(*window), state);
        EXPECT_EQ(style(form().btn_ai), face);
        EXPECT_EQ(style(form().btn_push), own);
    }
}

TEST_F(FunctionButtons, OneShotCommandsNeedACamera)
{
    startUnnoticed();
    click(form().btn_home);
    click(form().btn_push);
    EXPECT_EQ(sent(), Requests());
}

TEST_F(FunctionButtons, OneShotCommandsAreSentInModeOneOnly)
{
    start(1);
    usb_mode = 2;
    click(form().btn_home);
    click(form().btn_push);
    EXPECT_EQ(sent(), Requests());
}

// The notices on top
// ---------------------------------------------------------------------------------

class OnTop : public FunctionButtons
{
protected:
    static bool isOnTop(const QWidget *notice)
    {
        return notice->windowFlags().testFlag(Qt::WindowStaysOnTopHint);
    }

    bool newNoDeviceNoticeIsOnTop()
    {
        window->Warn_NoDev();
        return isOnTop(Probe::noDeviceDialog(*window));
    }

    bool newEmptyPositionNoticeIsOnTop()
    {
        window->cam5_warn();
        return isOnTop(Probe::noMoreCameraDialog(*window));
    }
};

TEST_F(OnTop, ButtonDecidesAboutTheNoticesMadeAfterwards)
{
    start(0);
    const Qt::WindowFlags flags = window->windowFlags();
    const QWidget *const atStart = Probe::noDeviceDialog(*window);
    EXPECT_TRUE(isOnTop(atStart));
    EXPECT_EQ(style(form().btn_top), topAtStart);
    EXPECT_EQ(TopFlag, 1);
    EXPECT_EQ(Top2Flag, 1);

    click(form().btn_top);
    EXPECT_EQ(style(form().btn_top), noTop);
    EXPECT_TRUE(Probe::topState(*window));
    EXPECT_EQ(TopFlag, 0);
    EXPECT_EQ(Top2Flag, 0);
    EXPECT_FALSE(newNoDeviceNoticeIsOnTop());
    EXPECT_FALSE(newEmptyPositionNoticeIsOnTop());
    EXPECT_TRUE(isOnTop(atStart)) << "a notice keeps what it was made with";

    click(form().btn_top);
    EXPECT_EQ(style(form().btn_top), top) << "not the sheet of the start";
    EXPECT_FALSE(Probe::topState(*window));
    EXPECT_EQ(TopFlag, 1);
    EXPECT_EQ(Top2Flag, 1);
    EXPECT_TRUE(newNoDeviceNoticeIsOnTop());
    EXPECT_TRUE(newEmptyPositionNoticeIsOnTop());

    EXPECT_EQ(window->windowFlags(), flags) << "the panel itself is never kept on top";
}

TEST_F(OnTop, ButtonSendsNothing)
{
    start(1);
    click(form().btn_top);
    click(form().btn_top);
    EXPECT_EQ(sent(), Requests());
    EXPECT_EQ(style(form().btn_top), top);
}

} // namespace
