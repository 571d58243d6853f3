// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "devices/Clock.h"

#include <QByteArray>

namespace corvane {

class GpibControl;
class WaitGroup;

/// What the meter answered to a reading before.
enum class EarlierReading {
    Answered,
    Unanswered ///< its answer may still come, and is dropped before the next reading
};

/// Asks the reference meter at the given GPIB primary address of board GPIB0 for one measurement,
/// which takes two seconds and the meter's own time. The control is addressed to the meter
/// meanwhile and gets its own address back on every way out.
///
/// Empty when the meter did not answer, the waits were closed, or `isCancelled` held before the
/// meter was asked. Throws PlatformError when the meter cannot be addressed or written to.
QByteArray askMeter(GpibControl &control, WaitGroup &waits, int address,
                    EarlierReading earlier = EarlierReading::Answered,
                    const Clock::Condition &isCancelled = Clock::never);

/// The measurement as a number: 0 when the meter's reply holds none, infinite when it is too large
/// for single precision.
float ReadMeterValue(GpibControl &control, WaitGroup &waits, int address);

} // namespace corvane
