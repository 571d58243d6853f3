// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/traffic/TrafficEvent.h"

#include <QByteArray>
#include <QDateTime>

/// A recording as text: one JSON object a line, each ended by LF. docs/traffic.md has the format.
namespace corvane::trafficLine {

/// The first line, of a recording that began at the wall clock's `wall`.
QByteArray ofStart(const QDateTime &wall);
QByteArray ofEvent(const TrafficEvent &event);
/// As many events are missing at this place.
QByteArray ofLost(qint64 time, quint64 count);

} // namespace corvane::trafficLine
