// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT
#include "virtual_camera/camera/camera_body.h"

#include "virtual_camera/camera/vendor_command.h"

#include <array>
#include <utility>

namespace virtual_camera {

using Motor = Mechanics::Motor;

CameraBody::CameraBody(CameraDescription description, Clock clock)
    : m_description(std::move(description)), m_clock(std::move(clock)),
      m_mechanics(m_description, m_clock)
{
    switchOn();
}

void CameraBody::cutPower() { m_mechanics.stop(); }

void CameraBody::switchOn()
{
    m_mechanics = Mechanics(m_description, m_clock);
    m_digitalZoom = false;
    CameraState fresh;
    fresh.presets = std::move(m_state.presets);
    m_state = std::move(fresh);
    for (const ControlTraits &control : allControls())
        store(control.control, m_description.range(control.control).cur);
}

CameraState CameraBody::state()
{
    m_state.pan = m_mechanics.state(Motor::Pan);
    m_state.tilt = m_mechanics.state(Motor::Tilt);
    m_state.zoom = m_mechanics.state(Motor::Zoom);
    m_state.focus = m_mechanics.state(Motor::Focus);
    m_state.zoomShare = m_mechanics.share(Motor::Zoom);
    return m_state;
}

std::vector<std::int64_t> CameraBody::current(const ControlTraits &control)
{
    const Place place = state().place();
    switch (control.control) {
    case Control::PantiltAbsolute:
        return { place.pan, place.tilt };
    case Control::PantiltRelative: {
        const Drive pan = m_mechanics.drive(Motor::Pan);
        const Drive tilt = m_mechanics.drive(Motor::Tilt);
        return { pan.direction, pan.speed, tilt.direction, tilt.speed };
    }
    case Control::ZoomAbsolute:
        return { place.zoom };
    case Control::ZoomRelative: {
        const Drive zoom = m_mechanics.drive(Motor::Zoom);
        return { zoom.direction, m_digitalZoom ? 1 : 0, zoom.speed };
    }
    case Control::FocusAbsolute:
        return { place.focus };
    case Control::FocusRelative: {
        const Drive focus = m_mechanics.drive(Motor::Focus);
        return { focus.direction, focus.speed };
    }
    default:
        return { m_state.value(control.control) };
    }
}

bool CameraBody::isAutomatic(Control control) const
{
    switch (control) {
    case Control::FocusAbsolute:
    case Control::FocusRelative:
        return m_state.autoFocus;
    case Control::WhiteBalanceTemperature:
        return m_state.autoWhiteBalance;
    default:
        return false;
    }
}

void CameraBody::apply(const ControlTraits &control, const std::vector<std::int64_t> &values)
{
    const auto drive = [&values](std::size_t direction, std::size_t speed) {
        return Drive{ static_cast<int>(values[direction]), static_cast<int>(values[speed]) };
    };
    switch (control.control) {
    case Control::PantiltRelative:
        m_mechanics.run(Motor::Pan, drive(0, 1));
        m_mechanics.run(Motor::Tilt, drive(2, 3));
        break;
    case Control::ZoomRelative:
        m_digitalZoom = values[1] != 0;
        m_mechanics.run(Motor::Zoom, drive(0, 2));
        break;
    case Control::FocusRelative:
        m_mechanics.run(Motor::Focus, drive(0, 1));
        break;
    case Control::PantiltAbsolute:
        m_mechanics.travel(Motor::Pan, values[0]);
        m_mechanics.travel(Motor::Tilt, values[1]);
        break;
    case Control::ZoomAbsolute:
        m_mechanics.travel(Motor::Zoom, values[0]);
        break;
    case Control::FocusAbsolute:
        m_mechanics.travel(Motor::Focus, values[0]);
        break;
    case Control::RollAbsolute:
        applyVendorCommand(static_cast<int>(values[0]));
        [[fallthrough]];
    default:
        store(control.control, values[0]);
    }
}

void CameraBody::store(Control control, std::int64_t value)
{
    using Kind = ControlTraits::Kind;
    const Kind kind = traits(control).kind;
    if (kind != Kind::Value && kind != Kind::Switch)
        return;
    m_state.values[indexOf(control)] = value;
    if (control == Control::FocusAuto) {
        m_state.autoFocus = value != 0;
        // The automatic takes the lens over.
        if (m_state.autoFocus)
            m_mechanics.stop(Motor::Focus);
    } else if (control == Control::WhiteBalanceTemperatureAuto) {
        m_state.autoWhiteBalance = value != 0;
    }
}

void CameraBody::applyVendorCommand(int code)
{
    using Kind = VendorCommand::Kind;
    const VendorCommand command = decodeVendorCommand(code);
    switch (command.kind) {
    case Kind::Mirror:
        m_state.mirror = command.on;
        break;
    case Kind::Flip:
        m_state.flip = command.on;
        break;
    case Kind::Mute:
        m_state.mute = command.on;
        break;
    case Kind::AutoFocus:
        store(Control::FocusAuto, command.on ? 1 : 0);
        break;
    case Kind::Home:
        m_mechanics.travel(home());
        break;
    case Kind::Menu:
        m_state.menu = command.on;
        break;
    case Kind::Framing:
        m_state.framing = command.on;
        break;
    case Kind::Freeze:
        m_state.freeze = command.on;
        break;
    case Kind::StorePreset:
        m_state.presets[command.preset] = state().place();
        break;
    case Kind::ClearPreset:
        m_state.presets.erase(command.preset);
        break;
    case Kind::RecallPreset:
        if (const auto preset = m_state.presets.find(command.preset);
            preset != m_state.presets.end())
            m_mechanics.travel(preset->second);
        break;
    case Kind::Unknown:
        break;
    }
}

const Range &CameraBody::motorRange(Motor motor) const
{
    switch (motor) {
    case Motor::Pan:
        return m_description.range(Control::PantiltAbsolute, 0);
    case Motor::Tilt:
        return m_description.range(Control::PantiltAbsolute, 1);
    case Motor::Zoom:
        return m_description.range(Control::ZoomAbsolute);
    case Motor::Focus:
        break;
    }
    return m_description.range(Control::FocusAbsolute);
}

Place CameraBody::home() const
{
    return { motorRange(Motor::Pan).def, motorRange(Motor::Tilt).def, motorRange(Motor::Zoom).def,
        motorRange(Motor::Focus).def };
}

std::optional<std::string> CameraBody::go(const RemoteOrder &order)
{
    if (order.home)
        m_mechanics.travel(home());
    if (order.preset) {
        const auto preset = m_state.presets.find(*order.preset);
        if (preset == m_state.presets.end())
            return "preset " + std::to_string(*order.preset) + " is not stored";
        m_mechanics.travel(preset->second);
    }
    constexpr std::array<Motor, 4> motors{ Motor::Pan, Motor::Tilt, Motor::Zoom, Motor::Focus };
    for (const Motor motor : motors) {
        const auto *place = std::get_if<std::int64_t>(&order.move(motor));
        if (place != nullptr && !motorRange(motor).takes(*place))
            return std::to_string(*place) + " is out of range";
    }
    for (const Motor motor : motors) {
        if (const auto *place = std::get_if<std::int64_t>(&order.move(motor)))
            m_mechanics.travel(motor, *place);
        else if (const auto *drive = std::get_if<Drive>(&order.move(motor)))
            m_mechanics.run(motor, *drive);
    }
    return std::nullopt;
}

void CameraBody::setRange(Control control, const Range &range, std::size_t field)
{
    m_description.range(control, field) = range;
    store(control, range.cur);
}

} // namespace virtual_camera
