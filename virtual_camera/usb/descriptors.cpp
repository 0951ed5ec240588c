// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT
#include "virtual_camera/usb/descriptors.h"

#include "virtual_camera/camera/streaming_parameters.h"
#include "virtual_camera/usb/descriptor_writer.h"

namespace virtual_camera {

namespace {

using W = DescriptorWriter;

// Descriptor types of USB and of the USB Video Class.
constexpr std::uint8_t deviceType = 0x01;
constexpr std::uint8_t configurationType = 0x02;
constexpr std::uint8_t stringType = 0x03;
constexpr std::uint8_t interfaceType = 0x04;
constexpr std::uint8_t endpointType = 0x05;
constexpr std::uint8_t qualifierType = 0x06;
constexpr std::uint8_t associationType = 0x0b;
constexpr std::uint8_t classInterface = 0x24;
constexpr std::uint8_t classEndpoint = 0x25;

constexpr std::uint8_t videoClass = 0x0e;
constexpr std::int64_t packetSize0 = 64;
// libuvc refuses cameras that claim a later one.
constexpr std::int64_t videoClassRelease = 0x0110;

// The strings and the index that each got; 0 for one that is empty.
class Strings
{
public:
    Strings() : m_strings{ Bytes{ 4, stringType, 0x09, 0x04 } } { }

