// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/report/CalibrationReport.h"

#include "core/report/ReportTexts.h"
#include "core/text/Latin1.h"
#include "core/text/LineEnds.h"
#include "core/text/Numbers.h"

#include <QRegularExpression>
#include <QStringList>

namespace corvane::calibrationReport {

namespace {

const QString lineEnd = u"\r\n"_s;

/// What a field holds, on one line: several may have been pasted into it.
QString fieldValue(const QString &field)
{
    static const QRegularExpression lineEnds(u"[\\r\\n]+"_s);
    return field.trimmed().replace(lineEnds, u" "_s);
}

/// One row of the grid, the last channel first under a heading that begins with channel 0: the
/// readers of these files rely on that order.
QString gridLine(const CalibrationTable &table, int row)
{
    QString line = numbers::fixed5(table.text(row, 0)) + u'\t';
    for (int column = CalibrationTable::columns - 1; column >= 1; --column) {
        const QString value = numbers::fixed5(table.text(row, column));
        if (!value.contains(u'-'))
            line += u' '; // in the sign's place
        line += value + u' ';
    }
    return line;
}

} // namespace

QString text(const ReportFields &fields, const CalibrationTable &table)
{
    QString result;
    for (const reportTexts::Line &line : reportTexts::lines) {
        result += line.label;
        if (line.field)
            result += u' ' + fieldValue(fields.*line.field);
        result += lineEnd;
    }
    result += reportTexts::gridHeading + lineEnd;
    for (int row = 1; row < CalibrationTable::rows; ++row)
        result += gridLine(table, row) + lineEnd;
    return result;
}

std::optional<Misfit> firstMisfit(const ReportFields &fields)
{
    for (const reportTexts::Line &line : reportTexts::lines) {
        if (!line.field)
            continue;
        const QString misfit = latin1::misfit(fieldValue(fields.*line.field));
        if (!misfit.isEmpty())
            return Misfit{line.field, misfit};
    }
    return std::nullopt;
}

std::optional<BoardIdentity> parseIdentity(const QString &reply)
{
    constexpr qsizetype needed = 5;
    QStringList fields;
    for (const QStringView field : QStringView(reply).tokenize(u',')) {
        if (field.size() > longestField)
            return std::nullopt;
        fields.append(lineEnds::removed(field.toString()));
        if (fields.size() == needed)
            break;
    }
    if (fields.size() < needed)
        return std::nullopt;
    for (const char16_t *prefix : {u"P/N_", u"P/N", u"p/n_", u"p/n"})
        fields[1].remove(QString::fromUtf16(prefix));
    return BoardIdentity{.partNum = fields[1].trimmed(),
                         .serialNum = fields[4].trimmed(),
                         .picFirmWare = fields[3].trimmed(),
                         .rabbitVersion = fields[2].trimmed()};
}

QString fileName(const QString &partNum, const QString &serialNum)
{
    const QStringList pieces = serialNum.split(u'/');
    if (pieces.size() < 2)
        return {};
    return partNum + u'_' + pieces[1] + u'-' + pieces[0];
}

} // namespace corvane::calibrationReport
