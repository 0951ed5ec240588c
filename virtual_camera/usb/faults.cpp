// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT
#include "virtual_camera/usb/faults.h"

namespace virtual_camera {

namespace {

const ControlTraits *controlOf(const ControlRequest &request)
{
    if (!request.isClass() || request.interfaceNumber() != controlInterface)
        return nullptr;
    return findControl(request.entity(), request.selector());
}

} // namespace

bool Faults::stalls(const ControlRequest &request) const
{
    if (request.isClass() && everythingStalls)
        return true;
    const ControlTraits *control = controlOf(request);
    if (control == nullptr)
        return false;
    return stalled.count({ control->control, std::nullopt }) != 0
        || stalled.count({ control->control, static_cast<RequestCode>(request.request) }) != 0;
}

std::optional<std::size_t> Faults::limit(const ControlRequest &request) const
{
    const ControlTraits *control = controlOf(request);
    if (control == nullptr || !request.hostReads())
        return std::nullopt;
    const auto found = shortened.find(control->control);
    return found == shortened.end() ? std::nullopt : std::optional(found->second);
}

} // namespace virtual_camera
