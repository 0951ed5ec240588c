// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

// Gives the tests access to the main window's private members, to read and to write.
#pragma once

#include "console/main_window.h"

class MainWindowProbe
{
public:
    static QPoint &dragPosition(MainWindow &window) { return window.dragPosition; }
    static QHash<int, QObject *> &objectTable(MainWindow &window) { return window.objectTable; }
    static bool &dragging(MainWindow &window) { return window.dragging; }
    static bool &afState(MainWindow &window) { return window.afState; }
    static bool &aiState(MainWindow &window) { return window.aiState; }
    static bool &topState(MainWindow &window) { return window.topState; }
    static bool &muteState(MainWindow &window) { return window.muteState; }
    static int &setArmed(MainWindow &window) { return window.setArmed; }
    static int &clearArmed(MainWindow &window) { return window.clearArmed; }
    static bool &flipState(MainWindow &window) { return window.flipState; }
    static bool &mirrorState(MainWindow &window) { return window.mirrorState; }
    static std::vector<DeviceInfo> &deviceList(MainWindow &window) { return window.deviceList; }
    static BaseDevice *&device(MainWindow &window) { return window.device; }
    static QTimer *&timer(MainWindow &window) { return window.timer; }
    static QTimer *&spareTimer(MainWindow &window) { return window.spareTimer; }
    static int &place(MainWindow &window) { return window.place; }
    static int &speedX(MainWindow &window) { return window.speedX; }
    static int &speedY(MainWindow &window) { return window.speedY; }
    static Ui::MainWindow &form(MainWindow &window) { return *window.form; }
    static QSystemTrayIcon *&trayIcon(MainWindow &window) { return window.trayIcon; }
    static NO_Device *&noDeviceDialog(MainWindow &window) { return window.noDeviceDialog; }
    static NO_Mord_Camera *&noMoreCameraDialog(MainWindow &window)
    {
        return window.noMoreCameraDialog;
    }
    static void takeRanges(MainWindow &window) { window.takeRanges(); }
};
