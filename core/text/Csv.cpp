// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/text/Csv.h"

#include "core/text/Numbers.h"

#include <algorithm>

namespace corvane::csv {

namespace {

/// A spreadsheet takes a cell such as "= SP" for a formula, and with a blank in front for a text.
QString plainText(const QString &text)
{
    const bool formula = text.size() > 1 && QStringView(u"=+-@").contains(text.front()) &&
                         !numbers::numericValue(text);
    return formula ? u' ' + text : text;
}

} // namespace

QString cell(const QString &text)
{
    static const QString special = u",\"\r\n"_s;
    QString plain = plainText(text);
    const bool needsQuotes =
        std::any_of(plain.begin(), plain.end(), [](QChar c) { return special.contains(c); }) ||
        plain != plain.trimmed();
    return needsQuotes ? u'"' + plain.replace(u'"', u"\"\""_s) + u'"' : plain;
}

QByteArray file(QByteArray rows)
{
    // Without the mark a spreadsheet reads what is beyond ASCII by the system's code page.
    if (!std::all_of(rows.begin(), rows.end(), [](char c) { return (c & 0x80) == 0; }))
        rows.prepend("\xef\xbb\xbf");
    return rows;
}

} // namespace corvane::csv
