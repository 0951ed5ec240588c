// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT
#pragma once

#include "virtual_camera/umockdev/ready_pipe.h"
#include "virtual_camera/usbfs/usbfs.h"

#include <chrono>
#include <condition_variable>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <unordered_map>

using UMockdevIoctlBase = struct _UMockdevIoctlBase;
using UMockdevIoctlClient = struct _UMockdevIoctlClient;
using GObject = struct _GObject;
using GMainContext = struct _GMainContext;
using GSource = struct _GSource;

namespace virtual_camera {

class Workers;

/// The device node of one address: takes the system calls that programs make on it and lets the
/// device do them that is plugged in there. It lives as long as the bus, since umockdev ends
/// programs whose device it cannot reach; a file that is opened without a device is a dead one.
/// Any thread may call.
class DeviceNode : public std::enable_shared_from_this<DeviceNode>
{
public:
    /// The path is that of the pipe. To be held by a shared_ptr.
    DeviceNode(const std::string &path, std::shared_ptr<Workers> workers);
    ~DeviceNode();
    DeviceNode(const DeviceNode &) = delete;
    DeviceNode &operator=(const DeviceNode &) = delete;

    /// Connects the handler that umockdev is to call; once.
    UMockdevIoctlBase *connectHandler();

    void plug(std::shared_ptr<Usbfs> device);
    /// Transfers under way fail, and then every call.
    void unplug();
    /// Faults have changed: answers may be due.
    void update();

private:
    struct File
    {
        std::shared_ptr<Usbfs> device; // null for a dead file
        int number = 0;
        int vainReaps = 0; // in a row, while another file had something to reap
    };
    struct Call;

    static int onIoctl(UMockdevIoctlBase *, UMockdevIoctlClient *client, void *node);
    static void onConnected(UMockdevIoctlBase *, UMockdevIoctlClient *client, void *node);
    static void onClosed(void *node, GObject *client);
    void connected(UMockdevIoctlClient *client);
    void closed(UMockdevIoctlClient *client);

    void serve(UMockdevIoctlClient *client);
    int perform(const Call &call);
    int simpleCall(const Call &call);
    int submitUrb(const Call &call);
    int discardUrb(const Call &call);
    int reapUrb(const Call &call);
    std::unique_ptr<Urb> nextDone(const Call &call, int &error);
    int controlTransfer(const Call &call);
    std::unique_ptr<Urb> waitForAnswer(
        const Call &call, const ControlRequest &request, unsigned timeout, int &error);
    int onDevice(const Call &call, const std::function<int(Usbfs &, int file)> &action);
    void settle();
    void settleIn(std::chrono::microseconds wait);
    void stopTimer();

    std::shared_ptr<Workers> m_workers;
    UMockdevIoctlBase *m_handler;

    std::mutex m_mutex; // guards all that follows, and the devices
    std::condition_variable m_settled;
    ReadyPipe m_pipe;
    std::shared_ptr<Usbfs> m_device; // that is plugged in
    std::unordered_map<UMockdevIoctlClient *, File> m_files;
    GMainContext *m_context = nullptr; // of umockdev's thread
    GSource *m_timer = nullptr;        // for the next answer
};

} // namespace virtual_camera
