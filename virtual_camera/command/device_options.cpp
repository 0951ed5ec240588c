// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT
#include "virtual_camera/command/device_options.h"

#include "virtual_camera/camera/words.h"

namespace virtual_camera {

namespace {

std::string quoted(std::string_view text) { return "'" + std::string(text) + "'"; }

} // namespace

std::optional<std::string> parseDeviceList(
    std::string_view list, std::vector<DeviceDescription> &devices)
{
    const std::vector<std::string_view> kinds = split(list, ',');
    if (kinds.size() > mostDevices)
        return "--devices can name up to " + std::to_string(mostDevices);
    devices = DeviceDescription::ptzCameras(static_cast<int>(kinds.size()));
    for (std::size_t i = 0; i < kinds.size(); ++i) {
        if (kinds[i] == "other-camera")
            devices[i] = DeviceDescription::otherCamera();
        else if (kinds[i] == "storage")
            devices[i] = DeviceDescription::storage();
        else if (kinds[i] != "camera")
            return "--devices knows camera, other-camera and storage, not " + quoted(kinds[i]);
    }
    return std::nullopt;
}

std::optional<std::string> applyDeviceOption(
    std::vector<DeviceDescription> &devices, std::string_view text)
{
    const std::string name = "--option " + quoted(text);
    const std::size_t equals = text.find('=');
    if (equals == std::string_view::npos)
        return name + ": expected [N.]KEY=VALUE";
    std::string_view key = text.substr(0, equals);
    const std::string_view value = text.substr(equals + 1);
    std::optional<std::int64_t> only;
    if (const std::size_t dot = key.find('.'); dot != std::string_view::npos) {
        only = parseNumber(key.substr(0, dot));
        if (!only || *only < 1 || *only > static_cast<std::int64_t>(devices.size()))
            return name + ": there is no device " + quoted(key.substr(0, dot));
        key.remove_prefix(dot + 1);
        if (devices[static_cast<std::size_t>(*only - 1)].kind != DeviceDescription::Kind::Camera)
            return name + ": device " + std::to_string(*only) + " is no camera";
    }
    for (std::size_t i = 0; i < devices.size(); ++i) {
        if (only && static_cast<std::int64_t>(i) != *only - 1)
            continue;
        if (const auto problem = applyOption(devices[i].camera, key, value))
            return name + ": " + *problem;
    }
    return std::nullopt;
}

} // namespace virtual_camera
