// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT
#pragma once

#include "virtual_camera/viewer/camera_link.h"

#include <QWidget>

#include <vector>

class QBoxLayout;
class QListWidget;
class QStackedLayout;
class QToolButton;

namespace virtual_camera {

class CameraPicture;
enum class Sign;

/// The window of virtual-camera-view: the chosen camera's picture, all cameras small beneath it,
/// buttons for what can befall that camera, its remote control, and the latest requests, newest
/// first. The camera that a program opens becomes the chosen one.
class ViewWindow : public QWidget
{
    Q_OBJECT

public:
    explicit ViewWindow(CameraLink &link, QWidget *parent = nullptr);

private:
    void build();
    void standBeside();
    void addRemoteControl(QBoxLayout *row);
    void addCamera(const SeenCamera &camera, QBoxLayout *strip);
    QToolButton *addButton(QBoxLayout *row, Sign sign, const QString &words, const QString &help);
    void take(int index);
    int openOne() const;
    void choose(int index);
    void showFaults();
    void setFault(bool on, const QString &words, QToolButton *other);
    void note(const QString &line);
    void command(const QString &words);

    CameraLink &m_link;
    std::vector<CameraPicture *> m_large;
    std::vector<CameraPicture *> m_small;
    std::vector<bool> m_wasOpen;
    int m_chosen = 0;
    int m_moving = 0; ///< the camera that a held key of the remote control drives
    QStackedLayout *m_stage = nullptr;
    QListWidget *m_requests = nullptr;
    QToolButton *m_plug = nullptr;
    QToolButton *m_stall = nullptr;
    QToolButton *m_slow = nullptr;
};

} // namespace virtual_camera
