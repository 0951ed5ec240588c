// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT
#include "virtual_camera/command/log_file.h"

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <condition_variable>
#include <fcntl.h>
#include <mutex>
#include <sys/stat.h>
#include <system_error>
#include <thread>
#include <unistd.h>
#include <utility>

namespace virtual_camera {

namespace {

constexpr std::size_t longestBacklog = 1 << 19;
constexpr std::chrono::seconds patience{ 1 }; // with a reader, at the end

int openForWriting(const std::string &path)
{
    constexpr mode_t everybody = 0666;
    const int file = path == "-"
        ? dup(STDOUT_FILENO)
        : open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, everybody);
    if (file < 0)
        throw std::system_error(errno, std::generic_category(), "cannot write the log " + path);
    fcntl(file, F_SETFD, FD_CLOEXEC);
    return file;
}

// Whether a reader may make the writer wait.
bool mayBlock(int file)
{
    struct stat about{};
    return fstat(file, &about) != 0 || !S_ISREG(about.st_mode);
}

// Writes a part of the text and takes it away. What cannot be written will not be: the reader has
// gone, or the disk is full.
void writePart(int file, std::string &text)
{
    constexpr std::size_t largest = 4096;
    const ssize_t count = write(file, text.data(), std::min(text.size(), largest));
    if (count >= 0)
        text.erase(0, static_cast<std::size_t>(count));
    else if (errno != EINTR)
        text.clear();
}

} // namespace

struct LogFile::Backlog
{
    Backlog(int where, LogFormat what)
        : file(where), blocking(mayBlock(where)), format(std::move(what)), text(format.header())
    { }
    ~Backlog() { close(file); }
    Backlog(const Backlog &) = delete;
    Backlog &operator=(const Backlog &) = delete;

    bool idle() const { return text.empty() && lost == 0 && !writing; }
    // Everything that there is to write; where records are missing it says so.
    std::string take()
    {
        std::string taken = std::exchange(text, {});
        return lost > 0 ? taken + format.lost(std::exchange(lost, 0)) : taken;
    }

    void writeAll()
    {
        for (std::string taken = take(); !taken.empty();)
            writePart(file, taken);
    }

    const int file;
    const bool blocking;
    const LogFormat format;
    std::mutex mutex;
    std::condition_variable changed;
    std::string text;       // not written yet
    std::uint64_t lost = 0; // records that had no room
    std::uint64_t written = 0;
    bool writing = false;
    bool ended = false;
};

LogFile::LogFile(const std::string &path, LogFormat format)
    : m_backlog(std::make_shared<Backlog>(openForWriting(path), std::move(format)))
{
    if (m_backlog->blocking)
        std::thread(writeOut, m_backlog).detach();
    else
        m_backlog->writeAll();
}

LogFile::~LogFile()
{
    std::unique_lock lock(m_backlog->mutex);
    const auto idle = [this] { return m_backlog->idle(); };
    for (std::uint64_t before = ~0ULL; !idle() && m_backlog->written != before;) {
        before = m_backlog->written;
        m_backlog->changed.wait_for(lock, patience, idle);
    }
    m_backlog->ended = true;
    m_backlog->changed.notify_all();
}

void LogFile::write(const LogRecord &record)
{
    const std::string text = m_backlog->format.record(record);
    const std::lock_guard lock(m_backlog->mutex);
    if (text.empty())
        return;
    // Once something is lost, the rest is, too, until it can be said.
    if (m_backlog->lost > 0 || m_backlog->text.size() + text.size() > longestBacklog) {
        ++m_backlog->lost;
        return;
    }
    m_backlog->text += text;
    // A file has the line when the program has its answer.
    if (!m_backlog->blocking)
        m_backlog->writeAll();
    m_backlog->changed.notify_all();
}

void LogFile::writeOut(const std::shared_ptr<Backlog> &backlog)
{
    std::unique_lock lock(backlog->mutex);
    for (;;) {
        backlog->changed.wait(lock, [&] { return backlog->ended || !backlog->text.empty(); });
        if (backlog->ended)
            return;
        std::string text = backlog->take();
        backlog->writing = true;
        while (!text.empty()) {
            lock.unlock();
            writePart(backlog->file, text);
            lock.lock();
            ++backlog->written;
        }
        backlog->writing = false;
        backlog->changed.notify_all();
    }
}

} // namespace virtual_camera
