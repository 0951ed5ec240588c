// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT
#include "virtual_camera/usbfs/usbfs_device.h"

#include <algorithm>
#include <cerrno>
#include <utility>

namespace virtual_camera {

using Result = LogRecord::Result;

UsbfsDevice::UsbfsDevice(Wiring wiring)
    : m_wiring(std::move(wiring)),
      m_holders(static_cast<std::size_t>(m_wiring.usb->layout().interfaces), kernelDriver)
{ }

int UsbfsDevice::openFile()
{
    m_files[++m_lastFile];
    logEvent(m_lastFile, LogRecord::Event::Open);
    return m_lastFile;
}

void UsbfsDevice::closeFile(int file)
{
    for (const Urb &urb : m_files[file].waiting)
        logRequest(file, urb, Result::Cancelled);
    m_files.erase(file);
    std::replace(m_holders.begin(), m_holders.end(), file, int{ nobody });
    logEvent(file, LogRecord::Event::Close);
}

int UsbfsDevice::claim(int file, unsigned interfaceNumber)
{
    if (interfaceNumber >= m_holders.size())
        return -ENOENT;
    int &holder = m_holders[interfaceNumber];
    if (holder == file)
        return 0;
    if (holder != nobody || m_wiring.faults->claimRefused)
        return -EBUSY;
    holder = file;
    return 0;
}

int UsbfsDevice::release(int file, unsigned interfaceNumber)
{
    if (interfaceNumber >= m_holders.size())
        return -ENOENT;
    if (m_holders[interfaceNumber] != file)
        return -EINVAL;
    m_holders[interfaceNumber] = nobody;
    return 0;
}

// The kernel claims an interface for a program that uses it without asking.
int UsbfsDevice::checkClaim(int file, unsigned interfaceNumber)
{
    return claim(file, interfaceNumber);
}

int UsbfsDevice::setInterface(int file, unsigned interfaceNumber, unsigned alternate)
{
    constexpr unsigned highestAlternate = 0xff; // that a descriptor can have
    const int error = checkClaim(file, interfaceNumber);
    if (error != 0)
        return error;
    if (alternate > highestAlternate)
        return -EINVAL;
    ControlRequest request;
    request.requestType = 0x01;
    request.request = 11;
    request.value = static_cast<std::uint16_t>(alternate);
    request.index = static_cast<std::uint16_t>(interfaceNumber);
    return transfer(file, request);
}

int UsbfsDevice::clearHalt(unsigned endpoint) const
{
    return endpoint < 0x100
            && m_wiring.usb->layout().interfaceOf(static_cast<std::uint8_t>(endpoint)) >= 0
        ? 0
        : -ENOENT;
}

int UsbfsDevice::setConfiguration(int value) const
{
    if (value != 1)
        return -EINVAL;
    const bool held = std::any_of(
        m_holders.begin(), m_holders.end(), [](int holder) { return holder != nobody; });
    return held ? -EBUSY : 0;
}

std::string UsbfsDevice::driver(unsigned interfaceNumber) const
{
    if (interfaceNumber >= m_holders.size())
        return {};
    const int holder = m_holders[interfaceNumber];
    if (holder == kernelDriver && !m_wiring.faults->claimRefused)
        return m_wiring.driver;
    return holder == nobody && !m_wiring.faults->claimRefused ? "" : "usbfs";
}

int UsbfsDevice::detachDriver(unsigned interfaceNumber)
{
    if (interfaceNumber >= m_holders.size())
        return -EINVAL;
    if (m_holders[interfaceNumber] == nobody)
        return -ENODATA;
    m_holders[interfaceNumber] = nobody;
    return 0;
}

int UsbfsDevice::attachDriver(unsigned interfaceNumber)
{
    if (interfaceNumber >= m_holders.size())
        return -EINVAL;
    if (m_holders[interfaceNumber] != nobody)
        return -EBUSY;
    m_holders[interfaceNumber] = kernelDriver;
    return 1; // so many drivers took it
}

bool UsbfsDevice::mayUse(int file, const ControlRequest &request, int &error)
{
    constexpr int interfaceRecipient = 1;
    constexpr unsigned vendorRequest = 0x40;
    error = 0;
    if (request.recipient() == interfaceRecipient && (request.requestType & 0x60U) != vendorRequest)
        error = checkClaim(file, request.interfaceNumber());
    return error == 0;
}

int UsbfsDevice::submit(int file, Urb urb)
{
    int error = 0;
    if (urb.endpoint == 0) {
        if (!mayUse(file, urb.request, error))
            return error;
    } else {
        const int interfaceNumber = m_wiring.usb->layout().interfaceOf(urb.endpoint);
        if (interfaceNumber < 0)
            return -ENOENT;
        error = checkClaim(file, static_cast<unsigned>(interfaceNumber));
        if (error != 0)
            return error;
    }
    const bool control = urb.endpoint == 0;
    const std::uint64_t number = urb.number = ++m_lastUrb;
    m_files[file].waiting.push_back(std::move(urb));
    // Nothing ever comes from the other endpoints: no event happens, no picture is sent.
    if (!control)
        return 0;
    const std::chrono::milliseconds wait = takeTurn();
    if (wait.count() == 0)
        finish(file, number);
    else
        m_wiring.later(wait, [this, file, number] { finish(file, number); });
    return 0;
}

// How long until the request that just came is answered.
std::chrono::milliseconds UsbfsDevice::takeTurn()
{
    const auto now = std::chrono::steady_clock::now();
    if (requestsUnderWay() == 1) // those before it are answered or cancelled
        m_busyUntil = now;
    m_busyUntil = std::max(m_busyUntil, now) + m_wiring.faults->delay;
    // Rounded up: an answer must not overtake the one before it.
    return std::chrono::ceil<std::chrono::milliseconds>(m_busyUntil - now);
}

void UsbfsDevice::finish(int file, std::uint64_t number)
{
    const auto found = m_files.find(file);
    if (found == m_files.end())
        return;
    std::deque<Urb> &waiting = found->second.waiting;
    const auto urb = std::find_if(waiting.begin(), waiting.end(),
        [number](const Urb &candidate) { return candidate.number == number; });
    if (urb == waiting.end())
        return;
    perform(file, *urb);
    found->second.done.push_back(std::move(*urb));
    waiting.erase(urb);
}

void UsbfsDevice::perform(int file, Urb &urb)
{
    Answer answer = Answer::stall();
    Result result = Result::Stall;
    if (!m_wiring.faults->stalls(urb.request))
        answer = m_wiring.usb->answer(urb.request);
    if (!answer.stalled) {
        result = Result::Ok;
        const std::optional<std::size_t> limit = m_wiring.faults->limit(urb.request);
        if (limit && *limit < answer.data.size()) {
            answer.data.resize(*limit);
            result = Result::Short;
        }
    }
    urb.status = answer.stalled ? -EPIPE : 0;
    urb.answer = std::move(answer.data);
    if (urb.status == 0)
        urb.transferred = urb.request.hostReads() ? urb.answer.size() : urb.request.data.size();
    logRequest(file, urb, result);
}

int UsbfsDevice::discard(int file, std::uint64_t address)
{
    File &queues = m_files[file];
    const auto urb = std::find_if(queues.waiting.begin(), queues.waiting.end(),
        [address](const Urb &candidate) { return candidate.address == address; });
    if (urb == queues.waiting.end())
        return -EINVAL;
    urb->status = -ENOENT;
    logRequest(file, *urb, Result::Cancelled);
    queues.done.push_back(std::move(*urb));
    queues.waiting.erase(urb);
    return 0;
}

std::unique_ptr<Urb> UsbfsDevice::reap(int file)
{
    std::deque<Urb> &done = m_files[file].done;
    if (done.empty())
        return nullptr;
    auto urb = std::make_unique<Urb>(std::move(done.front()));
    done.pop_front();
    return urb;
}

int UsbfsDevice::transfer(int file, ControlRequest &request)
{
    int error = 0;
    if (!mayUse(file, request, error))
        return error;
    Urb urb;
    urb.request = request;
    perform(file, urb);
    if (urb.status != 0)
        return urb.status;
    if (request.hostReads())
        request.data = urb.answer;
    return static_cast<int>(urb.transferred);
}

void UsbfsDevice::unplug()
{
    m_unplugged = true;
    for (auto &[number, file] : m_files) {
        for (Urb &urb : file.waiting) {
            urb.status = -ESHUTDOWN;
            logRequest(number, urb, Result::Gone);
            file.done.push_back(std::move(urb));
        }
        file.waiting.clear();
    }
}

bool UsbfsDevice::anythingToReap() const
{
    return std::any_of(
        m_files.begin(), m_files.end(), [](const auto &file) { return !file.second.done.empty(); });
}

int UsbfsDevice::requestsUnderWay() const
{
    std::ptrdiff_t count = 0;
    for (const auto &[number, file] : m_files)
        count += std::count_if(file.waiting.begin(), file.waiting.end(),
            [](const Urb &urb) { return urb.endpoint == 0; });
    return static_cast<int>(count);
}

void UsbfsDevice::logRequest(int file, const Urb &urb, Result result)
{
    if (urb.endpoint != 0)
        return;
    LogRecord record;
    record.device = m_wiring.number;
    record.file = file;
    record.request = urb.request;
    if (urb.request.hostReads())
        record.request.data = urb.answer;
    record.result = result;
    m_wiring.log->add(std::move(record));
}

void UsbfsDevice::logEvent(int file, LogRecord::Event event)
{
    LogRecord record;
    record.device = m_wiring.number;
    record.file = file;
    record.event = event;
    m_wiring.log->add(std::move(record));
}

} // namespace virtual_camera
