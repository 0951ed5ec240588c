// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT
#include "virtual_camera/usbfs/usbfs.h"

#include <algorithm>
#include <cerrno>
#include <linux/usb/ch9.h>
#include <utility>

namespace virtual_camera {

namespace {

ControlRequest hostRequest(int recipient, std::uint8_t request, unsigned value, unsigned index)
{
    ControlRequest made;
    made.requestType = static_cast<std::uint8_t>(USB_DIR_OUT | USB_TYPE_STANDARD | recipient);
    made.request = request;
    made.value = static_cast<std::uint16_t>(value);
    made.index = static_cast<std::uint16_t>(index);
    return made;
}

} // namespace

Usbfs::Usbfs(std::shared_ptr<Cable> cable, std::string driver)
    : m_cable(std::move(cable)), m_driver(std::move(driver)),
      m_holders(static_cast<std::size_t>(m_cable->layout().interfaces()), kernelDriver),
      m_alternates(m_holders.size())
{ }

int Usbfs::openFile()
{
    m_files[++m_lastFile];
    m_cable->opened(m_lastFile);
    return m_lastFile;
}

void Usbfs::closeFile(int file)
{
    for (const Urb &urb : m_files[file].waiting)
        m_cable->cancel(urb.ticket);
    for (const auto &[ticket, urb] : m_files[file].calls)
        m_cable->cancel(ticket);
    m_files.erase(file);
    std::replace(m_holders.begin(), m_holders.end(), file, int{ nobody });
    m_cable->closed(file);
}

int Usbfs::claim(int file, unsigned interfaceNumber)
{
    if (interfaceNumber >= m_holders.size())
        return -ENOENT;
    int &holder = m_holders[interfaceNumber];
    if (holder == file)
        return 0;
    if (holder != nobody || m_cable->claimRefused())
        return -EBUSY;
    holder = file;
    return 0;
}

int Usbfs::release(int file, unsigned interfaceNumber)
{
    if (interfaceNumber >= m_holders.size())
        return -ENOENT;
    if (m_holders[interfaceNumber] != file)
        return -EINVAL;
    cancelTransfers(interfaceNumber);
    m_holders[interfaceNumber] = nobody;
    return 0;
}

void Usbfs::cancelTransfers(unsigned interfaceNumber)
{
    const auto holder = m_files.find(m_holders[interfaceNumber]);
    if (holder == m_files.end())
        return;
    std::deque<Urb> &waiting = holder->second.waiting;
    const auto isOurs = [&](const Urb &urb) {
        return urb.endpoint != 0
            && m_cable->layout().interfaceOf(urb.endpoint) == static_cast<int>(interfaceNumber);
    };
    for (auto urb = waiting.begin();
        (urb = std::find_if(urb, waiting.end(), isOurs)) != waiting.end(); urb = waiting.begin())
        moveToDone(holder->second, urb, -ENOENT);
}

int Usbfs::perform(int file, const ControlRequest &request)
{
    return statusOf(m_cable->answerNow(file, request).result);
}

int Usbfs::setInterface(int file, unsigned interfaceNumber, unsigned alternate)
{
    constexpr unsigned highestAlternate = 0xff; // that a descriptor can have
    if (const int error = claim(file, interfaceNumber))
        return error;
    if (alternate > highestAlternate)
        return -EINVAL;
    cancelTransfers(interfaceNumber);
    const int error = perform(
        file, hostRequest(USB_RECIP_INTERFACE, USB_REQ_SET_INTERFACE, alternate, interfaceNumber));
    if (error == 0)
        m_alternates[interfaceNumber] = static_cast<int>(alternate);
    return error;
}

int Usbfs::clearHalt(int file, unsigned endpoint)
{
    constexpr unsigned highestAddress = 0xff;
    if (endpoint > highestAddress)
        return -EINVAL;
    if (const int error = checkUse(file, static_cast<std::uint8_t>(endpoint)))
        return error;
    return perform(
        file, hostRequest(USB_RECIP_ENDPOINT, USB_REQ_CLEAR_FEATURE, USB_ENDPOINT_HALT, endpoint));
}

int Usbfs::setConfiguration(int file, int value)
{
    if (value != 1)
        return -EINVAL;
    const bool held = std::any_of(
        m_holders.begin(), m_holders.end(), [](int holder) { return holder != nobody; });
    if (held)
        return -EBUSY;
    std::fill(m_alternates.begin(), m_alternates.end(), 0);
    return perform(file, hostRequest(USB_RECIP_DEVICE, USB_REQ_SET_CONFIGURATION, 1, 0));
}

int Usbfs::reset(int file)
{
    m_cable->reset(file);
    // The kernel then chooses the settings again that were chosen before.
    for (std::size_t i = 0; i < m_alternates.size(); ++i) {
        if (m_alternates[i] != 0)
            perform(file,
                hostRequest(USB_RECIP_INTERFACE, USB_REQ_SET_INTERFACE,
                    static_cast<unsigned>(m_alternates[i]), static_cast<unsigned>(i)));
    }
    return 0;
}

std::string Usbfs::driver(unsigned interfaceNumber) const
{
    if (interfaceNumber >= m_holders.size())
        return {};
    const int holder = m_holders[interfaceNumber];
    const bool refused = m_cable->claimRefused();
    if (holder == kernelDriver && !refused)
        return m_driver;
    return holder == nobody && !refused ? "" : "usbfs";
}

int Usbfs::detachDriver(unsigned interfaceNumber)
{
    if (interfaceNumber >= m_holders.size())
        return -EINVAL;
    if (m_holders[interfaceNumber] == nobody)
        return -ENODATA;
    cancelTransfers(interfaceNumber);
    m_holders[interfaceNumber] = nobody;
    return 0;
}

int Usbfs::attachDriver(unsigned interfaceNumber)
{
    if (interfaceNumber >= m_holders.size())
        return -EINVAL;
    if (m_holders[interfaceNumber] != nobody)
        return -EBUSY;
    m_holders[interfaceNumber] = kernelDriver;
    return 1; // so many drivers took it
}

// The kernel claims an interface for a program that uses it without asking.
int Usbfs::checkUse(int file, const ControlRequest &request)
{
    if (request.recipient() != USB_RECIP_INTERFACE
        || (request.requestType & USB_TYPE_MASK) == USB_TYPE_VENDOR)
        return 0;
    return claim(file, request.interfaceNumber());
}

int Usbfs::checkUse(int file, std::uint8_t endpoint)
{
    const int interfaceNumber = m_cable->layout().interfaceOf(endpoint);
    if (interfaceNumber < 0)
        return -ENOENT;
    if (const int error = claim(file, static_cast<unsigned>(interfaceNumber)))
        return error;
    const auto *setting = m_cable->layout().find(
        interfaceNumber, m_alternates[static_cast<std::size_t>(interfaceNumber)]);
    const auto &endpoints = setting->endpoints;
    return std::find(endpoints.begin(), endpoints.end(), endpoint) != endpoints.end() ? 0 : -ENOENT;
}

int Usbfs::submit(int file, Urb urb)
{
    const bool control = urb.endpoint == 0;
    if (const int error = control ? checkUse(file, urb.request) : checkUse(file, urb.endpoint))
        return error;
    // Nothing ever comes from the other endpoints: no event happens, no picture is sent.
    if (control)
        urb.ticket = m_cable->send(file, urb.request);
    m_files[file].waiting.push_back(std::move(urb));
    return 0;
}

std::int64_t Usbfs::begin(int file, const ControlRequest &request)
{
    if (const int error = checkUse(file, request))
        return error;
    Urb urb;
    urb.request = request;
    urb.ticket = m_cable->send(file, request);
    const std::uint64_t ticket = urb.ticket;
    m_files[file].calls[ticket] = std::move(urb);
    return static_cast<std::int64_t>(ticket);
}

std::unique_ptr<Urb> Usbfs::finish(int file, std::uint64_t ticket)
{
    auto &calls = m_files[file].calls;
    const auto call = calls.find(ticket);
    if (call == calls.end() || !call->second.done)
        return nullptr;
    auto urb = std::make_unique<Urb>(std::move(call->second));
    calls.erase(call);
    return urb;
}

void Usbfs::giveUp(int file, std::uint64_t ticket)
{
    m_cable->cancel(ticket);
    m_files[file].calls.erase(ticket);
}

int Usbfs::discard(int file, std::uint64_t address)
{
    std::deque<Urb> &waiting = m_files[file].waiting;
    const auto urb = std::find_if(waiting.begin(), waiting.end(),
        [address](const Urb &candidate) { return candidate.address == address; });
    if (urb == waiting.end())
        return -EINVAL;
    if (urb->endpoint == 0)
        m_cable->cancel(urb->ticket);
    moveToDone(m_files[file], urb, -ENOENT);
    return 0;
}

std::unique_ptr<Urb> Usbfs::reap(int file)
{
    std::deque<Urb> &done = m_files[file].done;
    if (done.empty())
        return nullptr;
    auto urb = std::make_unique<Urb>(std::move(done.front()));
    done.pop_front();
    return urb;
}

void Usbfs::collect()
{
    for (Cable::Answered &answer : m_cable->collect()) {
        for (auto &[number, file] : m_files) {
            const auto urb = std::find_if(file.waiting.begin(), file.waiting.end(),
                [&](const Urb &candidate) { return candidate.ticket == answer.ticket; });
            if (urb != file.waiting.end()) {
                settle(*urb, std::move(answer));
                moveToDone(file, urb, urb->status);
                break;
            }
            const auto call = file.calls.find(answer.ticket);
            if (call != file.calls.end()) {
                settle(call->second, std::move(answer));
                break;
            }
        }
    }
}

void Usbfs::settle(Urb &urb, Cable::Answered answer)
{
    urb.done = true;
    urb.status = statusOf(answer.result);
    urb.answer = std::move(answer.data);
    if (urb.status == 0 || urb.status == -EOVERFLOW)
        urb.transferred = urb.request.hostReads() ? urb.answer.size() : urb.request.data.size();
}

void Usbfs::moveToDone(File &file, std::deque<Urb>::iterator urb, int status)
{
    urb->done = true;
    urb->status = status;
    file.done.push_back(std::move(*urb));
    file.waiting.erase(urb);
}

std::optional<std::chrono::microseconds> Usbfs::nextAnswer() const
{
    return m_unplugged ? std::nullopt : m_cable->nextAnswer();
}

void Usbfs::unplug()
{
    m_unplugged = true;
    m_cable->pullOut();
    for (auto &[number, file] : m_files) {
        while (!file.waiting.empty())
            moveToDone(file, file.waiting.begin(), -ESHUTDOWN);
        for (auto &[ticket, call] : file.calls) {
            call.done = true;
            call.status = -ENODEV;
        }
    }
}

bool Usbfs::anythingToReap(int file) const
{
    const auto found = m_files.find(file);
    return found != m_files.end() && !found->second.done.empty();
}

} // namespace virtual_camera
