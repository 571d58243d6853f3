// SPDX-License-Identifier: GPL-3.0-or-later
#include "FakeClock.h"

#include "tests/support/Testing.h"

namespace corvane {

void FakeClock::after(int ms, std::function<void()> action)
{
    m_actions.emplace(m_now + static_cast<quint32>(ms), std::move(action));
}

WaitEnd FakeClock::runWait(const Condition &done, int ms, const Condition &cancelled)
{
    waits.push_back(ms);
    const bool endless = ms == forever;
    const quint32 end = m_now + static_cast<quint32>(ms);
    QElapsedTimer real;
    real.start();
    for (;;) {
        QCoreApplication::processEvents();
        if (cancelled())
            return WaitEnd::Cancelled;
        if (done())
            return WaitEnd::Done;
        const auto next = m_actions.begin();
        if (next != m_actions.end() && (endless || next->first <= end)) {
            m_now = std::max(m_now, next->first);
            const auto action = m_actions.extract(next);
            action.mapped()();
        } else if (!endless) {
            m_now = std::max(m_now, end);
            return WaitEnd::TimedOut;
        } else if (real.hasExpired(5000)) {
            ADD_FAILURE() << "a wait without a limit had nothing to wait for";
            return WaitEnd::Cancelled;
        }
    }
}

} // namespace corvane
