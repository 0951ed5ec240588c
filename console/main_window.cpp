// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

// Construction, connections and destruction of the window.

#include "console/main_window.h"

#include <QSlider>
#include <QTimer>

#include <chrono>

#include "ui_main_window.h"
#include "widgets/notice_state.h"

MainWindow::MainWindow(QWidget *parent)
    : QMainWindow(parent), form(std::make_unique<Ui::MainWindow>())
{
    form->setupUi(this);
    // What InitValue does, which nothing calls.
    timer = new QTimer(this);
    TopFlag = 1;
    Top2Flag = 1;
    device = BaseDevice::CreateDevice(USB);
    InitWindows();
    InitConnect();
}

MainWindow::~MainWindow() = default;

void MainWindow::InitValue()
{
    timer = new QTimer(this);
    TopFlag = 1;
    Top2Flag = 1;
    device = BaseDevice::CreateDevice(USB);
}

void MainWindow::InitConnect()
{
    using namespace std::chrono_literals;

    // A second device with its own context and list, never used and never freed. Deliberate.
    static_cast<void>(BaseDevice::CreateDevice(USB));

    timer = new QTimer(this);
    spareTimer = new QTimer(this);
    connect(timer, SIGNAL(timeout()), this, SLOT(TimerInit()));
    timer->start(500ms);

    connect(form->slider_zoom, &QAbstractSlider::valueChanged, this, &MainWindow::zoomchanged);
    connect(form->slider_zoom, &QAbstractSlider::sliderReleased, this, &MainWindow::zoomstop);
    connect(form->slider_focus, &QAbstractSlider::valueChanged, this, &MainWindow::focuschanged);
    connect(form->slider_focus, &QAbstractSlider::sliderReleased, this, &MainWindow::focusstop);

    connect(form->widget, SIGNAL(keyNumchanged(int)), this, SLOT(MovePlace(int)));
    connect(form->widget, SIGNAL(Speed_Pan(int)), this, SLOT(SpeedX(int)));
    connect(form->widget, SIGNAL(Speed_Tilt(int)), this, SLOT(SpeedY(int)));
}

void MainWindow::InitUSBGuid() { }

bool MainWindow::nativeEvent(
    const QByteArray & /*eventType*/, void * /*message*/, long * /*result*/)
{
    return false;
}
