// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT
#include "tests/fuzz/usbfs_checks.h"

#include "tests/fuzz/expect.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <utility>

namespace fuzz {

using namespace virtual_camera;

CheckedUsbfs::CheckedUsbfs(bool camera) : m_isCamera(camera)
{
    const auto clock = [this] { return m_now; };
    std::unique_ptr<CameraModel> model;
    Firmware::ClassRequests requests;
    if (camera) {
        model = std::make_unique<CameraModel>(CameraDescription(), clock);
        requests = [m = model.get()](const ControlRequest &request) { return m->answer(request); };
    }
    Firmware firmware(camera ? describeCamera({}) : describeStorage(), requests);
    m_cable = std::make_shared<Cable>(1, std::move(model), std::move(firmware), m_log, clock);
    m_device = std::make_unique<Usbfs>(m_cable, "driver");
    m_owners.assign(static_cast<std::size_t>(m_cable->layout().interfaces()), int{ kernelDriver });
}

void CheckedUsbfs::breakSomething(const std::function<void(Faults &)> &how)
{
    m_cable->changeFaults(how);
    m_device->collect();
}

int CheckedUsbfs::file(std::size_t choice) const
{
    return std::next(m_files.begin(), static_cast<std::ptrdiff_t>(choice % m_files.size()))->first;
}

void CheckedUsbfs::open()
{
    const int file = m_device->openFile();
    expect(file > 0 && m_files.count(file) == 0, "every open file has a number of its own");
    m_files[file];
}

void CheckedUsbfs::close(int file)
{
    m_device->closeFile(file);
    m_files.erase(file);
    std::replace(m_owners.begin(), m_owners.end(), file, int{ nobody });
}

void CheckedUsbfs::own(int file, unsigned interfaceNumber)
{
    expect(interfaceNumber < interfaces(), "only an interface that exists can be claimed");
    int &owner = m_owners[interfaceNumber];
    expect(owner == file || (owner == nobody && !m_cable->claimRefused()),
        "an interface belongs to one file at a time");
    owner = file;
}

void CheckedUsbfs::ownForRequest(int file, const ControlRequest &request)
{
    constexpr int interfaceRecipient = 1;
    const bool vendor = (request.requestType & 0x60U) == 0x40U;
    if (request.recipient() == interfaceRecipient && !vendor)
        own(file, request.interfaceNumber());
}

void CheckedUsbfs::claim(int file, unsigned interfaceNumber)
{
    const int result = m_device->claim(file, interfaceNumber);
    if (result == 0)
        return own(file, interfaceNumber);
    if (interfaceNumber < interfaces())
        expect(m_owners[interfaceNumber] != file
                && (m_owners[interfaceNumber] != nobody || m_cable->claimRefused()),
            "an interface that is free can be claimed");
}

void CheckedUsbfs::release(int file, unsigned interfaceNumber)
{
    if (m_device->release(file, interfaceNumber) != 0)
        return;
    expect(interfaceNumber < interfaces() && m_owners[interfaceNumber] == file,
        "only what is claimed can be released");
    m_owners[interfaceNumber] = nobody;
}

void CheckedUsbfs::setInterface(int file, unsigned interfaceNumber, unsigned alternate)
{
    const int result = m_device->setInterface(file, interfaceNumber, alternate);
    if (result == 0)
        expect(interfaceNumber < interfaces() && alternate < 2,
            "only a setting that exists can be chosen");
    if (result == 0 || result == -EPIPE)
        ++m_requests;
    // The interface is claimed before the setting is looked at.
    if (result == 0 || result == -EPIPE || result == -EINVAL)
        own(file, interfaceNumber);
    if (result == 0 && m_isCamera && interfaceNumber == streamingInterface)
        m_pictures = alternate == 1;
}

void CheckedUsbfs::setConfiguration(int file, int value)
{
    const bool held =
        std::any_of(m_owners.begin(), m_owners.end(), [](int owner) { return owner != nobody; });
    if (m_device->setConfiguration(file, value) != 0)
        return;
    expect(value == 1 && !held, "only a device that nobody uses can be configured");
    ++m_requests;
    m_pictures = false;
}

void CheckedUsbfs::reset(int file)
{
    expect(m_device->reset(file) == 0, "a device can always be reset");
    m_requests += m_pictures ? 1 : 0;
}

bool CheckedUsbfs::exists(unsigned endpoint) const
{
    if (m_isCamera)
        return endpoint == statusEndpoint || (endpoint == pictureEndpoint && m_pictures);
    return endpoint == 0x81 || endpoint == 0x02;
}

// An interface is claimed for any of its endpoints, also for one of another setting.
void CheckedUsbfs::ownForEndpoint(int file, unsigned endpoint, int result)
{
    const bool known = exists(endpoint) || (m_isCamera && endpoint == pictureEndpoint);
    expect(result != 0 || exists(endpoint), "only endpoints that exist can be used");
    if (known && (result == 0 || result == -ENOENT))
        own(file,
            static_cast<unsigned>(
                m_cable->layout().interfaceOf(static_cast<std::uint8_t>(endpoint))));
}

void CheckedUsbfs::clearHalt(int file, unsigned endpoint)
{
    const int result = m_device->clearHalt(file, endpoint);
    m_requests += result == 0 ? 1 : 0;
    ownForEndpoint(file, endpoint, result);
}

void CheckedUsbfs::detachDriver(unsigned interfaceNumber)
{
    if (m_device->detachDriver(interfaceNumber) != 0)
        return;
    expect(interfaceNumber < interfaces(), "only an interface that exists has a driver");
    m_owners[interfaceNumber] = nobody;
    if (!m_cable->claimRefused())
        expect(m_device->driver(interfaceNumber).empty(), "a driver that is detached is gone");
}

void CheckedUsbfs::attachDriver(unsigned interfaceNumber)
{
    if (m_device->attachDriver(interfaceNumber) <= 0)
        return;
    expect(interfaceNumber < interfaces() && m_owners[interfaceNumber] == nobody,
        "a driver takes only what is free");
    m_owners[interfaceNumber] = kernelDriver;
}

void CheckedUsbfs::submit(
    int file, std::uint64_t address, std::uint8_t endpoint, const ControlRequest &request)
{
    Urb urb;
    urb.address = address;
    urb.endpoint = endpoint;
    urb.request = request;
    urb.memory = m_memory;
    const int result = m_device->submit(file, std::move(urb));
    m_device->collect();
    if (endpoint != 0)
        ownForEndpoint(file, endpoint, result);
    if (result != 0)
        return;
    m_files[file].insert(address);
    if (endpoint == 0) {
        ++m_requests;
        ownForRequest(file, request);
    }
}

void CheckedUsbfs::discard(int file, std::uint64_t address)
{
    if (m_device->discard(file, address) == 0)
        expect(m_files[file].count(address) != 0, "only what was handed in can be discarded");
}

void CheckedUsbfs::reap(int file)
{
    const std::unique_ptr<Urb> urb = m_device->reap(file);
    if (urb == nullptr)
        return;
    std::multiset<std::uint64_t> &own = m_files[file];
    const auto found = own.find(urb->address);
    expect(found != own.end(), "what comes back was handed in, and has not come back before");
    own.erase(found);
    constexpr std::array<int, 7> ends{ 0, -EPIPE, -ENOENT, -ESHUTDOWN, -EPROTO, -ETIME,
        -EOVERFLOW };
    expect(std::find(ends.begin(), ends.end(), urb->status) != ends.end(),
        "a transfer ends in one of the ways in which transfers end");
    expect(urb->transferred <= urb->request.length && urb->answer.size() <= urb->request.length,
        "an answer is not longer than was asked for");
    expect(urb->status == 0 || urb->status == -EOVERFLOW || urb->transferred == 0,
        "a transfer that failed has no data");
    expect(urb->memory == m_memory, "a transfer keeps its memory");
}

void CheckedUsbfs::transfer(int file, const ControlRequest &request)
{
    const std::int64_t ticket = m_device->begin(file, request);
    if (ticket < 0)
        return;
    ++m_requests;
    ownForRequest(file, request);
    m_device->collect();
    const std::unique_ptr<Urb> urb = m_device->finish(file, static_cast<std::uint64_t>(ticket));
    if (urb == nullptr)
        return m_device->giveUp(file, static_cast<std::uint64_t>(ticket));
    expect(urb->transferred <= request.length, "an answer is not longer than was asked for");
    if (urb->status == 0 && request.hostReads())
        expect(urb->answer.size() == urb->transferred, "as many bytes are there as are reported");
}

void CheckedUsbfs::letTimePass()
{
    const auto wait = m_device->nextAnswer();
    if (!wait)
        return;
    const int before = m_cable->requestsUnderWay();
    m_now += *wait;
    m_device->collect();
    expect(m_cable->requestsUnderWay() < before, "a request is answered when its time has come");
}

void CheckedUsbfs::unplug()
{
    m_device->unplug();
    expect(m_cable->requestsUnderWay() == 0, "nothing is under way without a cable");
    finish();
}

void CheckedUsbfs::finish()
{
    while (m_device->nextAnswer())
        letTimePass();
    expect(m_cable->requestsUnderWay() == 0, "every request is answered in the end");
    while (anyFile()) {
        const int file = m_files.begin()->first;
        for (std::size_t count = m_files[file].size(); count > 0; --count)
            reap(file);
        expect(m_device->reap(file) == nullptr, "nothing comes back that was not handed in");
        expect(!m_device->unplugged() || m_files[file].empty(), "an unplug gives everything back");
        close(file);
        expect(!m_device->anythingToReap(file), "nothing is left for who has gone");
    }
    expect(m_cable->openFiles() == 0, "nothing is open when everybody has gone");
    expect(m_memory.use_count() == 1, "no transfer is kept when everybody has gone");
    checkLog();
}

void CheckedUsbfs::checkLog() const
{
    std::size_t requests = 0;
    for (const LogRecord &record : m_log->all()) {
        expectOneLine(toTimedText(record));
        if (record.event == LogRecord::Event::Request)
            ++requests;
    }
    expect(requests == m_requests, "the log has every request once");
}

} // namespace fuzz
