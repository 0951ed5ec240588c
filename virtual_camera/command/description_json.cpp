// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT
#include "virtual_camera/command/description_json.h"

#include "virtual_camera/testbed/testbed.h"

namespace virtual_camera {

namespace {

const char *kindName(ControlTraits::Kind kind)
{
    switch (kind) {
    case ControlTraits::Kind::Value:
        return "value";
    case ControlTraits::Kind::Switch:
        return "switch";
    case ControlTraits::Kind::Position:
        return "position";
    case ControlTraits::Kind::Motion:
        return "motion";
    }
    return "";
}

json::Object rangeJson(const Range &range)
{
    return { { "min", range.min }, { "max", range.max }, { "default", range.def },
        { "step", range.res } };
}

// By the name of each number in the control's value. Motions have no range: a direction is -1, 0
// or 1, and the speeds that make a difference stand under "motors".
json::Object fieldsJson(const ControlTraits &control, const CameraDescription &camera)
{
    json::Object fields;
    for (std::size_t i = 0; i < control.fields.size(); ++i) {
        const Range &range = camera.range(control.control, i);
        const bool motion = control.kind == ControlTraits::Kind::Motion;
        fields.add(control.fields[i].name, motion ? json::Object() : rangeJson(range));
    }
    return fields;
}

json::Object controlsJson(const CameraDescription &camera)
{
    json::Object controls;
    for (const ControlTraits &control : allControls()) {
        if (camera.supports(control.control))
            controls.add(control.name,
                json::Object{ { "kind", kindName(control.kind) }, { "entity", control.entity },
                    { "selector", control.selector }, { "fields", fieldsJson(control, camera) } });
    }
    return controls;
}

json::Object lensJson(const Lens &lens)
{
    const auto end = [&lens](double share) {
        return json::Object{ { "focal_length_mm", lens.focalLength(share) },
            { "horizontal_degrees", lens.horizontalDegrees(share) },
            { "vertical_degrees", lens.verticalDegrees(share) } };
    };
    return { { "wide", end(0) }, { "tele", end(1) } };
}

json::Array unitsJson(const CameraDescription &camera)
{
    json::Array units;
    if (camera.hasCameraTerminal)
        units.emplace_back("camera_terminal");
    if (camera.hasProcessingUnit)
        units.emplace_back("processing_unit");
    if (camera.hasExtensionUnit)
        units.emplace_back("extension_unit");
    return units;
}

json::Object motorsJson()
{
    return { { "pan", json::Object{ { "unit", "arcsec" }, { "fastest", fastestPan } } },
        { "tilt", json::Object{ { "unit", "arcsec" }, { "fastest", fastestTilt } } },
        { "zoom", json::Object{ { "fastest", fastestZoom } } },
        { "focus", json::Object{ { "fastest", fastestFocus } } } };
}

} // namespace

json::Object describe(const Device &device)
{
    json::Object object{ { "number", device.number() },
        { "kind", device.isCamera() ? "camera" : "storage" } };
    if (!device.isCamera())
        return object;
    const CameraDescription camera = device.description();
    return object.add({ { "vendor_id", camera.vendorId }, { "product_id", camera.productId },
        { "manufacturer", camera.manufacturer }, { "product", camera.product },
        { "serial", camera.serial }, { "units", unitsJson(camera) },
        { "lens", lensJson(camera.lens) }, { "motors", motorsJson() },
        { "controls", controlsJson(camera) } });
}

} // namespace virtual_camera
