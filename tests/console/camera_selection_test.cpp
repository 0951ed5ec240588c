// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

// Which camera is driven: the poll after the start, and the five camera buttons.

#include <QPointer>
#include <QTest>
#include <QTimer>

#include <array>
#include <cerrno>

#include "console/console_state.h"
#include "device/property_ranges.h"
#include "tests/console/debug_lines.h"
#include "tests/console/panel_fixture.h"
#include "tests/console/uvc_calls.h"
#include "tests/support/uvc_call_recorder.h"
#include "widgets/no_device.h"
#include "widgets/no_mord_camera.h"
#include "widgets/notice_state.h"

namespace {

using Names = std::vector<std::string>;
using virtual_camera::DeviceDescription;

const QString muted =
    "QPushButton{border-image: url(:/img/mute.png);background-attachment;border:none;}";
const QString notMuted =
    "QPushButton{border-image: url(:/img/no_mute.png);background-attachment;border:none;}";

QString cameraSheet(int number, const char *colour)
{
    return QStringLiteral("QPushButton{image: url(:/img/cam%1_%2.png);"
                          "background-color:transparent;}")
        .arg(QString::number(number), QLatin1String(colour));
}

/// The sheets of the five buttons with one of them green; 0 for none.
QStringList marked(int number)
{
    QStringList sheets;
    for (int button = 1; button <= 5; ++button)
        sheets += cameraSheet(button, button == number ? "green" : "black");
    return sheets;
}

class CameraSelection : public PanelTest
{
protected:
    CameraSelection() { uvc_call_recorder::clear(); }
    ~CameraSelection() override { uvc_call_recorder::failOnDemand(""); }

    QPushButton *button(int number)
    {
        return window->findChild<QPushButton *>(QStringLiteral("btn_cam%1").arg(number));
    }
    QStringList sheets()
    {
        QStringList all;
        for (int number = 1; number <= 5; ++number)
            all += style(button(number));
        return all;
    }
    /// Presses a camera button; what was called before is forgotten.
    void choose(int number)
    {
        uvc_call_recorder::clear();
        QTest::mouseClick(button(number), Qt::LeftButton);
    }

