// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

// The entry of every test program that shows widgets.

#include <QApplication>

#include <gtest/gtest.h>

int main(int argc, char **argv)
{
    testing::InitGoogleTest(&argc, argv);
    QApplication application(argc, argv);
    return RUN_ALL_TESTS();
}
