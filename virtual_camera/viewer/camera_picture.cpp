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
        const double sign = shown.height() / 8;
        if (m_eye.view().mute)
            paintMuteSign(
                painter, { shown.right() - 1.3 * sign, shown.top() + 0.3 * sign, sign, sign });
    } else {
        paintNoSignal(painter, shown);
    }
    if (m_open || m_chosen) {
        painter.setBrush(Qt::NoBrush);
        painter.setPen(QPen(m_open ? openColour : QColor("#d8dde2"), m_chosen ? 4 : 2));
        painter.drawRect(shown.adjusted(1.5, 1.5, -1.5, -1.5));
    }
}

void CameraPicture::mousePressEvent(QMouseEvent * /*event*/) { emit clicked(); }

} // namespace virtual_camera
