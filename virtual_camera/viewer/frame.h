// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT
#pragma once

#include "virtual_camera/viewer/room.h"
#include "virtual_camera/viewer/view.h"

#include <QImage>
#include <QSize>

namespace virtual_camera {

/// The frame that a camera with this view delivers: the room through its lens, developed, turned,
/// with the camera's own on-screen menu. Format_RGB32. A frozen picture is the caller's to keep.
QImage renderFrame(const Room &room, const View &view, QSize size);

} // namespace virtual_camera
