// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT
#include "virtual_camera/command/state_json.h"

#include "virtual_camera/testbed/testbed.h"

#include <cmath>
#include <map>

namespace virtual_camera {

namespace {

// Thousandths of a unit are finer than any motor here steps.
double thousandths(double number) { return std::round(number * 1000) / 1000; }

json::Object motorJson(const AxisState &motor)
{
    return { { "position", thousandths(motor.position) },
        { "velocity", thousandths(motor.velocity) } };
}

json::Object viewJson(const Lens &lens, double share)
{
    return { { "horizontal_degrees", lens.horizontalDegrees(share) },
        { "vertical_degrees", lens.verticalDegrees(share) } };
}

json::Object valuesJson(const CameraDescription &camera, const CameraState &state)
{
    json::Object values;
    for (const ControlTraits &control : allControls()) {
        const bool value = control.kind == ControlTraits::Kind::Value
            || control.kind == ControlTraits::Kind::Switch;
        if (value && camera.supports(control.control))
            values.add(control.name, state.value(control.control));
    }
    return values;
}

json::Object presetsJson(const CameraState &state)
{
    json::Object presets;
    for (const auto &[number, place] : state.presets)
        presets.add(std::to_string(number),
            json::Object{ { "pan", place.pan }, { "tilt", place.tilt }, { "zoom", place.zoom },
                { "focus", place.focus } });
    return presets;
}

json::Object cameraJson(const CameraDescription &camera, const CameraState &state)
{
    return { { "pan", motorJson(state.pan) }, { "tilt", motorJson(state.tilt) },
        { "zoom", motorJson(state.zoom) }, { "focus", motorJson(state.focus) },
        { "view", viewJson(camera.lens, state.zoomShare) }, { "auto_focus", state.autoFocus },
        { "auto_white_balance", state.autoWhiteBalance }, { "mute", state.mute },
        { "flip", state.flip }, { "mirror", state.mirror }, { "freeze", state.freeze },
        { "framing", state.framing }, { "menu", state.menu },
        { "values", valuesJson(camera, state) }, { "presets", presetsJson(state) } };
}

// Only what is wrong: a device without faults has no members here. Those of requests stand under
// the word of their control command, as the rest of it.
json::Object faultsJson(const Faults &faults)
{
    std::map<std::string, json::Array> byWord;
    for (const Fault &fault : faults.requests)
        byWord[faultWord(fault.effect)].emplace_back(faultText(fault));
    json::Object object;
    for (const auto &[word, texts] : byWord)
        object.add(word, texts);
    if (faults.delay.count() != 0)
        object.add("delay", faults.delay.count());
    if (faults.openError != 0)
        object.add("refuse_open", faults.openError);
    if (faults.claimRefused)
        object.add("busy", true);
    return object;
}

} // namespace

json::Object stateJson(const Device &device)
{
    json::Object object{ { "plugged_in", device.pluggedIn() }, { "address", device.address() },
        { "open_files", device.openFiles() }, { "faults", faultsJson(device.faults()) } };
    if (device.isCamera())
        object.add(cameraJson(device.description(), device.state()));
    return object;
}

double secondsNow(const Testbed &testbed)
{
    return std::chrono::duration<double>(testbed.log().now()).count();
}

json::Object greeting(const Testbed &testbed)
{
    return { { "protocol", protocolVersion }, { "version", PTZ_VERSION },
        { "time", secondsNow(testbed) } };
}

} // namespace virtual_camera
