// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QDialog>
#include <QPoint>

#include <memory>

namespace Ui {
class NO_Device;
}

/// The notice that no camera is connected. Its text is a picture. Created hidden, placed from
/// main_position_x and main_position_y, and stays on top if TopFlag is 1 at that moment.
class NO_Device : public QDialog
{
    Q_OBJECT

public:
    explicit NO_Device(QWidget *parent = nullptr);
    ~NO_Device() override;

    NO_Device(const NO_Device &) = delete;
    NO_Device &operator=(const NO_Device &) = delete;

protected:
    void mousePressEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;

public slots:
    /// Ends the program with exit code 0.
    void on_btn_quit_clicked();
    /// Hides the notice.
    void on_btn_ok_clicked();

private:
    std::unique_ptr<Ui::NO_Device> dialogForm; ///< the widgets, by object name
    QPoint lastGlobalPos;                      ///< the pointer's, at the last step of a drag
    bool pressed = false; ///< the left button was pressed on the notice and is held
};
