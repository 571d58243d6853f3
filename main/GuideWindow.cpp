#include "main/GuideWindow.h"

#include "common/Naming.h"

#include <QFile>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QShortcut>
#include <QTextBrowser>
#include <QVBoxLayout>

namespace corvane {

GuideWindow::GuideWindow(QWidget *parent)
    : QWidget(parent, Qt::Window)
{
    setObjectName(QStringLiteral("GuideWindow"));
    setWindowTitle(tr("Corvane - User's Guide"));
    resize(820, 640);

    txtFind = new QLineEdit(this);
    txtFind->setClearButtonEnabled(true);
    txtFind->setPlaceholderText(tr("Find in the guide"));
    auto *next = new QPushButton(tr("Find &next"), this);
    txtGuide = new QTextBrowser(this);
    txtGuide->setOpenExternalLinks(false);
    QFile guide(QStringLiteral(":/guide.md"));
    if (guide.open(QIODevice::ReadOnly))
        txtGuide->setMarkdown(QString::fromUtf8(guide.readAll()));

    nameControl(*txtFind, QStringLiteral("txtFind"), tr("Find in the guide"));
    nameControl(*next, QStringLiteral("cmdFindNext"), tr("Find next"));
    nameControl(*txtGuide, QStringLiteral("txtGuide"), tr("User's guide"));

    auto *findRow = new QHBoxLayout;
    findRow->addWidget(txtFind, 1);
    findRow->addWidget(next);
    auto *page = new QVBoxLayout(this);
    page->addLayout(findRow);
    page->addWidget(txtGuide, 1);

    connect(txtFind, &QLineEdit::returnPressed, this, &GuideWindow::findNext);
    connect(next, &QPushButton::clicked, this, &GuideWindow::findNext);
    connect(new QShortcut(QKeySequence::Find, this), &QShortcut::activated, txtFind,
            [this] { txtFind->setFocus(Qt::ShortcutFocusReason); });
    connect(new QShortcut(Qt::Key_Escape, this), &QShortcut::activated, this, &QWidget::close);
    txtGuide->setFocus();
}

void GuideWindow::findNext()
{
    if (txtGuide->find(txtFind->text()))
        return;
    txtGuide->moveCursor(QTextCursor::Start);
    txtGuide->find(txtFind->text());
}

} // namespace corvane
