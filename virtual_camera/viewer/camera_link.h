// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT
#pragma once

#include "virtual_camera/viewer/view.h"

#include <QJsonObject>
#include <QLocalSocket>
#include <QObject>

#include <vector>

namespace virtual_camera {

/// One device as its virtual camera reports it.
struct SeenCamera
{
    int number = 0; ///< from 1
    QString name;
    bool isCamera = true;
    bool open = false;   ///< a program has its device node open
    bool stalls = false; ///< refuses every request
    bool slow = false;   ///< takes its time to answer
    View view;
};

/// "CAM1", as on the panel's buttons.
QString cameraName(const SeenCamera &camera);

/// Follows a running virtual-camera through its control socket: what its cameras are, how they
/// change, and what they are asked. Never keeps it waiting.
class CameraLink : public QObject
{
    Q_OBJECT

public:
    explicit CameraLink(QObject *parent = nullptr);

    /// Connects. What becomes of it is told by the signals, from within this call, too.
    void follow(const QString &socketPath);

    /// Sends one control command in words, such as "unplug 1".
    void command(const QString &words);

    const std::vector<SeenCamera> &cameras() const { return m_cameras; }

signals:
    /// All devices are known.
    void described();
    /// The device in this place of cameras() has changed.
    void changed(int index);
    /// Something happened on the bus, in words.
    void logged(const QString &line);
    /// The other side is gone, or cannot be reached; the text says why.
    void ended(const QString &reason);

private:
    void readState();
    void readLog();
    void take(const QJsonObject &message);

    QLocalSocket m_state;
    QLocalSocket m_log;
    std::vector<QJsonObject> m_states;
    std::vector<SeenCamera> m_cameras;
};

} // namespace virtual_camera
