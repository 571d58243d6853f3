// SPDX-License-Identifier: GPL-3.0-or-later
#include "devices/WaitGroup.h"

#include <QScopeGuard>

namespace corvane {

WaitEnd WaitGroup::waitUntil(const Clock::Condition &done, int ms)
{
    ++m_running;
    const auto finished = qScopeGuard([this] { --m_running; });
    return m_clock.waitUntil(done, ms, [this] { return m_closed; });
}

WaitEnd WaitGroup::wait(int ms)
{
    return waitUntil(Clock::never, ms);
}

} // namespace corvane
