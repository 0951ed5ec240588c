// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

// The preset keypad. A digit recalls its preset; after Set it stores the camera's position, after
// Clear it clears the preset. The mode is not shown on screen.

#include "console/main_window.h"

#include "console/console_state.h"

void MainWindow::on_btn_set_clicked()
{
    setArmed = 1;
    clearArmed = 0;
}

void MainWindow::on_btn_clear_clicked()
{
    setArmed = 0;
    clearArmed = 1;
}

// A mode lasts for one digit, even if the camera refuses the command. Without a camera it stays
// armed.
void MainWindow::pressDigit(unsigned char preset)
{
    if (usb_mode != 1)
        return;
    if (setArmed == 1) {
        device->SetPreset(preset);
        setArmed = 0;
    } else if (clearArmed == 1) {
        device->ClearPreset(preset);
        clearArmed = 0;
    } else {
        device->CallPreset(preset);
    }
}

void MainWindow::on_btn_num0_clicked() { pressDigit(0); }
void MainWindow::on_btn_num1_clicked() { pressDigit(1); }
void MainWindow::on_btn_num2_clicked() { pressDigit(2); }
void MainWindow::on_btn_num3_clicked() { pressDigit(3); }
void MainWindow::on_btn_num4_clicked() { pressDigit(4); }
void MainWindow::on_btn_num5_clicked() { pressDigit(5); }
void MainWindow::on_btn_num6_clicked() { pressDigit(6); }
void MainWindow::on_btn_num7_clicked() { pressDigit(7); }
void MainWindow::on_btn_num8_clicked() { pressDigit(8); }
void MainWindow::on_btn_num9_clicked() { pressDigit(9); }
