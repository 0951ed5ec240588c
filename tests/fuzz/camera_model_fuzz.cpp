// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT

// A camera as the options say, then requests as they come off the wire, with time in between.
//
// An input is: the number of option lines (modulo 8), that many lines "key=value", then steps.
// A step is a byte (modulo the number of steps) and what the step takes.
#include "tests/fuzz/camera_model_checks.h"
#include "tests/fuzz/input.h"
#include "virtual_camera/camera/little_endian.h"

#include <array>

namespace {

using namespace virtual_camera;
using fuzz::Input;

const ControlTraits &someControl(Input &input)
{
    return allControls()[input.oneOf(allControls().size())];
}

// Setup packet, then data when the host sends some.
void rawRequest(fuzz::CheckedCamera &camera, Input &input)
{
    constexpr std::size_t setupSize = 8;
    constexpr std::uint16_t longest = 64;
    Bytes packet = input.exactly(setupSize);
    packet[7] = 0; // a longer answer than 255 bytes is known to nobody here
    const bool hostReads = (packet[0] & 0x80U) != 0;
    if (!hostReads) {
        packet[6] = static_cast<std::uint8_t>(packet[6] % longest);
        const Bytes data = input.exactly(packet[6]);
        packet.insert(packet.end(), data.begin(), data.end());
    } else {
        packet.resize(setupSize + packet[6]);
    }
    const auto request = parseControlRequest(packet.data(), packet.size());
    fuzz::expect(request.has_value(), "a whole request can be read");
    camera.request(*request);
}

void set(fuzz::CheckedCamera &camera, Input &input)
{
    const ControlTraits &control = someControl(input);
    camera.request(fuzz::setRequest(control, input.exactly(control.length())));
}

void get(fuzz::CheckedCamera &camera, Input &input)
{
    const ControlTraits &control = someControl(input);
    constexpr std::array<RequestCode, 7> codes{ RequestCode::GetCur, RequestCode::GetMin,
        RequestCode::GetMax, RequestCode::GetRes, RequestCode::GetDef, RequestCode::GetLen,
        RequestCode::GetInfo };
    const RequestCode code = codes[input.oneOf(codes.size())];
    camera.request(fuzz::getRequest(control, code, input.byte()));
}

void wait(fuzz::CheckedCamera &camera, Input &input)
{
    camera.wait(std::chrono::milliseconds(10) * input.word());
}

void announce(fuzz::CheckedCamera &camera, Input &input)
{
    const ControlTraits &control = someControl(input);
    // Pan and tilt have ranges of their own.
    const std::size_t number =
        control.control == Control::PantiltAbsolute ? input.oneOf(control.fields.size()) : 0;
    const Field &field = control.fields[number];
    Range range;
    for (std::int64_t *limit : { &range.min, &range.max, &range.def, &range.cur, &range.res }) {
        const Bytes bytes = input.exactly(field.size);
        *limit = field.isSigned
            ? readSigned(bytes.data(), bytes.size())
            : static_cast<std::int64_t>(readUnsigned(bytes.data(), bytes.size()));
    }
    camera.announce(control, range, number);
}

void cutPower(fuzz::CheckedCamera &camera, Input &) { camera.cutPower(); }

void switchOn(fuzz::CheckedCamera &camera, Input &) { camera.switchOn(); }

void go(fuzz::CheckedCamera &camera, Input &input)
{
    const auto some = [&input] {
        const Bytes bytes = input.exactly(4);
        return readSigned(bytes.data(), bytes.size());
    };
    Place place;
    for (std::int64_t *axis : { &place.pan, &place.tilt, &place.zoom, &place.focus })
        *axis = some();
    camera.go(place);
}

CameraDescription described(Input &input)
{
    CameraDescription description;
    for (std::size_t lines = input.oneOf(8); lines > 0; --lines) {
        const std::string_view line = input.line();
        const std::size_t equals = line.find('=');
        if (equals != std::string_view::npos)
            applyOption(description, line.substr(0, equals), line.substr(equals + 1));
    }
    return description;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *bytes, std::size_t size)
{
    constexpr std::array steps{ rawRequest, set, get, wait, announce, cutPower, switchOn, go };
    Input input(bytes, size);
    fuzz::CheckedCamera camera(described(input));
    while (!input.empty())
        steps[input.oneOf(steps.size())](camera, input);
    camera.finish();
    return 0;
}
