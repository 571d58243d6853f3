// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QElapsedTimer>

#include <functional>

namespace corvane::bench {

/// Milliseconds of a clock that never goes back. Devices ask nothing else for the time, so a test
/// moves it by hand and gets the same replies every run.
using TimeSource = std::function<qint64()>;

/// The monotonic clock, from 0 at the call.
inline TimeSource steadyTime()
{
    QElapsedTimer timer;
    timer.start();
    return [timer] { return timer.elapsed(); };
}

} // namespace corvane::bench
