// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "devices/Clock.h"

namespace corvane {

/// The clock of the running program: the monotonic system clock, waits in the event loop. A wait
/// takes no processor time while nothing happens and is late by 2 ms at most on an idle machine.
class SystemClock : public Clock
{
public:
    [[nodiscard]] quint32 MS_TIMER() const override;

protected:
    WaitEnd runWait(const Condition &done, int ms, const Condition &cancelled) override;
};

} // namespace corvane
