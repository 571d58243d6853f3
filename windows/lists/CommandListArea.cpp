// SPDX-License-Identifier: GPL-3.0-or-later
#include "windows/lists/CommandListArea.h"

#include "core/channels/ChannelTexts.h"
#include "core/channels/Module1.h"
#include "core/lists/CommandList.h"
#include "core/lists/ListKinds.h"
#include "core/lists/ListNotes.h"
#include "core/lists/ListTexts.h"
#include "core/text/Dialogs.h"
#include "devices/FileQuestions.h"
#include "windows/lists/PlainText.h"
#include "windows/lists/frmList.h"
#include "windows/widgets/ElidedLabel.h"
#include "windows/widgets/TextGrid.h"

#include <QCheckBox>
#include <QFileInfo>
#include <QFocusEvent>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScrollBar>
#include <QTextCursor>

namespace corvane {

namespace {

using Outcome = Dialogs::FileChoice::Outcome;

/// A cell longer than this came from a device; a box of one line is no place to edit it.
constexpr qsizetype longestEdited = 32767;
/// Characters in the comments beyond which the log empties them.
constexpr qsizetype commentLimit = 30000;

} // namespace

CommandListArea::CommandListArea(CommandList &list, const Module1 &module, Dialogs &dialogs,
                                 QWidget *parent)
    : QWidget(parent)
    , m_list(list)
    , m_module(module)
    , m_dialogs(dialogs)
{
    setObjectName(u"CommandListArea"_s);
    makeControls();
    layOut();
    connectControls();
    showList();
}

CommandListArea::~CommandListArea()
{
    // The grid hides and the box loses the focus after this object is no area any more.
    flexgridVDL->disconnect(this);
    flexgridVDL->horizontalHeader()->disconnect(this);
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
    connect(chkStripOpr, &QCheckBox::toggled, this,
            [this](bool on) { m_list.setStripsOperator(on); });
    connect(&m_list, &CommandList::replaced, this, &Area::showList);
    connect(&m_list, &CommandList::commented, txtVDL, &QPlainTextEdit::setPlainText);
    connect(&m_list, &CommandList::named, this, &Area::showName);
}

// Loading

void CommandListArea::cmdLoad_Click()
{
    m_list.setCurrentCell(0, 0);
    const Dialogs::FileChoice choice = m_dialogs.openFile(this, {listKinds::openFilter(), {}, {}});
    if (choice.outcome != Outcome::Chosen || choice.path.isEmpty())
        return;
    m_list.OpenFile(choice.path);
}

void CommandListArea::showList()
{
    const int kind = m_list.kind();
    chkStripOpr->setEnabled(kind == listKinds::testList);
    cmdGetList->setEnabled(kind == listKinds::chamberSettings);
    cmdSave->setEnabled(kind == listKinds::chamberSettings);
    setColumnWidths();
}

void CommandListArea::showName(const QString &name)
{
    lblFileName->showLong(name);
    Q_EMIT captioned(name.isEmpty() ? listTexts::caption : listTexts::captionPrefix + name);
}

// Saving

void CommandListArea::cmdSave_Click()
{
    if (m_list.kind() != listKinds::chamberSettings)
        return;
    const Dialogs::FileChoice choice =
        m_dialogs.saveFile(this, {listTexts::saveFilter, {}, m_list.ListFileName});
    if (choice.outcome == Outcome::Cancelled ||
        !m_list.rest().maySaveTo(choice.path, m_dialogs, this))
        return;
    QString fault;
    if (choice.outcome == Outcome::InvalidName) {
        fault = fileQuestions::refusalOf(choice.path);
    } else {
        // The caption keeps the list's own name, the label takes the name it is saved under.
        Q_EMIT captioned(listTexts::captionPrefix + m_list.ListFileName);
        lblFileName->showLong(listKinds::fileName(choice.path));
        handOverComments();
        fault = m_list.saveSettings(choice.path);
    }
    if (fault.isEmpty()) {
        m_list.setCurrentCell(0, 0);
        return;
    }
    Q_EMIT noted(listNotes::ofFault(choice.path, fault));
    m_dialogs.showMessage(this, listTexts::saveFailed);
}

void CommandListArea::handOverComments()
{
    m_list.setComments(plainText::of(*txtVDL));
}

/// The editor is made when it is first wanted.
void CommandListArea::edit(bool readOnly)
{
    if (!m_editor) {
        m_editor = new frmList(m_dialogs, this);
        connect(m_editor, &frmList::saved, this,
                [this](const QString &path) { m_list.OpenFile(path); });
        connect(m_editor, &frmList::saveFailed, this, &CommandListArea::noted);
    }
    handOverComments();
    const QString folder =
        m_list.ListFilePath.isEmpty() ? QString() : QFileInfo(m_list.ListFilePath).absolutePath();
    m_editor->edit(m_list.text(), m_list.kind(), readOnly, m_list.rest(), folder);
}

// Rows and columns

void CommandListArea::cmdAddRow_Click()
{
    m_list.addRow();
}

void CommandListArea::cmdDeleteRow_Click()
{
    const int row = m_list.currentRow();
    if (row >= 1 && !m_module.transferRunning()) // a run counts rows: they stay where they are
        m_list.deleteRow(row);
}

void CommandListArea::cmdClearCol_Click()
{
    const int column = m_list.currentCol();
    if (column < 1 || m_module.GetMode)
        return;
    m_list.clearColumn(column);
    m_list.setCurrentCell(0, 0);
}

void CommandListArea::cmdClear_Click()
{
    m_list.clear();
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
    const int row = m_list.currentRow();
    const int column = m_list.currentCol();
    if (row < 1 || column < 1 || m_module.transferRunning() ||
        m_list.textLength(row, column) > longestEdited)
        return;
    m_list.setCurrentCell(row, column); // scrolls to it
    flexgridVDL->scrollTo(flexgridVDL->currentIndex());
    txtFlexText->setGeometry(flexgridVDL->cellRect(row, column));
    txtFlexText->setText(typed.isEmpty() ? m_list.text(row, column) : typed);
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
    const int row = m_list.currentRow();
    const int column = m_list.currentCol();
    const QString text = txtFlexText->text();
    flexgridVDL->setFocus();
    flexgridVDL_Acted();
    if (!enter || m_module.transferRunning())
        return;
    m_list.setText(row, column, text);
    m_list.setCurrentCell(row + 1, column);
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
