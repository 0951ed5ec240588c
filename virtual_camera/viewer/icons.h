// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QIcon>

namespace virtual_camera {

enum class Sign { Plug, Unplug, Refuse, Slow, Left, Right, Up, Down, Tele, Wide, Home };

/// A sign for a button, drawn for light text on a dark ground.
QIcon signIcon(Sign sign);

} // namespace virtual_camera
