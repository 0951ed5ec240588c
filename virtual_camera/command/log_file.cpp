// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT
#include "virtual_camera/command/log_file.h"

#include <cerrno>
#include <system_error>

namespace virtual_camera {

namespace {

int leaveOpen(std::FILE *) { return 0; }

} // namespace

LogFile::LogFile(const std::string &path)
    : m_file(path == "-" ? stdout : std::fopen(path.c_str(), "we"),
        path == "-" ? leaveOpen : std::fclose)
{
    if (!m_file)
        throw std::system_error(errno, std::generic_category(), "cannot write the log " + path);
}

void LogFile::write(const LogRecord &record)
{
    if (!record.isControlRequest() && record.event == LogRecord::Event::Request)
        return;
    const std::string line = toTimedText(record) + '\n';
    std::fputs(line.c_str(), m_file.get());
    std::fflush(m_file.get());
}

} // namespace virtual_camera
