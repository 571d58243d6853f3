#include "lists/frmList.h"

#include "common/Naming.h"
#include "lists/ListFile.h"
#include "lists/ListKinds.h"
#include "lists/ListTexts.h"
#include "lists/PlainText.h"
#include "platform/Dialogs.h"

#include <QCoreApplication>
#include <QFontDatabase>
#include <QHBoxLayout>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace corvane {

frmList::frmList(Dialogs &dialogs, QWidget *parent)
    : QDialog(parent)
    , txtList(named(new QPlainTextEdit(this), QStringLiteral("txtList"), tr("The list as text")))
    , cmdSave(named(new QPushButton(tr("&Save..."), this), QStringLiteral("cmdSave"),
                    tr("Save the list to a file and load it")))
    , cmdCAncel(named(new QPushButton(tr("&Cancel"), this), QStringLiteral("cmdCAncel"),
                      tr("Close without any change")))
    , m_dialogs(dialogs)
{
    setObjectName(QStringLiteral("frmList"));
    setModal(true);
    resize(640, 480);
    txtList->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    txtList->setLineWrapMode(QPlainTextEdit::NoWrap);
    txtList->setTabChangesFocus(true);

    auto *buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(cmdSave);
    buttons->addWidget(cmdCAncel);
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(txtList);
    layout->addLayout(buttons);

    connect(cmdSave, &QPushButton::clicked, this, &frmList::cmdSave_Click);
    connect(cmdCAncel, &QPushButton::clicked, this, &frmList::cmdCAncel_Click);
}

void frmList::edit(const QString &text, int listKind, bool readOnly)
{
    m_listKind = listKind;
    setWindowTitle(readOnly ? tr("Save List") : tr("Edit List"));
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
        m_dialogs.saveFile(this, {listKinds::layout(m_listKind).filter,
                                  QCoreApplication::applicationDirPath(), QString()});
    if (choice.outcome == Outcome::Cancelled || !isVisible())
        return;
    if (choice.outcome == Outcome::InvalidName || !listFile::write(choice.path, text())) {
        m_dialogs.showMessage(this, listTexts::saveFailed());
        return;
    }
    Q_EMIT saved(choice.path);
    close();
}

void frmList::cmdCAncel_Click()
{
    close();
}

} // namespace corvane
