#include "windows/lists/CommandListArea.h"

#include "core/channels/ChannelTexts.h"
#include "core/lists/ListKinds.h"
#include "core/lists/ListNotes.h"
#include "core/lists/ListText.h"
#include "core/lists/ListTexts.h"
#include "core/text/Dialogs.h"
#include "windows/lists/ListHost.h"
#include "windows/lists/PlainText.h"
#include "windows/lists/frmList.h"
#include "windows/widgets/ElidedLabel.h"
#include "windows/widgets/TextGrid.h"

#include <QCheckBox>
#include <QCoreApplication>
#include <QFocusEvent>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScrollBar>
#include <QTextCursor>

#include <algorithm>

namespace corvane {

namespace {

using Outcome = Dialogs::FileChoice::Outcome;

/// The grid of an empty list at start.
constexpr int startColumns = 5;
constexpr int startRows = 2;
/// Rows can be added by hand up to here; a loaded list may hold more.
constexpr int mostRowsByHand = 100;
/// A cell longer than this came from a device; a box of one line is no place to edit it.
constexpr qsizetype longestEdited = 32767;
/// Characters in the comments beyond which the log empties them.
constexpr qsizetype commentLimit = 30000;

} // namespace

CommandListArea::CommandListArea(Module1 &module, ListHost &host, Dialogs &dialogs, QWidget *parent)
    : QWidget(parent)
    , m_module(module)
    , m_host(host)
    , m_dialogs(dialogs)
{
    setObjectName(u"CommandListArea"_s);
    makeControls();
    layOut();
    connectControls();
    initialiseGrid();
}

CommandListArea::~CommandListArea()
{
    // The grid hides and the box loses the focus after this object is no area any more.
    flexgridVDL->disconnect(this);
    txtFlexText->removeEventFilter(this);
}

void CommandListArea::connectControls()
{
    using Area = CommandListArea;
    const auto clicked = &QPushButton::clicked;
    connect(cmdLoad, clicked, this, &Area::cmdLoad_Click);
    connect(cmdSave, clicked, this, &Area::cmdSave_Click);
    connect(cmdEditList, clicked, this, &Area::cmdEditList_Click);
    connect(cmdSaveList, clicked, this, &Area::cmdSaveList_Click);
    connect(cmdAddRow, clicked, this, &Area::cmdAddRow_Click);
    connect(cmdDeleteRow, clicked, this, &Area::cmdDeleteRow_Click);
    connect(cmdClearCol, clicked, this, &Area::cmdClearCol_Click);
    connect(cmdClear, clicked, this, &Area::cmdClear_Click);
    connect(cmdMaxGrid, clicked, this, &Area::cmdMaxGrid_Click);
    connect(cmdMinGrid, clicked, this, &Area::cmdMinGrid_Click);
    connect(flexgridVDL, &TextGrid::editRequested, this, &Area::flexgridVDL_EditRequested);
    connect(flexgridVDL, &TextGrid::acted, this, &Area::flexgridVDL_Acted);
    txtFlexText->installEventFilter(this);
}

// Loading

void CommandListArea::cmdLoad_Click()
{
    flexgridVDL->setCurrentCell(0, 0);
    const Dialogs::FileChoice choice = m_dialogs.openFile(
        this, {listTexts::openFilter, QCoreApplication::applicationDirPath(), QString()});
    if (choice.outcome != Outcome::Chosen || choice.path.isEmpty())
        return;
    ListFilePath = choice.path;
    OpenFile();
}

ListContents::End CommandListArea::OpenFile()
{
    using End = ListContents::End;
    Q_EMIT listAboutToChange();
    ListContents contents = listFile::read(ListFilePath);
    const End end = contents.end;
    m_rest = {ListFilePath, contents};
    const QString note = listNotes::ofLoad(ListFilePath, contents);
    showContents(contents);
    Q_EMIT noted(note);
    if (end != End::Complete) {
        const QString text = end == End::BadLine ? listTexts::badLine : listTexts::openFailed;
        m_dialogs.showMessage(this, text + listTexts::openProcedure);
    }
    return end;
}

void CommandListArea::showContents(ListContents &contents)
{
    setKind(contents.kind);
    txtVDL->setPlainText(contents.comments);
    flexgridVDL->setTable(std::move(contents.table));
    setColumnWidths();
    m_constants = std::move(contents.constants);
    if (contents.end == ListContents::End::NotOpened)
        return; // the name of the list before stays
    ListFileName = listKinds::fileName(ListFilePath);
    lblFileName->showLong(ListFileName);
    m_host.setCaption(listTexts::captionPrefix + ListFileName);
}

void CommandListArea::setKind(int kind)
{
    m_module.ListKind = kind;
    chkStripOpr->setEnabled(kind == listKinds::testList);
    cmdGetList->setEnabled(kind == listKinds::chamberSettings);
    cmdSave->setEnabled(kind == listKinds::chamberSettings);
}

// Saving

void CommandListArea::cmdSave_Click()
{
    if (m_module.ListKind != listKinds::chamberSettings)
        return;
    const Dialogs::FileChoice choice = m_dialogs.saveFile(
        this, {listTexts::saveFilter, QCoreApplication::applicationDirPath(), ListFileName});
    if (choice.outcome == Outcome::Cancelled || !m_rest.maySaveTo(choice.path, m_dialogs, this))
        return;
    QString fault = listTexts::noFileName;
    if (choice.outcome == Outcome::Chosen) {
        // The caption keeps the list's own name, the label takes the name it is saved under.
        m_host.setCaption(listTexts::captionPrefix + ListFileName);
        lblFileName->showLong(listKinds::fileName(choice.path));
        fault = saveSettings(choice.path);
    }
    if (fault.isEmpty()) {
        flexgridVDL->setCurrentCell(0, 0);
        return;
    }
    Q_EMIT noted(listNotes::ofFault(choice.path, fault));
    m_dialogs.showMessage(this, listTexts::saveFailed);
}

QString CommandListArea::saveSettings(const QString &path)
{
    const TextTable &table = flexgridVDL->table();
    QString fault = listFile::write(path, listFile::settingsText(table, comments()));
    if (!fault.isEmpty())
        return fault;
    Q_EMIT noted(listNotes::ofSave(table));
    if (m_rest.isIn(path))
        m_rest = {};
    return {};
}

QString CommandListArea::comments() const
{
    return plainText::of(*txtVDL);
}

QString CommandListArea::listText() const
{
    return listText::ofList(m_module.ListKind, flexgridVDL->table(), comments(), m_constants);
}

/// Made when it is first wanted.
frmList &CommandListArea::editor()
{
    if (!m_editor) {
        m_editor = new frmList(m_dialogs, this);
        connect(m_editor, &frmList::saved, this, [this](const QString &path) {
            ListFilePath = path;
            OpenFile();
        });
        connect(m_editor, &frmList::saveFailed, this, &CommandListArea::noted);
    }
    return *m_editor;
}

void CommandListArea::cmdEditList_Click()
{
    editor().edit(listText(), m_module.ListKind, false, m_rest);
}

void CommandListArea::cmdSaveList_Click()
{
    editor().edit(listText(), m_module.ListKind, true, m_rest);
}

// Rows and columns

void CommandListArea::initialiseGrid()
{
    setKind(listKinds::chamberSettings);
    m_constants.clear();
    TextTable table = listFile::emptyTable(listKinds::chamberSettings, startRows);
    table.setColumnCount(startColumns);
    flexgridVDL->setTable(std::move(table));
    flexgridVDL->setCurrentCell(1, 0);
    setColumnWidths();
}

void CommandListArea::cmdAddRow_Click()
{
    const int row = flexgridVDL->rowCount();
    if (row >= mostRowsByHand)
        return;
    flexgridVDL->setRowCount(row + 1);
    flexgridVDL->setText(row, listKinds::lineColumn, QString::number(row));
    flexgridVDL->setCurrentCell(row, std::max(flexgridVDL->currentCol(), 1));
}

void CommandListArea::cmdDeleteRow_Click()
{
    const int first = flexgridVDL->currentRow();
    if (first < 1 || m_module.transferRunning())
        return; // a run counts rows: they stay where they are
    flexgridVDL->removeRow(first);
    for (int row = first; row < flexgridVDL->rowCount(); ++row) {
        if (flexgridVDL->textLength(row, listKinds::lineColumn) > 0)
            flexgridVDL->setText(row, listKinds::lineColumn, QString::number(row));
    }
}

void CommandListArea::cmdClearCol_Click()
{
    if (flexgridVDL->currentCol() < 1 || m_module.GetMode)
        return;
    flexgridVDL->clearColumn(flexgridVDL->currentCol());
    flexgridVDL->setCurrentCell(0, 0);
}

void CommandListArea::cmdClear_Click()
{
    Q_EMIT listAboutToChange();
    initialiseGrid();
    ListFileName.clear();
    ListFilePath.clear();
    lblFileName->showLong({});
    m_rest = {};
    Q_EMIT noted({});
    m_host.setCaption(listTexts::caption);
}

void CommandListArea::cmdMaxGrid_Click()
{
    m_leftHand->hide();
    cmdMaxGrid->hide();
    cmdMinGrid->show();
}

void CommandListArea::cmdMinGrid_Click()
{
    m_leftHand->show();
    cmdMinGrid->hide();
    cmdMaxGrid->show();
}

// Editing in place

void CommandListArea::flexgridVDL_EditRequested(const QString &typed)
{
    const int row = flexgridVDL->currentRow();
    const int column = flexgridVDL->currentCol();
    if (row < 1 || column < 1 || m_module.transferRunning() ||
        flexgridVDL->textLength(row, column) > longestEdited)
        return;
    flexgridVDL->setCurrentCell(row, column); // scrolls to it
    flexgridVDL->scrollTo(flexgridVDL->currentIndex());
    txtFlexText->setGeometry(flexgridVDL->cellRect(row, column));
    txtFlexText->setText(typed.isEmpty() ? flexgridVDL->text(row, column) : typed);
    if (typed.isEmpty())
        txtFlexText->selectAll();
    txtFlexText->show();
    txtFlexText->setFocus();
}

void CommandListArea::flexgridVDL_Acted()
{
    if (txtFlexText->isHidden())
        return;
    txtFlexText->hide();
    txtFlexText->clear();
}

void CommandListArea::txtFlexText_KeyDown(int key)
{
    const bool enter = key == Qt::Key_Return || key == Qt::Key_Enter;
    if (!enter && key != Qt::Key_Escape)
        return;
    const int row = flexgridVDL->currentRow();
    const int column = flexgridVDL->currentCol();
    const QString text = txtFlexText->text();
    flexgridVDL->setFocus();
    flexgridVDL_Acted();
    if (!enter || m_module.transferRunning())
        return;
    flexgridVDL->setText(row, column, text);
    flexgridVDL->setCurrentCell(row + 1, column);
}

void CommandListArea::txtFlexText_LostFocus()
{
    txtFlexText->hide();
}

bool CommandListArea::eventFilter(QObject *watched, QEvent *event)
{
    if (watched != txtFlexText)
        return QWidget::eventFilter(watched, event);
    if (event->type() == QEvent::FocusOut) {
        // The box's own context menu is no leaving, nor is Alt alone, which lends the focus to the
        // menu bar until the next key.
        const Qt::FocusReason reason = static_cast<QFocusEvent *>(event)->reason();
        if (reason != Qt::PopupFocusReason && reason != Qt::MenuBarFocusReason)
            txtFlexText_LostFocus();
    } else if (event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent *>(event)->key();
        if (key == Qt::Key_Return || key == Qt::Key_Enter || key == Qt::Key_Escape) {
            txtFlexText_KeyDown(key);
            return true;
        }
    }
    return QWidget::eventFilter(watched, event);
}

void CommandListArea::appendComment(const QString &line)
{
    const QTextDocument &text = *txtVDL->document();
    // A line break is one character in the document and counts as CR LF.
    const qsizetype before = text.characterCount() - 1 + text.blockCount() - 1;
    if (before + line.size() + 2 > commentLimit) {
        txtVDL->setPlainText(channelTexts::logOverflow);
        return;
    }
    // The user's own cursor and selection stay where they are.
    QTextCursor end(txtVDL->document());
    end.movePosition(QTextCursor::End);
    end.insertText(line + u"\n"_s);
    if (!txtVDL->hasFocus())
        txtVDL->verticalScrollBar()->setValue(txtVDL->verticalScrollBar()->maximum());
}

void CommandListArea::showProgress(int row, int rows, const QString &note)
{
    cmdDeleteRow->setEnabled(row == 0);
    const QString progress = row == 0 ? QString() : u"Row %1 of %2"_s.arg(row).arg(rows);
    QStringList shown{progress, note};
    shown.removeAll(QString());
    lblProgress->setText(shown.join(u": "_s));
}

} // namespace corvane
