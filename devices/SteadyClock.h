// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QtGlobal>

#include <chrono>

#ifdef Q_OS_LINUX
#include <ctime>
#endif

namespace corvane {

/// Microseconds of a clock that never goes back and, where the system has one, goes on while the
/// computer sleeps: what is added to a wall clock stays right.
inline qint64 steadyMicroseconds()
{
#ifdef Q_OS_LINUX
    timespec now = {};
    ::clock_gettime(CLOCK_BOOTTIME, &now);
    return qint64{now.tv_sec} * 1'000'000 + now.tv_nsec / 1000;
#else
    const auto now = std::chrono::steady_clock::now().time_since_epoch();
    return std::chrono::duration_cast<std::chrono::microseconds>(now).count();
#endif
}

} // namespace corvane
