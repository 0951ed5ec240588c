// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

#include "tests/console/panel_fixture.h"

#include <QApplication>
#include <QTest>
#include <QTimer>

#include <algorithm>
#include <utility>

#include "console/console_state.h"
#include "tests/console/process_state.h"
#include "widgets/no_device.h"
#include "widgets/no_mord_camera.h"

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

PanelTest::PanelTest() { resetProcessState(); }

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
    resetProcessState();
}

void PanelTest::plugIn(int cameras) { bus = std::make_unique<vc::Testbed>(cameras); }

void PanelTest::plugIn(std::vector<vc::DeviceDescription> devices)
{
    bus = std::make_unique<vc::Testbed>(std::move(devices));
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

void PanelTest::startUnnoticed()
{
    start(1);
    usb_mode = 0;
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

bool PanelTest::isHeld(int cameraNumber) { return openFiles(bus->log().all(), cameraNumber) > 0; }

bool PanelTest::becomesFree(int cameraNumber)
{
    return bus->log().waitUntil([cameraNumber](const vc::RequestLog::Records &records) {
        return openFiles(records, cameraNumber) == 0;
    });
}
