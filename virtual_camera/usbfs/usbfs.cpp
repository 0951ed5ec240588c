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

} // namespace virtual_camera
