// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT
#include "virtual_camera/usb/bus.h"

namespace virtual_camera {

Bus::~Bus() = default;

} // namespace virtual_camera
