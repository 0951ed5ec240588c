// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT
#include "virtual_camera/command/pcap_log.h"

#include <cerrno>
#include <cstring>
#include <map>
#include <memory>

namespace virtual_camera {

namespace {

using std::chrono::microseconds;

// All numbers in these are in the byte order of this machine; readers find out which that is.
struct FileHeader
{
    std::uint32_t magic = 0xa1b2c3d4;
    std::uint16_t major = 2;
    std::uint16_t minor = 4;
    std::int32_t zone = 0;
    std::uint32_t accuracy = 0;
    std::uint32_t longestPacket = 1 << 18;
    std::uint32_t linkType = 220; // LINKTYPE_USB_LINUX_MMAPPED
};

struct PacketHeader
{
    std::uint32_t seconds;
    std::uint32_t microseconds;
    std::uint32_t captured;
    std::uint32_t length;
};

// struct mon_bin_hdr of the kernel's usbmon, for a control transfer.
struct UsbPacket
{
    std::uint64_t id = 0;
    char type = 'S'; // submission, or 'C'ompletion
    std::uint8_t transferType = 2;
    std::uint8_t endpoint = 0;
    std::uint8_t device = 0;
    std::uint16_t bus = 1;
    char noSetup = '-';
    char noData = '<';
    std::int64_t seconds = 0;
    std::int32_t microseconds = 0;
    std::int32_t status = 0;
    std::uint32_t length = 0;
    std::uint32_t captured = 0;
    std::uint8_t setup[8]{};
    std::int32_t interval = 0;
    std::int32_t startFrame = 0;
    std::uint32_t flags = 0;
    std::uint32_t descriptors = 0;
};
static_assert(sizeof(UsbPacket) == 64, "as usbmon has it");

template<typename Plain> std::string bytesOf(const Plain &plain)
{
    return { reinterpret_cast<const char *>(&plain), sizeof plain };
}

std::string packet(UsbPacket usb, microseconds time, const Bytes &data)
{
    constexpr std::int64_t perSecond = 1000000;
    usb.seconds = time.count() / perSecond;
    usb.microseconds = static_cast<std::int32_t>(time.count() % perSecond);
    usb.captured = static_cast<std::uint32_t>(data.size());
    if (!data.empty())
        usb.noData = 0;
    const auto size = static_cast<std::uint32_t>(sizeof usb + data.size());
    const PacketHeader header{ static_cast<std::uint32_t>(usb.seconds),
        static_cast<std::uint32_t>(usb.microseconds), size, size };
    return bytesOf(header) + bytesOf(usb) + std::string(data.begin(), data.end());
}

class Capture
{
public:
    std::string record(const LogRecord &record)
    {
        if (record.event == LogRecord::Event::Replug)
            m_addresses[record.device] = record.address;
        if (record.event != LogRecord::Event::Request)
            return {};
        if (m_start.count() == 0)
            m_start = sinceEpoch() - record.time;
        const ControlRequest &request = record.request;
        UsbPacket usb;
        usb.id = record.sequence;
        usb.endpoint = request.hostReads() ? 0x80 : 0;
        usb.device = static_cast<std::uint8_t>(addressOf(record.device));
        usb.noData = request.hostReads() ? '<' : '>';
        UsbPacket submission = usb;
        submission.status = -EINPROGRESS;
        submission.length = request.length;
        submission.noSetup = 0;
        setUp(submission, request);
        UsbPacket completion = usb;
        completion.type = 'C';
        completion.status = statusOf(record.result);
        completion.length =
            completion.status == 0 ? static_cast<std::uint32_t>(request.data.size()) : 0;
        const bool reads = request.hostReads();
        return packet(submission, m_start + record.submitted, reads ? Bytes{} : request.data)
            + packet(completion, m_start + record.time, reads ? request.data : Bytes{});
    }

private:
    static void setUp(UsbPacket &usb, const ControlRequest &request)
    {
        usb.setup[0] = request.requestType;
        usb.setup[1] = request.request;
        std::uint8_t *place = &usb.setup[2];
        for (const std::uint16_t number : { request.value, request.index, request.length }) {
            *place++ = static_cast<std::uint8_t>(number & 0xffU);
            *place++ = static_cast<std::uint8_t>(number >> 8U);
        }
    }
    int addressOf(int device) const
    {
        const auto found = m_addresses.find(device);
        return found == m_addresses.end() ? device + 1 : found->second;
    }

    static microseconds sinceEpoch()
    {
        return std::chrono::duration_cast<microseconds>(
            std::chrono::system_clock::now().time_since_epoch());
    }

    microseconds m_start{ 0 };
    std::map<int, int> m_addresses; // of devices that were plugged in again
};

} // namespace

LogFormat pcapLog()
{
    const auto capture = std::make_shared<Capture>();
    return { [] { return bytesOf(FileHeader{}); },
        [capture](const LogRecord &record) { return capture->record(record); },
        [](std::uint64_t) { return std::string(); } };
}

} // namespace virtual_camera
