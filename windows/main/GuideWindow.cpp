// SPDX-License-Identifier: GPL-3.0-or-later
#include "windows/main/GuideWindow.h"

#include "windows/widgets/Controls.h"
#include "windows/widgets/ScrollPage.h"

#include <QFile>
#include <QListWidget>
#include <QScrollBar>
#include <QShortcut>
#include <QSplitter>
#include <QTextBlock>
#include <QTextBrowser>

namespace corvane {

namespace {

/// Where an entry of the outline keeps the number of its heading's block.
constexpr int blockRole = Qt::UserRole;
constexpr int chapterLevel = 2;
constexpr int sectionLevel = 3;

} // namespace

GuideWindow::GuideWindow(QWidget *parent)
    : QWidget(parent, Qt::Window)
{
    setObjectName(u"GuideWindow"_s);
    setWindowTitle(u"Corvane - User's Guide"_s);
    resize(900, 640);

    txtFind = named(new QLineEdit(this), u"txtFind"_s, u"Find in the guide"_s);
    txtFind->setClearButtonEnabled(true);
    txtFind->setPlaceholderText(u"Find in the guide"_s);
    auto *next = named(new QPushButton(u"Find &next"_s, this), u"cmdFindNext"_s);
    auto *previous = named(new QPushButton(u"Find &previous"_s, this), u"cmdFindPrevious"_s);
    lblFound = controls::note(u"lblFound"_s, u"Result of the search"_s);
    lblFound->setTextFormat(Qt::PlainText);
    txtGuide = named(new QTextBrowser(this), u"txtGuide"_s, u"User's guide"_s);
    txtGuide->setOpenExternalLinks(false);
    QFile guide(u":/guide.md"_s);
    if (guide.open(QIODevice::ReadOnly))
        txtGuide->setMarkdown(QString::fromUtf8(guide.readAll()));

    lstOutline = named(new QListWidget(this), u"lstOutline"_s, u"Outline of the guide"_s);
    lstOutline->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    fillOutline();

    auto *page = new QVBoxLayout(this);
    page->addLayout(controls::row({txtFind, next, previous}));
    page->addWidget(lblFound);
    auto *sides = named(new QSplitter(this), u"splitGuide"_s, QString());
    sides->setChildrenCollapsible(false);
    sides->addWidget(lstOutline);
    sides->addWidget(txtGuide);
    sides->setStretchFactor(1, 1);
    sides->setSizes({270, 630});
    page->addWidget(sides, 1);
    ScrollPage::wrap(*this);

    connect(lstOutline, &QListWidget::currentRowChanged, this, &GuideWindow::showHeading);
    connect(lstOutline, &QListWidget::itemClicked, this,
            [this] { showHeading(lstOutline->currentRow()); });
    connect(txtFind, &QLineEdit::returnPressed, this, &GuideWindow::findNext);
    connect(next, &QPushButton::clicked, this, &GuideWindow::findNext);
    connect(previous, &QPushButton::clicked, this, &GuideWindow::findPrevious);
    addShortcuts();
    controls::orderTabs({txtFind, next, previous, lstOutline, txtGuide});
    txtGuide->setFocus();
}

void GuideWindow::addShortcuts()
{
    const auto add = [this](const QKeySequence &key, auto handler) {
        connect(new QShortcut(key, this), &QShortcut::activated, this, handler);
    };
    add(QKeySequence::Find, [this] {
        txtFind->setFocus(Qt::ShortcutFocusReason);
        txtFind->selectAll();
    });
    add(QKeySequence::FindNext, &GuideWindow::findNext);
    add(QKeySequence::FindPrevious, &GuideWindow::findPrevious);
    add(Qt::Key_Escape, &QWidget::close);
}

void GuideWindow::fillOutline()
{
    for (QTextBlock block = txtGuide->document()->begin(); block.isValid(); block = block.next()) {
        const int level = block.blockFormat().headingLevel();
        if (level != chapterLevel && level != sectionLevel)
            continue;
        const QString indent = level == sectionLevel ? u"    "_s : QString();
        auto *entry = new QListWidgetItem(indent + block.text(), lstOutline);
        entry->setData(blockRole, block.blockNumber());
        QFont font = entry->font();
        font.setBold(level == chapterLevel);
        entry->setFont(font);
    }
}

void GuideWindow::showHeading(int row)
{
    const QListWidgetItem *entry = lstOutline->item(row);
    if (!entry)
        return;
    const QTextBlock heading =
        txtGuide->document()->findBlockByNumber(entry->data(blockRole).toInt());
    txtGuide->setTextCursor(QTextCursor(heading));
    txtGuide->verticalScrollBar()->setValue(txtGuide->verticalScrollBar()->value() +
                                            txtGuide->cursorRect().top());
}

void GuideWindow::showChapter(const QString &heading)
{
    for (int row = 0; row < lstOutline->count() && !heading.isEmpty(); ++row) {
        if (lstOutline->item(row)->text().trimmed() == heading) {
            lstOutline->setCurrentRow(row);
            showHeading(row);
            return;
        }
    }
}

void GuideWindow::findPrevious()
{
    find(QTextDocument::FindBackward);
}

void GuideWindow::find(QTextDocument::FindFlags how)
{
    const QString wanted = txtFind->text();
    lblFound->clear();
    if (wanted.isEmpty()) {
        txtFind->setFocus();
        return;
    }
    if (txtGuide->find(wanted, how))
        return;
    // Where there is nothing the place stays as it is.
    QTextCursor edge(txtGuide->document());
    edge.movePosition(how ? QTextCursor::End : QTextCursor::Start);
    const QTextCursor again = txtGuide->document()->find(wanted, edge, how);
    if (again.isNull()) {
        lblFound->setText(u"\"%1\" is not in the guide"_s.arg(wanted));
        return;
    }
    txtGuide->setTextCursor(again);
    lblFound->setText(how ? u"from the end again"_s : u"from the top again"_s);
}

} // namespace corvane
