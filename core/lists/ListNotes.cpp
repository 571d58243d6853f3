// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/lists/ListNotes.h"

#include "core/lists/ListKinds.h"
#include "core/lists/ListTexts.h"

#include <QStringList>

namespace corvane {

namespace {

/// In the order of the file: "1 line ignored: line 2", "3 lines ignored, the first is line 2".
void append(QStringList &notes, const ListContents::Lines &lines, const QString &what)
{
    if (lines.count == 1)
        notes.append(listTexts::oneLine.arg(what).arg(lines.first));
    else if (lines.count > 1)
        notes.append(listTexts::severalLines.arg(lines.count).arg(what).arg(lines.first));
}

bool holdsSomething(const TextTable &table, int row)
{
    return !table.text(row, listKinds::firstColumn).isEmpty() ||
           !table.text(row, listKinds::getColumn).isEmpty();
}

} // namespace

QString listNotes::ofLoad(const QString &path, const ListContents &contents)
{
    QStringList notes;
    if (contents.end == ListContents::End::NotOpened)
        notes.append(contents.reason);
    else if (contents.end != ListContents::End::Complete)
        notes.append(listTexts::lineFault.arg(contents.endLine).arg(contents.reason));
    append(notes, contents.ignored, listTexts::ignored);
    append(notes, contents.shortened, listTexts::shortened);
    return notes.isEmpty() ? QString() : ofFault(path, notes.join(u"; "_s));
}

QString listNotes::ofFault(const QString &path, const QString &reason)
{
    return u"%1: %2"_s.arg(listKinds::fileName(path), reason);
}

QString listNotes::ofSave(const TextTable &table)
{
    int end = 1;
    while (!table.text(end, listKinds::firstColumn).isEmpty())
        ++end;
    for (int row = end; row < table.rowCount(); ++row) {
        if (holdsSomething(table, row))
            return listTexts::rowsNotSaved.arg(end);
    }
    return {};
}

} // namespace corvane
