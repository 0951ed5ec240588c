// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace virtual_camera {

/// The file behind a device node. The kernel's own says "writable" to poll() when a transfer has
/// been completed and is silent otherwise; a named pipe can do the same: full, it is not writable,
/// and empty, it is. Programs open it for reading and writing, but never do either.
class ReadyPipe
{
public:
    explicit ReadyPipe(std::string path); ///< makes the pipe; not ready
    ~ReadyPipe();
    ReadyPipe(const ReadyPipe &) = delete;
    ReadyPipe &operator=(const ReadyPipe &) = delete;

    const std::string &path() const { return m_path; }
    void setReady(bool ready);
    bool ready() const { return m_ready; }

private:
    void fill() const;
    void drain() const;

    std::string m_path;
    int m_descriptor = -1;
    bool m_ready = false;
};

} // namespace virtual_camera
