// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/lists/ListText.h"

#include "core/lists/ListKinds.h"
#include "core/lists/ListStep.h"

namespace corvane {

namespace {

const QString lineEnd = u"\r\n"_s;
/// Four empty words: a chamber settings line that takes a row and fills none of it.
const QString emptySettingsRow = u"   "_s;

QString settingsLine(const QString &command, const QString &value)
{
    if (command.isEmpty())
        return emptySettingsRow + value;
    if (value.isEmpty())
        return command;
    const bool isWhole =
        command.contains(u' ') || command.startsWith(u"UUT"_s, Qt::CaseInsensitive);
    return (isWhole ? QString() : u"= "_s) + command + u' ' + value;
}

QString profileLine(const QString &operatorCell, const QString &command, const QString &value)
{
    const QString line = operatorCell + u' ' + command;
    return value.isEmpty() ? line : line + u' ' + value;
}

QString checkLine(const QString &start, QString value, const QString &tolerance)
{
    const bool held = value.contains(u'"') && !value.left(value.indexOf(u'"')).contains(u' ');
    if (value.contains(u' ') && !held && start.startsWith(u'!'))
        value = u'"' + value + u'"';
    // A quoted text takes in all that follows it, and has no use for a tolerance.
    const bool quoted = value.contains(u'"');
    return start + u' ' + value + (tolerance.isEmpty() || quoted ? QString() : u' ' + tolerance);
}

QString testLine(const QString &operatorCell, const QString &command, const QString &value,
                 const QString &tolerance)
{
    if (operatorCell == u"=")
        return profileLine(operatorCell, command, value);
    if (operatorCell == u"?" || operatorCell == u"!")
        return checkLine(operatorCell + u' ' + command, value, tolerance);
    // No other line is read into these cells: what was typed there stays at least in the file.
    QString rest;
    for (const QString &cell : {command, value, tolerance}) {
        if (!cell.isEmpty())
            rest += u' ' + cell;
    }
    const auto pause = u"# PAUSE"_s;
    if (operatorCell == u"#")
        return pause + rest;
    const bool begins =
        !ListStep::needsSecondCell(listKinds::testList, operatorCell) || operatorCell.isEmpty();
    return operatorCell + rest + (begins ? u' ' + pause : QString());
}

/// Nothing but its number, and perhaps a reply, which is no part of the list.
bool holdsNothing(int listKind, const TextTable &table, int row)
{
    for (int column = listKinds::firstColumn; column < listKinds::layout(listKind).replyColumn();
         ++column) {
        if (!table.text(row, column).isEmpty())
            return false;
    }
    return true;
}

QString rowLine(int listKind, const TextTable &table, int row)
{
    const auto cell = [&table, row](int column) { return table.text(row, column).toString(); };
    switch (listKind) {
    case listKinds::chamberProfile:
        return profileLine(cell(1), cell(2), cell(3));
    case listKinds::testList:
        return testLine(cell(1), cell(2), cell(3), cell(4));
    default:
        return settingsLine(cell(1), cell(2));
    }
}

/// The marker is taken out wherever it stands in a comment, so the one that the text does not hold.
QString commentLine(const QString &comment)
{
    const auto backslashes = u"\\\\"_s;
    return (comment.contains(backslashes) ? u"//"_s : backslashes) + comment;
}

} // namespace

QString listText::ofList(int listKind, const TextTable &table, const QString &comments,
                         const std::vector<ListConstant> &constants)
{
    QString text;
    QStringList commentLines = comments.split(lineEnd);
    if (commentLines.back().isEmpty())
        commentLines.removeLast();
    for (const QString &comment : commentLines)
        text += commentLine(comment) + lineEnd;
    if (listKind == listKinds::testList) {
        for (const auto &[name, value] : constants)
            text += u"# CONST %1 = %2"_s.arg(name, QString::number(value, 'g', 9)) + lineEnd;
    }
    for (int row = 1; row < table.rowCount(); ++row) {
        if (!holdsNothing(listKind, table, row))
            text += rowLine(listKind, table, row).left(listFile::maximumLine) + lineEnd;
    }
    return text;
}

} // namespace corvane
