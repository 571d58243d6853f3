// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/traffic/TrafficEvent.h"

#include <QDateTime>

namespace corvane {

/// What has been recorded, by number, for whoever reads it later: plain functions, so that a module
/// of its own can be handed them.
class TrafficEvents
{
public:
    /// The wall clock at time 0, in UTC.
    [[nodiscard]] virtual const QDateTime &began() const = 0;
    /// µs since then.
    [[nodiscard]] virtual qint64 now() const = 0;
    /// The number of the oldest event that is kept: as many have been dropped.
    [[nodiscard]] virtual quint64 first() const = 0;
    /// The number that the next event gets.
    [[nodiscard]] virtual quint64 end() const = 0;
    /// The event of a number from first() on and before end(). Its content stays where it is until
    /// the next event is added.
    [[nodiscard]] virtual TrafficEvent at(quint64 number) const = 0;

protected:
    TrafficEvents() = default;
    ~TrafficEvents() = default;
    Q_DISABLE_COPY_MOVE(TrafficEvents)
};

} // namespace corvane
