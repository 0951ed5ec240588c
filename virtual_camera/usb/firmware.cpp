// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT
#include "virtual_camera/usb/firmware.h"

#include <algorithm>
#include <linux/usb/ch9.h>
#include <utility>

namespace virtual_camera {

namespace {

// A device never sends more than it was asked for.
Answer upTo(std::uint16_t length, Bytes bytes)
{
    bytes.resize(std::min<std::size_t>(length, bytes.size()));
    return Answer::done(std::move(bytes));
}

} // namespace

Firmware::Firmware(Descriptors descriptors, ClassRequests classRequests)
    : m_descriptors(std::move(descriptors)), m_layout(readLayout(m_descriptors.configuration)),
      m_alternates(static_cast<std::size_t>(m_layout.interfaces())),
      m_classRequests(std::move(classRequests))
{ }

void Firmware::reset() { std::fill(m_alternates.begin(), m_alternates.end(), std::uint8_t{ 0 }); }

Answer Firmware::answer(const ControlRequest &request)
{
    if (request.isStandard())
        return answerStandard(request);
    return m_classRequests ? m_classRequests(request) : Answer::stall();
}

Answer Firmware::answerStandard(const ControlRequest &request)
{
    const bool reads = request.hostReads();
    const bool knownInterface =
        request.recipient() == USB_RECIP_INTERFACE && request.index < m_alternates.size();
    switch (request.request) {
    case USB_REQ_GET_STATUS:
        return reads ? upTo(request.length, { status(request), 0 }) : Answer::stall();
    case USB_REQ_CLEAR_FEATURE:
    case USB_REQ_SET_FEATURE:
        return reads ? Answer::stall() : Answer::done();
    case USB_REQ_GET_DESCRIPTOR:
        return reads && request.recipient() == USB_RECIP_DEVICE ? descriptor(request)
                                                                : Answer::stall();
    case USB_REQ_GET_CONFIGURATION:
        return reads ? upTo(request.length, { 1 }) : Answer::stall();
    case USB_REQ_SET_CONFIGURATION:
        return !reads && request.value <= 1 ? Answer::done() : Answer::stall();
    case USB_REQ_GET_INTERFACE:
        return reads && knownInterface ? upTo(request.length, { m_alternates[request.index] })
                                       : Answer::stall();
    case USB_REQ_SET_INTERFACE:
        return !reads && knownInterface ? setAlternate(request) : Answer::stall();
    default:
        return Answer::stall();
    }
}

std::uint8_t Firmware::status(const ControlRequest &request) const
{
    const bool selfPowered = (m_descriptors.configuration[7] & USB_CONFIG_ATT_SELFPOWER) != 0;
    return request.recipient() == USB_RECIP_DEVICE && selfPowered ? 1 : 0;
}

Answer Firmware::descriptor(const ControlRequest &request) const
{
    const std::uint8_t number = static_cast<std::uint8_t>(request.value & 0xffU);
    switch (request.value >> 8U) {
    case USB_DT_DEVICE:
        return upTo(request.length, m_descriptors.device);
    case USB_DT_CONFIG:
        return number == 0 ? upTo(request.length, m_descriptors.configuration) : Answer::stall();
    case USB_DT_STRING:
        if (number >= m_descriptors.strings.size())
            return Answer::stall();
        return upTo(request.length, m_descriptors.strings[number]);
    case USB_DT_DEVICE_QUALIFIER:
        return upTo(request.length, m_descriptors.qualifier);
    default:
        return Answer::stall();
    }
}

Answer Firmware::setAlternate(const ControlRequest &request)
{
    if (m_layout.find(request.index, request.value) == nullptr)
        return Answer::stall();
    m_alternates[request.index] = static_cast<std::uint8_t>(request.value);
    return Answer::done();
}

} // namespace virtual_camera
