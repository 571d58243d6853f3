// SPDX-License-Identifier: GPL-3.0-or-later
#include "devices/LibraryWorker.h"

#include "devices/PlatformError.h"
#include "devices/WaitGroup.h"

#include <QObject>

#include <chrono>
#include <condition_variable>
#include <deque>
#include <mutex>
#include <thread>

namespace corvane {

namespace {

using namespace std::chrono_literals;

constexpr auto joinLimit = 2s;

} // namespace

/// What the two threads share; whichever ends last destroys it.
struct LibraryWorker::State
{
    std::mutex mutex;
    std::condition_variable changed;
    std::deque<std::packaged_task<QByteArray()>> jobs;
    bool running = false; ///< a job is being worked on
    bool ending = false;
    bool ended = false;
    bool started = false;
    /// Wakes the caller's event loop; gone when nobody waits any more.
    std::unique_ptr<QObject> alarm = std::make_unique<QObject>();

    void work()
    {
        std::unique_lock lock(mutex);
        for (;;) {
            changed.wait(lock, [this] { return ending || !jobs.empty(); });
            if (jobs.empty())
                break;
            auto job = std::move(jobs.front());
            jobs.pop_front();
            running = true;
            lock.unlock();
            job();
            lock.lock();
            running = false;
            if (alarm)
                QMetaObject::invokeMethod(
                    alarm.get(), [] {}, Qt::QueuedConnection);
        }
        ended = true;
        changed.notify_all();
    }
};

LibraryWorker::LibraryWorker()
    : m_state(std::make_shared<State>())
{
}

LibraryWorker::~LibraryWorker()
{
    std::unique_lock lock(m_state->mutex);
    m_state->alarm.reset();
    m_state->ending = true;
    m_state->changed.notify_all();
    if (m_state->started)
        m_state->changed.wait_for(lock, joinLimit, [this] { return m_state->ended; });
}

std::optional<QByteArray> LibraryWorker::call(Job job, int limitMs, WaitGroup &waits)
{
    if (waits.waitUntil([this] { return !isBusy(); }, limitMs) == WaitEnd::Cancelled)
        return {};
    if (isBusy())
        throw PlatformError(u"the GPIB library has not come back from an earlier call; check the "
                            "devices and cables on the bus, and try again"_s);
    auto result = post(std::move(job));
    const auto isDone = [&result] { return result.wait_for(0s) == std::future_status::ready; };
    if (waits.waitUntil(isDone, limitMs) != WaitEnd::Done)
        return {};
    return result.get();
}

std::future<QByteArray> LibraryWorker::post(Job job)
{
    const std::lock_guard lock(m_state->mutex);
    auto result = m_state->jobs.emplace_back(std::move(job)).get_future();
    if (!m_state->started) {
        m_state->started = true;
        std::thread([state = m_state] { state->work(); }).detach();
    }
    m_state->changed.notify_all();
    return result;
}

bool LibraryWorker::isBusy() const
{
    const std::lock_guard lock(m_state->mutex);
    return m_state->running || !m_state->jobs.empty();
}

} // namespace corvane
