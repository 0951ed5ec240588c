// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT
#include "virtual_camera/umockdev/uevent.h"

#include <algorithm>
#include <arpa/inet.h>
#include <atomic>
#include <cerrno>
#include <cstdint>
#include <cstring>
#include <filesystem>
#include <string_view>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

namespace virtual_camera {

namespace {

// What libudev expects before the properties; all numbers that its filters see are big-endian.
struct Header
{
    char prefix[8] = "libudev";
    std::uint32_t magic = htonl(0xfeedcafe);
    std::uint32_t headerSize = sizeof(Header);
    std::uint32_t propertiesOffset = sizeof(Header);
    std::uint32_t propertiesSize = 0;
    std::uint32_t subsystemHash = 0;
    std::uint32_t deviceTypeHash = 0;
    std::uint32_t tagBloom[2] = {};
};

// MurmurHash2, by which libudev's filters compare texts.
std::uint32_t hash(std::string_view text)
{
    constexpr std::uint32_t factor = 0x5bd1e995;
    auto result = static_cast<std::uint32_t>(text.size());
    for (; text.size() >= sizeof(std::uint32_t); text.remove_prefix(sizeof(std::uint32_t))) {
        std::uint32_t word = 0;
        std::memcpy(&word, text.data(), sizeof word);
        word *= factor;
        word ^= word >> 24U;
        result = result * factor ^ word * factor;
    }
    for (std::size_t i = text.size(); i > 0; --i)
        result ^= std::uint32_t{ static_cast<unsigned char>(text[i - 1]) } << (8 * (i - 1));
    if (!text.empty())
        result *= factor;
    result ^= result >> 13U;
    result *= factor;
    return result ^ result >> 15U;
}

std::string message(const Uevent &event)
{
    static std::atomic<unsigned> sequence{ 0 };
    std::string body = "ACTION=" + event.action + '\n' + "DEVPATH=" + event.devicePath + '\n'
        + "SUBSYSTEM=" + event.subsystem + '\n' + "SEQNUM=" + std::to_string(++sequence) + '\n'
        + event.properties;
    std::replace(body.begin(), body.end(), '\n', '\0');
    Header header;
    header.propertiesSize = static_cast<std::uint32_t>(body.size());
    header.subsystemHash = htonl(hash(event.subsystem));
    header.deviceTypeHash = htonl(hash(event.deviceType));
    return std::string(reinterpret_cast<const char *>(&header), sizeof header) + body;
}

// Whether somebody has the socket open. A full queue is the listener's own affair.
bool deliver(const std::string &path, const std::string &text)
{
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    path.copy(address.sun_path, sizeof address.sun_path - 1);
    const int sender = socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0);
    const bool sent = sendto(sender, text.data(), text.size(), MSG_NOSIGNAL,
                          reinterpret_cast<const sockaddr *>(&address), sizeof address)
        >= 0;
    const bool closed = !sent && errno == ECONNREFUSED;
    close(sender);
    return !closed;
}

} // namespace

void sendUevent(const std::string &rootDirectory, const Uevent &event)
{
    constexpr std::string_view listener = "event"; // umockdev's preload library names them so
    const std::string text = message(event);
    namespace fs = std::filesystem;
    for (const fs::directory_entry &entry : fs::directory_iterator(rootDirectory)) {
        const std::string name = entry.path().filename();
        if (name.compare(0, listener.size(), listener) != 0)
            continue;
        // Without the number of its process, a socket is being made.
        const bool made = name.find('.') != std::string::npos;
        if (!deliver(entry.path(), text) && made)
            fs::remove(entry.path());
    }
}

} // namespace virtual_camera
