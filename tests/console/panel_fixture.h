// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

// The main window in this process, on virtual cameras: what it shows, and what the cameras got.
#pragma once

#include <QLineEdit>
#include <QPushButton>
#include <QSlider>
#include <QString>

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "console/main_window.h"
#include "tests/console/main_window_probe.h"
#include "ui_main_window.h"
#include "virtual_camera/testbed/testbed.h"

/// Requests to cameras in the order of their arrival, one line each: "pantilt_relative 1 21 0 0"
/// is a write, "GET_MIN brightness" a read. A request to another camera than the first is marked
/// "cam2: "; one that the camera refused ends in " stall".
using Requests = std::vector<std::string>;

Requests operator+(Requests left, const Requests &right);

/// A write to the vendor command channel.
std::string command(int code);

/// The 32 reads that follow an open.
Requests allReads(int camera = 1);

/// GoogleTest shows texts of the toolkit legibly.
inline void PrintTo(const QString &text, std::ostream *stream) { *stream << text.toStdString(); }

class PanelTest : public testing::Test
{
protected:
    using Probe = MainWindowProbe;

    PanelTest();
    ~PanelTest() override;

    /// Plugs in so many cameras. Call before the window is made.
    void plugIn(int cameras);
    void plugIn(std::vector<virtual_camera::DeviceDescription> devices);

    /// Makes the window as the program does: the poll comes half a second later.
    void constructWindow();
    /// Makes the window and shows it; the poll comes when it is called for, however slow the
    /// machine is.
    void makeWindow();
    /// The start-up poll.
    void poll();
    /// Cameras, window, poll; what that sent is forgotten.
    void start(int cameras);
    /// A camera is open and would take requests, but the panel believes that there is none.
    void startUnnoticed();

    /// Closes the window as the end of the program does.
    void endWindow();

    /// What all cameras got since this was asked last.
    Requests sent();
    void forgetSent() { sent(); }

    Ui::MainWindow &form() { return Probe::form(*window); }
    QString style(const QWidget *widget) const { return widget->styleSheet(); }

    virtual_camera::Device &camera(int number) { return bus->device(number); }
    /// The panel holds the camera.
    bool isHeld(int cameraNumber);
    /// The camera was let go; waits for it, as the bus hears of it a moment later.
    bool becomesFree(int cameraNumber);

    std::unique_ptr<virtual_camera::Testbed> bus;
    std::unique_ptr<MainWindow> window;

private:
    std::uint64_t lastSeen = 0; // in the bus's log
    BaseDevice *device = nullptr;
};
