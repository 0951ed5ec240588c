// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT
#include "virtual_camera/usb/cable.h"

#include <algorithm>
#include <linux/usb/ch9.h>
#include <stdexcept>
#include <string>
#include <utility>

namespace virtual_camera {

using Result = LogRecord::Result;

Cable::Cable(int number, std::unique_ptr<CameraModel> camera, Firmware firmware,
    std::shared_ptr<RequestLog> log, Clock clock)
    : m_number(number), m_log(std::move(log)), m_clock(std::move(clock)),
      m_camera(std::move(camera)), m_firmware(std::move(firmware))
{ }

std::uint64_t Cable::send(int file, ControlRequest request)
{
    const std::lock_guard lock(m_mutex);
    if (m_queue.empty())
        m_begun = m_clock();
    m_queue.push_back({ ++m_lastTicket, file, std::move(request), m_log->now() });
    return m_lastTicket;
}

bool Cable::cancel(std::uint64_t ticket)
{
    const std::lock_guard lock(m_mutex);
    const auto found = std::find_if(m_queue.begin(), m_queue.end(),
        [ticket](const Waiting &waiting) { return waiting.ticket == ticket; });
    if (found == m_queue.end())
        return false;
    logRequest(std::move(*found), Result::Cancelled);
    if (found == m_queue.begin())
        m_begun = m_clock();
    m_queue.erase(found);
    return true;
}

std::vector<Cable::Answered> Cable::collect()
{
    std::vector<Answered> answers;
    const std::lock_guard lock(m_mutex);
    const std::chrono::microseconds now = m_clock();
    while (!m_queue.empty() && m_begun + m_faults.delay <= now) {
        m_begun += m_faults.delay;
        Waiting next = std::move(m_queue.front());
        m_queue.pop_front();
        answers.push_back(perform(std::move(next)));
    }
    return answers;
}

std::optional<std::chrono::microseconds> Cable::nextAnswer() const
{
    const std::lock_guard lock(m_mutex);
    if (m_queue.empty())
        return std::nullopt;
    const std::chrono::microseconds left = m_begun + m_faults.delay - m_clock();
    return std::max(left, std::chrono::microseconds(0));
}

Cable::Answered Cable::answerNow(int file, ControlRequest request)
{
    const std::lock_guard lock(m_mutex);
    return perform({ 0, file, std::move(request), m_log->now() });
}

Cable::Answered Cable::perform(Waiting waiting)
{
    ControlRequest &request = waiting.request;
    const Damage damage = m_faults.strike(request);
    Answered answered;
    answered.ticket = waiting.ticket;
    if (damage.instead) {
        answered.result = *damage.instead;
    } else {
        Answer answer = damage.stopLost ? Answer::done() : m_firmware.answer(request);
        answered.result =
            answer.stalled ? Result::Stall : damage.spoil(answer.data, request.length);
        answered.data = std::move(answer.data);
    }
    if (answered.result == Result::Ok && request.isStandard() && !request.hostReads()
        && request.request == USB_REQ_SET_CONFIGURATION)
        switchOn();
    if (request.hostReads())
        request.data = answered.data;
    logRequest(std::move(waiting), answered.result);
    return answered;
}

void Cable::switchOn()
{
    m_firmware.reset();
    if (m_camera)
        m_camera->switchOn();
}

void Cable::opened(int file)
{
    const std::lock_guard lock(m_mutex);
    ++m_openFiles;
    logEvent(LogRecord::Event::Open, file);
}

void Cable::closed(int file)
{
    const std::lock_guard lock(m_mutex);
    --m_openFiles;
    logEvent(LogRecord::Event::Close, file);
}

void Cable::reset(int file)
{
    const std::lock_guard lock(m_mutex);
    switchOn();
    logEvent(LogRecord::Event::Reset, file);
}

void Cable::plugIn(std::function<void()> bell)
{
    const std::lock_guard lock(m_mutex);
    m_bell = std::move(bell);
    switchOn();
}

void Cable::pullOut()
{
    const std::lock_guard lock(m_mutex);
    m_bell = nullptr;
    for (Waiting &waiting : m_queue)
        logRequest(std::move(waiting), Result::Gone);
    m_queue.clear();
    if (m_camera)
        m_camera->cutPower();
}

Faults Cable::faults() const
{
    const std::lock_guard lock(m_mutex);
    return m_faults;
}

void Cable::changeFaults(const std::function<void(Faults &)> &how)
{
    std::function<void()> bell;
    {
        const std::lock_guard lock(m_mutex);
        how(m_faults);
        bell = m_bell;
    }
    if (bell)
        bell();
}

bool Cable::claimRefused() const
{
    const std::lock_guard lock(m_mutex);
    return m_faults.claimRefused;
}

int Cable::openError() const
{
    const std::lock_guard lock(m_mutex);
    return m_faults.openError;
}

void Cable::withCamera(const std::function<void(CameraModel &)> &what) const
{
    if (!m_camera)
        throw std::logic_error("device " + std::to_string(m_number) + " is no camera");
    const std::lock_guard lock(m_mutex);
    what(*m_camera);
}

int Cable::requestsUnderWay() const
{
    const std::lock_guard lock(m_mutex);
    return static_cast<int>(m_queue.size());
}

int Cable::openFiles() const
{
    const std::lock_guard lock(m_mutex);
    return m_openFiles;
}

void Cable::logRequest(Waiting waiting, Result result) const
{
    LogRecord record;
    record.device = m_number;
    record.file = waiting.file;
    record.submitted = waiting.submitted;
    record.request = std::move(waiting.request);
    record.result = result;
    m_log->add(std::move(record));
}

void Cable::logEvent(LogRecord::Event event, int file, int address) const
{
    LogRecord record;
    record.device = m_number;
    record.file = file;
    record.event = event;
    record.address = address;
    m_log->add(std::move(record));
}

} // namespace virtual_camera
