// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT
#include "virtual_camera/testbed/device_inside.h"
#include "virtual_camera/umockdev/open_refusal.h"

#include <stdexcept>
#include <utility>

namespace virtual_camera {

namespace {

constexpr int firstAddress = 2; // 1 is the hub's
constexpr int lastAddress = 127;

EmulatedBus::Names namesOf(const DeviceDescription &description)
{
    if (description.kind == DeviceDescription::Kind::Storage)
        return { "Virtual Optics", "Memory stick", "000001" };
    const CameraDescription &camera = description.camera;
    return { camera.manufacturer, camera.product, camera.serial };
}

} // namespace

Device::Inside::Inside(EmulatedBus &where, RequestLog &requestLog, int ownNumber, int ownPort,
    DeviceDescription what, const Clock &clock)
    : bus(where), log(requestLog), number(ownNumber), port(ownPort),
      address(firstAddress + ownNumber - 1), description(std::move(what))
{
    if (description.kind == DeviceDescription::Kind::Camera) {
        camera = std::make_unique<CameraModel>(description.camera, clock);
        usb = std::make_unique<UsbDevice>(describeCamera(description.camera), camera.get());
    } else {
        usb = std::make_unique<UsbDevice>(describeStorage(), nullptr);
    }
}

void Device::Inside::plugIn()
{
    const char *driver = camera ? "uvcvideo" : "usb-storage";
    tellOpenError();
    plug = bus.plug(address, port, namesOf(description), mutex,
        { number, usb.get(), &faults, &log, driver, {} });
}

void Device::Inside::pullOut()
{
    bus.unplug(*plug, mutex);
    oldNodes.push_back(plug->node);
    plug.reset();
    const std::lock_guard lock(mutex);
    if (camera)
        camera->cutPower();
}

void Device::Inside::tellOpenError() const
{
    setOpenError(bus.rootDirectory(), EmulatedBus::devicePath(address), faults.openError);
}

void Device::Inside::logEvent(LogRecord::Event event) const
{
    LogRecord record;
    record.device = number;
    record.event = event;
    log.add(std::move(record));
}

CameraModel &Device::Inside::theCamera() const
{
    if (!camera)
        throw std::logic_error("device " + std::to_string(number) + " is no camera");
    return *camera;
}

Device::Device(std::unique_ptr<Inside> inside) : m_inside(std::move(inside)) { }

Device::~Device() = default;

int Device::number() const { return m_inside->number; }

int Device::address() const
{
    const std::lock_guard lock(m_inside->plugMutex);
    return m_inside->address;
}

bool Device::pluggedIn() const
{
    const std::lock_guard lock(m_inside->plugMutex);
    return m_inside->plug.has_value();
}

bool Device::isCamera() const { return m_inside->camera != nullptr; }

void Device::unplug()
{
    const std::lock_guard lock(m_inside->plugMutex);
    if (!m_inside->plug)
        return;
    m_inside->logEvent(LogRecord::Event::Unplug);
    m_inside->pullOut();
}

void Device::replug(std::optional<int> address)
{
    const std::lock_guard lock(m_inside->plugMutex);
    if (m_inside->plug)
        return;
    const int wanted = address.value_or(m_inside->address);
    if (wanted < 1 || wanted > lastAddress)
        throw std::invalid_argument("a device's address is from 1 to 127");
    if (m_inside->bus.occupied(wanted))
        throw std::invalid_argument("address " + std::to_string(wanted) + " is taken");
    m_inside->address = wanted;
    m_inside->logEvent(LogRecord::Event::Replug);
    m_inside->plugIn();
}

int Device::requestsUnderWay() const
{
    const std::lock_guard plugLock(m_inside->plugMutex);
    const std::lock_guard lock(m_inside->mutex);
    return m_inside->plug ? m_inside->plug->node->requestsUnderWay() : 0;
}

CameraState Device::state() const
{
    const std::lock_guard lock(m_inside->mutex);
    return m_inside->theCamera().state();
}

CameraDescription Device::description() const
{
    const std::lock_guard lock(m_inside->mutex);
    return m_inside->theCamera().description();
}

void Device::setRange(Control control, const Range &range)
{
    const std::lock_guard lock(m_inside->mutex);
    m_inside->theCamera().setRange(control, range);
}

void Device::change(const std::function<void(Faults &)> &how)
{
    const std::lock_guard plugLock(m_inside->plugMutex);
    const std::lock_guard lock(m_inside->mutex);
    how(m_inside->faults);
}

void Device::stall(Control control)
{
    change([control](Faults &faults) { faults.stalled.insert({ control, std::nullopt }); });
}

void Device::stall(Control control, RequestCode code)
{
    change([control, code](Faults &faults) { faults.stalled.insert({ control, code }); });
}

void Device::stallEverything()
{
    change([](Faults &faults) { faults.everythingStalls = true; });
}

void Device::unstall()
{
    change([](Faults &faults) {
        faults.stalled.clear();
        faults.everythingStalls = false;
    });
}

void Device::answerShort(Control control, std::size_t bytes)
{
    change([control, bytes](Faults &faults) { faults.shortened[control] = bytes; });
}

void Device::answerFully()
{
    change([](Faults &faults) { faults.shortened.clear(); });
}

void Device::delay(std::chrono::milliseconds time)
{
    change([time](Faults &faults) { faults.delay = time; });
}

void Device::refuseOpen(int error)
{
    change([this, error](Faults &faults) {
        faults.openError = error;
        m_inside->tellOpenError();
    });
}

void Device::refuseClaim(bool refuse)
{
    change([refuse](Faults &faults) { faults.claimRefused = refuse; });
}

Faults Device::faults() const
{
    const std::lock_guard lock(m_inside->mutex);
    return m_inside->faults;
}

void Device::clearFaults()
{
    change([this](Faults &faults) {
        faults = {};
        m_inside->tellOpenError();
    });
}

int Device::openFiles() const
{
    const std::lock_guard plugLock(m_inside->plugMutex);
    const std::lock_guard lock(m_inside->mutex);
    int count = m_inside->plug ? m_inside->plug->node->openFiles() : 0;
    for (const std::shared_ptr<UsbfsNode> &node : m_inside->oldNodes)
        count += node->openFiles();
    return count;
}

} // namespace virtual_camera
