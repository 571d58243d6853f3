#include "platform/SystemClock.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QEventLoop>
#include <QTimer>

#include <chrono>

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
    QTimer alarm; // its tick ends the sleep below at the deadline
    alarm.setTimerType(Qt::PreciseTimer);
    alarm.setSingleShot(true);
    if (ms != forever)
        alarm.start(ms);
    QEventLoop loop;
    for (;;) {
        loop.processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents);
        if (cancelled())
            return WaitEnd::Cancelled;
        if (done())
            return WaitEnd::Done;
        if (deadline.hasExpired())
            return WaitEnd::TimedOut;
        if (!alarm.isActive() && ms != forever)
            alarm.start(1); // the tick came a fraction early
    }
}

} // namespace corvane
