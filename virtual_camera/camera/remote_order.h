// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT
#pragma once

#include "virtual_camera/camera/mechanics.h"

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace virtual_camera {

/// What somebody with a remote control asks of the camera.
struct RemoteOrder
{
    /// A place to go to, or a drive until it is stopped. A motor without either carries on.
    using Move = std::variant<std::monostate, std::int64_t, Drive>;

    std::array<Move, 4> moves; ///< by Mechanics::Motor
    const Move &move(Mechanics::Motor motor) const
    {
        return moves[static_cast<std::size_t>(motor)];
    }
    bool home = false;
    std::optional<int> preset;
};

/// Reads words such as "pan=3600", "left", "in=3", "stop", "home" or "preset=2". Returns what is
/// wrong with them.
std::optional<std::string> readRemoteOrder(
    RemoteOrder &order, const std::vector<std::string_view> &words);

} // namespace virtual_camera
