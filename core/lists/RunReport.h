// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/text/GridModel.h"

#include <QByteArray>
#include <QDateTime>
#include <QString>
#include <QStringList>

#include <vector>

namespace corvane {

/// A list as it was run: the grid and, for its checks, how they went. Plain values, so that the
/// reports are pure functions of it.
struct RunReport
{
    struct Check
    {
        int row = 0;
        QString command;
        QString expected;
        QString tolerance;
        QString reply;
        GridModel::Verdict verdict = GridModel::Verdict::None; ///< None: it was not run
        /// From the check before, or the run's start, to this one's verdict.
        double seconds = 0;
    };

    /// What the run was made with; the name is one word.
    struct Property
    {
        QString name;
        QString value;
    };

    QString listName;
    QString hostName;
    QDateTime began;
    std::vector<Property> properties;
    /// The grid, its header row first.
    std::vector<QStringList> rows;
    std::vector<Check> checks;
    /// What went wrong other than a failed check; empty when nothing did.
    QString fault;
    double seconds = 0;

    /// The grid as comma-separated values that a spreadsheet opens as they are: UTF-8, lines ended
    /// by CR LF, cells quoted as needed, a blank in front of what would be taken for a formula.
    [[nodiscard]] QByteArray toCsv() const;
};

} // namespace corvane
