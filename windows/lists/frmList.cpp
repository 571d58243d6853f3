// SPDX-License-Identifier: GPL-3.0-or-later
#include "windows/lists/frmList.h"

#include "core/lists/ListFile.h"
#include "core/lists/ListKinds.h"
#include "core/lists/ListNotes.h"
#include "core/lists/ListTexts.h"
#include "core/text/Dialogs.h"
#include "devices/FileQuestions.h"
#include "windows/lists/PlainText.h"
#include "windows/widgets/Controls.h"
#include "windows/widgets/ScrollPage.h"

#include <QCloseEvent>
#include <QFontDatabase>
#include <QPlainTextEdit>

namespace corvane {

frmList::frmList(Dialogs &dialogs, QWidget *parent)
    : QDialog(parent)
    , lblNote(named(new QLabel(this), u"lblNote"_s, QString()))
    , txtList(named(new QPlainTextEdit(this), u"txtList"_s, u"The list as text"_s))
    , cmdSave(named(new QPushButton(u"&Save..."_s, this), u"cmdSave"_s,
                    u"Save the list to a file and load it"_s))
    , cmdCAncel(
          named(new QPushButton(u"&Cancel"_s, this), u"cmdCAncel"_s, u"Close without any change"_s))
    , m_dialogs(dialogs)
{
    setObjectName(u"frmList"_s);
    setModal(true);
    resize(640, 480);
    lblNote->setTextFormat(Qt::PlainText);
    lblNote->setTextInteractionFlags(Qt::TextSelectableByMouse);
    lblNote->setWordWrap(true);
    txtList->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    txtList->setLineWrapMode(QPlainTextEdit::NoWrap);
    txtList->setTabChangesFocus(true);

    auto *layout = new QVBoxLayout(this);
    controls::addAll(*layout, {lblNote, txtList});
    layout->addLayout(controls::row({nullptr, cmdSave, cmdCAncel}));
    ScrollPage::wrap(*this);

    connect(cmdSave, &QPushButton::clicked, this, &frmList::cmdSave_Click);
    connect(cmdCAncel, &QPushButton::clicked, this, &frmList::cmdCAncel_Click);
}

void frmList::edit(const QString &text, int listKind, bool readOnly, const UnreadRest &rest,
                   const QString &folder)
{
    m_listKind = listKind;
    m_folder = folder;
    m_rest = rest;
    showNote(rest.warning());
    setWindowTitle(readOnly ? u"Save List"_s : u"Edit List"_s);
    txtList->setReadOnly(readOnly);
    txtList->setPlainText(text);
    (readOnly ? static_cast<QWidget *>(cmdSave) : txtList)->setFocus();
    open();
}

QString frmList::text() const
{
    return plainText::of(*txtList);
}

void frmList::cmdSave_Click()
{
    using Outcome = Dialogs::FileChoice::Outcome;
    const Dialogs::FileChoice choice =
        m_dialogs.saveFile(this, {listKinds::layout(m_listKind).filter, m_folder, {}});
    if (choice.outcome == Outcome::Cancelled || !isVisible() ||
        !m_rest.maySaveTo(choice.path, m_dialogs, this))
        return;
    const QString fault = choice.outcome == Outcome::InvalidName
                              ? fileQuestions::refusalOf(choice.path)
                              : listFile::write(choice.path, text());
    if (!fault.isEmpty()) {
        showNote(listNotes::ofFault(choice.path, fault));
        Q_EMIT saveFailed(lblNote->text());
        m_dialogs.showMessage(this, listTexts::saveFailed);
        return;
    }
    Q_EMIT saved(choice.path);
    close();
}

void frmList::showNote(const QString &note)
{
    lblNote->setText(note);
    lblNote->setVisible(!note.isEmpty());
}

void frmList::reject()
{
    const bool changed = txtList->document()->isModified();
    if (!changed ||
        m_dialogs.showMessage(this, {.text = listTexts::discardChanges,
                                     .icon = Dialogs::Icon::Exclamation,
                                     .buttons = Dialogs::Buttons::YesNo}) == Dialogs::Answer::Yes)
        QDialog::reject();
}

void frmList::closeEvent(QCloseEvent *event)
{
    // Only the user is asked; Cancel, a save and the end of the program are no question.
    if (event->spontaneous())
        QDialog::closeEvent(event);
    else
        QDialog::reject();
}

} // namespace corvane
