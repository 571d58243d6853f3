#include "app/RunReport.h"

#include "core/text/Numbers.h"

#include <algorithm>

namespace corvane {

namespace {

/// A spreadsheet takes a cell such as "= SP" for a formula, and with a blank in front for a text.
QString csvText(const QString &text)
{
    const bool formula = text.size() > 1 && QStringView(u"=+-@").contains(text.front()) &&
                         !numbers::numericValue(text);
    return formula ? u' ' + text : text;
}

QString csvCell(const QString &cell)
{
    static const QString special = u",\"\r\n"_s;
    QString text = csvText(cell);
    const bool plain =
        std::none_of(text.begin(), text.end(), [](QChar c) { return special.contains(c); }) &&
        text == text.trimmed();
    if (plain)
        return text;
    return u'"' + text.replace(u'"', u"\"\""_s) + u'"';
}

} // namespace

QByteArray RunReport::toCsv() const
{
    const auto isAscii = [](QChar c) { return c.unicode() < 128; };
    QString csv;
    for (const QStringList &row : rows) {
        QStringList cells;
        std::transform(row.begin(), row.end(), std::back_inserter(cells), csvCell);
        csv += cells.join(u',') + u"\r\n"_s;
    }
    // Without the mark a spreadsheet reads what is beyond ASCII by the system's code page.
    if (!std::all_of(csv.begin(), csv.end(), isAscii))
        csv.prepend(QChar::ByteOrderMark);
    return csv.toUtf8();
}

} // namespace corvane
