// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT
#include "virtual_camera/usb/descriptors.h"

#include "virtual_camera/usb/descriptor_writer.h"
#include "virtual_camera/usb/video_descriptors.h"

#include <linux/usb/ch9.h>

namespace virtual_camera {

namespace {

using W = DescriptorWriter;

constexpr std::int64_t usbRelease = 0x0200;
constexpr std::int64_t controlPacketSize = 64;

// The strings and the index that each got; 0 for one that is empty.
class Strings
{
public:
    std::int64_t add(const std::string &text)
    {
        if (text.empty())
            return 0;
        m_strings.push_back(stringDescriptor(text));
        return static_cast<std::int64_t>(m_strings.size()) - 1;
    }
    const std::vector<Bytes> &all() const { return m_strings; }

private:
    std::vector<Bytes> m_strings{ languagesDescriptor() };
};

struct DeviceClass
{
    std::int64_t code, subclass, protocol;
};
constexpr DeviceClass perInterface{ USB_CLASS_PER_INTERFACE, 0, 0 };
// Several interfaces that belong together, as an interface association says.
constexpr DeviceClass associated{ USB_CLASS_MISC, 2, 1 };

struct Identity
{
    DeviceClass deviceClass;
    std::int64_t vendor, product, release;
    std::int64_t manufacturerString, productString, serialString;
};

Bytes deviceDescriptor(const Identity &id)
{
    const DeviceClass &kind = id.deviceClass;
    W device;
    device.add(USB_DT_DEVICE,
        { W::u16(usbRelease), W::u8(kind.code), W::u8(kind.subclass), W::u8(kind.protocol),
            W::u8(controlPacketSize), W::u16(id.vendor), W::u16(id.product), W::u16(id.release),
            W::u8(id.manufacturerString), W::u8(id.productString), W::u8(id.serialString),
            W::u8(1) });
    return device.bytes();
}

Bytes qualifierDescriptor(const DeviceClass &kind)
{
    W qualifier;
    qualifier.add(USB_DT_DEVICE_QUALIFIER,
        { W::u16(usbRelease), W::u8(kind.code), W::u8(kind.subclass), W::u8(kind.protocol),
            W::u8(controlPacketSize), W::u8(1), W::u8(0) });
    return qualifier.bytes();
}

Bytes configurationDescriptor(std::int64_t interfaces, const W &content)
{
    constexpr std::int64_t number = 1;
    constexpr std::int64_t power = 250; // times 2 mA
    W configuration;
    configuration.add(USB_DT_CONFIG,
        { W::u16(USB_DT_CONFIG_SIZE + content.size()), W::u8(interfaces), W::u8(number), W::u8(0),
            W::u8(USB_CONFIG_ATT_ONE), W::u8(power) });
    configuration.add(content);
    return configuration.bytes();
}

} // namespace

Descriptors describeCamera(const CameraDescription &description)
{
    Strings strings;
    const std::int64_t manufacturer = strings.add(description.manufacturer);
    const std::int64_t product = strings.add(description.product);
    const std::int64_t serial = strings.add(description.serial);

    Descriptors all;
    all.device = deviceDescriptor({ associated, description.vendorId, description.productId,
        description.deviceRelease, manufacturer, product, serial });
    all.configuration = configurationDescriptor(2, videoDescriptors(description, product));
    all.qualifier = qualifierDescriptor(associated);
    all.strings = strings.all();
    return all;
}

Descriptors describeStorage()
{
    constexpr std::int64_t scsi = 0x06;
    constexpr std::int64_t bulkOnly = 0x50;
    Strings strings;
    const std::int64_t manufacturer = strings.add("Virtual Optics");
    const std::int64_t product = strings.add("Memory stick");
    const std::int64_t serial = strings.add("000001");

    W interfaces;
    interfaces.add(USB_DT_INTERFACE,
        { W::u8(0), W::u8(0), W::u8(2), W::u8(USB_CLASS_MASS_STORAGE), W::u8(scsi), W::u8(bulkOnly),
            W::u8(0) });
    for (const int endpoint : { USB_DIR_IN | 1, USB_DIR_OUT | 2 })
        interfaces.add(USB_DT_ENDPOINT,
            { W::u8(endpoint), W::u8(USB_ENDPOINT_XFER_BULK), W::u16(512), W::u8(0) });

    Descriptors all;
    all.device =
        deviceDescriptor({ perInterface, 0xf055, 0x0001, 0x0100, manufacturer, product, serial });
    all.configuration = configurationDescriptor(1, interfaces);
    all.qualifier = qualifierDescriptor(perInterface);
    all.strings = strings.all();
    return all;
}

} // namespace virtual_camera
