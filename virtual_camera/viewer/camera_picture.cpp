// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT
#include "virtual_camera/viewer/camera_picture.h"

#include "virtual_camera/viewer/frame.h"

#include <QPainter>

#include <chrono>

namespace virtual_camera {

namespace {

using namespace std::chrono_literals;

constexpr auto framePeriod = 33ms;
constexpr int smallest = 150; ///< the height of a picture with words in it
const QColor openColour("#35c46a");

// A loudspeaker, crossed out.
void paintMuteSign(QPainter &painter, const QRectF &place)
{
    painter.save();
    painter.translate(place.topLeft());
    painter.scale(place.width() / 100, place.height() / 100);
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(0, 0, 0, 150));
    painter.drawRoundedRect(QRectF(0, 0, 100, 100), 16, 16);
    painter.setBrush(Qt::white);
    painter.drawPolygon(
        QPolygonF({ { 18, 38 }, { 34, 38 }, { 56, 18 }, { 56, 82 }, { 34, 62 }, { 18, 62 } }));
    painter.setPen(QPen(QColor("#ff5a4f"), 9, Qt::SolidLine, Qt::RoundCap));
    painter.drawLine(QPointF(66, 38), QPointF(88, 62));
    painter.drawLine(QPointF(88, 38), QPointF(66, 62));
    painter.restore();
}

// The corners of a viewfinder: the camera frames by itself.
void paintFramingSign(QPainter &painter, const QRectF &place)
{
    painter.save();
    painter.translate(place.topLeft());
    painter.scale(place.width() / 100, place.height() / 100);
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(0, 0, 0, 150));
    painter.drawRoundedRect(QRectF(0, 0, 100, 100), 16, 16);
    painter.setPen(QPen(Qt::white, 8, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.translate(50, 50);
    for (int corner = 0; corner < 4; ++corner) {
        painter.rotate(90);
        painter.drawPolyline(QPolygonF({ { 14, 32 }, { 32, 32 }, { 32, 14 } }));
    }
    painter.setBrush(Qt::white);
    painter.setPen(Qt::NoPen);
    painter.drawEllipse(QPointF(0, -9), 9, 9);
    painter.drawChord(QRectF(-17, 4, 34, 34), 0, 180 * 16);
    painter.restore();
}

void paintName(QPainter &painter, const QRectF &place, const QString &name)
{
    QFont font = painter.font();
    font.setPixelSize(static_cast<int>(place.height() / 20));
    font.setBold(true);
    painter.setFont(font);
    const QRectF words = painter.boundingRect(place, Qt::AlignLeft | Qt::AlignTop, name)
                             .translated(place.height() / 30, place.height() / 30);
    painter.fillRect(words.adjusted(-6, -3, 6, 3), QColor(0, 0, 0, 150));
    painter.setPen(Qt::white);
    painter.drawText(words, Qt::AlignCenter, name);
}

void paintNoSignal(QPainter &painter, const QRectF &place)
{
    painter.fillRect(place, QColor("#101418"));
    painter.setPen(QColor("#8fa0ad"));
    QFont font = painter.font();
    font.setPixelSize(std::max(9, static_cast<int>(place.height() / 12)));
    painter.setFont(font);
    painter.drawText(place, Qt::AlignCenter, CameraPicture::tr("Unplugged"));
}

} // namespace

CameraPicture::CameraPicture(const QString &name, QSize frameSize, QWidget *parent)
    : QWidget(parent), m_name(name), m_frameSize(frameSize)
{
    setAccessibleName(name);
    m_timer.setTimerType(Qt::PreciseTimer);
    m_timer.setInterval(framePeriod);
    connect(&m_timer, &QTimer::timeout, this, &CameraPicture::pass);
}

void CameraPicture::report(const View &view)
{
    // What the camera did by itself until now belongs to the time before.
    if (m_timer.isActive())
        m_eye.pass(static_cast<double>(m_sinceFrame.restart()) / 1000);
    const bool wasFrozen = m_reported && m_eye.view().freeze;
    m_eye.report(view);
    m_reported = true;
    if (!(wasFrozen && view.freeze))
        render();
    if (m_eye.busy() && !m_timer.isActive()) {
        m_sinceFrame.start();
        m_timer.start();
    }
}

void CameraPicture::mark(bool open, bool chosen)
{
    m_open = open;
    m_chosen = chosen;
    update();
}

void CameraPicture::pass()
{
    m_eye.pass(static_cast<double>(m_sinceFrame.restart()) / 1000);
    if (!m_eye.view().freeze)
        render();
    if (!m_eye.busy())
        m_timer.stop();
}

void CameraPicture::render()
{
    // A hidden picture is rendered when it is shown, a frozen one when it freezes.
    const bool now = m_eye.view().powered && (isVisible() || m_eye.view().freeze);
    m_frame = now ? renderFrame(m_eye.room(), m_eye.view(), m_frameSize) : QImage();
    update();
}

void CameraPicture::settle()
{
    constexpr double tick = 1.0 / 30;
    constexpr int patience = 3 * 30;
    for (int ticks = 0; ticks < patience && m_eye.busy(); ++ticks)
        m_eye.pass(tick);
    render();
}

// From the right.
void CameraPicture::paintSigns(QPainter &painter, const QRectF &shown) const
{
    const double side = shown.height() / 8;
    QRectF sign(shown.right() - 1.3 * side, shown.top() + 0.3 * side, side, side);
    if (m_eye.view().mute) {
        paintMuteSign(painter, sign);
        sign.translate(-1.2 * side, 0);
    }
    if (m_eye.view().framing)
        paintFramingSign(painter, sign);
}

QRectF CameraPicture::place() const
{
    const QSize size = m_frameSize.scaled(this->size(), Qt::KeepAspectRatio);
    return { QPointF(width() - size.width(), height() - size.height()) / 2, size };
}

void CameraPicture::paintEvent(QPaintEvent * /*event*/)
{
    QPainter painter(this);
    painter.setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
    const QRectF shown = place();
    if (m_eye.view().powered && m_reported) {
        if (m_frame.isNull())
            m_frame = renderFrame(m_eye.room(), m_eye.view(), m_frameSize);
        painter.drawImage(shown, m_frame);
        paintSigns(painter, shown);
    } else {
        paintNoSignal(painter, shown);
    }
    if (shown.height() > smallest)
        paintName(painter, shown, m_name);
    if (m_open || m_chosen) {
        painter.setBrush(Qt::NoBrush);
        painter.setPen(QPen(m_open ? openColour : QColor("#d8dde2"), m_chosen ? 4 : 2));
        painter.drawRect(shown.adjusted(1.5, 1.5, -1.5, -1.5));
    }
}

void CameraPicture::mousePressEvent(QMouseEvent * /*event*/) { emit clicked(); }

} // namespace virtual_camera
