// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT
#pragma once

#include "virtual_camera/usb/request_log.h"

#include <cstdio>
#include <memory>
#include <string>

namespace virtual_camera {

// The log for people: one line for each request to a control and for each opening, closing and
// plugging, written out at once.
class LogFile
{
public:
    // "-" is standard output. Throws std::system_error when it cannot be written.
    explicit LogFile(const std::string &path);

    void write(const LogRecord &record);

private:
    std::unique_ptr<std::FILE, int (*)(std::FILE *)> m_file;
};

} // namespace virtual_camera
