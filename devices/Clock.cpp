// SPDX-License-Identifier: GPL-3.0-or-later
#include "devices/Clock.h"

#include <QScopeGuard>

namespace corvane {

WaitEnd Clock::waitUntil(const Condition &done, int ms, const Condition &cancelled)
{
    if (cancelled())
        return WaitEnd::Cancelled;
    if (done())
        return WaitEnd::Done;
    if (ms != forever && ms <= 0)
        return WaitEnd::TimedOut;
    ++m_runningWaits;
    const auto finished = qScopeGuard([this] { --m_runningWaits; });
    return runWait(done, ms, cancelled);
}

} // namespace corvane
