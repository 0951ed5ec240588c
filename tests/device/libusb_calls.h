// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

// Stands between the program and libusb: what libuvc asks of libusb, as far as the program hands it
// on. A test links it ahead of libuvc.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace libusb_calls {

/// Called before each call that closing a camera makes into libusb, with its name.
extern std::function<void(const std::string &)> beforeClosing;

/// The time limits of the control transfers so far, in milliseconds; 0 is none.
extern std::vector<unsigned> limits;

/// What control transfers answer instead of reaching the camera.
extern std::optional<int> answer;

} // namespace libusb_calls
