// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT
#include "virtual_camera/usb/usb_device.h"

#include "virtual_camera/camera/camera_model.h"

#include <algorithm>
#include <utility>

namespace virtual_camera {

namespace {

enum StandardRequest : std::uint8_t {
    GetStatus = 0,
    ClearFeature = 1,
    SetFeature = 3,
    GetDescriptor = 6,
    GetConfiguration = 8,
    SetConfiguration = 9,
    GetInterface = 10,
    SetInterface = 11
};

constexpr int toDevice = 0;
constexpr int toInterface = 1;

// A device never sends more than it was asked for.
Answer upTo(std::uint16_t length, Bytes bytes)
{
    bytes.resize(std::min<std::size_t>(length, bytes.size()));
    return Answer::done(std::move(bytes));
}

} // namespace

UsbDevice::UsbDevice(Descriptors descriptors, CameraModel *camera)
    : m_descriptors(std::move(descriptors)), m_layout(readLayout(m_descriptors.configuration)),
      m_alternates(static_cast<std::size_t>(m_layout.interfaces)), m_camera(camera)
{ }

Answer UsbDevice::answer(const ControlRequest &request)
{
    if (request.isStandard())
        return answerStandard(request);
    if (m_camera != nullptr)
        return m_camera->answer(request);
    return Answer::stall();
}

Answer UsbDevice::answerStandard(const ControlRequest &request)
{
    const bool reads = request.hostReads();
    const bool knownInterface =
        request.recipient() == toInterface && request.index < m_alternates.size();
    switch (request.request) {
    case GetStatus:
        return reads ? upTo(request.length, { 0, 0 }) : Answer::stall();
    case ClearFeature:
    case SetFeature:
        return reads ? Answer::stall() : Answer::done();
    case GetDescriptor:
        return reads && request.recipient() == toDevice ? descriptor(request) : Answer::stall();
    case GetConfiguration:
        return reads ? upTo(request.length, { 1 }) : Answer::stall();
    case SetConfiguration:
        return !reads && request.value <= 1 ? Answer::done() : Answer::stall();
    case GetInterface:
        return reads && knownInterface ? upTo(request.length, { m_alternates[request.index] })
                                       : Answer::stall();
    case SetInterface:
        return !reads && knownInterface ? setAlternate(request) : Answer::stall();
    default:
        return Answer::stall();
    }
}

Answer UsbDevice::descriptor(const ControlRequest &request) const
{
    constexpr std::uint8_t device = 1;
    constexpr std::uint8_t configuration = 2;
    constexpr std::uint8_t string = 3;
    constexpr std::uint8_t qualifier = 6;
    const std::uint8_t number = static_cast<std::uint8_t>(request.value & 0xffU);
    switch (request.value >> 8U) {
    case device:
        return upTo(request.length, m_descriptors.device);
    case configuration:
        return number == 0 ? upTo(request.length, m_descriptors.configuration) : Answer::stall();
    case string:
        if (number >= m_descriptors.strings.size())
            return Answer::stall();
        return upTo(request.length, m_descriptors.strings[number]);
    case qualifier:
        return upTo(request.length, m_descriptors.qualifier);
    default:
        return Answer::stall();
    }
}

Answer UsbDevice::setAlternate(const ControlRequest &request)
{
    const std::uint8_t settings =
        m_camera != nullptr && request.index == streamingInterface ? 2 : 1;
    if (request.value >= settings)
        return Answer::stall();
    m_alternates[request.index] = static_cast<std::uint8_t>(request.value);
    return Answer::done();
}

} // namespace virtual_camera
