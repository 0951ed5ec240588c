// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT
#pragma once

#include "virtual_camera/camera/control_request.h"
#include "virtual_camera/camera/control_table.h"

#include <array>
#include <chrono>
#include <map>
#include <optional>
#include <set>
#include <utility>

namespace virtual_camera {

// What is wrong with a camera at the moment. Only requests to its controls are affected; a
// camera with every fault still tells its descriptors.
struct Faults
{
    // Stalls every request to the control, or only those with the given code.
    std::set<std::pair<Control, std::optional<RequestCode>>> stalled;
    bool everythingStalls = false;
    // Answers to these are cut to that many bytes, none at all when it is 0.
    std::map<Control, std::size_t> shortened;
    // How long the camera takes for each request, one after the other.
    std::chrono::milliseconds delay{ 0 };
    // Another program holds the camera: no interface can be claimed.
    bool claimRefused = false;
    // errno with which opening the device fails (EACCES, EBUSY, ...); 0 when it does not.
    int openError = 0;

    bool stalls(const ControlRequest &request) const;
    // How many bytes the answer to this request may have.
    std::optional<std::size_t> limit(const ControlRequest &request) const;
};

} // namespace virtual_camera
