// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT
#pragma once

#include "virtual_camera/camera/control_request.h"
#include "virtual_camera/usb/faults.h"
#include "virtual_camera/usb/request_log.h"
#include "virtual_camera/usb/usb_device.h"

#include <chrono>
#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace virtual_camera {

// A transfer that a program has handed in.
struct Urb
{
    std::uint64_t address = 0; // of the program's own record of it, by which it takes it back
    std::uint8_t endpoint = 0;
    ControlRequest request;       // for endpoint 0
    std::shared_ptr<void> memory; // kept until the transfer is given back

    int status = 0;              // 0, or a negative errno as the kernel reports it
    Bytes answer;                // what the device sent
    std::size_t transferred = 0; // bytes of data in either direction

    // Set when the device takes it; tells it from others, even at the same address.
    std::uint64_t number = 0;
};

// What the kernel does between programs and one device that is plugged in: open files with a
// queue of transfers each, interfaces that belong to one file or to a driver. Functions that
// answer int return 0 or a negative errno. Not locked: one thread at a time.
class UsbfsDevice
{
public:
    // Runs something later, on whatever thread, and not while another function runs.
    using Later = std::function<void(std::chrono::milliseconds, std::function<void()>)>;

    struct Wiring
    {
        int number; // of the device, in the log
        UsbDevice *usb;
        const Faults *faults;
        RequestLog *log;
        std::string driver; // the kernel's, that holds the interfaces at first
        Later later;
    };

    explicit UsbfsDevice(Wiring wiring);

    int openFile(); // its number, from 1
    void closeFile(int file);

    int claim(int file, unsigned interfaceNumber);
    int release(int file, unsigned interfaceNumber);
    int setInterface(int file, unsigned interfaceNumber, unsigned alternate);
    int clearHalt(unsigned endpoint) const;
    int setConfiguration(int value) const;
    // Who holds the interface; empty when nobody does.
    std::string driver(unsigned interfaceNumber) const;
    int detachDriver(unsigned interfaceNumber);
    int attachDriver(unsigned interfaceNumber);

    int submit(int file, Urb urb);
    int discard(int file, std::uint64_t address);
    // The oldest transfer that is done.
    std::unique_ptr<Urb> reap(int file);
    // A control transfer on the spot. Fills the data when it was read; a negative errno, or the
    // number of bytes.
    int transfer(int file, ControlRequest &request);

    // Every transfer under way comes back with -ESHUTDOWN, and nothing else is done any more.
    void unplug();
    bool unplugged() const { return m_unplugged; }

    // Some file has a transfer to give back.
    bool anythingToReap() const;
    // Control requests that have not been answered.
    int requestsUnderWay() const;

private:
    struct File
    {
        std::deque<Urb> waiting;
        std::deque<Urb> done;
    };
    // Who holds an interface: nobody, the kernel's driver, or a file.
    enum : int { nobody = 0, kernelDriver = -1 };

    bool mayUse(int file, const ControlRequest &request, int &error);
    int checkClaim(int file, unsigned interfaceNumber);
    void perform(int file, Urb &urb);
    void finish(int file, std::uint64_t number);
    void logRequest(int file, const Urb &urb, LogRecord::Result result);
    void logEvent(int file, LogRecord::Event event);
    std::chrono::milliseconds takeTurn();

    Wiring m_wiring;
    std::map<int, File> m_files;
    int m_lastFile = 0;
    std::uint64_t m_lastUrb = 0;
    std::vector<int> m_holders; // of each interface
    std::chrono::steady_clock::time_point m_busyUntil;
    bool m_unplugged = false;
};

} // namespace virtual_camera
