// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT
#include "virtual_camera/usb/root_hub.h"

#include <algorithm>
#include <linux/usb/ch11.h>
#include <linux/usb/ch9.h>
#include <utility>

namespace virtual_camera {

namespace {

constexpr char manufacturer[] = "Virtual camera";
constexpr char product[] = "Root hub";
constexpr char serial[] = "1";

// The ids are those of the kernel's own root hubs.
Descriptors describe()
{
    Descriptors all;
    all.device = { 18, USB_DT_DEVICE, 0x00, 0x02, USB_CLASS_HUB, 0, 0, 64, 0x6b, 0x1d, 0x02, 0x00,
        0x00, 0x01, 1, 2, 3, 1 };
    all.configuration = { 9, USB_DT_CONFIG, 25, 0, 1, 1, 0, 0xe0, 0, // self-powered
        9, USB_DT_INTERFACE, 0, 0, 1, USB_CLASS_HUB, 0, 0, 0,        //
        7, USB_DT_ENDPOINT, 0x81, USB_ENDPOINT_XFER_INT, 4, 0, 12 };
    all.qualifier = { 10, USB_DT_DEVICE_QUALIFIER, 0x00, 0x02, USB_CLASS_HUB, 0, 0, 64, 1, 0 };
    all.strings = { { 4, USB_DT_STRING, 0x09, 0x04 }, stringDescriptor(manufacturer),
        stringDescriptor(product), stringDescriptor(serial) };
    return all;
}

Answer upTo(const ControlRequest &request, Bytes bytes)
{
    bytes.resize(std::min<std::size_t>(request.length, bytes.size()));
    return Answer::done(std::move(bytes));
}

// USB 2.0, section 11.23.2.1
Bytes hubDescriptor(int ports)
{
    constexpr std::uint8_t perPortPower = 0x09;
    constexpr std::uint8_t powerGood = 10; // after so many times 2 ms
    const std::size_t bitmap = static_cast<std::size_t>(ports) / 8 + 1;
    Bytes bytes{ 0, USB_DT_HUB, static_cast<std::uint8_t>(ports), perPortPower, 0, powerGood, 0 };
    bytes.insert(bytes.end(), bitmap, 0x00); // every device can be pulled out
    bytes.insert(bytes.end(), bitmap, 0xff);
    bytes[0] = static_cast<std::uint8_t>(bytes.size());
    return bytes;
}

} // namespace

RootHub::RootHub(int ports) : m_ports(ports)
{
    const auto answer = [connected = m_connected, ports](const ControlRequest &request) {
        if (!request.hostReads())
            return Answer::stall();
        const bool toHub = (request.requestType & USB_RECIP_MASK) == USB_RECIP_DEVICE;
        if (toHub && request.request == USB_REQ_GET_DESCRIPTOR)
            return upTo(request, hubDescriptor(ports));
        if (request.request != USB_REQ_GET_STATUS)
            return Answer::stall();
        if (toHub)
            return upTo(request, { 0, 0, 0, 0 });
        if (request.index < 1 || request.index > ports)
            return Answer::stall();
        constexpr unsigned used =
            USB_PORT_STAT_CONNECTION | USB_PORT_STAT_ENABLE | USB_PORT_STAT_HIGH_SPEED;
        const unsigned status = USB_PORT_STAT_POWER | ((*connected)[request.index] ? used : 0U);
        return upTo(request,
            { static_cast<std::uint8_t>(status & 0xffU), static_cast<std::uint8_t>(status >> 8U), 0,
                0 });
    };
    auto log = std::make_shared<RequestLog>();
    log->keepRecords(false);
    m_cable = std::make_shared<Cable>(0, nullptr, Firmware(describe(), answer), std::move(log),
        [] { return std::chrono::microseconds(0); });
}

Bus::Plug RootHub::plug() const
{
    return { address, 0, manufacturer, product, serial, "hub", m_cable, m_ports };
}

void RootHub::setConnected(int port, bool connected)
{
    m_connected->at(static_cast<std::size_t>(port)) = connected;
}

} // namespace virtual_camera
