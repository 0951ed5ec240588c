// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

#include "widgets/rocker_handle.h"

#include <QGuiApplication>
#include <QLinearGradient>
#include <QMouseEvent>
#include <QPainter>
#include <QScreen>
#include <QTimer>

#include <algorithm>
#include <cmath>

int lastTiltLevel = 0; // NOLINT(cppcoreguidelines-avoid-non-const-global-variables)

namespace {

// Pixels at 72 dots per inch. The centre is that of the form's 116 × 116 pixels; reports are
// relative to it and not to the painted centre, even at other resolutions.
constexpr double reportCentre = 58.0;
constexpr double reportUnit = 5.0; ///< one speed level; also half the grid's middle band
constexpr double discRadius = 22.0;
constexpr double initialSide = 100.0;

constexpr double baseResolution = 72.0;
constexpr int reportPeriod = 100; ///< ms

/// 1 at 72 dots per inch, and without a screen.
double firstScreenScale()
{
    const QList<QScreen *> screens = QGuiApplication::screens();
    return screens.isEmpty() ? 1.0 : screens.first()->logicalDotsPerInch() / baseResolution;
}

} // namespace

RockerHandle::RockerHandle(QWidget *parent) : QWidget(parent), dpiScale(firstScreenScale())
{
    setWindowFlag(Qt::FramelessWindowHint, true);
    setAutoFillBackground(true);
    QPalette transparent = palette();
    transparent.setBrush(QPalette::Window, QBrush(QColor(0, 255, 0, 0)));
    setPalette(transparent);
    resize(static_cast<int>(initialSide * dpiScale), static_cast<int>(initialSide * dpiScale));
    mousePoint = QPoint(width() / 2, height() / 2);
    handlePoint = mousePoint;
    centerPoint = mousePoint;

    keyTimer = new QTimer(this);
    speedTimer = new QTimer(this);
    // A coarse timer is off by 5 ms at each of its first ticks.
    keyTimer->setTimerType(Qt::PreciseTimer);
    speedTimer->setTimerType(Qt::PreciseTimer);
    connect(keyTimer, SIGNAL(timeout()), this, SLOT(getKeyNum()));
    connect(speedTimer, SIGNAL(timeout()), this, SLOT(SpeedChange()));
}

RockerHandle::~RockerHandle() = default;

double RockerHandle::Pointdis(int x1, int y1, int x2, int y2)
{
    // Unsigned, where overflow is defined.
    const auto square = [](int from, int to) {
        const quint32 difference = static_cast<quint32>(to) - static_cast<quint32>(from);
        return difference * difference;
    };
    return std::sqrt(static_cast<double>(static_cast<qint32>(square(x1, x2) + square(y1, y2))));
}

void RockerHandle::SpeedChange()
{
    const double centre = reportCentre * dpiScale;
    const double unit = dpiScale * reportUnit;
    const int panLevel = static_cast<int>(std::abs(handlePoint.x() - centre) / unit);
    const int tiltLevel = static_cast<int>(std::abs(handlePoint.y() - centre) / unit);
    lastTiltLevel = tiltLevel;
    emit Speed_Pan(panLevel);
    emit Speed_Tilt(lastTiltLevel);
}

void RockerHandle::getKeyNum()
{
    keyLow = static_cast<int>(reportCentre * dpiScale - dpiScale * reportUnit);
    keyHigh = static_cast<int>(dpiScale * reportUnit + reportCentre * dpiScale);
    emit keyNumchanged(3 * gridBand(handlePoint.y()) + gridBand(handlePoint.x()));
}

/// The row or column of the grid: 0, 1 or 2.
int RockerHandle::gridBand(int coordinate) const
{
    if (coordinate <= keyLow)
        return 0;
    return coordinate >= keyHigh ? 2 : 1;
}

void RockerHandle::mousePressEvent(QMouseEvent *event)
{
    mousePoint = event->pos();
    keyTimer->start(reportPeriod);
    speedTimer->start(reportPeriod);
    pressed = true;
    update();
}

void RockerHandle::mouseReleaseEvent(QMouseEvent *)
{
    mousePoint = QPoint(width() / 2, height() / 2);
    keyTimer->stop();
    speedTimer->stop();
    pressed = false;
    emit keyNumchanged(4);
    update();
}

void RockerHandle::mouseMoveEvent(QMouseEvent *event)
{
    // Only every second move repaints, so the reports can lag the pointer by one move.
    static bool moveToggle = false;
    mousePoint = event->pos();
    if (moveToggle)
        update();
    moveToggle = !moveToggle;
}

void RockerHandle::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    placeHandle();

    const int radius = handleRadius;
    const int x = handlePoint.x();
    // Both ends have the same colour: flat gray.
    QLinearGradient gradient(x - radius, x - radius, x + radius, x - radius);
    gradient.setColorAt(0.0, Qt::gray);
    gradient.setColorAt(1.0, Qt::gray);
    painter.setPen(Qt::NoPen);
    painter.setBrush(gradient);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.drawEllipse(x - radius, handlePoint.y() - radius, 2 * radius, 2 * radius);
}

/// Computes the disc's position from the widget's size and the pointer.
void RockerHandle::placeHandle()
{
    baseRadius = std::min(width(), height()) / 2;
    centerPoint = QPoint(baseRadius, baseRadius);
    handleRadius = static_cast<int>(discRadius * dpiScale);
    if (!pressed)
        mousePoint = centerPoint;

    const QPoint offset = mousePoint - centerPoint;
    pointerDistance = Pointdis(baseRadius, baseRadius, mousePoint.x(), mousePoint.y());
    const int travel = baseRadius - handleRadius;
    // Beyond 190 dots per inch the disc is larger than the widget and cannot travel.
    if (travel >= pointerDistance || pointerDistance == 0.0) {
        handlePoint = centerPoint;
        return;
    }
    const auto onRim = [this, travel](int component) {
        return static_cast<int>(component * travel / pointerDistance + baseRadius);
    };
    handlePoint = QPoint(onRim(offset.x()), onRim(offset.y()));
}
