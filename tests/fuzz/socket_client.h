// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <string_view>

namespace fuzz {

// Sends the text to a control socket, so many bytes at a time. Every line must be answered, in
// order and whole, unless one is so long that the socket hangs up.
void checkSocket(std::string_view text, std::size_t atATime);

} // namespace fuzz
