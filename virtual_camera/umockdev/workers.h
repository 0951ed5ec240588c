// Copyright (c) 2026 The PTZ panel developers
// SPDX-License-Identifier: MIT
#pragma once

#include <condition_variable>
#include <deque>
#include <functional>
#include <memory>
#include <mutex>

namespace virtual_camera {

/// Threads for tasks that may block: there are always enough for every task to run at once, and no
/// more than that. They end when there is no Workers any more and their task is done.
class Workers
{
public:
    Workers();
    ~Workers();
    Workers(const Workers &) = delete;
    Workers &operator=(const Workers &) = delete;

    void run(std::function<void()> task);

private:
    struct Shared
    {
        std::mutex mutex;
        std::condition_variable changed;
        std::deque<std::function<void()>> tasks;
        std::size_t idle = 0;
        bool ended = false;
    };
    static void work(const std::shared_ptr<Shared> &shared);

    std::shared_ptr<Shared> m_shared;
};

} // namespace virtual_camera
