// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

namespace corvane {

/// The calibration report's twelve fields, as typed or filled in.
struct ReportFields
{
    QString partNum;
    QString serialNum;
    QString picFirmWare;
    QString rabbitVersion;
    QString fileName;
    QString date;
    QString appVer;
    QString yourName;
    QString meterName;
    QString meterModel;
    QString meterCalDue;
    QString meterADINum;

    bool operator==(const ReportFields &) const = default;
};

/// What the board's windows remember between their openings while the program runs: one instance,
/// made at start and handed on by reference.
struct modSBC
{
    ReportFields report;
    /// The folder of the last report that was saved; empty before the first.
    QString reportFolder;
};

} // namespace corvane
