// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT
#pragma once

#include "virtual_camera/camera/control_request.h"
#include "virtual_camera/usb/cable.h"

#include <chrono>
#include <cstdint>
#include <deque>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace virtual_camera {

/// A transfer that a program has handed in.
struct Urb
{
    std::uint64_t address = 0; ///< of the program's own record of it, by which it gets it back
    std::uint8_t endpoint = 0;
    ControlRequest request;       ///< for endpoint 0
    std::shared_ptr<void> memory; ///< kept until the transfer is given back

    int status = 0;              ///< 0, or a negative errno as the kernel reports it
    Bytes answer;                ///< what the device sent
    std::size_t transferred = 0; ///< bytes of data in either direction

    std::uint64_t ticket = 0; ///< of the cable, for endpoint 0
    bool done = false;
};

/// What the kernel does between programs and one device, from a plug to an unplug: open files with
/// a queue of transfers each, interfaces that belong to one file or to a driver. Functions that
/// answer int return 0 or a negative errno. Not locked: one thread at a time.
class Usbfs
{
public:
    /// The driver holds the interfaces at first.
    Usbfs(std::shared_ptr<Cable> cable, std::string driver);

    int openFile(); ///< its number, from 1
    void closeFile(int file);

    int claim(int file, unsigned interfaceNumber);
    /// Cancels the transfers of the interface's endpoints.
    int release(int file, unsigned interfaceNumber);
    int setInterface(int file, unsigned interfaceNumber, unsigned alternate);
    int clearHalt(int file, unsigned endpoint);
    int setConfiguration(int file, int value);
    int reset(int file);
    /// Who holds the interface; empty when nobody does.
    std::string driver(unsigned interfaceNumber) const;
    int detachDriver(unsigned interfaceNumber);
    int attachDriver(unsigned interfaceNumber);

    int submit(int file, Urb urb);
    int discard(int file, std::uint64_t address);
    /// The oldest transfer that is done.
    std::unique_ptr<Urb> reap(int file);
    /// A control transfer that the program waits for. Its ticket, or a negative errno.
    std::int64_t begin(int file, const ControlRequest &request);
    /// That transfer, once it is done.
    std::unique_ptr<Urb> finish(int file, std::uint64_t ticket);
    /// It took too long.
    void giveUp(int file, std::uint64_t ticket);

    /// Fetches the answers that are due from the cable.
    void collect();
    /// When to do so next; nothing while no request is under way.
    std::optional<std::chrono::microseconds> nextAnswer() const;

    /// Every transfer under way comes back with -ESHUTDOWN, and nothing else is done any more.
    void unplug();
    bool unplugged() const { return m_unplugged; }

    bool anythingToReap(int file) const;

private:
    struct File
    {
        std::deque<Urb> waiting;
        std::deque<Urb> done;
        std::map<std::uint64_t, Urb> calls; // of begin(), by ticket
    };
    // Who holds an interface: nobody, the kernel's driver, or a file.
    enum : int { nobody = 0, kernelDriver = -1 };

    int checkUse(int file, const ControlRequest &request);
    int checkUse(int file, std::uint8_t endpoint);
    int perform(int file, const ControlRequest &request);
    void cancelTransfers(unsigned interfaceNumber);
    static void settle(Urb &urb, Cable::Answered answer);
    static void moveToDone(File &file, const std::deque<Urb>::iterator &urb, int status);

    const std::shared_ptr<Cable> m_cable;
    const std::string m_driver;
    std::map<int, File> m_files;
    int m_lastFile = 0;
    std::vector<int> m_holders;    // of each interface
    std::vector<int> m_alternates; // chosen for each interface
    bool m_unplugged = false;
};

} // namespace virtual_camera
