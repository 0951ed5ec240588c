// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT
#include "virtual_camera/umockdev/workers.h"

#include <thread>
#include <utility>

namespace virtual_camera {

Workers::Workers() : m_shared(std::make_shared<Shared>()) { }

Workers::~Workers()
{
    const std::lock_guard lock(m_shared->mutex);
    m_shared->ended = true;
    m_shared->changed.notify_all();
}

void Workers::run(std::function<void()> task)
{
    const std::lock_guard lock(m_shared->mutex);
    m_shared->tasks.push_back(std::move(task));
    if (m_shared->idle < m_shared->tasks.size())
        std::thread([shared = m_shared] { work(shared); }).detach();
    else
        m_shared->changed.notify_one();
}

void Workers::work(const std::shared_ptr<Shared> &shared)
{
    std::unique_lock lock(shared->mutex);
    while (true) {
        if (!shared->tasks.empty()) {
            std::function<void()> task = std::move(shared->tasks.front());
            shared->tasks.pop_front();
            lock.unlock();
            task();
            task = nullptr;
            lock.lock();
        } else if (shared->ended) {
            return;
        } else {
            ++shared->idle;
            shared->changed.wait(lock);
            --shared->idle;
        }
    }
}

} // namespace virtual_camera
