// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QPoint>
#include <QWidget>

class QTimer;

/// The tilt level last reported.
extern int lastTiltLevel; // NOLINT(cppcoreguidelines-avoid-non-const-global-variables)

/// The joystick: a gray disc on a transparent background. While a mouse button is held on it, it
/// reports the disc's direction and its distance on each axis every 100 ms.
///
/// It is coarse by design. While the pointer is inside the travel circle, the disc rests in the
/// centre; beyond it, the disc jumps to the circle's rim in the pointer's direction. The levels
/// depend on the direction of a drag, not on its length.
class RockerHandle : public QWidget
{
    Q_OBJECT

public:
    explicit RockerHandle(QWidget *parent);
    ~RockerHandle() override;

    /// The distance between two points, in pixels. Squares and sum wrap around at 32 bits.
    double Pointdis(int x1, int y1, int x2, int y2);

signals:
    /// The disc's cell in a 3 × 3 grid, in reading order from 0; 4, the centre, is no motion.
    /// Emitted on every tick, and once, with 4, on release.
    void keyNumchanged(int num);
    /// The disc's horizontal distance from the centre, 0 to 7. Emitted on every tick.
    void Speed_Pan(int num);
    /// The disc's vertical distance from the centre, 0 to 7. Emitted on every tick.
    void Speed_Tilt(int num);

private slots:
    void SpeedChange();
    void getKeyNum();

protected:
    void mousePressEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    friend class RockerHandleProbe; // gives the tests access to the members below

    void placeHandle();
    int gridBand(int coordinate) const;

    QPoint mousePoint;    ///< the pointer's last position; the centre when no button is held
    QPoint handlePoint;   ///< the disc's centre at the last paint: what the ticks report
    int handleRadius = 0; ///< of the disc
    QPoint centerPoint;   ///< of the base circle
    int baseRadius = 0;   ///< of the base circle: half the widget's smaller side
    double pointerDistance = 0.0; ///< of mousePoint from the centre, at the last paint
    bool pressed = false;         ///< a mouse button is held
    QTimer *keyTimer;             ///< runs getKeyNum every 100 ms while pressed
    QTimer *speedTimer;           ///< runs SpeedChange every 100 ms while pressed
    double dpiScale; ///< the first screen's logical resolution, in units of 72 dots per inch
    int keyLow = 0;  ///< the grid's middle band lies between these two
    int keyHigh = 0;
};
