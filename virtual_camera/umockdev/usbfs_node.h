// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT
#pragma once

#include "virtual_camera/umockdev/ready_pipe.h"
#include "virtual_camera/usbfs/usbfs_device.h"

#include <memory>
#include <mutex>
#include <string>
#include <unordered_map>

using UMockdevIoctlBase = struct _UMockdevIoctlBase;
using UMockdevIoctlClient = struct _UMockdevIoctlClient;
using GObject = struct _GObject;

namespace virtual_camera {

// A device node in the testbed: takes the system calls that programs make on it, as umockdev
// hands them over on its own thread, and lets the UsbfsDevice do them. One node lives from a
// plug to an unplug; files that are still open then go on with it until they are closed.
class UsbfsNode : public std::enable_shared_from_this<UsbfsNode>
{
public:
    // The path is the node's real one. The mutex guards the device.
    UsbfsNode(const std::string &path, std::mutex &mutex, UsbfsDevice::Wiring wiring);
    ~UsbfsNode();
    UsbfsNode(const UsbfsNode &) = delete;
    UsbfsNode &operator=(const UsbfsNode &) = delete;

    UMockdevIoctlBase *handler() const { return m_handler; }
    // Transfers under way fail and the node's name is gone. Call with the mutex held.
    void unplug();
    int openFiles() const { return static_cast<int>(m_files.size()); }
    int requestsUnderWay() const { return m_device.requestsUnderWay(); }

private:
    struct Call;
    using IoctlFunction = int (UsbfsNode::*)(Call &);
    struct Ioctl;
    static const Ioctl *findIoctl(unsigned long request);

    static int onIoctl(UMockdevIoctlBase *, UMockdevIoctlClient *client, void *node);
    static void onConnected(UMockdevIoctlBase *, UMockdevIoctlClient *client, void *node);
    static void onClosed(void *node, GObject *client);

    bool dispatch(UMockdevIoctlClient *client);
    int capabilities(Call &call);
    int claimInterface(Call &call);
    int releaseInterface(Call &call);
    int setInterface(Call &call);
    int setConfiguration(Call &call);
    int clearHalt(Call &call);
    int reset(Call &call);
    int speed(Call &call);
    int getDriver(Call &call);
    int driverIoctl(Call &call);
    int disconnectAndClaim(Call &call);
    int submitUrb(Call &call);
    int discardUrb(Call &call);
    int reapUrb(Call &call);
    int controlTransfer(Call &call);

    bool giveBack(Call &call);
    void answerLater(UMockdevIoctlClient *client, int file);
    void later(std::chrono::milliseconds wait, std::function<void()> what);

    std::mutex &m_mutex;
    UsbfsDevice m_device;
    ReadyPipe m_pipe;
    UMockdevIoctlBase *m_handler;
    std::unordered_map<UMockdevIoctlClient *, int> m_files;
};

} // namespace virtual_camera
