// SPDX-License-Identifier: GPL-3.0-or-later
#include "windows/traffic/TrafficWindow.h"

#include "core/text/Dialogs.h"
#include "core/traffic/TrafficRecorder.h"
#include "devices/FileQuestions.h"
#include "windows/traffic/TrafficSave.h"
#include "windows/traffic/TrafficTurn.h"

#include <QCheckBox>
#include <QClipboard>
#include <QComboBox>
#include <QGuiApplication>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollBar>
#include <QTableView>

#include <algorithm>
#include <cstdio>
#include <utility>

namespace corvane {

namespace {

const QString saveFilter = u"Text (*.txt)|*.txt|Comma-separated values (*.csv)|*.csv"
                           "|Packets (*.pcapng)|*.pcapng"_s;

} // namespace

TrafficWindow::TrafficWindow(TrafficRecorder &recorder, Dialogs &dialogs, QWidget *parent)
    : QWidget(parent, Qt::Window)
    , m_recorder(recorder)
    , m_dialogs(dialogs)
    , m_model(recorder)
{
    setObjectName(u"TrafficWindow"_s);
    setWindowTitle(u"Corvane - Traffic"_s);
    makeControls();
    makeTable();
    layOut();
    addShortcuts();
    m_refresh.setInterval(refreshMs);
    connect(&m_refresh, &QTimer::timeout, this, &TrafficWindow::tmrRefresh_Timer);
    connect(&m_findTurn, &QTimer::timeout, this, &TrafficWindow::findTurn);
    connect(&m_model, &QAbstractItemModel::modelReset, &m_findTurn, &QTimer::stop);
}

/// A file whose saving was begun is saved. The main window is going too: there is none for a box.
TrafficWindow::~TrafficWindow()
{
    if (!m_save)
        return;
    if (const QString fault = m_save->finish(); !fault.isEmpty())
        std::fprintf(stderr, "corvane: %s: %s\n", qPrintable(m_save->path()), qPrintable(fault));
}

void TrafficWindow::showEvent(QShowEvent *event)
{
    QWidget::showEvent(event);
    tmrRefresh_Timer();
    m_refresh.start();
}

void TrafficWindow::hideEvent(QHideEvent *event)
{
    m_refresh.stop();
    QWidget::hideEvent(event);
}

/// The newest row stays in sight until the user scrolls up.
void TrafficWindow::tmrRefresh_Timer()
{
    const QScrollBar &bar = *tblTraffic->verticalScrollBar();
    const bool follows = bar.value() == bar.maximum();
    m_model.refresh();
    if (follows && !cmdPause->isChecked())
        tblTraffic->scrollToBottom();
    showState();
}

void TrafficWindow::showState()
{
    QStringList parts{u"%L1 shown of %L2 events"_s.arg(m_model.rowCount()).arg(m_recorder.end())};
    if (m_recorder.first() > 0)
        parts << u"the oldest %L1 have been dropped"_s.arg(m_recorder.first());
    if (m_model.isSearching())
        parts << u"still filtering"_s;
    if (cmdPause->isChecked())
        parts << u"paused, recording goes on"_s;
    if (m_findTurn.isActive())
        parts << u"still searching"_s;
    else if (!m_said.isEmpty())
        parts << m_said;
    lblState->setText(parts.join(u"; "_s));
}

void TrafficWindow::say(const QString &text)
{
    m_said = text;
    showState();
}

void TrafficWindow::filter_Change()
{
    TrafficFilter filter;
    for (std::size_t channel = 0; channel < chkChannel.size(); ++channel)
        filter.channels.at(channel) = chkChannel[channel]->isChecked();
    filter.sent = chkSent->isChecked();
    filter.received = chkReceived->isChecked();
    filter.others = chkOthers->isChecked();
    filter.search = TrafficSearch(txtFilter->text());
    m_model.setFilter(filter);
    tblTraffic->scrollToBottom();
    say({});
}

void TrafficWindow::cboShow_Change()
{
    m_model.setStyle(static_cast<trafficText::Style>(cboShow->currentIndex()));
}

void TrafficWindow::cboTime_Change()
{
    m_model.setTimeStyle(static_cast<TrafficModel::TimeStyle>(cboTime->currentIndex()));
}

void TrafficWindow::cmdPause_Click()
{
    m_model.setPaused(cmdPause->isChecked());
    tmrRefresh_Timer();
}

/// One that shows it: a list that gets the focus makes its first row the current one by itself.
int TrafficWindow::currentRow() const
{
    const QModelIndex current = tblTraffic->currentIndex();
    return tblTraffic->selectionModel()->isSelected(current) ? current.row() : -1;
}

void TrafficWindow::goTo(int row)
{
    const QModelIndex index = m_model.index(row, 0);
    tblTraffic->setCurrentIndex(index);
    tblTraffic->scrollTo(index, QAbstractItemView::PositionAtCenter);
}

// Finding

void TrafficWindow::find(bool below)
{
    m_searched = txtFind->text();
    m_search = TrafficSearch(m_searched);
    m_findBelow = below;
    if (m_searched.isEmpty()) {
        txtFind->setFocus();
        return;
    }
    const int from = currentRow();
    if (from < 0)
        m_findAt = below ? 0 : m_recorder.end();
    else
        m_findAt = m_model.number(from) + (below ? 1 : 0);
    m_findTurn.start(0);
    findTurn();
}

void TrafficWindow::findTurn()
{
    TrafficTurn turn;
    int row = m_model.rowOf(m_findAt) - (m_findBelow ? 0 : 1);
    for (; row >= 0 && row < m_model.rowCount(); row += m_findBelow ? 1 : -1) {
        const TrafficEvent event = m_model.eventAt(row);
        if (m_search.isIn(event)) {
            m_findTurn.stop();
            goTo(row);
            say({});
            return;
        }
        m_findAt = m_model.number(row) + (m_findBelow ? 1 : 0);
        if (turn.isOver(event))
            return; // the next turn goes on
    }
    if (m_findBelow && m_model.isSearching())
        return; // rows are still to come
    m_findTurn.stop();
    say(u"\"%1\" is not %2"_s.arg(m_searched, m_findBelow ? u"below"_s : u"above"_s));
}

// Rows

void TrafficWindow::cmdMark_Click()
{
    const QItemSelection selection = tblTraffic->selectionModel()->selection();
    for (const QItemSelectionRange &range : selection)
        m_model.toggleMarks(range.top(), range.bottom());
}

void TrafficWindow::cmdNextMark_Click()
{
    int row = m_model.markedRow(currentRow());
    if (row < 0)
        row = m_model.markedRow(-1); // from the top again
    if (row >= 0)
        goTo(row);
    say(row < 0 ? u"no row is marked"_s : QString());
}

void TrafficWindow::cmdCopy_Click()
{
    QItemSelection selection = tblTraffic->selectionModel()->selection();
    std::ranges::sort(selection, {}, &QItemSelectionRange::top);
    QStringList lines;
    qsizetype selected = 0;
    for (const QItemSelectionRange &range : std::as_const(selection)) {
        selected += range.height();
        for (int row = range.top(); row <= range.bottom() && lines.size() < mostCopied; ++row)
            lines.append(m_model.line(row));
    }
    if (lines.isEmpty())
        return;
    QGuiApplication::clipboard()->setText(lines.join(u'\n') + u'\n');
    say(selected > lines.size()
            ? u"the first %L1 of %L2 rows copied; a file takes them all"_s.arg(mostCopied)
                  .arg(selected)
            : u"%L1 rows copied"_s.arg(lines.size()));
}

void TrafficWindow::cmdClear_Click()
{
    m_model.clear();
    say({});
}

// Saving

void TrafficWindow::cmdSave_Click()
{
    if (m_save)
        return;
    const Dialogs::FileChoice choice =
        m_dialogs.saveFile(this, {saveFilter, QString(), u"traffic.txt"_s});
    using Outcome = Dialogs::FileChoice::Outcome;
    if (choice.outcome == Outcome::InvalidName) {
        say(u"not saved"_s);
        m_dialogs.showMessage(this,
                              u"%1: %2"_s.arg(choice.path, fileQuestions::refusalOf(choice.path)));
    }
    if (choice.outcome != Outcome::Chosen || m_save)
        return;
    m_model.refresh(); // some may have been dropped while the dialog was open
    std::vector<quint64> numbers;
    for (int row = 0; row < m_model.rowCount(); ++row)
        numbers.push_back(m_model.number(row));
    m_save = std::make_unique<TrafficSave>(m_recorder, std::move(numbers), choice.path);
    cmdSave->setEnabled(false);
    say(m_model.isSearching() ? u"saving what the filter has found so far"_s : u"saving"_s);
    // Not from inside its own turn, which it would not outlive.
    connect(m_save.get(), &TrafficSave::done, this, &TrafficWindow::saved, Qt::QueuedConnection);
}

void TrafficWindow::saved(const QString &fault)
{
    const auto save = std::move(m_save);
    cmdSave->setEnabled(true);
    say(fault.isEmpty() ? u"%L1 rows saved in %2"_s.arg(save->count()).arg(save->path())
                        : u"not saved"_s);
    if (!fault.isEmpty())
        m_dialogs.showMessage(isVisible() ? this : parentWidget(),
                              u"%1: %2"_s.arg(save->path(), fault));
}

} // namespace corvane
