// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "devices/Clock.h"

namespace corvane {

/// The waits of one window or one operation. Closing the group ends all of them at once and refuses
/// later ones, so whatever waited returns without another exchange.
class WaitGroup
{
public:
    explicit WaitGroup(Clock &clock)
        : m_clock(clock)
    {
    }

    /// Waits as Clock::waitUntil does, and is cancelled as soon as the group is closed.
    WaitEnd waitUntil(const Clock::Condition &done, int ms);
    /// Waits for `ms` milliseconds, or until the group is closed.
    WaitEnd wait(int ms);

    void close() { m_closed = true; }
    void reopen() { m_closed = false; }
    [[nodiscard]] bool isClosed() const { return m_closed; }
    /// True while a wait of this group runs; the window must not be destroyed meanwhile.
    [[nodiscard]] bool isWaiting() const { return m_running > 0; }
    [[nodiscard]] Clock &clock() const { return m_clock; }

private:
    Clock &m_clock;
    bool m_closed = false;
    int m_running = 0;
};

} // namespace corvane
