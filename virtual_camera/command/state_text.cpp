// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT
#include "virtual_camera/command/state_text.h"

#include "virtual_camera/testbed/testbed.h"

#include <cmath>

namespace virtual_camera {

namespace {

std::string number(std::int64_t value) { return std::to_string(value); }

std::string axisText(const char *name, const AxisState &axis)
{
    return ' ' + std::string(name) + '=' + number(std::llround(axis.position)) + ' ' + name
        + "_velocity=" + number(std::llround(axis.velocity));
}

std::string switchText(const char *name, bool on)
{
    return ' ' + std::string(name) + (on ? "=on" : "=off");
}

std::string presetsText(const CameraState &state)
{
    std::string text;
    for (const auto &[preset, place] : state.presets) {
        text += text.empty() ? "" : ";";
        text += number(preset) + ':' + number(place.pan) + ',' + number(place.tilt) + ','
            + number(place.zoom) + ',' + number(place.focus);
    }
    return " presets=" + (text.empty() ? "none" : text);
}

std::string valuesText(const CameraDescription &description, const CameraState &state)
{
    std::string text;
    for (const ControlTraits &control : allControls()) {
        if (control.kind == ControlTraits::Kind::Value && control.control != Control::RollAbsolute
            && description.supports(control.control))
            text += ' ' + std::string(control.name) + '=' + number(state.value(control.control));
    }
    return text;
}

} // namespace

std::string stateText(const Device &device)
{
    std::string text = device.pluggedIn() ? "plugged=yes" : "plugged=no";
    text += " address=" + std::to_string(device.address())
        + " requests_under_way=" + std::to_string(device.requestsUnderWay());
    if (!device.isCamera())
        return text;
    const CameraState state = device.state();
    text += axisText("pan", state.pan) + axisText("tilt", state.tilt) + axisText("zoom", state.zoom)
        + axisText("focus", state.focus);
    text += switchText("mute", state.mute) + switchText("flip", state.flip)
        + switchText("mirror", state.mirror) + switchText("framing", state.framing)
        + switchText("freeze", state.freeze) + switchText("menu", state.menu)
        + switchText("auto_focus", state.autoFocus)
        + switchText("auto_white_balance", state.autoWhiteBalance);
    return text + valuesText(device.description(), state) + presetsText(state);
}

} // namespace virtual_camera
