// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT
#include "virtual_camera/umockdev/sysfs.h"

#include "virtual_camera/camera/little_endian.h"

#include <array>
#include <cstdarg>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <linux/usb/ch9.h>
#include <stdexcept>
#include <utility>

namespace virtual_camera {

namespace fs = std::filesystem;

namespace {

constexpr int deviceMajor = 189; // of all device nodes of USB

[[gnu::format(printf, 1, 2)]] std::string format(const char *how, ...)
{
    std::array<char, 256> text{};
    va_list values;
    va_start(values, how);
    std::vsnprintf(text.data(), text.size(), how, values);
    va_end(values);
    return text.data();
}

std::string deviceName(const Bus::Plug &plug)
{
    return plug.port == 0 ? "usb1" : format("1-%d", plug.port);
}

// Below /sys.
std::string deviceFolder(const Bus::Plug &plug)
{
    return plug.port == 0 ? "/devices/usb1" : "/devices/usb1/" + deviceName(plug);
}

std::string interfaceName(const Bus::Plug &plug, const InterfaceLayout::Setting &setting)
{
    return format("1-%d:1.%d", plug.port, setting.interfaceNumber);
}

std::string deviceNumber(const Bus::Plug &plug)
{
    return format("%d:%d", deviceMajor, plug.address - 1);
}

unsigned word(const Bytes &bytes, std::size_t at)
{
    return static_cast<unsigned>(readUnsigned(&bytes[at], 2));
}

std::string product(const Bytes &device)
{
    return format("PRODUCT=%x/%x/%x\n", word(device, 8), word(device, 10), word(device, 12));
}

std::string deviceProperties(const Bus::Plug &plug)
{
    const Bytes &device = plug.cable->descriptors().device;
    return format("MAJOR=%d\nMINOR=%d\nDEVNAME=%s\nDEVTYPE=usb_device\n", deviceMajor,
               plug.address - 1, devicePath(plug.address).c_str() + sizeof "/dev")
        + product(device) + format("TYPE=%d/%d/%d\n", device[4], device[5], device[6])
        + format("BUSNUM=001\nDEVNUM=%03d\n", plug.address);
}

void writeFile(const fs::path &path, const std::string &content)
{
    std::ofstream file(path, std::ios::binary);
    file << content;
    if (!file.flush())
        throw std::runtime_error("cannot write " + path.string());
}

void writeAttributes(const fs::path &folder, const Bus::Plug &plug)
{
    const Bytes &device = plug.cable->descriptors().device;
    const Bytes &configuration = plug.cable->descriptors().configuration;
    const std::pair<const char *, std::string> attributes[] = {
        { "busnum", "1" },
        { "devnum", format("%d", plug.address) },
        { "devpath", format("%d", plug.port) },
        { "dev", deviceNumber(plug) },
        { "speed", "480" },
        { "version", " 2.00" },
        { "rx_lanes", "1" },
        { "tx_lanes", "1" },
        { "maxchild", format("%d", plug.ports) },
        { "configuration", "" },
        { "bDeviceClass", format("%02x", device[4]) },
        { "bDeviceSubClass", format("%02x", device[5]) },
        { "bDeviceProtocol", format("%02x", device[6]) },
        { "bMaxPacketSize0", format("%d", device[7]) },
        { "idVendor", format("%04x", word(device, 8)) },
        { "idProduct", format("%04x", word(device, 10)) },
        { "bcdDevice", format("%04x", word(device, 12)) },
        { "bNumConfigurations", format("%d", device[17]) },
        { "bNumInterfaces", format("%2d", configuration[4]) },
        { "bConfigurationValue", format("%d", configuration[5]) },
        { "bmAttributes", format("%2x", configuration[7]) },
        { "bMaxPower", format("%dmA", 2 * configuration[8]) },
    };
    const std::pair<const char *, std::string> names[] = {
        { "manufacturer", plug.manufacturer },
        { "product", plug.product },
        { "serial", plug.serial },
    };
    for (const auto &[name, value] : attributes)
        writeFile(folder / name, value + '\n');
    for (const auto &[name, value] : names) {
        if (!value.empty())
            writeFile(folder / name, value + '\n');
    }
    writeFile(folder / "uevent", deviceProperties(plug));
    writeFile(folder / "descriptors",
        std::string(device.begin(), device.end())
            + std::string(configuration.begin(), configuration.end()));
}

void writeInterface(
    const fs::path &folder, const Bus::Plug &plug, const InterfaceLayout::Setting &setting)
{
    const std::pair<const char *, std::string> attributes[] = {
        { "bInterfaceNumber", format("%02x", setting.interfaceNumber) },
        { "bAlternateSetting", format("%2d", setting.alternate) },
        { "bNumEndpoints", format("%02zx", setting.endpoints.size()) },
        { "bInterfaceClass", format("%02x", setting.deviceClass) },
        { "bInterfaceSubClass", format("%02x", setting.subclass) },
        { "bInterfaceProtocol", format("%02x", setting.protocol) },
    };
    for (const auto &[name, value] : attributes)
        writeFile(folder / name, value + '\n');
    writeFile(folder / "uevent",
        "DEVTYPE=usb_interface\n" + product(plug.cable->descriptors().device)
            + format(
                "INTERFACE=%d/%d/%d\n", setting.deviceClass, setting.subclass, setting.protocol));
}

// What has a folder of its own: the device and its interfaces, in their first setting.
template<typename Action> void forInterfaces(const Bus::Plug &plug, Action action)
{
    for (const InterfaceLayout::Setting &setting : plug.cable->layout().settings) {
        if (setting.alternate == 0)
            action(setting);
    }
}

void replaceLink(const std::string &target, const fs::path &link)
{
    fs::create_directories(link.parent_path());
    fs::remove(link);
    fs::create_symlink(target, link);
}

fs::path numberLink(const std::string &root, const Bus::Plug &plug)
{
    // Here umockdev's preload library looks up what stat() says.
    return root + format("/dev/.node/bus_usb_001_%03d", plug.address);
}

} // namespace

std::string devicePath(int address) { return format("/dev/bus/usb/001/%03d", address); }

Sysfs::Sysfs(std::string rootDirectory) : m_root(std::move(rootDirectory))
{
    fs::create_directories(m_root + "/sys/bus/usb/devices");
}

void Sysfs::add(const Bus::Plug &plug) const
{
    const std::string inSys = deviceFolder(plug);
    const std::string up = plug.port == 0 ? "../../" : "../../../";
    const fs::path folder = m_root + "/sys" + inSys;
    const fs::path bus = m_root + "/sys/bus/usb/devices";
    fs::create_directories(folder);
    writeAttributes(folder, plug);
    replaceLink(up + "bus/usb", folder / "subsystem");
    replaceLink(deviceNumber(plug), numberLink(m_root, plug));
    replaceLink("../.." + inSys, m_root + "/sys/dev/char/" + deviceNumber(plug));
    forInterfaces(plug, [&](const InterfaceLayout::Setting &setting) {
        const std::string name = interfaceName(plug, setting);
        fs::create_directories(folder / name);
        writeInterface(folder / name, plug, setting);
        replaceLink("../" + up + "bus/usb", folder / name / "subsystem");
        replaceLink("../../.." + inSys + '/' + name, bus / name);
    });
    replaceLink("../../.." + inSys, bus / deviceName(plug));
}

void Sysfs::remove(const Bus::Plug &plug) const
{
    const fs::path bus = m_root + "/sys/bus/usb/devices";
    fs::remove(bus / deviceName(plug));
    forInterfaces(plug, [&](const InterfaceLayout::Setting &setting) {
        fs::remove(bus / interfaceName(plug, setting));
    });
    fs::remove(m_root + "/sys/dev/char/" + deviceNumber(plug));
    fs::remove(numberLink(m_root, plug));
    fs::remove_all(m_root + "/sys" + deviceFolder(plug));
}

Uevent Sysfs::event(const std::string &action, const Bus::Plug &plug)
{
    return { action, deviceFolder(plug), "usb", "usb_device", deviceProperties(plug) };
}

} // namespace virtual_camera
