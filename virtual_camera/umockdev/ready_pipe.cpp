// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT
#include "virtual_camera/umockdev/ready_pipe.h"

#include <array>
#include <cerrno>
#include <fcntl.h>
#include <filesystem>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>
#include <utility>

namespace virtual_camera {

namespace {

constexpr int smallestPipe = 4096;

[[noreturn]] void fail(const std::string &what)
{
    throw std::system_error(errno, std::generic_category(), what);
}

} // namespace

ReadyPipe::ReadyPipe(std::string path) : m_path(std::move(path))
{
    std::filesystem::create_directories(std::filesystem::path(m_path).parent_path());
    constexpr mode_t anybody = 0666;
    if (mkfifo(m_path.c_str(), anybody) != 0)
        fail("cannot make " + m_path);
    m_descriptor = ::open(m_path.c_str(), O_RDWR | O_NONBLOCK | O_CLOEXEC);
    if (m_descriptor < 0)
        fail("cannot open " + m_path);
    fcntl(m_descriptor, F_SETPIPE_SZ, smallestPipe);
    fill();
}

ReadyPipe::~ReadyPipe() { close(m_descriptor); }

void ReadyPipe::setReady(bool ready)
{
    if (ready == m_ready)
        return;
    m_ready = ready;
    if (ready)
        drain();
    else
        fill();
}

void ReadyPipe::fill() const
{
    const std::array<char, smallestPipe> page{};
    while (write(m_descriptor, page.data(), page.size()) > 0) { }
}

void ReadyPipe::drain() const
{
    std::array<char, smallestPipe> page{};
    while (read(m_descriptor, page.data(), page.size()) > 0) { }
}

} // namespace virtual_camera
