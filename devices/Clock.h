// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QtGlobal>

#include <functional>

namespace corvane {

/// How a wait ended.
enum class WaitEnd { Done, TimedOut, Cancelled };

/// The system's tick count and its one wait that keeps the windows alive. Everything that waits
/// goes through here, so a test can hand in a clock that it moves itself.
class Clock
{
public:
    /// A wait without a time limit.
    static constexpr int forever = -1;

    using Condition = std::function<bool()>;
    /// The condition of a wait that only time ends.
    static bool never() { return false; }

    virtual ~Clock() = default;

    /// Milliseconds of the monotonic clock, modulo 2^32.
    [[nodiscard]] virtual quint32 MS_TIMER() const = 0;

    /// Processes events until `done` or `cancelled` holds or `ms` milliseconds have passed, asleep
    /// meanwhile. Both conditions are tested after every batch of events; `cancelled` wins. A wait
    /// of 0 or less (but `forever`) tests once and processes nothing.
    WaitEnd waitUntil(const Condition &done, int ms, const Condition &cancelled);

    /// The number of waits that are running, one inside the other.
    [[nodiscard]] int runningWaits() const { return m_runningWaits; }

protected:
    Clock() = default;
    Q_DISABLE_COPY_MOVE(Clock)

    virtual WaitEnd runWait(const Condition &done, int ms, const Condition &cancelled) = 0;

private:
    int m_runningWaits = 0;
};

} // namespace corvane
