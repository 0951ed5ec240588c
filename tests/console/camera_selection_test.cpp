// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

// Which camera is driven: the poll after the start, the five camera buttons and the notices.

#include <QApplication>
#include <QPointer>
#include <QTimer>

#include <cerrno>

#include "console/console_state.h"
#include "device/property_ranges.h"
#include "tests/console/panel_fixture.h"
#include "tests/console/sheets.h"
#include "tests/support/uvc_call_recorder.h"
#include "widgets/no_device.h"
#include "widgets/no_mord_camera.h"
#include "widgets/notice_state.h"

namespace {

using Names = std::vector<std::string>;

/// The sheets of the five buttons with one of them green; 0 for none.
QStringList marked(int number)
{
    QStringList sheets;
    for (int button = 1; button <= 5; ++button)
        sheets += sheets::camera(button, button == number);
    return sheets;
}

/// What is written to the debug stream during `action`.
QStringList debugLines(const std::function<void()> &action)
{
    static QStringList lines;
    lines.clear();
    const auto previous =
        qInstallMessageHandler([](QtMsgType type, const QMessageLogContext &, const QString &text) {
            lines += type == QtDebugMsg ? text : "not debug: " + text;
        });
    action();
    qInstallMessageHandler(previous);
    return lines;
}

class CameraSelection : public PanelTest, public QObject
{
protected:
    ~CameraSelection() override { uvc_call_recorder::failOnDemand(""); }

    QStringList faces()
    {
        QStringList all;
        for (int number = 1; number <= 5; ++number)
            all += style(cameraButton(number));
        return all;
    }
    void repaintRed()
    {
        for (int number = 1; number <= 5; ++number)
            cameraButton(number)->setStyleSheet(red);
    }
    /// Notes the faces whenever an empty-position notice is shown. Installed on the application.
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() == QEvent::Show && qobject_cast<NO_Mord_Camera *>(watched))
            facesAtNotices.push_back(faces());
        return false;
    }

    NO_Device *noDeviceNotice() { return Probe::noDeviceDialog(*window); }
    NO_Mord_Camera *emptyPositionNotice() { return Probe::noMoreCameraDialog(*window); }
    static QPoint mainPosition() { return { main_position_x, main_position_y }; }
    static QPoint main2Position() { return { main2_position_x, main2_position_y }; }

    const QString red = "QPushButton{color:red;}";
    const QStringList allRed = { red, red, red, red, red };
    std::vector<QStringList> facesAtNotices;
};

/// The enumeration, and two loads of the first camera.
Names namesOfThePoll(int cameras)
{
    Names load = { "uvc_open" };
    for (const std::string &read : allReads()) // "GET_MIN gamma"
        load.push_back("uvc_get_" + read.substr(8));
    Names names = { "uvc_init", "uvc_get_device_list" };
    for (int camera = 0; camera < cameras; ++camera)
        names = names + Names{ "uvc_get_device_descriptor", "uvc_free_device_descriptor" };
    return names + Names{ "uvc_free_device_list", "uvc_exit" } + load + Names{ "uvc_close" } + load;
}

class CameraCount : public CameraSelection, public testing::WithParamInterface<int>
{ };

TEST_P(CameraCount, PollCountsTheCamerasAndOpensTheFirstTwice)
{
    const int cameras = GetParam();
    plugIn(cameras);
    makeWindow();
    window->move(120, 80);
    repaintRed();
    form().btn_mute->setStyleSheet(red);
    NO_Device *const notice = noDeviceNotice();
    notice->setModal(true);
    notice->show();
    uvc_call_recorder::clear();
    using Seen = std::tuple<int, QStringList, QString, bool>;
    const auto seen = seenAtRequests([this] { poll(); },
        [&] { return Seen{ usb_mode, faces(), style(form().btn_mute), notice->isVisible() }; });

    EXPECT_EQ(uvc_call_recorder::names(), namesOfThePoll(cameras));
    EXPECT_EQ(opensAndCloses(), (Names{ "open 0", "close", "open 0" }));
    std::vector<Seen> expected(32, { 0, allRed, red, true });
    expected.resize(64, { 0, marked(1), red, true });
    EXPECT_EQ(seen, expected) << "the face after the first load, the rest after the second";
    EXPECT_EQ(usb_mode, 1);
    EXPECT_EQ(maxcam, cameras);
    EXPECT_EQ(Probe::deviceList(*window).size(), static_cast<std::size_t>(cameras));
    EXPECT_EQ(faces(), marked(1));
    EXPECT_EQ(style(form().btn_mute), sheets::sign("no_mute"));
    EXPECT_EQ(noDeviceNotice(), notice);
    EXPECT_FALSE(notice->isVisible() || notice->isModal());
    EXPECT_EQ(mainPosition(), QPoint(120, 80));
    EXPECT_EQ(main2Position(), QPoint(0, 0));
    EXPECT_FALSE(Probe::timer(*window)->isActive());
}

