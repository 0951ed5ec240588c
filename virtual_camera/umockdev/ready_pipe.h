// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace virtual_camera {

// The device node. The kernel's own says "writable" to poll() when a transfer has been completed
// and is silent otherwise; a named pipe can do the same: full, it is not writable, and empty, it
// is. Programs open it for reading and writing, but never do either.
class ReadyPipe
{
public:
    explicit ReadyPipe(std::string path); // makes the node; not ready
    ~ReadyPipe();
    ReadyPipe(const ReadyPipe &) = delete;
    ReadyPipe &operator=(const ReadyPipe &) = delete;

    void setReady(bool ready);
    bool ready() const { return m_ready; }
    // Takes the name away; files that are open go on.
    void remove();

private:
    void fill() const;
    void drain() const;

    std::string m_path;
    int m_descriptor = -1;
    bool m_ready = false;
};

} // namespace virtual_camera
