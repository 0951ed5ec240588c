// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT
#include "virtual_camera/umockdev/emulated_bus.h"

#include "virtual_camera/camera/little_endian.h"

#include <array>
#include <cstdio>
#include <filesystem>
#include <stdexcept>
#include <umockdev.h>
#include <utility>
#include <vector>

namespace virtual_camera {

namespace {

std::string hex(std::uint64_t number, int digits)
{
    std::array<char, 24> text{};
    std::snprintf(
        text.data(), text.size(), "%0*llx", digits, static_cast<unsigned long long>(number));
    return text.data();
}

std::string decimal(int number, int digits)
{
    std::array<char, 16> text{};
    std::snprintf(text.data(), text.size(), "%0*d", digits, number);
    return text.data();
}

// Pairs of name and value, as umockdev takes them: a null-terminated list of texts.
class TextList
{
public:
    void add(const std::string &name, const std::string &value)
    {
        m_texts.push_back(name);
        m_texts.push_back(value);
    }
    gchar **list()
    {
        m_pointers.clear();
        for (std::string &text : m_texts)
            m_pointers.push_back(text.data());
        m_pointers.push_back(nullptr);
        return m_pointers.data();
    }

private:
    std::vector<std::string> m_texts;
    std::vector<gchar *> m_pointers;
};

void throwIf(GError *error)
{
    if (error == nullptr)
        return;
    const std::string message = error->message;
    g_error_free(error);
    throw std::runtime_error(message);
}

TextList attributes(int address, const Descriptors &descriptors, const EmulatedBus::Names &names)
{
    const Bytes &device = descriptors.device;
    TextList list;
    list.add("busnum", "1\n");
    list.add("devnum", std::to_string(address) + "\n");
    list.add("speed", "480\n");
    list.add("version", " 2.00\n");
    list.add("bConfigurationValue", "1\n");
    list.add("bNumConfigurations", "1\n");
    list.add("bDeviceClass", hex(device[4], 2) + "\n");
    list.add("idVendor", hex(readUnsigned(&device[8], 2), 4) + "\n");
    list.add("idProduct", hex(readUnsigned(&device[10], 2), 4) + "\n");
    list.add("bcdDevice", hex(readUnsigned(&device[12], 2), 4) + "\n");
    if (!names.manufacturer.empty())
        list.add("manufacturer", names.manufacturer + "\n");
    if (!names.product.empty())
        list.add("product", names.product + "\n");
    if (!names.serial.empty())
        list.add("serial", names.serial + "\n");
    return list;
}

TextList properties(int address, const Descriptors &descriptors)
{
    const Bytes &device = descriptors.device;
    TextList list;
    list.add("DEVTYPE", "usb_device");
    list.add("DEVNAME", EmulatedBus::devicePath(address));
    list.add("MAJOR", "189");
    list.add("MINOR", std::to_string(address - 1));
    list.add("BUSNUM", "001");
    list.add("DEVNUM", decimal(address, 3));
    list.add("PRODUCT",
        hex(readUnsigned(&device[8], 2), 1) + "/" + hex(readUnsigned(&device[10], 2), 1) + "/"
            + hex(readUnsigned(&device[12], 2), 1));
    return list;
}

} // namespace

EmulatedBus::EmulatedBus() : m_testbed(umockdev_testbed_new())
{
    gchar *root = umockdev_testbed_get_root_dir(m_testbed);
    m_root = root;
    g_free(root);
}

EmulatedBus::~EmulatedBus() { g_object_unref(m_testbed); }

std::string EmulatedBus::devicePath(int address)
{
    return "/dev/bus/usb/001/" + decimal(address, 3);
}

EmulatedBus::Plug EmulatedBus::plug(
    int address, int port, const Names &names, std::mutex &mutex, UsbfsDevice::Wiring wiring)
{
    const Descriptors &descriptors = wiring.usb->descriptors();
    const std::string path = devicePath(address);
    Plug plug{ address, port, {}, {} };
    plug.node = std::make_shared<UsbfsNode>(m_root + path, mutex, std::move(wiring));

    // The handler comes before the device: programs look at it as soon as they hear of it.
    GError *error = nullptr;
    umockdev_testbed_attach_ioctl(m_testbed, path.c_str(), plug.node->handler(), &error);
    throwIf(error);

    const std::string name = "1-" + std::to_string(port);
    gchar *systemPath = umockdev_testbed_add_devicev(m_testbed, "usb", name.c_str(), nullptr,
        attributes(address, descriptors, names).list(), properties(address, descriptors).list());
    if (systemPath == nullptr)
        throw std::runtime_error("cannot plug in device " + std::to_string(address));
    plug.systemPath = systemPath;
    g_free(systemPath);

    Bytes raw = descriptors.device;
    raw.insert(raw.end(), descriptors.configuration.begin(), descriptors.configuration.end());
    umockdev_testbed_set_attribute_binary(m_testbed, plug.systemPath.c_str(), "descriptors",
        raw.data(), static_cast<gint>(raw.size()));
    umockdev_testbed_uevent(m_testbed, plug.systemPath.c_str(), "add");
    const std::lock_guard lock(m_addressMutex);
    m_addresses.insert(address);
    return plug;
}

void EmulatedBus::unplug(const Plug &plug, std::mutex &mutex)
{
    {
        const std::lock_guard lock(mutex);
        plug.node->unplug();
    }
    const std::string path = devicePath(plug.address);
    GError *error = nullptr;
    umockdev_testbed_detach_ioctl(m_testbed, path.c_str(), &error);
    throwIf(error);
    umockdev_testbed_uevent(m_testbed, plug.systemPath.c_str(), "remove");
    umockdev_testbed_remove_device(m_testbed, plug.systemPath.c_str());
    const std::lock_guard lock(m_addressMutex);
    m_addresses.erase(plug.address);
}

bool EmulatedBus::occupied(int address) const
{
    const std::lock_guard lock(m_addressMutex);
    return m_addresses.count(address) != 0;
}

} // namespace virtual_camera
