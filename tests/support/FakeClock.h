// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "devices/Clock.h"

#include <map>
#include <vector>

namespace corvane {

/// A clock that stands still until somebody waits: a wait processes events, runs the actions that
/// were scheduled for its span and jumps to its end.
class FakeClock : public Clock
{
public:
    [[nodiscard]] quint32 MS_TIMER() const override { return m_now; }

    /// Runs `action` inside the wait that passes `ms` from now.
    void after(int ms, std::function<void()> action);

    /// Every wait that was asked for, in ms, in order.
    std::vector<int> waits;

protected:
    WaitEnd runWait(const Condition &done, int ms, const Condition &cancelled) override;

private:
    quint32 m_now = 1000;
    std::multimap<quint32, std::function<void()>> m_actions;
};

} // namespace corvane
