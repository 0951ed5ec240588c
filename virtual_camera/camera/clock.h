// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <functional>

namespace virtual_camera {

/// Time since any fixed moment, never going back. Motors, delays and the log of a testbed all
/// read the same clock.
using Clock = std::function<std::chrono::microseconds()>;

/// The computer's own clock, which no change of the date disturbs.
Clock steadyClock();

} // namespace virtual_camera
