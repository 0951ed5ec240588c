// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

#include "tests/console/panel_fixture.h"

#include <QApplication>
#include <QTimer>

#include <regex>
#include <utility>

#include "console/console_state.h"
#include "tests/console/image_property_rows.h"
#include "tests/support/uvc_call_recorder.h"
#include "widgets/no_device.h"
#include "widgets/no_mord_camera.h"
#include "widgets/notice_state.h"
#include "widgets/rocker_handle.h"

namespace vc = virtual_camera;

namespace {

std::string inWords(const vc::LogRecord &record)
{
    const vc::ControlRequest &request = record.request;
    const vc::ControlTraits *const control = vc::findControl(request.entity(), request.selector());
    if (!control)
        return vc::toText(record);
    std::string words = record.device > 1 ? "cam" + std::to_string(record.device) + ": " : "";
    if (request.hostReads()) {
        words += std::string(vc::requestCodeName(request.request)) + ' ' + control->name;
    } else {
        words += control->name;
        for (const std::int64_t value : vc::decodeFields(*control, request.data.data()))
            words += ' ' + std::to_string(value);
    }
    return record.result == vc::LogRecord::Result::Stall ? words + " stall" : words;
}

int openFiles(const vc::RequestLog::Records &records, int camera)
{
    int open = 0;
    for (const vc::LogRecord &record : records) {
        if (record.device != camera)
            continue;
        open += record.event == vc::LogRecord::Event::Open ? 1 : 0;
        open -= record.event == vc::LogRecord::Event::Close ? 1 : 0;
    }
    return open;
}

} // namespace

Requests operator+(Requests left, const Requests &right)
{
    left.insert(left.end(), right.begin(), right.end());
    return left;
}

std::string command(int code) { return "roll_absolute " + std::to_string(code); }

Requests allReads(int camera)
{
    const std::string mark = camera > 1 ? "cam" + std::to_string(camera) + ": " : "";
    Requests reads;
    for (const char *property : { "backlight_compensation", "gamma", "contrast", "saturation",
             "brightness", "sharpness", "white_balance_temperature", "power_line_frequency" }) {
        for (const char *bound : { "GET_CUR ", "GET_MIN ", "GET_MAX ", "GET_DEF " })
            reads.push_back(mark + bound + property);
    }
    return reads;
}

std::vector<std::string> opensAndCloses()
{
    static const std::regex open(R"(uvc_open\(list[0-9]+\[([0-9]+)\].* = (-?[0-9]+))");
    std::vector<std::string> found;
    for (const std::string &call : uvc_call_recorder::calls()) {
        std::smatch match;
        if (std::regex_match(call, match, open))
            found.push_back("open " + match[1].str() + (match[2] == "0" ? "" : " failed"));
        else if (call.rfind("uvc_close(", 0) == 0)
            found.emplace_back("close");
    }
    return found;
}

const std::vector<int *> &processState()
{
    static const std::vector<int *> state = [] {
        std::vector<int *> all = { &usb_mode, &maxcam, &right_flag, &PressFlag,
            &WhiteBalanceAutoflag, &main_position_x, &main_position_y, &main2_position_x,
            &main2_position_y, &TopFlag, &Top2Flag, &lastTiltLevel, &cur_fliker, &min_fliker,
            &max_fliker, &default_fliker };
        for (const ImageProperty &row : imageProperties())
            all.insert(all.end(), { &row.cur, &row.min, &row.max, &row.def, &row.step });
        return all;
    }();
    return state;
}

int connectionsOf(const QObject *object, const char *signal)
{
    struct Access : QObject
    {
        using QObject::receivers; // protected
    };
    return (object->*&Access::receivers)(signal);
}

PanelTest::PanelTest()
{
    for (int *const variable : processState())
        *variable = 0;
    // Every window sets this one; a joystick made later would no longer see 72 dots per inch.
    QCoreApplication::setAttribute(Qt::AA_Use96Dpi, false);
    uvc_call_recorder::clear();
}

