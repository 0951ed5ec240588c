// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QDialog>
#include <QPoint>

#include <memory>

namespace Ui {
class NO_Mord_Camera;
}

/// The notice that the chosen camera does not exist. Its text is a picture. Created hidden, placed
/// from main2_position_x and main2_position_y, and stays on top if Top2Flag is 1 at that moment.
class NO_Mord_Camera : public QDialog
{
    Q_OBJECT

public:
    explicit NO_Mord_Camera(QWidget *parent = nullptr);
    ~NO_Mord_Camera() override;

    NO_Mord_Camera(const NO_Mord_Camera &) = delete;
    NO_Mord_Camera &operator=(const NO_Mord_Camera &) = delete;

protected:
    void mousePressEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;

public slots:
    /// Hides the notice.
    void on_btn_ok_clicked();

private:
    std::unique_ptr<Ui::NO_Mord_Camera> dialogForm; ///< the widgets, by object name
    QPoint lastGlobalPos;                           ///< the pointer's, at the last step of a drag
    bool pressed = false; ///< the left button was pressed on the notice and is held
};
