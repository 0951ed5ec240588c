// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT
#include "virtual_camera/usbfs/usbfs.h"

#include <algorithm>
#include <cerrno>
#include <utility>

// The queues of transfers. Interfaces and settings are in usbfs.cpp.

namespace virtual_camera {

int Usbfs::submit(int file, Urb urb)
{
    const bool control = urb.endpoint == 0;
    if (const int error = control ? checkUse(file, urb.request) : checkUse(file, urb.endpoint))
        return error;
    // Nothing ever comes from the other endpoints: no event happens, no picture is sent.
    if (control)
        urb.ticket = m_cable->send(file, urb.request);
    m_files[file].waiting.push_back(std::move(urb));
    return 0;
}

std::int64_t Usbfs::begin(int file, const ControlRequest &request)
{
    if (const int error = checkUse(file, request))
        return error;
    Urb urb;
    urb.request = request;
    urb.ticket = m_cable->send(file, request);
    const std::uint64_t ticket = urb.ticket;
    m_files[file].calls[ticket] = std::move(urb);
    return static_cast<std::int64_t>(ticket);
}

std::unique_ptr<Urb> Usbfs::finish(int file, std::uint64_t ticket)
{
    auto &calls = m_files[file].calls;
    const auto call = calls.find(ticket);
    if (call == calls.end() || !call->second.done)
        return nullptr;
    auto urb = std::make_unique<Urb>(std::move(call->second));
    calls.erase(call);
    return urb;
}

void Usbfs::giveUp(int file, std::uint64_t ticket)
{
    m_cable->cancel(ticket);
    m_files[file].calls.erase(ticket);
}

int Usbfs::discard(int file, std::uint64_t address)
{
    std::deque<Urb> &waiting = m_files[file].waiting;
    const auto urb = std::find_if(waiting.begin(), waiting.end(),
        [address](const Urb &candidate) { return candidate.address == address; });
    if (urb == waiting.end())
        return -EINVAL;
    if (urb->endpoint == 0)
        m_cable->cancel(urb->ticket);
    moveToDone(m_files[file], urb, -ENOENT);
    return 0;
}

std::unique_ptr<Urb> Usbfs::reap(int file)
{
    std::deque<Urb> &done = m_files[file].done;
    if (done.empty())
        return nullptr;
    auto urb = std::make_unique<Urb>(std::move(done.front()));
    done.pop_front();
    return urb;
}

void Usbfs::collect()
{
    for (Cable::Answered &answer : m_cable->collect()) {
        for (auto &[number, file] : m_files) {
            const auto urb = std::find_if(file.waiting.begin(), file.waiting.end(),
                [&](const Urb &candidate) { return candidate.ticket == answer.ticket; });
            if (urb != file.waiting.end()) {
                settle(*urb, std::move(answer));
                moveToDone(file, urb, urb->status);
                break;
            }
            const auto call = file.calls.find(answer.ticket);
            if (call != file.calls.end()) {
                settle(call->second, std::move(answer));
                break;
            }
        }
    }
}

void Usbfs::settle(Urb &urb, Cable::Answered answer)
{
    urb.done = true;
    urb.status = statusOf(answer.result);
    urb.answer = std::move(answer.data);
    if (urb.status == 0 || urb.status == -EOVERFLOW)
        urb.transferred = urb.request.hostReads() ? urb.answer.size() : urb.request.data.size();
}

void Usbfs::moveToDone(File &file, const std::deque<Urb>::iterator &urb, int status)
{
    urb->done = true;
    urb->status = status;
    file.done.push_back(std::move(*urb));
    file.waiting.erase(urb);
}

std::optional<std::chrono::microseconds> Usbfs::nextAnswer() const
{
    return m_unplugged ? std::nullopt : m_cable->nextAnswer();
}

void Usbfs::unplug()
{
    m_unplugged = true;
    m_cable->pullOut();
    for (auto &[number, file] : m_files) {
        while (!file.waiting.empty())
            moveToDone(file, file.waiting.begin(), -ESHUTDOWN);
        for (auto &[ticket, call] : file.calls) {
            call.done = true;
            call.status = -ENODEV;
        }
    }
}

bool Usbfs::anythingToReap(int file) const
{
    const auto found = m_files.find(file);
    return found != m_files.end() && !found->second.done.empty();
}

} // namespace virtual_camera