    NO_Device *noDeviceNotice() { return Probe::noDeviceDialog(*window); }
    NO_Mord_Camera *emptyPositionNotice() { return Probe::noMoreCameraDialog(*window); }
};

// The poll
// --------------------------------------------------------------------------------------------

class Poll : public CameraSelection, public testing::WithParamInterface<int>
{ };

TEST_P(Poll, CountsTheCamerasAndOpensTheFirstTwice)
{
    const int cameras = GetParam();
    plugIn(cameras);
    makeWindow();
    EXPECT_EQ(usb_mode, 0);
    EXPECT_EQ(maxcam, 0);
    EXPECT_EQ(sheets(), marked(0));
    EXPECT_EQ(style(form().btn_mute), muted);
    window->move(120, 80);
    NO_Device *const noticeOfTheStart = noDeviceNotice();
    noticeOfTheStart->setModal(true);
    noticeOfTheStart->show();
    uvc_call_recorder::clear();
    poll();

    EXPECT_EQ(usb_mode, 1);
    EXPECT_EQ(maxcam, cameras);
    ASSERT_EQ(Probe::deviceList(*window).size(), static_cast<std::size_t>(cameras));
    EXPECT_EQ(Probe::deviceList(*window).back().index, cameras - 1);
    EXPECT_EQ(sheets(), marked(1));
    EXPECT_EQ(style(form().btn_mute), notMuted);
    EXPECT_EQ(opensAndCloses(), (Names{ "open 0", "close", "open 0" }));
    EXPECT_EQ(sent(), allReads() + allReads());
    EXPECT_EQ(noDeviceNotice(), noticeOfTheStart);
    EXPECT_FALSE(noticeOfTheStart->isVisible());
    EXPECT_FALSE(noticeOfTheStart->isModal());
    EXPECT_EQ(QPoint(main_position_x, main_position_y), QPoint(120, 80));
    EXPECT_EQ(QPoint(main2_position_x, main2_position_y), QPoint(0, 0));
    EXPECT_FALSE(Probe::timer(*window)->isActive());
}

INSTANTIATE_TEST_SUITE_P(Cameras, Poll, testing::Values(1, 2, 3, 5, 9));

/// Without a camera: none is plugged in, or enumeration fails.
struct Absence
{
    const char *name;
    int cameras;
    const char *failure;
    QStringList debugLines;
};

class PollWithoutCamera : public CameraSelection, public testing::WithParamInterface<Absence>
{ };

TEST_P(PollWithoutCamera, ShowsTheNoticeAndLeavesEverythingBlack)
{
    plugIn(GetParam().cameras);
    makeWindow();
    window->move(100, 50);
    for (int number = 1; number <= 5; ++number)
        button(number)->setStyleSheet("QPushButton{color:red;}");
    form().btn_mute->setStyleSheet("QPushButton{color:red;}");
    usb_mode = 1;
    maxcam = 3;
    QPointer<NO_Device> noticeOfTheStart = noDeviceNotice();
    uvc_call_recorder::failOnDemand(GetParam().failure);
    uvc_call_recorder::clear();
    const DebugLines debug;
    poll();

    EXPECT_EQ(debug.lines(), GetParam().debugLines);
    EXPECT_EQ(usb_mode, 0);
    EXPECT_EQ(maxcam, 0);
    EXPECT_EQ(sheets(), marked(0));
    EXPECT_EQ(style(form().btn_mute), muted);
    EXPECT_EQ(opensAndCloses(), Names());
    EXPECT_EQ(sent(), Requests());
    EXPECT_FALSE(Probe::timer(*window)->isActive());

    ASSERT_TRUE(noticeOfTheStart);
    EXPECT_NE(noDeviceNotice(), noticeOfTheStart);
    EXPECT_FALSE(noticeOfTheStart->isVisible());
    EXPECT_TRUE(noDeviceNotice()->isVisible());
    EXPECT_FALSE(noDeviceNotice()->isModal());
    EXPECT_EQ(noDeviceNotice()->parent(), nullptr);
    EXPECT_EQ(QPoint(main_position_x, main_position_y), QPoint(100, 50));
    EXPECT_EQ(noDeviceNotice()->pos(), QPoint(263, 143));
}

INSTANTIATE_TEST_SUITE_P(Rows, PollWithoutCamera,
    testing::Values(Absence{ "EmptyList", 0, "", {} },
        Absence{ "NoContext", 2, "uvc_init#1=-99", { "hello227" } },
        Absence{ "NoList", 2, "uvc_get_device_list#1=-99", { "hello227" } }),
    [](const auto &row) { return std::string(row.param.name); });

TEST_F(CameraSelection, PollRunsOnceFromItsTimer)
{
    plugIn(1);
    constructWindow();
    QTimer *const timer = Probe::timer(*window);
    int ticks = 0;
    QObject::connect(timer, &QTimer::timeout, window.get(), [&ticks] { ++ticks; });
    window->show();
    ASSERT_TRUE(QTest::qWaitFor([&] { return ticks > 0; }));
    EXPECT_EQ(ticks, 1);
    EXPECT_FALSE(timer->isActive());
    EXPECT_EQ(usb_mode, 1);
    EXPECT_EQ(sent(), allReads() + allReads());
}

TEST_F(CameraSelection, PollDoesNothingWhileItsTimerStands)
{
    start(1);
    const QStringList before = sheets();
    usb_mode = 7;
    maxcam = 8;
    uvc_call_recorder::clear();
    window->TimerInit();
    EXPECT_EQ(uvc_call_recorder::names(), Names());
    EXPECT_EQ(usb_mode, 7);
    EXPECT_EQ(maxcam, 8);
    EXPECT_EQ(sheets(), before);
    EXPECT_FALSE(Probe::timer(*window)->isActive());
}

TEST_F(CameraSelection, CameraPluggedInLaterIsNeverOffered)
{
    plugIn(2);
    camera(2).unplug();
    start(2);
    EXPECT_EQ(maxcam, 1);
    camera(2).replug();
    choose(2);
    EXPECT_EQ(opensAndCloses(), Names());
    EXPECT_EQ(maxcam, 1);
    EXPECT_EQ(sheets(), marked(1));
    ASSERT_NE(emptyPositionNotice(), nullptr);
    EXPECT_TRUE(emptyPositionNotice()->isVisible());
}

TEST_F(CameraSelection, FirstCameraPluggedInLaterNeedsANewStart)
{
    plugIn(1);
    camera(1).unplug();
    start(1);
    camera(1).replug();
    for (int number = 1; number <= 5; ++number)
        choose(number);
    EXPECT_EQ(usb_mode, 0);
    EXPECT_EQ(maxcam, 0);
    EXPECT_EQ(sent(), Requests());
}

TEST_F(CameraSelection, CamerasOfOtherMakesAreNotCountedButAreOpenedByPosition)
{
    plugIn({ DeviceDescription::ptzCamera(), DeviceDescription::otherCamera(),
        DeviceDescription::ptzCamera() });
    makeWindow();
    poll();
    forgetSent();
    EXPECT_EQ(maxcam, 2);
    choose(2);
    EXPECT_EQ(opensAndCloses(), (Names{ "close", "open 1" }));
    EXPECT_EQ(sent(), allReads(2)) << "the second of all cameras, of whatever make";
    EXPECT_EQ(sheets(), marked(2));
}

TEST_F(CameraSelection, CameraOfAnotherMakeAloneIsNone)
{
    plugIn({ DeviceDescription::otherCamera(), DeviceDescription::storage() });
    makeWindow();
    poll();
    EXPECT_EQ(usb_mode, 0);
    EXPECT_EQ(maxcam, 0);
    EXPECT_TRUE(noDeviceNotice()->isVisible());
}

// The buttons
// -----------------------------------------------------------------------------------------

struct Choice
{
    int cameras;
    int button;
};

std::vector<Choice> everyChoice()
{
    std::vector<Choice> choices;
    for (const int cameras : { 0, 1, 2, 3, 5, 9 })
        for (int button = 1; button <= 5; ++button)
            choices.push_back({ cameras, button });
    return choices;
}

class CameraButton : public CameraSelection, public testing::WithParamInterface<Choice>
{ };

TEST_P(CameraButton, OpensItsCameraOrSaysThatThereIsNone)
{
    const auto [cameras, number] = GetParam();
    start(cameras);
    window->move(100, 50);
    choose(number);
    if (number <= cameras) {
        EXPECT_EQ(opensAndCloses(), (Names{ "close", "open " + std::to_string(number - 1) }));
        EXPECT_EQ(sent(), allReads(number));
        EXPECT_EQ(sheets(), marked(number));
        EXPECT_EQ(emptyPositionNotice(), nullptr);
        EXPECT_EQ(QPoint(main2_position_x, main2_position_y), QPoint(0, 0));
    } else {
        EXPECT_EQ(uvc_call_recorder::names(), Names()) << "the open camera stays open";
        EXPECT_EQ(sheets(), marked(number == 1 ? 0 : 1));
        EXPECT_EQ(emptyPositionNotice() != nullptr, number > 1);
        EXPECT_EQ(QPoint(main2_position_x, main2_position_y),
            number > 1 ? QPoint(100, 50) : QPoint(0, 0));
    }
    EXPECT_EQ(usb_mode, cameras > 0 ? 1 : 0);
    EXPECT_EQ(maxcam, cameras);
}

INSTANTIATE_TEST_SUITE_P(Rows, CameraButton, testing::ValuesIn(everyChoice()), [](const auto &row) {
    return "Button" + std::to_string(row.param.button) + "Of" + std::to_string(row.param.cameras);
});

TEST_F(CameraSelection, ChosenCameraIsDriven)
{
    start(3);
    choose(3);
    forgetSent();
    QTest::keyPress(window.get(), Qt::Key_Left);
    EXPECT_EQ(sent(), Requests{ "cam3: pantilt_relative -1 21 0 0" });
    choose(4);
    EXPECT_EQ(sheets(), marked(1));
    QTest::keyRelease(window.get(), Qt::Key_Left);
    const std::string stop = "cam3: pantilt_relative 0 0 0 0";
    EXPECT_EQ(sent(), (Requests{ stop, stop, "cam3: zoom_relative 0 1 5" }))
        << "the third stays open although the first is marked";
    EXPECT_TRUE(isHeld(3));
    EXPECT_TRUE(becomesFree(1));
}

TEST_F(CameraSelection, FirstButtonWithoutACameraClearsTheMarkOfAnother)
{
    start(0);
    choose(5);
    EXPECT_EQ(sheets(), marked(1)) << "even with no camera at all";
    choose(1);
    EXPECT_EQ(sheets(), marked(0));
}

TEST_F(CameraSelection, ButtonsDoNotAskForTheMode)
{
    start(2);
    usb_mode = 0;
    choose(2);
    EXPECT_EQ(sent(), allReads(2));
    EXPECT_EQ(sheets(), marked(2));
    choose(1);
    EXPECT_EQ(sent(), allReads(1));
}

TEST_F(CameraSelection, NumberOfCamerasIsComparedUnsigned)
{
    start(1);
    maxcam = -1;
    choose(4);
    EXPECT_EQ(opensAndCloses(), Names{ "close" }) << "position 3 is not in the list";
    EXPECT_EQ(sheets(), marked(4));
    EXPECT_EQ(emptyPositionNotice(), nullptr);
}

class SecondButton : public CameraSelection
{
protected:
    /// The default button moves the slider away from the current value, which stays as noted.
    void moveWhiteBalanceSliderAway()
    {
        ASSERT_NE(cur_wb, 4000);
        form().slider_wb->setValue(4000);
        for (const int number : { 2, 3 })
            camera(number).refuseOpen(EACCES);
    }
};

TEST_F(SecondButton, PutsTheWhiteBalanceSliderBackBeforeItOpens)
{
    start(3);
    moveWhiteBalanceSliderAway();
    choose(2);
    EXPECT_EQ(opensAndCloses(), (Names{ "close", "open 1 failed" }));
    EXPECT_EQ(form().slider_wb->value(), cur_wb);
    EXPECT_EQ(sent(), Requests());
}

TEST_F(SecondButton, AloneTouchesTheWhiteBalanceSlider)
{
    start(3);
    moveWhiteBalanceSliderAway();
    choose(3);
    EXPECT_EQ(form().slider_wb->value(), 4000);
    choose(5); // not there
    EXPECT_EQ(form().slider_wb->value(), 4000);
}

TEST_F(SecondButton, LeavesTheWhiteBalanceSliderWhenThereIsNoSecondCamera)
{
    start(1);
    form().slider_wb->setValue(4000);
    choose(2);
    EXPECT_EQ(form().slider_wb->value(), 4000);
}

// Notices
// ---------------------------------------------------------------------------------------------

TEST_F(CameraSelection, NoticesStackUpAndAreDismissedOneByOne)
{
    start(1);
    std::vector<QPointer<NO_Mord_Camera>> notices;
    for (const int number : { 2, 3, 4, 5, 5 }) {
        window->move(10 * number, 50);
        choose(number);
        notices.emplace_back(emptyPositionNotice());
    }
    const int x[] = { 20, 30, 40, 50, 50 };
    for (std::size_t index = 0; index < notices.size(); ++index) {
        NO_Mord_Camera *const notice = notices[index];
        ASSERT_NE(notice, nullptr) << index;
        EXPECT_TRUE(notice->isVisible());
        EXPECT_FALSE(notice->isModal());
        EXPECT_EQ(notice->parent(), nullptr);
        EXPECT_EQ(notice->pos(), QPoint(x[index] + 163, 50 + 93)) << "an earlier one stays";
        EXPECT_EQ(std::count(notices.begin(), notices.end(), notice), 1);
    }
    QTest::mouseClick(notices[1]->findChild<QPushButton *>("btn_ok"), Qt::LeftButton);
    for (std::size_t index = 0; index < notices.size(); ++index)
        EXPECT_EQ(notices[index]->isVisible(), index != 1) << index;
    EXPECT_EQ(sheets(), marked(1));
}

TEST_F(CameraSelection, EachEmptyPositionHasTheSameNotice)
{
    start(0);
    void (MainWindow::*const warnings[])() = { &MainWindow::cam2_warn, &MainWindow::cam3_warn,
        &MainWindow::cam4_warn, &MainWindow::cam5_warn };
    for (const auto warn : warnings) {
        const NO_Mord_Camera *const before = emptyPositionNotice();
        window->move(window->x() + 7, 30);
        const QStringList marks = sheets();
        (window.get()->*warn)();
        EXPECT_NE(emptyPositionNotice(), before);
        EXPECT_TRUE(emptyPositionNotice()->isVisible());
        EXPECT_EQ(emptyPositionNotice()->pos(), window->pos() + QPoint(163, 93));
        EXPECT_EQ(sheets(), marks);
    }
}

TEST_F(CameraSelection, NoCameraNoticeIsMadeAnewEachTime)
{
    start(0);
    QPointer<NO_Device> first = noDeviceNotice();
    window->move(200, 100);
    window->Warn_NoDev();
    ASSERT_TRUE(first);
    EXPECT_NE(noDeviceNotice(), first);
    EXPECT_TRUE(first->isVisible());
    EXPECT_EQ(noDeviceNotice()->pos(), QPoint(363, 193));
    EXPECT_FALSE(noDeviceNotice()->isModal());
}

TEST_F(CameraSelection, PollTakesNoNoticeOfAnOldOneWhenACameraIsThere)
{
    plugIn(1);
    makeWindow();
    window->Warn_NoDev();
    NO_Device *const notice = noDeviceNotice();
    notice->setModal(true);
    poll();
    forgetSent();
    EXPECT_EQ(noDeviceNotice(), notice);
    EXPECT_FALSE(notice->isVisible()) << "it goes down with a successful poll";
    EXPECT_FALSE(notice->isModal());
}

// Faults
// ----------------------------------------------------------------------------------------------

/// Uses every control that speaks to the camera.
void useEverything(MainWindow &window, Ui::MainWindow &form)
{
    for (const int key : { Qt::Key_Left, Qt::Key_Up, Qt::Key_T, Qt::Key_F, Qt::Key_M, Qt::Key_5 })
        QTest::keyClick(&window, static_cast<Qt::Key>(key));
    for (int place = 0; place < 9; ++place)
        window.MovePlace(place);
    form.slider_zoom->setValue(99);
    emit form.slider_zoom->sliderReleased();
    form.slider_focus->setValue(0);
    emit form.slider_focus->sliderReleased();
    for (QPushButton *button : { form.btn_mute, form.btn_af, form.btn_ai, form.btn_push,
             form.btn_flip, form.btn_home, form.btn_mirror, form.btn_num1, form.btn_set,
             form.btn_num2, form.btn_clear, form.btn_num3, form.btn_setting, form.btn_default })
        QTest::mouseClick(button, Qt::LeftButton);
    for (QSlider *slider :
        { form.slider_wb, form.slider_blc, form.slider_gamma, form.slider_contrast,
            form.slider_saturation, form.slider_brightness, form.slider_sharpness }) {
        emit slider->sliderPressed();
        emit slider->sliderMoved(3);
    }
    for (const int choice : { 0, 1, 2 })
        form.cb_fliker->setCurrentIndex(choice);
}

TEST_F(CameraSelection, BothOpensRefusedIsStillACameraThatNoRequestReaches)
{
    plugIn(1);
    camera(1).refuseOpen(EACCES);
    makeWindow();
    uvc_call_recorder::clear();
    poll();
    EXPECT_EQ(opensAndCloses(), (Names{ "open 0 failed", "open 0 failed" }));
    EXPECT_EQ(usb_mode, 1);
    EXPECT_EQ(maxcam, 1);
    EXPECT_EQ(sheets(), marked(1));
    EXPECT_EQ(style(form().btn_mute), notMuted);
    EXPECT_FALSE(noDeviceNotice()->isVisible());
    EXPECT_EQ(form().v_brightness->text(), "0");

    uvc_call_recorder::clear();
    useEverything(*window, form());
    EXPECT_EQ(uvc_call_recorder::names(), Names());
    EXPECT_EQ(sent(), Requests());

    camera(1).refuseOpen(0);
    choose(1);
    EXPECT_EQ(opensAndCloses(), Names{ "open 0" });
    EXPECT_EQ(sent(), allReads() + Requests{ "power_line_frequency 1" })
        << "the anti-flicker choice is written back";
}

TEST_F(CameraSelection, CameraThatMayNotBeOpenedIsMarkedAllTheSame)
{
    start(2);
    camera(2).refuseOpen(EACCES);
    const QString brightness = form().v_brightness->text();
    choose(2);
    EXPECT_EQ(opensAndCloses(), (Names{ "close", "open 1 failed" }));
    EXPECT_EQ(sheets(), marked(2));
    EXPECT_EQ(form().v_brightness->text(), brightness);
    uvc_call_recorder::clear();
    useEverything(*window, form());
    EXPECT_EQ(sent(), Requests()) << "the first camera was closed";
    EXPECT_EQ(uvc_call_recorder::names(), Names());
    choose(1);
    EXPECT_EQ(opensAndCloses(), Names{ "open 0" }) << "nothing is open that could be closed";
    forgetSent();
}

TEST_F(CameraSelection, UnreadableBrightnessRefusesTheSecondOpenOfTheStart)
{
    using virtual_camera::Control;
    using virtual_camera::RequestCode;
    plugIn(1);
    camera(1).stall(Control::Brightness, RequestCode::GetCur);
    makeWindow();
    uvc_call_recorder::clear();
    poll();
    EXPECT_EQ(opensAndCloses(), (Names{ "open 0", "close" }));
    EXPECT_EQ(usb_mode, 1);
    EXPECT_EQ(sheets(), marked(1));
    forgetSent();
    useEverything(*window, form());
    EXPECT_EQ(sent(), Requests()) << "no camera is open";
    choose(1);
    EXPECT_EQ(opensAndCloses(), Names()) << "the open is refused until a read succeeds";
    EXPECT_TRUE(becomesFree(1));
}

TEST_F(CameraSelection, UnpluggedCameraCanBeUsedAndChosenAgainAndAgain)
{
    start(2);
    camera(1).unplug();
    useEverything(*window, form());
    for (int round = 0; round < 3; ++round) {
        choose(1);
        EXPECT_EQ(sheets(), marked(1));
        useEverything(*window, form());
    }
    EXPECT_EQ(sent(), Requests());
    choose(2);
    EXPECT_EQ(opensAndCloses(), Names{ "open 1" });
    EXPECT_EQ(sent(), allReads(2) + Requests{ "cam2: power_line_frequency 1" });
    EXPECT_EQ(sheets(), marked(2));
    EXPECT_EQ(usb_mode, 1);
    EXPECT_EQ(maxcam, 2);
}

} // namespace
