// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "tests/support/Testing.h"

namespace corvane {

/// Processes events until the condition holds; false when it does not within a time that no machine
/// is too slow for.
template <typename Condition>
bool soon(const Condition &done)
{
    return QTest::qWaitFor(done, 30000);
}

/// Processes events until none waits any more; false when they do not run dry.
inline bool eventsRunDry()
{
    for (int round = 0; round < 1000; ++round) {
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        if (!QAbstractEventDispatcher::instance()->processEvents(QEventLoop::AllEvents))
            return true;
    }
    return false;
}

} // namespace corvane
