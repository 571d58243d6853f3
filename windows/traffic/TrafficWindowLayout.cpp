// SPDX-License-Identifier: GPL-3.0-or-later
// How the traffic window looks: its controls, their names and places.
#include "windows/traffic/TrafficWindow.h"
#include "windows/widgets/Controls.h"
#include "windows/widgets/ScrollPage.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFontDatabase>
#include <QHeaderView>
#include <QShortcut>
#include <QTableView>

namespace corvane {

using namespace controls;

namespace {

QCheckBox *checkedBox(const QString &caption, const QString &name)
{
    auto *box = named(new QCheckBox(caption), name);
    box->setChecked(true);
    return box;
}

QComboBox *choice(const QStringList &entries, const QString &name, const QString &accessibleName)
{
    auto *box = named(new QComboBox, name, accessibleName);
    box->addItems(entries);
    return box;
}

QLineEdit *search(const QString &placeholder, const QString &name, const QString &accessibleName)
{
    QLineEdit *box = entry(12, name, accessibleName);
    box->setPlaceholderText(placeholder);
    box->setClearButtonEnabled(true);
    return box;
}

} // namespace

void TrafficWindow::makeControls()
{
    using W = TrafficWindow;
    for (std::size_t channel = 0; channel < chkChannel.size(); ++channel)
        chkChannel[channel] =
            checkedBox(channelTraits().at(channel).caption, indexed(u"chkChannel"_s, channel));
    chkSent = checkedBox(u"Se&nt"_s, u"chkSent"_s);
    chkReceived = checkedBox(u"&Received"_s, u"chkReceived"_s);
    chkOthers = checkedBox(u"Connections, &faults"_s, u"chkOthers"_s);
    txtFilter = search(u"only with this text, as in OK<CR>"_s, u"txtFilter"_s, u"Filter text"_s);
    for (const QCheckBox *each : chkChannel)
        connect(each, &QCheckBox::toggled, this, &W::filter_Change);
    for (const QCheckBox *each : {chkSent, chkReceived, chkOthers})
        connect(each, &QCheckBox::toggled, this, &W::filter_Change);
    connect(txtFilter, &QLineEdit::textChanged, this, &W::filter_Change);

    cboShow =
        choice({u"Text"_s, u"Hexadecimal"_s, u"Both"_s}, u"cboShow"_s, u"Show the bytes as"_s);
    cboTime =
        choice({u"Time of day"_s, u"Since the row before"_s}, u"cboTime"_s, u"Show the time as"_s);
    connect(cboShow, &QComboBox::currentIndexChanged, this, &W::cboShow_Change);
    connect(cboTime, &QComboBox::currentIndexChanged, this, &W::cboTime_Change);
    txtFind = search(u"find"_s, u"txtFind"_s, u"Text to find"_s);
    connect(txtFind, &QLineEdit::returnPressed, this, &W::cmdFindNext_Click);
    cmdFindNext = button(u"Find Ne&xt"_s, u"cmdFindNext"_s, this, &W::cmdFindNext_Click);
    cmdFindPrevious =
        button(u"Find &Previous"_s, u"cmdFindPrevious"_s, this, &W::cmdFindPrevious_Click);

    cmdPause = button(u"Pa&use"_s, u"cmdPause"_s, this, &W::cmdPause_Click);
    cmdPause->setCheckable(true);
    cmdMark = button(u"&Mark"_s, u"cmdMark"_s, this, &W::cmdMark_Click);
    cmdNextMark = button(u"Next Mar&k"_s, u"cmdNextMark"_s, this, &W::cmdNextMark_Click);
    cmdCopy =
        button(u"&Copy"_s, u"cmdCopy"_s, u"Copy the selected rows"_s, this, &W::cmdCopy_Click);
    cmdClear = button(u"C&lear"_s, u"cmdClear"_s, this, &W::cmdClear_Click);
    cmdClear->setToolTip(u"Empties the list; a recording in a file goes on as it was"_s);
    cmdSave = button(u"&Save..."_s, u"cmdSave"_s, u"Save the rows shown to a file"_s, this,
                     &W::cmdSave_Click);
    lblState = note(u"lblState"_s, u"State"_s);
    lblState->setTextFormat(Qt::PlainText);
}

void TrafficWindow::makeTable()
{
    tblTraffic = named(new QTableView, u"tblTraffic"_s, u"Traffic"_s);
    tblTraffic->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    tblTraffic->setModel(&m_model);
    tblTraffic->setSelectionBehavior(QAbstractItemView::SelectRows);
    tblTraffic->setTabKeyNavigation(false);
    tblTraffic->setWordWrap(false);
    tblTraffic->setShowGrid(false);
    tblTraffic->verticalHeader()->hide();
    // One height for all rows: nothing is measured however many there are.
    tblTraffic->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    tblTraffic->verticalHeader()->setMinimumSectionSize(1);
    tblTraffic->verticalHeader()->setDefaultSectionSize(tblTraffic->fontMetrics().height() + 4);
    QHeaderView &titles = *tblTraffic->horizontalHeader();
    titles.setStretchLastSection(true);
    titles.setHighlightSections(false);
    titles.setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    const int character = tblTraffic->fontMetrics().horizontalAdvance(u'0');
    for (const auto &[column, characters] :
         {std::pair(TrafficModel::Time, 20), std::pair(TrafficModel::Channel, 11),
          std::pair(TrafficModel::Kind, 15)})
        tblTraffic->setColumnWidth(column, characters * character);
}

void TrafficWindow::layOut()
{
    auto *filters = new QHBoxLayout;
    for (QCheckBox *each : chkChannel)
        filters->addWidget(each);
    filters->addSpacing(16);
    addAll(*filters, {chkSent, chkReceived, chkOthers, txtFilter});
    filters->setStretchFactor(txtFilter, 1);
    auto *showing = row({cboShow, cboTime, txtFind, cmdFindNext, cmdFindPrevious});
    showing->setStretchFactor(txtFind, 1);
    auto *rows = new QVBoxLayout(this);
    rows->addLayout(filters);
    rows->addLayout(showing);
    rows->addWidget(tblTraffic, 1);
    rows->addLayout(row({cmdPause, cmdMark, cmdNextMark, nullptr, cmdCopy, cmdClear, cmdSave}));
    rows->addWidget(lblState);
    ScrollPage::wrap(*this);
    resize(960, 620);
    tblTraffic->setFocus();
}

void TrafficWindow::addShortcuts()
{
    const auto add = [this](const QKeySequence &key, QPushButton *button) {
        auto *shortcut = new QShortcut(key, this);
        connect(shortcut, &QShortcut::activated, button, &QPushButton::click);
        button->setToolTip(
            (button->toolTip() + u" (%1)"_s.arg(key.toString(QKeySequence::NativeText))).trimmed());
    };
    add(QKeySequence::FindNext, cmdFindNext);
    add(QKeySequence::FindPrevious, cmdFindPrevious);
    add(QKeySequence(u"Ctrl+P"_s), cmdPause);
    add(QKeySequence(u"Ctrl+M"_s), cmdMark);
    add(QKeySequence(u"F4"_s), cmdNextMark);
    add(QKeySequence::Save, cmdSave);
    auto *copy = new QShortcut(QKeySequence::Copy, tblTraffic);
    copy->setContext(Qt::WidgetShortcut); // an entry copies its own text
    connect(copy, &QShortcut::activated, this, &TrafficWindow::cmdCopy_Click);
    auto *find = new QShortcut(QKeySequence::Find, this);
    connect(find, &QShortcut::activated, txtFind, [this] {
        txtFind->setFocus();
        txtFind->selectAll();
    });
    connect(new QShortcut(QKeySequence::Cancel, this), &QShortcut::activated, this,
            &QWidget::close);
}

} // namespace corvane
