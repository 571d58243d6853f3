// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/board/MeterReading.h"

#include "core/text/Numbers.h"
#include "devices/GpibControl.h"
#include "devices/PlatformError.h"
#include "devices/WaitGroup.h"

#include <QScopeGuard>

namespace corvane {

namespace {

constexpr int settleMs = 1000;
/// Of so many readings that stayed out the answers are passed over.
constexpr int mostLate = 8;

/// The reading itself was good: a fault of the device addressed before is reported by its own next
/// use.
void reopenQuietly(GpibControl &control)
{
    try {
        control.open();
    } catch (const PlatformError &) {
    }
}

} // namespace

QByteArray askMeter(GpibControl &control, WaitGroup &waits, int address, EarlierReading earlier,
                    const Clock::Condition &isCancelled)
{
    const QString remembered = control.connectString();
    const auto restore = qScopeGuard([&] { control.setConnectString(remembered); });
    control.setConnectString(u"GPIB0::%1"_s.arg(address));
    control.open();
    QByteArray reply;
    waits.waitUntil(isCancelled, settleMs);
    const bool isLate = earlier == EarlierReading::Unanswered;
    for (int i = 0; isLate && i < mostLate && !waits.isClosed() && !isCancelled(); ++i) {
        if (control.read().isEmpty())
            break;
    }
    if (!waits.isClosed() && !isCancelled()) {
        control.write("data?\r");
        if (waits.wait(settleMs) != WaitEnd::Cancelled)
            reply = control.read();
        // The late one may have come only now: the newest is the answer.
        for (int i = 0; isLate && i < mostLate && !reply.isEmpty() && !waits.isClosed(); ++i) {
            const QByteArray next = control.read();
            if (next.isEmpty())
                break;
            reply = next;
        }
    }
    control.setConnectString(remembered);
    if (!waits.isClosed())
        reopenQuietly(control);
    return reply;
}

float ReadMeterValue(GpibControl &control, WaitGroup &waits, int address)
{
    return numbers::single(
        numbers::leadingNumber(QString::fromLatin1(askMeter(control, waits, address))));
}

} // namespace corvane
