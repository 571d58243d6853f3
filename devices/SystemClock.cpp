// SPDX-License-Identifier: GPL-3.0-or-later
#include "devices/SystemClock.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QEventLoop>
#include <QTimer>

#include <algorithm>
#include <chrono>
#include <thread>

namespace corvane {

quint32 SystemClock::MS_TIMER() const
{
    const auto sinceStart = std::chrono::steady_clock::now().time_since_epoch();
    return static_cast<quint32>(
        std::chrono::duration_cast<std::chrono::milliseconds>(sinceStart).count());
}

WaitEnd SystemClock::runWait(const Condition &done, int ms, const Condition &cancelled)
{
    const QDeadlineTimer deadline = ms == forever ? QDeadlineTimer(QDeadlineTimer::Forever)
                                                  : QDeadlineTimer(ms, Qt::PreciseTimer);
    QTimer alarm; // its tick ends the sleep in the event loop
    alarm.setTimerType(Qt::PreciseTimer);
    alarm.setSingleShot(true);
    if (ms != forever)
        alarm.start(std::max(0, ms - 1));
    QEventLoop loop;
    for (;;) {
        loop.processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents);
        if (cancelled())
            return WaitEnd::Cancelled;
        if (done())
            return WaitEnd::Done;
        if (deadline.hasExpired())
            return WaitEnd::TimedOut;
        if (!alarm.isActive() && ms != forever) {
            // The event loop sleeps whole milliseconds only, and so it would be late by half of
            // one.
            std::this_thread::sleep_for(std::chrono::nanoseconds(deadline.remainingTimeNSecs()));
            alarm.start(0);
        }
    }
}

} // namespace corvane
