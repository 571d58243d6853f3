#include "windows/lists/TransferEngine.h"

#include "core/lists/ListKinds.h"
#include "core/lists/ListTexts.h"
#include "core/text/Dialogs.h"
#include "windows/lists/CommandListArea.h"
#include "windows/lists/ListHost.h"
#include "windows/widgets/TextGrid.h"

#include <QCheckBox>
#include <QPushButton>
#include <QScopedValueRollback>

#include <utility>

namespace corvane {

TransferEngine::TransferEngine(Module1 &module, CommandListArea &area, ListHost &host,
                               Dialogs &dialogs, QObject *parent)
    : QObject(parent)
    , m_module(module)
    , m_area(area)
    , m_grid(*area.flexgridVDL)
    , m_rows(module, m_grid.table())
    , m_notes(host, m_rows)
    , m_host(host)
    , m_dialogs(dialogs)
{
    using Engine = TransferEngine;
    connect(area.cmdGetList, &QPushButton::clicked, this, &Engine::cmdGetList_Click);
    connect(area.cmdSendList, &QPushButton::clicked, this, &Engine::cmdSendList_Click);
    connect(area.cmdStopSend, &QPushButton::clicked, this, &Engine::cmdStopSend_Click);
    connect(&area, &CommandListArea::listAboutToChange, this,
            [this] { ResetTransferData(runningChannel()); });
}

// Starting and stopping

void TransferEngine::cmdGetList_Click()
{
    cmdLoadFrmChmber_Click(m_host.showingChannel());
}

void TransferEngine::cmdSendList_Click()
{
    cmdLoadToChmber_Click(m_host.showingChannel());
}

void TransferEngine::cmdStopSend_Click()
{
    m_host.stopOperation(m_host.showingChannel());
}

void TransferEngine::cmdLoadFrmChmber_Click(int index)
{
    start(index, Mode::Get);
}

void TransferEngine::cmdLoadToChmber_Click(int index)
{
    start(index, Mode::Send);
}

void TransferEngine::start(int index, Mode mode)
{
    if (!isChannel(index) || m_boxOpen)
        return;
    ResetTransferData(index);
    m_host.applyEntries(index);
    const QString first = m_grid.text(1, listKinds::firstColumn);
    const bool sends = mode == Mode::Send;
    if (first.isEmpty())
        refuse(index, Outcome::Empty, sends ? listTexts::emptyAtSend : listTexts::emptyAtGet);
    else if (sends && m_grid.textLength(1, 2) == 0 &&
             ListStep::needsSecondCell(m_module.ListKind, first))
        refuse(index, Outcome::Incomplete, listTexts::incompleteAtSend);
    else
        begin(index, mode);
}

void TransferEngine::begin(int index, Mode mode)
{
    ++m_run;
    m_channel = index;
    m_notes.begin(index);
    Q_EMIT noted(m_notes.text());
    (mode == Mode::Get ? m_module.GetMode : m_module.SendMode) = true;
    m_module.ResponseReady = true;
    m_area.flexgridVDL_Acted(); // a cell that is being edited is left as it was
    m_grid.setCurrentCell(1, listKinds::firstColumn);
    if (mode == Mode::Send)
        clearEarlierRun();
    clearOptions(index);
    m_host.setRunning(index, true);
    m_host.setTransferTimer(index, true);
    Q_EMIT runStarted(index);
}

/// In rows that this run does not reach, the replies and verdicts of an earlier one would pass for
/// its own.
void TransferEngine::clearEarlierRun()
{
    const int column = m_rows.replyColumn();
    for (int row = 1; row <= m_rows.last(); ++row) {
        if (m_rows.step(row, false).kind == ListStep::Kind::Send ||
            m_grid.verdict(row, column) != TextGrid::Verdict::None)
            m_grid.setText(row, column, QString());
    }
}

void TransferEngine::refuse(int index, Outcome outcome, const QString &message)
{
    m_grid.setCurrentCell(0, 0);
    m_module.CurrentListRow = 0;
    showMessage(message);
    ResetTransferData(index);
    clearOptions(index);
    Q_EMIT runEnded(outcome);
}

void TransferEngine::clearOptions(int index)
{
    m_host.clearLoop(index);
    if (index >= channels::tcpIp1)
        m_host.clearLog(index);
}

void TransferEngine::ResetTransferData(int index)
{
    if (!isChannel(index))
        return;
    const bool ended = m_module.transferRunning() && !m_settling;
    if (ended && m_module.ResponseReady)
        finishRow(RowVerdict::None);
    if (ended && m_module.CurrentListRow > 0 && awaitsReply() && !m_host.isClosed(m_channel))
        m_notes.owe(m_channel, m_module.CurrentListRow);
    reset(index);
    if (ended)
        Q_EMIT runEnded(Outcome::Stopped);
}

void TransferEngine::reset(int index)
{
    m_module.CurrentListRow = 0;
    m_host.setTransferTimer(index, false);
    m_host.setRunning(index, false);
    // The flags are one set for all Channels: a run elsewhere ends with them, and so must its
    // timer.
    if (const int other = runningChannel(); isChannel(other) && other != index) {
        m_host.setTransferTimer(other, false);
        m_host.setRunning(other, false);
    }
    m_module.GetMode = false;
    m_module.SendMode = false;
    m_module.GpibTransfer = false;
    m_module.TransferWaitCount[static_cast<std::size_t>(index)] = 0;
    m_module.ResponseReady = false;
    m_rowOpen = false;
    m_grid.setMarkedRow(0);
    m_grid.setCurrentCell(0, 0);
    showRow();
}

// One step

void TransferEngine::TimerTransfer_Timer(int index)
{
    if (!isChannel(index) || index != runningChannel() || isBusy())
        return;
    if (index == channels::ieee488)
        m_module.GpibTransfer = true;
    const int next = m_module.CurrentListRow + 1;
    if (next > m_rows.last()) {
        complete(index);
        return;
    }
    m_grid.setCurrentCell(next, listKinds::firstColumn);
    if (!m_module.ResponseReady)
        return;
    const quint64 run = m_run;
    finishRow(RowVerdict::None);
    if (isOn(run))
        startRow(index, next);
}

void TransferEngine::startRow(int index, int row)
{
    m_module.CurrentListRow = row;
    m_module.ResponseReady = false;
    m_rowOpen = true;
    m_rowJudged = false;
    m_mirror = {};
    m_grid.setMarkedRow(row);
    const ListStep step = m_rows.step(row, m_area.chkStripOpr->isChecked());
    m_rowCommand = step.command;
    const quint64 run = m_run;
    if (step.kind == ListStep::Kind::Send && m_host.isClosed(index))
        showClosed();
    else
        showRow();
    if (isOn(run))
        Q_EMIT rowStarted(row, step.command);
    if (!isOn(run))
        return;
    switch (step.kind) {
    case ListStep::Kind::Send:
        send(index, step.command);
        break;
    case ListStep::Kind::Nothing:
        skip(index, RowVerdict::None);
        break;
    case ListStep::Kind::Check:
        check(index);
        break;
    case ListStep::Kind::SyntaxError:
        syntaxError(index);
    }
}

void TransferEngine::send(int index, const QString &command)
{
    const quint64 run = m_run;
    m_host.setCommand(index, command);
    {
        const QScopedValueRollback sending(m_sending, true);
        m_host.cmdSend_Click_Public(index);
    }
    // Whatever became of the send: without a reply no tick may move on.
    if (isOn(run) && !m_module.ResponseReady)
        m_host.setTransferTimer(index, false);
}

void TransferEngine::skip(int index, RowVerdict verdict)
{
    m_host.setCommand(index, QString());
    m_module.ResponseReady = true;
    finishRow(verdict);
}

void TransferEngine::check(int index)
{
    using Cell = CheckRow::Cell;
    const int row = m_module.CurrentListRow;
    const int column = m_rows.replyColumn();
    const CheckRow::Verdict verdict = m_rows.judge(row);
    m_rowJudged = true;
    if (verdict.cell != Cell::Untouched)
        m_grid.setText(row, column,
                       verdict.cell == Cell::Passed ? listTexts::passed : listTexts::failed);
    m_grid.setVerdict(row, column,
                      verdict.passed ? TextGrid::Verdict::Passed : TextGrid::Verdict::Failed);
    if (verdict.passed) {
        skip(index, RowVerdict::Passed);
        return;
    }
    const quint64 run = m_run;
    finishRow(RowVerdict::Failed);
    if (isOn(run) && showMessage(listTexts::testFailed)) {
        stopRun(index);
        Q_EMIT runEnded(Outcome::Failed);
    }
}

void TransferEngine::syntaxError(int index)
{
    if (!showMessage(listTexts::syntaxErrorBox))
        return;
    stopRun(index);
    m_host.setCommand(index, listTexts::syntaxError);
    Q_EMIT runEnded(Outcome::SyntaxError);
}

void TransferEngine::complete(int index)
{
    const quint64 run = m_run;
    finishRow(RowVerdict::None);
    if (!isOn(run))
        return;
    const bool test = m_module.ListKind == listKinds::testList;
    reset(index);
    m_host.setResponse(index, listTexts::transferComplete);
    if (test)
        showMessage(listTexts::testPassed);
    Q_EMIT runEnded(test ? Outcome::Passed : Outcome::Complete);
}

// Replies

void TransferEngine::commandSent(int index, const QString &command)
{
    if (index != runningChannel() || m_sending || m_module.CurrentListRow == 0 ||
        command == m_rowCommand)
        return;
    m_notes.addSentByHand(index, m_module.CurrentListRow, command);
    Q_EMIT noted(m_notes.text());
}

void TransferEngine::replyArrived(int index, qsizetype keep, QByteArrayView tail)
{
    if (isChannel(index) && index != runningChannel())
        m_notes.settle(index);
    if (!isChannel(index) || index != runningChannel() || m_boxOpen)
        return;
    m_module.ResponseReady = true;
    const int row = m_module.CurrentListRow;
    if (row > 0) // a device that talks without being asked does not hold up the first row
        m_host.setTransferTimer(index, true);
    if (keep == 0 && m_notes.isClosed())
        showRow(); // it was sent again
    // The verdict of a check stands, whatever still arrives for the row before it.
    if (row > 0 && !m_rowJudged)
        mirror(index, row, keep, tail);
}

void TransferEngine::mirror(int index, int row, qsizetype keep, QByteArrayView tail)
{
    const int column = m_rows.replyColumn();
    const auto change = m_mirror.canFollow(keep, m_grid.textLength(row, column))
                            ? m_mirror.follow(keep, tail)
                            : m_mirror.show(m_host.response(index), keep + tail.size());
    if (!change)
        return;
    m_grid.replaceTail(row, column, change->keep, QLatin1StringView(change->text));
    if (!change->isCut)
        return;
    const QString note = m_notes.addCut(index, row);
    Q_EMIT noted(m_notes.text());
    Q_EMIT troubled(note);
}

void TransferEngine::replyTimedOut(int index)
{
    if (!isChannel(index) || index != runningChannel() || m_boxOpen)
        return;
    reset(index);
    Q_EMIT runEnded(Outcome::TimedOut);
}

// The Channel goes and comes

void TransferEngine::channelOpenChanged(int index)
{
    if (isChannel(index) && m_host.isClosed(index))
        m_notes.settle(index);
    if (!isChannel(index) || index != runningChannel() || !needsChannel())
        return;
    if (m_host.isClosed(index))
        showClosed();
    else if (m_notes.isClosed() && awaitsReply())
        showReopened();
    else if (m_notes.isClosed())
        showRow();
}

void TransferEngine::showClosed()
{
    const bool isSent = awaitsReply();
    const int row = m_module.CurrentListRow + (isSent ? 0 : 1);
    const QString reason = m_notes.setClosed(m_channel, row, isSent);
    showProgress(listTexts::closedProgress);
    Q_EMIT troubled(reason);
}

void TransferEngine::showReopened()
{
    m_notes.setReopened(m_channel, m_module.CurrentListRow);
    showProgress(listTexts::reopenedProgress);
}

/// The row's command is out, or was refused, and its reply, or the rest of it, has not come.
bool TransferEngine::awaitsReply() const
{
    return !m_module.ResponseReady || !m_host.isTransferTimerRunning(m_channel);
}

/// A reply is awaited, or a row still to come sends something.
bool TransferEngine::needsChannel() const
{
    return awaitsReply() || m_rows.isSendBelow(m_module.CurrentListRow);
}

void TransferEngine::showRow()
{
    m_notes.clearClosed();
    showProgress({});
}

void TransferEngine::showProgress(const QString &beside)
{
    m_area.showProgress(m_module.CurrentListRow, m_rows.last(), beside);
    Q_EMIT noted(m_notes.text());
}

// Ends and messages

void TransferEngine::finishRow(RowVerdict verdict)
{
    if (!std::exchange(m_rowOpen, false))
        return;
    const int row = m_module.CurrentListRow;
    Q_EMIT rowFinished(row, m_grid.text(row, m_rows.replyColumn()), verdict);
}

bool TransferEngine::showMessage(const QString &text)
{
    const quint64 run = m_run;
    if (const int index = runningChannel(); isChannel(index))
        m_host.setTransferTimer(index, false);
    {
        const QScopedValueRollback open(m_boxOpen, true);
        m_dialogs.showMessage(&m_area, text);
    }
    return isOn(run);
}

void TransferEngine::stopRun(int index)
{
    const QScopedValueRollback settling(m_settling, true);
    cmdStopSend_Click();
    if (m_module.transferRunning())
        reset(index);
}

bool TransferEngine::isOn(quint64 run) const
{
    return m_module.transferRunning() && m_run == run;
}

} // namespace corvane