TEST_P(CameraCount, EachButtonOpensItsCameraOrSaysThatThereIsNoneInAnyMode)
{
    const int cameras = GetParam();
    start(cameras);
    window->move(100, 50);
    qApp->installEventFilter(this);
    for (int number = 1; number <= 5; ++number) {
        for (const int mode : { 0, 1 }) {
            SCOPED_TRACE(testing::Message() << "button " << number << ", mode " << mode);
            const bool isThere = number <= cameras;
            usb_mode = mode;
            main2_position_x = 0;
            repaintRed();
            facesAtNotices.clear();
            const NO_Mord_Camera *const before = emptyPositionNotice();
            const auto seen = seenAtRequests([&] { choose(number); }, [this] { return faces(); });
            EXPECT_EQ(faces(), marked(isThere ? number : 1));
            EXPECT_EQ(emptyPositionNotice() != before, !isThere);
            EXPECT_EQ(main2Position().x(), isThere ? 0 : 100);
            // The face follows the open or the notice.
            if (isThere) {
                EXPECT_EQ(
                    opensAndCloses(), (Names{ "close", "open " + std::to_string(number - 1) }));
                EXPECT_EQ(seen, std::vector(32, allRed));
                EXPECT_EQ(facesAtNotices, std::vector<QStringList>());
            } else {
                EXPECT_EQ(uvc_call_recorder::names(), Names());
                EXPECT_TRUE(isHeld(cameras)) << "the one chosen before";
                EXPECT_EQ(facesAtNotices, std::vector{ allRed });
            }
            EXPECT_EQ(usb_mode, mode);
            EXPECT_EQ(maxcam, cameras);
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Cameras, CameraCount, testing::Values(1, 2, 3, 4, 5, 9));

/// Without a camera: none is plugged in, or enumeration fails.
struct Absence
{
    const char *name;
    int cameras;
    const char *failure;
    QStringList debugLines;
};

class NoCamera : public CameraSelection, public testing::WithParamInterface<Absence>
{ };

TEST_P(NoCamera, PollShowsTheNoticeAndLeavesEverythingBlack)
{
    plugIn(GetParam().cameras);
    makeWindow();
    window->move(100, 50);
    repaintRed();
    usb_mode = 1;
    maxcam = 3;
    const QPointer<NO_Device> atStart = noDeviceNotice();
    uvc_call_recorder::failOnDemand(GetParam().failure);
    EXPECT_EQ(debugLines([this] { poll(); }), GetParam().debugLines);
    EXPECT_EQ(usb_mode, 0);
    EXPECT_EQ(maxcam, 0);
    EXPECT_EQ(faces(), marked(0));
    EXPECT_EQ(style(form().btn_mute), sheets::sign("mute"));
    EXPECT_EQ(opensAndCloses(), Names());
    EXPECT_FALSE(Probe::timer(*window)->isActive());
    ASSERT_TRUE(atStart);
    EXPECT_NE(noDeviceNotice(), atStart);
    EXPECT_FALSE(atStart->isVisible());
    EXPECT_TRUE(noDeviceNotice()->isVisible());
    EXPECT_FALSE(noDeviceNotice()->isModal());
    EXPECT_EQ(mainPosition(), QPoint(100, 50));

    choose(3);
    EXPECT_EQ(faces(), marked(1)) << "even without any camera";
    EXPECT_NE(emptyPositionNotice(), nullptr);
    choose(1);
    EXPECT_EQ(faces(), marked(0)) << "and no notice";
    EXPECT_EQ(uvc_call_recorder::names(), Names());
}

INSTANTIATE_TEST_SUITE_P(Because, NoCamera,
    testing::Values(Absence{ "EmptyList", 0, "", {} },
        Absence{ "NoContext", 2, "uvc_init#1=-99", { "hello227" } },
        Absence{ "NoList", 2, "uvc_get_device_list#1=-99", { "hello227" } }),
    [](const auto &row) { return std::string(row.param.name); });

TEST_F(CameraSelection, PollDoesNothingWhileItsTimerStands)
{
    start(1);
    usb_mode = 7;
    maxcam = 8;
    uvc_call_recorder::clear();
    window->TimerInit();
    EXPECT_EQ(uvc_call_recorder::names(), Names());
    EXPECT_EQ(usb_mode, 7);
    EXPECT_EQ(maxcam, 8);
    EXPECT_FALSE(Probe::timer(*window)->isActive());
}

TEST_F(CameraSelection, NumberOfCamerasIsComparedUnsigned)
{
    start(1);
    maxcam = -1;
    choose(4);
    EXPECT_EQ(opensAndCloses(), Names{ "close" }) << "position 3 is not in the list";
    EXPECT_EQ(faces(), marked(4));
    EXPECT_EQ(emptyPositionNotice(), nullptr);
}

TEST_F(CameraSelection, SecondButtonAloneFirstMovesTheWhiteBalanceSliderToTheCurrentValue)
{
    start(3);
    const int current = cur_wb;
    for (const int number : { 1, 2, 3 })
        camera(number).refuseOpen(EACCES); // so that no camera is read
    const struct
    {
        int cameras;
        int button;
        int value;
    } rows[] = { { 3, 1, 4000 }, { 3, 3, 4000 }, { 3, 5, 4000 }, { 1, 2, 4000 },
        { 3, 2, current } };
    ASSERT_NE(current, 4000);
    for (const auto &row : rows) {
        maxcam = row.cameras;
        form().slider_wb->setValue(4000);
        choose(row.button);
        EXPECT_EQ(form().slider_wb->value(), row.value) << row.button << " of " << row.cameras;
    }
}

TEST_F(CameraSelection, NoticesStackUpAndAreDismissedOneByOne)
{
    start(0);
    std::vector<QWidget *> notices = { noDeviceNotice() };
    std::vector<QPoint> places = { notices[0]->pos() };
    void (MainWindow::*const warnings[])() = { &MainWindow::Warn_NoDev, &MainWindow::cam2_warn,
        &MainWindow::cam3_warn, &MainWindow::cam4_warn, &MainWindow::cam5_warn,
        &MainWindow::cam5_warn };
    repaintRed();
    for (const auto warn : warnings) {
        window->move(window->x() + 7, 30);
        (window.get()->*warn)();
        const bool first = notices.size() == 1;
        notices.push_back(first ? static_cast<QWidget *>(noDeviceNotice()) : emptyPositionNotice());
        places.push_back(window->pos() + QPoint(163, 93));
    }
    for (std::size_t index = 0; index < notices.size(); ++index) {
        SCOPED_TRACE(index);
        EXPECT_EQ(std::count(notices.begin(), notices.end(), notices[index]), 1);
        EXPECT_TRUE(notices[index]->isVisible());
        EXPECT_FALSE(notices[index]->isModal());
        EXPECT_EQ(notices[index]->parent(), nullptr);
        EXPECT_EQ(notices[index]->pos(), places[index]) << "an earlier one stays";
    }
    EXPECT_EQ(faces(), allRed);
    click(notices[2]->findChild<QPushButton *>("btn_ok"));
    window->warn_exit();
    for (std::size_t index = 0; index < notices.size(); ++index)
        EXPECT_EQ(notices[index]->isVisible(), index != 1 && index != 2) << index;
}

} // namespace
