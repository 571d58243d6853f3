#include "windows/traffic/TrafficWindow.h"

#include "core/text/Dialogs.h"
#include "core/traffic/TrafficRecorder.h"
#include "windows/traffic/TrafficSave.h"

#include <QCheckBox>
#include <QClipboard>
#include <QComboBox>
#include <QDir>
#include <QElapsedTimer>
#include <QGuiApplication>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollBar>
#include <QTableView>

namespace corvane {

namespace {

constexpr qint64 turnMs = 8;
constexpr int rowsALook = 512;

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
    setWindowTitle(u"Traffic"_s);
    makeControls();
    makeTable();
    layOut();
    addShortcuts();
    m_refresh.setInterval(refreshMs);
    connect(&m_refresh, &QTimer::timeout, this, &TrafficWindow::tmrRefresh_Timer);
    connect(&m_findTurn, &QTimer::timeout, this, &TrafficWindow::findTurn);
    connect(&m_model, &QAbstractItemModel::modelReset, &m_findTurn, &QTimer::stop);
}

TrafficWindow::~TrafficWindow() = default;

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

int TrafficWindow::currentRow() const
{
    return tblTraffic->currentIndex().row();
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
    m_search = TrafficSearch(txtFind->text());
    m_findBelow = below;
    const int from = currentRow();
    m_findRow = from < 0 ? (below ? 0 : m_model.rowCount() - 1) : from + (below ? 1 : -1);
    if (m_search.isEmpty()) {
        txtFind->setFocus();
        return;
    }
    m_findTurn.start(0);
    findTurn();
}

void TrafficWindow::findTurn()
{
    QElapsedTimer time;
    time.start();
    const int step = m_findBelow ? 1 : -1;
    int looked = 0;
    for (; m_findRow >= 0 && m_findRow < m_model.rowCount(); m_findRow += step) {
        if (m_search.isIn(m_model.event(m_findRow))) {
            m_findTurn.stop();
            goTo(m_findRow);
            say({});
            return;
        }
        if (++looked % rowsALook == 0 && time.hasExpired(turnMs))
            return; // the next turn goes on
    }
    m_findTurn.stop();
    say(u"\"%1\" is not %2"_s.arg(txtFind->text(), m_findBelow ? u"below"_s : u"above"_s));
}

// Rows

void TrafficWindow::cmdMark_Click()
{
    const QModelIndexList rows = tblTraffic->selectionModel()->selectedRows();
    for (const QModelIndex &row : rows)
        m_model.toggleMark(row.row());
}

void TrafficWindow::cmdNextMark_Click()
{
    int row = m_model.markedRow(currentRow(), true);
    if (row < 0)
        row = m_model.markedRow(-1, true); // from the top again
    if (row >= 0)
        goTo(row);
    say(row < 0 ? u"no row is marked"_s : QString());
}

void TrafficWindow::cmdCopy_Click()
{
    QStringList lines;
    bool isCut = false;
    for (const QItemSelectionRange &range : tblTraffic->selectionModel()->selection()) {
        for (int row = range.top(); row <= range.bottom() && !isCut; ++row) {
            lines.append(m_model.line(row));
            isCut = lines.size() == mostCopied;
        }
    }
    if (lines.isEmpty())
        return;
    QGuiApplication::clipboard()->setText(lines.join(u'\n') + u'\n');
    say(isCut ? u"the first %L1 rows are copied: no more at once"_s.arg(mostCopied)
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
        m_dialogs.saveFile(this, {saveFilter, QDir::homePath(), u"traffic.txt"_s});
    using Outcome = Dialogs::FileChoice::Outcome;
    if (choice.outcome == Outcome::InvalidName)
        m_dialogs.showMessage(this, u"%1: no file can have this name"_s.arg(choice.path));
    if (choice.outcome != Outcome::Chosen || m_save)
        return;
    std::vector<quint64> numbers;
    for (int row = 0; row < m_model.rowCount(); ++row)
        numbers.push_back(m_model.number(row));
    m_save = std::make_unique<TrafficSave>(m_recorder, std::move(numbers), choice.path);
    cmdSave->setEnabled(false);
    say(u"saving"_s);
    const auto saved = [this](const QString &fault) {
        const auto save = std::move(m_save);
        cmdSave->setEnabled(true);
        say(fault.isEmpty() ? u"%L1 rows saved in %2"_s.arg(save->count()).arg(save->path())
                            : u"not saved"_s);
        if (!fault.isEmpty())
            m_dialogs.showMessage(this, u"%1: %2"_s.arg(save->path(), fault));
    };
    // Not from inside its own turn, which it would not outlive.
    connect(m_save.get(), &TrafficSave::done, this, saved, Qt::QueuedConnection);
}

} // namespace corvane
