// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

// The main window in this process, on virtual cameras: what it shows, and what the cameras receive.
#pragma once

#include <QPushButton>
#include <QTest>

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "tests/console/main_window_probe.h"
#include "ui_main_window.h"
#include "virtual_camera/testbed/testbed.h"

/// Requests to cameras in the order of arrival, one line each: "pantilt_relative 1 21 0 0" is a
/// write, "GET_MIN brightness" a read. A request to another camera than the first begins with
/// "cam2: "; one that the camera refuses ends with " stall".
using Requests = std::vector<std::string>;

Requests operator+(Requests left, const Requests &right);

/// A write to the vendor command channel.
std::string command(int code);

/// The 32 reads that follow an open.
Requests allReads(int camera = 1);

/// What libuvc was asked to open and close: "open 2" for entry 2 of the list of cameras,
/// "open 2 failed", "close".
std::vector<std::string> opensAndCloses();

/// The process-wide integers of the program, all of which start at 0.
const std::vector<int *> &processState();

/// How many connections a signal has, written with SIGNAL().
int connectionsOf(const QObject *object, const char *signal);

inline void PrintTo(const QString &text, std::ostream *stream) { *stream << text.toStdString(); }
inline void PrintTo(const QPoint &point, std::ostream *stream)
{
    *stream << point.x() << ", " << point.y();
}

class PanelTest : public testing::Test
{
protected:
    using Probe = MainWindowProbe;

    PanelTest();
    ~PanelTest() override;

    /// Call before the window is made.
    void plugIn(int cameras);
    void plugIn(std::vector<virtual_camera::DeviceDescription> devices);

    /// Makes the window as the program does: the poll comes half a second later.
    void constructWindow();
    /// Makes and shows the window; the poll comes when it is called for.
    void makeWindow();
    /// The start-up poll.
    void poll();
    /// Cameras, window and poll; what that sent is forgotten.
    void start(int cameras);
    /// Destroys the window, as at the end of the program.
    void endWindow();

    /// What the cameras received since the last call.
    Requests sent();
    void forgetSent() { sent(); }

    /// What `look` returns each time a request reaches a camera during `action`. The window waits
    /// for the answer meanwhile.
    template<typename Look> auto seenAtRequests(const std::function<void()> &action, Look look)
    {
        std::vector<decltype(look())> seen;
        bus->log().setWriter([&](const virtual_camera::LogRecord &record) {
            if (record.isControlRequest())
                seen.push_back(look());
        });
        action();
        bus->log().setWriter({});
        forgetSent();
        return seen;
    }

    static void click(QWidget *widget) { QTest::mouseClick(widget, Qt::LeftButton); }
    /// Uses each control that sends something to the open camera, and no camera button.
    void useEveryControl();

    QPushButton *cameraButton(int number);
    /// Clicks a camera button; the recorder forgets earlier calls.
    void choose(int number);
    /// Which camera button is green; 0 for none.
    int markedCamera();

    Ui::MainWindow &form() { return Probe::form(*window); }
    QString style(const QWidget *widget) const { return widget->styleSheet(); }

    virtual_camera::Device &camera(int number) { return bus->device(number); }
    /// The panel holds the camera.
    bool isHeld(int cameraNumber);
    /// Waits until the bus knows that the camera was closed.
    bool becomesFree(int cameraNumber);

    std::unique_ptr<virtual_camera::Testbed> bus;
    std::unique_ptr<MainWindow> window;

private:
    std::uint64_t lastSeen = 0; // in the bus's log
    BaseDevice *device = nullptr;
};
