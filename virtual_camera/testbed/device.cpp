// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT
#include "virtual_camera/testbed/device.h"

#include "virtual_camera/camera/camera_model.h"
#include "virtual_camera/usb/descriptors.h"

#include <stdexcept>
#include <string>
#include <utility>

namespace virtual_camera {

namespace {

constexpr int firstAddress = 2; // 1 is the hub's
constexpr int lastAddress = 127;

// A slow camera makes a program wait, and programs know no clock but this.
std::chrono::microseconds steadyTime()
{
    return std::chrono::duration_cast<std::chrono::microseconds>(
        std::chrono::steady_clock::now().time_since_epoch());
}

std::shared_ptr<Cable> makeCable(int number, const DeviceDescription &description,
    const Clock &clock, const std::shared_ptr<RequestLog> &log)
{
    if (description.kind == DeviceDescription::Kind::Storage)
        return std::make_shared<Cable>(
            number, nullptr, Firmware(describeStorage()), log, steadyTime);
    auto camera = std::make_unique<CameraModel>(description.camera, clock);
    Firmware firmware(describeCamera(description.camera),
        [model = camera.get()](const ControlRequest &request) { return model->answer(request); });
    return std::make_shared<Cable>(number, std::move(camera), std::move(firmware), log, steadyTime);
}

} // namespace

Device::Device(Socket &socket, int number, int port, DeviceDescription description,
    const Clock &clock, const std::shared_ptr<RequestLog> &log)
    : m_socket(socket), m_number(number), m_port(port), m_description(std::move(description)),
      m_cable(makeCable(number, m_description, clock, log)), m_address(firstAddress + number - 1)
{
    plugIn();
}

void Device::plugIn()
{
    Bus::Plug plug{ m_address, m_port, "Virtual Optics", "Memory stick", "000001", "usb-storage",
        m_cable, 0 };
    if (isCamera()) {
        plug.manufacturer = m_description.camera.manufacturer;
        plug.product = m_description.camera.product;
        plug.serial = m_description.camera.serial;
        plug.driver = "uvcvideo";
    }
    m_socket.bus->plug(plug);
    m_pluggedIn = true;
}

void Device::pullOut()
{
    m_pluggedIn = false;
    m_socket.bus->unplug(m_address);
}

int Device::address() const
{
    const std::lock_guard lock(m_socket.mutex);
    return m_address;
}

bool Device::pluggedIn() const
{
    const std::lock_guard lock(m_socket.mutex);
    return m_pluggedIn;
}

void Device::unplug()
{
    const std::lock_guard lock(m_socket.mutex);
    if (!m_pluggedIn)
        return;
    m_cable->logEvent(LogRecord::Event::Unplug);
    pullOut();
}

void Device::replug(std::optional<int> address)
{
    const std::lock_guard lock(m_socket.mutex);
    if (m_pluggedIn)
        return;
    const int wanted = address.value_or(m_address);
    if (wanted < firstAddress || wanted > lastAddress)
        throw std::invalid_argument("a device's address is from 2 to 127");
    if (m_socket.bus->occupied(wanted))
        throw std::invalid_argument("address " + std::to_string(wanted) + " is taken");
    m_address = wanted;
    m_cable->logEvent(LogRecord::Event::Replug, 0, wanted);
    plugIn();
}

CameraState Device::state() const
{
    CameraState state;
    m_cable->withCamera([&state](CameraModel &camera) { state = camera.state(); });
    return state;
}

CameraDescription Device::description() const
{
    CameraDescription description;
    m_cable->withCamera(
        [&description](CameraModel &camera) { description = camera.description(); });
    return description;
}

void Device::setRange(Control control, const Range &range, std::size_t field)
{
    m_cable->withCamera([&](CameraModel &camera) { camera.setRange(control, range, field); });
}

// An open that is to fail is a matter of the plug, too.
void Device::change(const std::function<void(Faults &)> &how)
{
    const std::lock_guard lock(m_socket.mutex);
    m_cable->changeFaults(how);
}

void Device::go(const RemoteOrder &order)
{
    const std::lock_guard lock(m_socket.mutex);
    if (!m_pluggedIn)
        throw std::invalid_argument("an unplugged camera has no power to move");
    m_cable->withCamera([&order](CameraModel &camera) {
        if (const auto problem = camera.go(order))
            throw std::invalid_argument(*problem);
    });
}

void Device::add(const Fault &fault)
{
    change([&fault](Faults &faults) { faults.add(fault); });
}

void Device::remove(Fault::Effect effect)
{
    change([effect](Faults &faults) { faults.remove(effect); });
}

void Device::stall(Control control)
{
    Fault fault;
    fault.target = { FaultTarget::Kind::OneControl, control, std::nullopt };
    add(fault);
}

void Device::stall(Control control, RequestCode code)
{
    Fault fault;
    fault.target = { FaultTarget::Kind::OneControl, control, code };
    add(fault);
}

void Device::stallEverything() { add({}); }

void Device::unstall() { remove(Fault::Effect::Stall); }

void Device::answerShort(Control control, std::size_t bytes)
{
    Fault fault;
    fault.effect = Fault::Effect::Short;
    fault.target = { FaultTarget::Kind::OneControl, control, std::nullopt };
    fault.bytes = bytes;
    add(fault);
}

void Device::answerFully() { remove(Fault::Effect::Short); }

void Device::delay(std::chrono::milliseconds time)
{
    change([time](Faults &faults) { faults.delay = time; });
}

void Device::refuseOpen(int error)
{
    change([error](Faults &faults) { faults.openError = error; });
}

void Device::refuseClaim(bool refuse)
{
    change([refuse](Faults &faults) { faults.claimRefused = refuse; });
}

void Device::clearFaults()
{
    change([](Faults &faults) { faults = {}; });
}

} // namespace virtual_camera