    std::int64_t add(const std::string &text)
    {
        if (text.empty())
            return 0;
        m_strings.push_back(stringDescriptor(text));
        return static_cast<std::int64_t>(m_strings.size()) - 1;
    }
    const std::vector<Bytes> &all() const { return m_strings; }

private:
    std::vector<Bytes> m_strings;
};

struct Identity
{
    std::int64_t vendor, product, release;
    std::int64_t manufacturerString, productString, serialString;
};

// A device that is several functions in one says so with class 0xef.
Bytes deviceDescriptor(const Identity &id, bool composite)
{
    W device;
    device.add(deviceType,
        { W::u16(0x0200), W::u8(composite ? 0xef : 0), W::u8(composite ? 2 : 0),
            W::u8(composite ? 1 : 0), W::u8(packetSize0), W::u16(id.vendor), W::u16(id.product),
            W::u16(id.release), W::u8(id.manufacturerString), W::u8(id.productString),
            W::u8(id.serialString), W::u8(1) });
    return device.bytes();
}

Bytes qualifierDescriptor(bool composite)
{
    W qualifier;
    qualifier.add(qualifierType,
        { W::u16(0x0200), W::u8(composite ? 0xef : 0), W::u8(composite ? 2 : 0),
            W::u8(composite ? 1 : 0), W::u8(packetSize0), W::u8(1), W::u8(0) });
    return qualifier.bytes();
}

Bytes configurationDescriptor(std::int64_t interfaces, const W &content)
{
    constexpr std::int64_t ownSize = 9;
    W configuration;
    configuration.add(configurationType,
        { W::u16(ownSize + content.size()), W::u8(interfaces), W::u8(1), W::u8(0), W::u8(0x80),
            W::u8(250) });
    configuration.add(content);
    return configuration.bytes();
}

std::int64_t announcedControls(const CameraDescription &description, std::uint8_t entity)
{
    std::int64_t bits = 0;
    for (const ControlTraits &control : allControls()) {
        if (control.entity == entity && description.supports(control.control))
            bits |= std::int64_t{ 1 } << control.announcedBit;
    }
    return bits;
}

W unitDescriptors(const CameraDescription &description)
{
    W units;
    if (description.hasCameraTerminal)
        units.add(classInterface,
            { W::u8(2), W::u8(cameraTerminal), W::u16(0x0201), W::u8(0), W::u8(0), W::u16(0),
                W::u16(0), W::u16(0), W::u8(3),
                W::u24(announcedControls(description, cameraTerminal)) });
    else
        units.add(classInterface, // composite video connector
            { W::u8(2), W::u8(cameraTerminal), W::u16(0x0401), W::u8(0), W::u8(0) });
    if (description.hasProcessingUnit)
        units.add(classInterface,
            { W::u8(5), W::u8(processingUnit), W::u8(cameraTerminal), W::u16(0), W::u8(2),
                W::u16(announcedControls(description, processingUnit)), W::u8(0), W::u8(0) });
    const std::uint8_t source = description.hasProcessingUnit ? processingUnit : cameraTerminal;
    units.add(classInterface, // output terminal
        { W::u8(3), W::u8(outputTerminal), W::u16(0x0101), W::u8(0), W::u8(source), W::u8(0) });
    return units;
}

W controlInterfaceDescriptors(const CameraDescription &description, std::int64_t name)
{
    const W units = unitDescriptors(description);
    constexpr std::int64_t headerSize = 13;
    W all;
    all.add(interfaceType,
        { W::u8(controlInterface), W::u8(0), W::u8(1), W::u8(videoClass), W::u8(1), W::u8(0),
            W::u8(name) });
    all.add(classInterface,
        { W::u8(1), W::u16(videoClassRelease), W::u16(headerSize + units.size()), W::u32(27000000),
            W::u8(1), W::u8(streamingInterface) });
    all.add(units);
    all.add(endpointType, { W::u8(statusEndpoint), W::u8(3), W::u16(16), W::u8(8) });
    all.add(classEndpoint, { W::u8(3), W::u16(16) });
    return all;
}

W streamingInterfaceDescriptors()
{
    constexpr std::int64_t slowestBits = 10000000; // per second
    constexpr std::int64_t fastestBits = 60000000;
    W formats;
    formats.add(classInterface, // compressed pictures
        { W::u8(6), W::u8(1), W::u8(1), W::u8(1), W::u8(1), W::u8(0), W::u8(0), W::u8(0),
            W::u8(0) });
    formats.add(classInterface,
        { W::u8(7), W::u8(1), W::u8(0), W::u16(pictureWidth), W::u16(pictureHeight),
            W::u32(slowestBits), W::u32(fastestBits), W::u32(pictureBytes), W::u32(frameInterval),
            W::u8(1), W::u32(frameInterval) });

    constexpr std::int64_t headerSize = 14;
    W all;
    all.add(interfaceType,
        { W::u8(streamingInterface), W::u8(0), W::u8(0), W::u8(videoClass), W::u8(2), W::u8(0),
            W::u8(0) });
    all.add(classInterface,
        { W::u8(1), W::u8(1), W::u16(headerSize + formats.size()), W::u8(pictureEndpoint), W::u8(0),
            W::u8(outputTerminal), W::u8(0), W::u8(0), W::u8(0), W::u8(1), W::u8(0) });
    all.add(formats);
    all.add(interfaceType,
        { W::u8(streamingInterface), W::u8(1), W::u8(1), W::u8(videoClass), W::u8(2), W::u8(0),
            W::u8(0) });
    all.add(endpointType, { W::u8(pictureEndpoint), W::u8(5), W::u16(streamingPayload), W::u8(1) });
    return all;
}

// Takes one character off the front of the text.
char32_t takeCharacter(std::string_view &text)
{
    constexpr char32_t replacement = 0xfffd;
    const auto byteAt = [&text](std::size_t i) {
        return i < text.size() ? static_cast<unsigned char>(text[i]) : 0U;
    };
    const unsigned first = byteAt(0);
    const std::size_t length = first < 0x80 ? 1
        : first >= 0xf0 && first < 0xf5     ? 4
        : first >= 0xe0 && first < 0xf0     ? 3
        : first >= 0xc2 && first < 0xe0     ? 2
                                            : 0;
    char32_t character = length == 1 ? first : first & (0x7fU >> length);
    for (std::size_t i = 1; i < length; ++i) {
        if ((byteAt(i) & 0xc0U) != 0x80) {
            text.remove_prefix(1);
            return replacement;
        }
        character = character << 6U | (byteAt(i) & 0x3fU);
    }
    text.remove_prefix(length == 0 ? 1 : length);
    constexpr char32_t smallest[] = { 0, 0, 0x80, 0x800, 0x10000 };
    const bool surrogate = character >= 0xd800 && character < 0xe000;
    if (length == 0 || surrogate || character > 0x10ffff || character < smallest[length])
        return replacement;
    return character;
}

} // namespace

Bytes stringDescriptor(const std::string &utf8)
{
    constexpr std::size_t longest = 2 + 126 * 2;
    Bytes bytes{ 0, stringType };
    for (std::string_view rest = utf8; !rest.empty();) {
        const char32_t character = takeCharacter(rest);
        if (bytes.size() + (character < 0x10000 ? 2 : 4) > longest)
            break;
        if (character < 0x10000) {
            append(bytes, character, 2);
        } else {
            append(bytes, 0xd800 + ((character - 0x10000) >> 10U), 2);
            append(bytes, 0xdc00 + ((character - 0x10000) & 0x3ffU), 2);
        }
    }
    bytes[0] = static_cast<std::uint8_t>(bytes.size());
    return bytes;
}

Descriptors describeCamera(const CameraDescription &description)
{
    Strings strings;
    const std::int64_t manufacturer = strings.add(description.manufacturer);
    const std::int64_t product = strings.add(description.product);
    const std::int64_t serial = strings.add(description.serial);

    W interfaces;
    interfaces.add(associationType,
        { W::u8(controlInterface), W::u8(2), W::u8(videoClass), W::u8(3), W::u8(0),
            W::u8(product) });
    interfaces.add(controlInterfaceDescriptors(description, product));
    interfaces.add(streamingInterfaceDescriptors());

    Descriptors all;
    all.device = deviceDescriptor({ description.vendorId, description.productId,
                                      description.deviceRelease, manufacturer, product, serial },
        true);
    all.configuration = configurationDescriptor(2, interfaces);
    all.qualifier = qualifierDescriptor(true);
    all.strings = strings.all();
    return all;
}

Descriptors describeStorage()
{
    Strings strings;
    const std::int64_t manufacturer = strings.add("Virtual Optics");
    const std::int64_t product = strings.add("Memory stick");
    const std::int64_t serial = strings.add("000001");

    W interfaces;
    interfaces.add(interfaceType,
        { W::u8(0), W::u8(0), W::u8(2), W::u8(0x08), W::u8(0x06), W::u8(0x50), W::u8(0) });
    interfaces.add(endpointType, { W::u8(0x81), W::u8(2), W::u16(512), W::u8(0) });
    interfaces.add(endpointType, { W::u8(0x02), W::u8(2), W::u16(512), W::u8(0) });

    Descriptors all;
    all.device = deviceDescriptor({ 0xf055, 0x0001, 0x0100, manufacturer, product, serial }, false);
    all.configuration = configurationDescriptor(1, interfaces);
    all.qualifier = qualifierDescriptor(false);
    all.strings = strings.all();
    return all;
}

} // namespace virtual_camera
