// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/lists/CommandList.h"

#include "core/channels/Module1.h"
#include "core/lists/ListKinds.h"
#include "core/lists/ListNotes.h"
#include "core/lists/ListText.h"
#include "core/lists/ListTexts.h"
#include "core/text/Dialogs.h"
#include "devices/RegularFile.h"

namespace corvane {

namespace {

/// The grid of an empty list at start.
constexpr int startColumns = 5;
constexpr int startRows = 2;
/// Rows can be added by hand up to here; a loaded list may hold more.
constexpr int mostRowsByHand = 100;

} // namespace

CommandList::CommandList(Module1 &module, Dialogs &dialogs, QObject *parent)
    : GridModel(parent)
    , m_module(module)
    , m_dialogs(dialogs)
{
    initialise();
}

void CommandList::setKind(int kind)
{
    m_kind = kind;
    m_module.ListKind = kind;
}

void CommandList::initialise()
{
    setKind(listKinds::chamberSettings);
    m_constants.clear();
    setTable(listFile::emptyTable(listKinds::chamberSettings, startRows, startColumns));
    setCurrentCell(1, 0);
}

ListContents::End CommandList::OpenFile(const QString &path)
{
    ListFilePath = path;
    return OpenFile();
}

ListContents::End CommandList::OpenFile()
{
    using End = ListContents::End;
    Q_EMIT aboutToBeReplaced();
    ListContents contents = listFile::read(ListFilePath);
    m_rest = {ListFilePath, contents};
    setKind(contents.kind);
    m_comments = contents.comments;
    setTable(std::move(contents.table));
    m_constants = std::move(contents.constants);
    Q_EMIT replaced();
    Q_EMIT commented(m_comments);
    if (contents.end != End::NotOpened) { // else the name of the list before stays
        ListFileName = listKinds::fileName(ListFilePath);
        Q_EMIT named(ListFileName);
    }
    Q_EMIT noted(listNotes::ofLoad(ListFilePath, contents));
    if (contents.end != End::Complete) {
        const QString &text =
            contents.end == End::BadLine ? listTexts::badLine : listTexts::openFailed;
        m_dialogs.showMessage(this, text + listTexts::openProcedure);
    }
    return contents.end;
}

void CommandList::openIfThere(const QString &path)
{
    QFile file(path);
    const QString fault = regularFile::open(file, QIODevice::ReadOnly);
    if (fault.isEmpty()) {
        OpenFile(path);
        return;
    }
    Q_EMIT noted(listNotes::ofFault(path, fault));
    m_dialogs.showMessage(this, listTexts::openFailed + listTexts::openProcedure);
}

void CommandList::clear()
{
    Q_EMIT aboutToBeReplaced();
    initialise();
    ListFileName.clear();
    ListFilePath.clear();
    m_rest = {};
    Q_EMIT replaced();
    Q_EMIT named({});
    Q_EMIT noted({});
}

void CommandList::addRow()
{
    const int row = table().rowCount();
    if (row >= mostRowsByHand)
        return;
    appendRow();
    setText(row, listKinds::lineColumn, QString::number(row));
    setCurrentCell(row, std::max(currentCol(), 1));
}

void CommandList::deleteRow(int row)
{
    removeRow(row);
    for (; row < table().rowCount(); ++row) {
        if (textLength(row, listKinds::lineColumn) > 0)
            setText(row, listKinds::lineColumn, QString::number(row));
    }
}

QString CommandList::saveSettings(const QString &path)
{
    QString fault = listFile::write(path, listFile::settingsText(table(), m_comments));
    if (!fault.isEmpty())
        return fault;
    Q_EMIT noted(listNotes::ofSave(table()));
    if (m_rest.isIn(path))
        m_rest = {};
    return {};
}

QString CommandList::rowText(int row) const
{
    QStringList cells;
    for (int column = listKinds::firstColumn; column < columnCount() - 1; ++column)
        cells.append(text(row, column));
    return cells.join(u' ').trimmed();
}

QString CommandList::text() const
{
    return listText::ofList(m_kind, table(), m_comments, m_constants);
}

} // namespace corvane
