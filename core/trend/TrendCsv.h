// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>

namespace corvane {

class TrendSeries;

namespace trendCsv {

/// All points that are kept, as a table: a row a point, curve by curve. Columns: seconds since the
/// recording began, wall clock (UTC), Channel, command, value.
QByteArray text(const TrendSeries &series);

} // namespace trendCsv
} // namespace corvane
