// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT
#pragma once

#include "virtual_camera/camera/camera_model.h"
#include "virtual_camera/usbfs/usbfs.h"

#include <functional>
#include <map>
#include <memory>
#include <set>

namespace fuzz {

// A device, and programs that have it open, of which what the kernel promises to programs is
// checked: an interface belongs to one of them, a transfer that was taken comes back once, to the
// one that handed it in, and nothing is done after an unplug.
class CheckedUsbfs
{
public:
    explicit CheckedUsbfs(bool camera);

    bool anyFile() const { return !m_files.empty(); }
    int file(std::size_t choice) const;
    void breakSomething(const std::function<void(virtual_camera::Faults &)> &how);

    void open();
    void close(int file);
    void claim(int file, unsigned interfaceNumber);
    void release(int file, unsigned interfaceNumber);
    void setInterface(int file, unsigned interfaceNumber, unsigned alternate);
    void setConfiguration(int file, int value);
    void clearHalt(int file, unsigned endpoint);
    void reset(int file);
    void detachDriver(unsigned interfaceNumber);
    void attachDriver(unsigned interfaceNumber);
    void submit(int file, std::uint64_t address, std::uint8_t endpoint,
        const virtual_camera::ControlRequest &request);
    void discard(int file, std::uint64_t address);
    void reap(int file);
    void transfer(int file, const virtual_camera::ControlRequest &request);
    void letTimePass();
    void unplug();
    // Every program takes back what is its own and leaves.
    void finish();

private:
    enum : int { nobody = 0, kernelDriver = -1 };

    unsigned interfaces() const { return static_cast<unsigned>(m_owners.size()); }
    void own(int file, unsigned interfaceNumber);
    void ownForRequest(int file, const virtual_camera::ControlRequest &request);
    void ownForEndpoint(int file, unsigned endpoint, int result);
    bool exists(unsigned endpoint) const;
    void checkLog() const;

    const bool m_isCamera;
    std::chrono::microseconds m_now{ 0 };
    std::shared_ptr<virtual_camera::RequestLog> m_log =
        std::make_shared<virtual_camera::RequestLog>();
    std::shared_ptr<virtual_camera::Cable> m_cable;
    std::unique_ptr<virtual_camera::Usbfs> m_device;
    bool m_pictures = false; // the setting with the picture endpoint is chosen

    std::map<int, std::multiset<std::uint64_t>> m_files;      // with the transfers of each
    std::vector<int> m_owners;                                // of the interfaces
    std::size_t m_requests = 0;                               // that the log must have
    std::shared_ptr<void> m_memory = std::make_shared<int>(); // what transfers keep
};

} // namespace fuzz
