// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT
#include "virtual_camera/usb/video_descriptors.h"

#include "virtual_camera/camera/streaming_parameters.h"
#include "virtual_camera/usb/descriptors.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <linux/usb/ch9.h>
#include <linux/usb/video.h>

namespace virtual_camera {

namespace {

using W = DescriptorWriter;

constexpr std::uint16_t uvc11 = 0x0110;
constexpr std::uint16_t uvc15 = 0x0150;

// Identifies the extension unit to programs that know it; drawn at random.
constexpr std::array<std::uint32_t, 4> extensionCode{ 0xb2bed292, 0xdda4d7cc, 0x552ee723,
    0x83d6c57f };

std::int64_t announcedControls(const CameraDescription &description, std::uint8_t entity)
{
    std::int64_t bits = 0;
    for (const ControlTraits &control : allControls()) {
        if (control.entity == entity && description.supports(control.control))
            bits |= std::int64_t{ 1 } << control.announcedBit;
    }
    return bits;
}

std::int64_t protocol(const CameraDescription &description)
{
    return description.videoClass >= uvc15 ? UVC_PC_PROTOCOL_15 : UVC_PC_PROTOCOL_UNDEFINED;
}

// Programs divide the objective's focal lengths by the ocular's to get the magnification, so any
// unit will do.
std::int64_t hundredthsOfMillimetre(double millimetres)
{
    constexpr double highest = 0xffff;
    return std::lround(std::clamp(millimetres * 100, 0.0, highest));
}

W cameraTerminalDescriptor(const CameraDescription &description)
{
    const std::int64_t shortest = hundredthsOfMillimetre(description.lens.shortestFocalLength);
    const std::int64_t longest = hundredthsOfMillimetre(description.lens.longestFocalLength);
    return W().add(USB_DT_CS_INTERFACE,
        { W::u8(UVC_VC_INPUT_TERMINAL), W::u8(cameraTerminal), W::u16(UVC_ITT_CAMERA), W::u8(0),
            W::u8(0), W::u16(shortest), W::u16(longest), W::u16(shortest), W::u8(3),
            W::u24(announcedControls(description, cameraTerminal)) });
}

W connectorDescriptor()
{
    return W().add(USB_DT_CS_INTERFACE,
        { W::u8(UVC_VC_INPUT_TERMINAL), W::u8(cameraTerminal), W::u16(UVC_COMPOSITE_CONNECTOR),
            W::u8(0), W::u8(0) });
}

// It grew with each release: video standards in 1.1, a third byte of controls in 1.5.
W processingUnitDescriptor(const CameraDescription &description, std::int64_t source)
{
    const std::int64_t controls = announcedControls(description, processingUnit);
    const W::Number subtype = W::u8(UVC_VC_PROCESSING_UNIT);
    if (description.videoClass >= uvc15)
        return W().add(USB_DT_CS_INTERFACE,
            { subtype, W::u8(processingUnit), W::u8(source), W::u16(0), W::u8(3), W::u24(controls),
                W::u8(0), W::u8(0) });
    if (description.videoClass >= uvc11)
        return W().add(USB_DT_CS_INTERFACE,
            { subtype, W::u8(processingUnit), W::u8(source), W::u16(0), W::u8(2), W::u16(controls),
                W::u8(0), W::u8(0) });
    return W().add(USB_DT_CS_INTERFACE,
        { subtype, W::u8(processingUnit), W::u8(source), W::u16(0), W::u8(2), W::u16(controls),
            W::u8(0) });
}

W extensionUnitDescriptor(const CameraDescription &description, std::int64_t source)
{
    return W().add(USB_DT_CS_INTERFACE,
        { W::u8(UVC_VC_EXTENSION_UNIT), W::u8(extensionUnit), W::u32(extensionCode[0]),
            W::u32(extensionCode[1]), W::u32(extensionCode[2]), W::u32(extensionCode[3]), W::u8(1),
            W::u8(1), W::u8(source), W::u8(1), W::u8(announcedControls(description, extensionUnit)),
            W::u8(0) });
}

// From the terminal at which the picture comes in, through the units, to where it goes out.
W entityDescriptors(const CameraDescription &description)
{
    W all;
    all.add(description.hasCameraTerminal ? cameraTerminalDescriptor(description)
                                          : connectorDescriptor());
    std::int64_t source = cameraTerminal;
    if (description.hasProcessingUnit) {
        all.add(processingUnitDescriptor(description, source));
        source = processingUnit;
    }
    if (description.hasExtensionUnit) {
        all.add(extensionUnitDescriptor(description, source));
        source = extensionUnit;
    }
    all.add(USB_DT_CS_INTERFACE,
        { W::u8(UVC_VC_OUTPUT_TERMINAL), W::u8(outputTerminal), W::u16(UVC_TT_STREAMING), W::u8(0),
            W::u8(source), W::u8(0) });
    return all;
}

W controlInterfaceDescriptors(const CameraDescription &description, std::int64_t name)
{
    constexpr std::int64_t eventBytes = 16;
    constexpr std::int64_t pollingInterval = 8; // every 128 microframes
    const W entities = entityDescriptors(description);
    W all;
    all.add(USB_DT_INTERFACE,
        { W::u8(controlInterface), W::u8(0), W::u8(1), W::u8(USB_CLASS_VIDEO),
            W::u8(UVC_SC_VIDEOCONTROL), W::u8(protocol(description)), W::u8(name) });
    all.add(USB_DT_CS_INTERFACE,
        { W::u8(UVC_VC_HEADER), W::u16(description.videoClass),
            W::u16(UVC_DT_HEADER_SIZE(1) + entities.size()), W::u32(clockFrequency), W::u8(1),
            W::u8(streamingInterface) });
    all.add(entities);
    all.add(USB_DT_ENDPOINT,
        { W::u8(statusEndpoint), W::u8(USB_ENDPOINT_XFER_INT), W::u16(eventBytes),
            W::u8(pollingInterval) });
    all.add(USB_DT_CS_ENDPOINT, { W::u8(UVC_EP_INTERRUPT), W::u16(eventBytes) });
    return all;
}

W formatDescriptors()
{
    constexpr std::int64_t slowestBits = 10000000; // per second
    constexpr std::int64_t fastestBits = 60000000;
    W formats;
    formats.add(USB_DT_CS_INTERFACE,
        { W::u8(UVC_VS_FORMAT_MJPEG), W::u8(1), W::u8(1), W::u8(1), W::u8(1), W::u8(0), W::u8(0),
            W::u8(0), W::u8(0) });
    formats.add(USB_DT_CS_INTERFACE,
        { W::u8(UVC_VS_FRAME_MJPEG), W::u8(1), W::u8(0), W::u16(pictureWidth),
            W::u16(pictureHeight), W::u32(slowestBits), W::u32(fastestBits), W::u32(pictureBytes),
            W::u32(frameInterval), W::u8(1), W::u32(frameInterval) });
    return formats;
}

// Setting 0 takes no bandwidth and has no endpoint, setting 1 has the one for pictures.
W streamingInterfaceDescriptors(const CameraDescription &description)
{
    constexpr std::int64_t asynchronous = 1 << 2;
    const W formats = formatDescriptors();
    const auto setting = [&](std::int64_t alternate, std::int64_t endpoints) {
        return W().add(USB_DT_INTERFACE,
            { W::u8(streamingInterface), W::u8(alternate), W::u8(endpoints), W::u8(USB_CLASS_VIDEO),
                W::u8(UVC_SC_VIDEOSTREAMING), W::u8(protocol(description)), W::u8(0) });
    };
    W all;
    all.add(setting(0, 0));
    all.add(USB_DT_CS_INTERFACE,
        { W::u8(UVC_VS_INPUT_HEADER), W::u8(1),
            W::u16(UVC_DT_INPUT_HEADER_SIZE(1, 1) + formats.size()), W::u8(pictureEndpoint),
            W::u8(0), W::u8(outputTerminal), W::u8(0), W::u8(0), W::u8(0), W::u8(1), W::u8(0) });
    all.add(formats);
    all.add(setting(1, 1));
    all.add(USB_DT_ENDPOINT,
        { W::u8(pictureEndpoint), W::u8(USB_ENDPOINT_XFER_ISOC | asynchronous),
            W::u16(streamingPayload), W::u8(1) });
    return all;
}

} // namespace

DescriptorWriter videoDescriptors(const CameraDescription &description, std::int64_t name)
{
    W all;
    all.add(USB_DT_INTERFACE_ASSOCIATION,
        { W::u8(controlInterface), W::u8(2), W::u8(USB_CLASS_VIDEO),
            W::u8(UVC_SC_VIDEO_INTERFACE_COLLECTION), W::u8(UVC_PC_PROTOCOL_UNDEFINED),
            W::u8(name) });
    all.add(controlInterfaceDescriptors(description, name));
    all.add(streamingInterfaceDescriptors(description));
    return all;
}

} // namespace virtual_camera
