// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT
#pragma once

#include "virtual_camera/viewer/eye.h"

#include <QElapsedTimer>
#include <QImage>
#include <QTimer>
#include <QWidget>

namespace virtual_camera {

/// The picture that one camera delivers. It is rendered when the camera reports a change, and
/// thirty times a second while the camera focuses or frames by itself; at rest nothing runs.
class CameraPicture : public QWidget
{
    Q_OBJECT

public:
    /// Frames have this size, whatever the widget's. A large picture shows the name.
    CameraPicture(const QString &name, QSize frameSize, QWidget *parent = nullptr);

    void report(const View &view);
    /// Marks the camera that a program has open, and the one that is shown large.
    void mark(bool open, bool chosen);

    /// Lets the camera focus and frame at once.
    void settle();

    /// What the camera sent last.
    const QImage &frame() const { return m_frame; }
    /// Time passes for the camera.
    bool animated() const { return m_timer.isActive(); }

    QSize sizeHint() const override { return m_frameSize; }

signals:
    void clicked();

protected:
    void paintEvent(QPaintEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;

private:
    void pass();
    void render();
    QRectF place() const;
    void paintSigns(QPainter &painter, const QRectF &shown) const;

    QString m_name;
    QSize m_frameSize;
    Eye m_eye;
    QImage m_frame;
    QTimer m_timer;
    QElapsedTimer m_sinceFrame;
    bool m_reported = false;
    bool m_open = false;
    bool m_chosen = false;
};

} // namespace virtual_camera