PanelTest::~PanelTest()
{
    endWindow();
    if (bus) {
        EXPECT_EQ(sent(), Requests()) << "arrived and was not accounted for";
    }
    // Only so that the next test finds the cameras free: the program itself closes none.
    if (device)
        device->CloseDevice();
    // The notices have no parent and end with the process.
    for (QWidget *widget : QApplication::topLevelWidgets()) {
        if (qobject_cast<NO_Device *>(widget) || qobject_cast<NO_Mord_Camera *>(widget))
            delete widget;
    }
}

void PanelTest::plugIn(int cameras) { plugIn(vc::DeviceDescription::ptzCameras(cameras)); }

void PanelTest::plugIn(std::vector<vc::DeviceDescription> devices)
{
    bus = std::make_unique<vc::Testbed>(std::move(devices));
    // libusb may still have to read that the last test's cameras were removed, and would then take
    // these, at the same addresses, for unplugged. Listing reads it.
    std::vector<DeviceInfo> list;
    BaseDevice::EnumUSBDevices(list);
    uvc_call_recorder::clear();
}

void PanelTest::constructWindow()
{
    window = std::make_unique<MainWindow>();
    device = Probe::device(*window);
}

void PanelTest::makeWindow()
{
    constructWindow();
    Probe::timer(*window)->stop();
    window->show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(window.get()));
}

void PanelTest::poll()
{
    // The poll acts only while its timer runs.
    Probe::timer(*window)->start();
    window->TimerInit();
}

void PanelTest::start(int cameras)
{
    if (!bus)
        plugIn(cameras);
    makeWindow();
    poll();
    forgetSent();
}

void PanelTest::endWindow() { window.reset(); }

Requests PanelTest::sent()
{
    Requests arrived;
    for (const vc::LogRecord &record : bus->log().requests()) {
        if (record.sequence <= lastSeen)
            continue;
        lastSeen = record.sequence;
        arrived.push_back(inWords(record));
    }
    return arrived;
}

void PanelTest::useEveryControl()
{
    for (const int key : { Qt::Key_Left, Qt::Key_Up, Qt::Key_T, Qt::Key_F, Qt::Key_M, Qt::Key_5 })
        QTest::keyClick(window.get(), static_cast<Qt::Key>(key));
    for (int place = 0; place < 9; ++place)
        window->MovePlace(place);
    for (QSlider *slider : { form().slider_zoom, form().slider_focus }) {
        slider->setValue(99);
        emit slider->sliderReleased();
    }
    for (QPushButton *button : { form().btn_mute, form().btn_af, form().btn_ai, form().btn_push,
             form().btn_flip, form().btn_home, form().btn_mirror, form().btn_num1, form().btn_set,
             form().btn_num2, form().btn_clear, form().btn_num3, form().btn_default })
        click(button);
    for (const ImageProperty &row : imageProperties()) {
        auto *const slider = window->findChild<QSlider *>(QString("slider_") + row.widget);
        emit slider->sliderPressed();
        emit slider->sliderMoved(3);
    }
    for (const int choice : { 0, 1, 2 })
        form().cb_fliker->setCurrentIndex(choice);
}

QPushButton *PanelTest::cameraButton(int number)
{
    return window->findChild<QPushButton *>("btn_cam" + QString::number(number));
}

void PanelTest::choose(int number)
{
    uvc_call_recorder::clear();
    click(cameraButton(number));
}

int PanelTest::markedCamera()
{
    int number = 5;
    while (number > 0 && !style(cameraButton(number)).contains("green"))
        --number;
    return number;
}

bool PanelTest::isHeld(int cameraNumber) { return openFiles(bus->log().all(), cameraNumber) > 0; }

bool PanelTest::becomesFree(int cameraNumber)
{
    return bus->log().waitUntil([cameraNumber](const vc::RequestLog::Records &records) {
        return openFiles(records, cameraNumber) == 0;
    });
}
