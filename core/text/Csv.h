// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "devices/Literals.h"

#include <QByteArray>
#include <QString>

/// Tables as text that a spreadsheet opens: cells with commas between them.
namespace corvane::csv {

inline constexpr auto rowEnd = "\r\n"_L1;

/// The cell as it stands in a row, quoted where it must be. What a spreadsheet would take for a
/// formula gets a blank in front.
QString cell(const QString &text);
/// The file of these rows, which are UTF-8.
QByteArray file(QByteArray rows);

} // namespace corvane::csv
