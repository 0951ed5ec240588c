// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

// The smallest window of the panel's size.

#include <QApplication>
#include <QWidget>

int main(int argc, char *argv[])
{
    const QApplication application(argc, argv);
    QWidget window;
    window.setFixedSize(653, 436);
    window.show();
    return QApplication::exec();
}
