// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/lists/RunReport.h"

#include "core/text/Csv.h"

#include <algorithm>

namespace corvane {

QByteArray RunReport::toCsv() const
{
    QString text;
    for (const QStringList &row : rows) {
        QStringList cells;
        std::transform(row.begin(), row.end(), std::back_inserter(cells), csv::cell);
        text += cells.join(u',') + csv::rowEnd;
    }
    return csv::file(text.toUtf8());
}

} // namespace corvane
