// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT
#include "virtual_camera/testbed.h"

#include "virtual_camera/camera_model.h"
#include "virtual_camera/emulated_bus.h"
#include "virtual_camera/open_refusal.h"
#include "virtual_camera/usb_device.h"

#include <mutex>
#include <stdexcept>
#include <utility>

namespace virtual_camera {

namespace {

constexpr int firstAddress = 2; // 1 is the hub's
constexpr int lastAddress = 127;

std::chrono::microseconds steadyTime()
{
    return std::chrono::duration_cast<std::chrono::microseconds>(
        std::chrono::steady_clock::now().time_since_epoch());
}

std::vector<DeviceDescription> cameras(int count)
{
    std::vector<DeviceDescription> devices;
    for (int number = 1; number <= count; ++number) {
        devices.push_back(DeviceDescription::ptzCamera());
        const std::string digits = std::to_string(number);
        devices.back().camera.serial.replace(6 - digits.size(), digits.size(), digits);
    }
    return devices;
}

// libusb lists the device with the last name in /sys first. Names are compared as texts, so
// all ports of a testbed have the same number of digits.
int portFor(int number, int count)
{
    constexpr int oneDigit = 9;
    return (count <= oneDigit ? 10 : 100) - number;
}

EmulatedBus::Names namesOf(const DeviceDescription &description)
{
    if (description.kind == DeviceDescription::Kind::Storage)
        return { "Virtual Optics", "Memory stick", "000001" };
    const CameraDescription &camera = description.camera;
    return { camera.manufacturer, camera.product, camera.serial };
}

} // namespace

struct Device::Inside
{
    Inside(EmulatedBus &where, RequestLog &log, int ownNumber, int ownPort, DeviceDescription what,
        const Clock &clock);

    EmulatedBus &bus;
    RequestLog &log;
    int number;
    int port;
    int address;
    DeviceDescription description;

    // Guards what a node touches on umockdev's thread: camera, usb, faults.
    mutable std::mutex mutex;
    std::unique_ptr<CameraModel> camera;
    std::unique_ptr<UsbDevice> usb;
    Faults faults;

    // Guards plugging; taken before the other.
    mutable std::mutex plugMutex;
    std::optional<EmulatedBus::Plug> plug;
    // Files that are open when the device is unplugged go on with their node.
    std::vector<std::shared_ptr<UsbfsNode>> oldNodes;

    void plugIn();
    void pullOut();
    void tellOpenError() const;
    void logEvent(LogRecord::Event event) const;
    CameraModel &theCamera() const;
};

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

Testbed::Testbed(int count) : Testbed(cameras(count)) { }

Testbed::Testbed(std::vector<DeviceDescription> devices, Clock clock)
    : m_bus(std::make_unique<EmulatedBus>())
{
    const Clock time = clock ? std::move(clock) : Clock(steadyTime);
    const int count = static_cast<int>(devices.size());
    for (int number = 1; number <= count; ++number) {
        auto inside = std::make_unique<Device::Inside>(*m_bus, m_log, number,
            portFor(number, count), std::move(devices[static_cast<std::size_t>(number - 1)]), time);
        inside->plugIn();
        m_devices.push_back(std::unique_ptr<Device>(new Device(std::move(inside))));
    }
}

Testbed::~Testbed()
{
    for (const std::unique_ptr<Device> &device : m_devices) {
        const std::lock_guard lock(device->m_inside->plugMutex);
        if (device->m_inside->plug)
            device->m_inside->pullOut();
    }
    // umockdev's thread ends with the bus; only then may the devices go.
    m_bus.reset();
}

Device &Testbed::device(int number) { return *m_devices.at(static_cast<std::size_t>(number - 1)); }

int Device::openFiles() const
{
    const std::lock_guard plugLock(m_inside->plugMutex);
    const std::lock_guard lock(m_inside->mutex);
    int count = m_inside->plug ? m_inside->plug->node->openFiles() : 0;
    for (const std::shared_ptr<UsbfsNode> &node : m_inside->oldNodes)
        count += node->openFiles();
    return count;
}

int Testbed::openFiles() const
{
    int count = 0;
    for (const std::unique_ptr<Device> &device : m_devices)
        count += device->openFiles();
    return count;
}

std::string Testbed::rootDirectory() const { return m_bus->rootDirectory(); }

} // namespace virtual_camera
