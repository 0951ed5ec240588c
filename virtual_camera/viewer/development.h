// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT
#pragma once

#include "virtual_camera/viewer/view.h"

class QImage;

namespace virtual_camera {

/// Does to a frame what a camera's image processor does to what its sensor saw: exposure to the
/// mains, white balance, backlight compensation, gain, contrast, brightness, gamma, saturation and
/// sharpness. Controls at their defaults leave the frame as it is. Format_RGB32.
void develop(QImage &frame, const View &view);

} // namespace virtual_camera
