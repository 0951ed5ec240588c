// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT
#include "tests/fuzz/compare.h"

#include <algorithm>
#include <tuple>

namespace fuzz {

using namespace virtual_camera;

namespace {

auto axis(const AxisState &state) { return std::tie(state.position, state.velocity); }

auto motors(const CameraState &state)
{
    return std::tuple_cat(axis(state.pan), axis(state.tilt), axis(state.zoom), axis(state.focus));
}

auto rest(const CameraState &state)
{
    return std::tie(state.mirror, state.flip, state.mute, state.menu, state.framing, state.freeze,
        state.autoFocus, state.autoWhiteBalance, state.presets, state.values);
}

auto identity(const CameraDescription &description)
{
    return std::tie(description.vendorId, description.productId, description.deviceRelease,
        description.manufacturer, description.product, description.serial, description.supported,
        description.hasCameraTerminal, description.hasProcessingUnit, description.hasExtensionUnit,
        description.videoClass);
}

} // namespace

bool same(const CameraState &a, const CameraState &b)
{
    return motors(a) == motors(b) && rest(a) == rest(b);
}

bool same(const Range &a, const Range &b)
{
    return std::tie(a.min, a.max, a.def, a.cur, a.res)
        == std::tie(b.min, b.max, b.def, b.cur, b.res);
}

bool same(const CameraDescription &a, const CameraDescription &b)
{
    return identity(a) == identity(b) && same(a.tilt, b.tilt)
        && std::equal(a.ranges.begin(), a.ranges.end(), b.ranges.begin(),
            [](const Range &x, const Range &y) { return same(x, y); });
}

} // namespace fuzz
