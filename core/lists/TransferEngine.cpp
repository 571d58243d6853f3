// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/lists/TransferEngine.h"

#include "core/channels/ChannelSet.h"
#include "core/channels/Module1.h"
#include "core/channels/Reconnect.h"
#include "core/lists/CommandList.h"
#include "core/lists/ListKinds.h"
#include "core/lists/ListTexts.h"
#include "core/text/Dialogs.h"

#include <QScopedValueRollback>

#include <utility>

namespace corvane {

TransferEngine::TransferEngine(ChannelSet &channels, CommandList &list, Dialogs &dialogs,
                               QObject *parent)
    : QObject(parent)
    , m_channels(channels)
    , m_module(channels.module())
    , m_list(list)
    , m_dialogs(dialogs)
    , m_rows(m_module, list)
    , m_notes(m_rows)
{
    for (ChannelSession *each : channels.all())
        listenTo(*each);
    connect(&list, &CommandList::aboutToBeReplaced, this,
            [this] { ResetTransferData(runningChannel()); });
}

void TransferEngine::listenTo(ChannelSession &session)
{
    using Session = ChannelSession;
    const int index = session.index();
    connect(session.TimerTransfer, &QTimer::timeout, this,
            [this, index] { TimerTransfer_Timer(index); });
    connect(&session, &Session::commandSent, this,
            [this, index](const QString &command) { commandSent(index, command); });
    connect(&session, &Session::replied, this,
            [this, index](qsizetype keep, auto tail) { replyArrived(index, keep, tail); });
    connect(&session, &Session::timedOut, this, [this, index] { replyTimedOut(index); });
    connect(&session, &Session::openChanged, this, [this, index] { openChanged(index); });
    connect(&session, &Session::sendFailed, this, [this, index] {
        if (runningChannel() == index)
            ResetTransferData(index);
    });
}

ChannelSession &TransferEngine::session() const
{
    return m_channels.at(m_channel);
}

void TransferEngine::setRun(Run run)
{
    m_run = run;
    m_module.GetMode = run == Run::Get;
    m_module.SendMode = run == Run::Send;
}

void TransferEngine::setRow(Row row)
{
    m_row = std::move(row);
    m_module.CurrentListRow = m_row.number;
    m_list.setMarkedRow(m_row.number);
}

// Starting and stopping

void TransferEngine::start(int index, Run run)
{
    if (!isChannel(index) || m_inside == Inside::MessageBox)
        return;
    ResetTransferData(index);
    Q_EMIT aboutToStart(index);
    const bool sends = run == Run::Send;
    if (m_rows.isEmpty())
        refuse(index, Outcome::Empty, sends ? listTexts::emptyAtSend : listTexts::emptyAtGet);
    else if (sends && m_rows.isIncomplete())
        refuse(index, Outcome::Incomplete, listTexts::incompleteAtSend);
    else
        begin(index, run);
}

void TransferEngine::begin(int index, Run run)
{
    ++m_starts;
    m_channel = index;
    m_notes.begin(index);
    Q_EMIT noted(m_notes.text());
    setRun(run);
    m_module.ResponseReady = true;
    m_list.setCurrentCell(1, listKinds::firstColumn);
    if (run == Run::Send)
        m_rows.clearReplies();
    clearOptions(index);
    m_channels.users().claim(index, ChannelUse::List);
    session().TimerTransfer->start();
    Q_EMIT runStarted(index);
}

void TransferEngine::refuse(int index, Outcome outcome, const QString &message)
{
    m_list.setCurrentCell(0, 0);
    setRow({});
    showMessage(message);
    ResetTransferData(index);
    clearOptions(index);
    Q_EMIT runEnded(outcome);
}

void TransferEngine::clearOptions(int index)
{
    m_channels.at(index).setLooping(false);
    m_channels.at(index).setLogged(false);
}

void TransferEngine::ResetTransferData(int index)
{
    if (!isChannel(index))
        return;
    const bool ended = m_run != Run::None;
    if (ended && m_module.ResponseReady)
        finishRow(Verdict::None);
    if (ended && m_row.number > 0 && awaitsReply() && !session().isClosed())
        m_notes.owe(m_channel, m_row.number);
    reset(index);
    if (ended)
        Q_EMIT runEnded(Outcome::Stopped);
}

void TransferEngine::reset(int index)
{
    release(index);
    // The flags are one set for all Channels: a run elsewhere ends with them, and so must its
    // timer.
    if (const int other = runningChannel(); isChannel(other) && other != index)
        release(other);
    setRun(Run::None);
    m_module.GpibTransfer = false;
    m_module.TransferWaitCount[static_cast<std::size_t>(index)] = 0;
    m_module.ResponseReady = false;
    setRow({});
    m_list.setCurrentCell(0, 0);
    showRow();
}

void TransferEngine::release(int index)
{
    m_channels.at(index).TimerTransfer->stop();
    m_channels.users().release(index, ChannelUse::List);
}

// One step

void TransferEngine::TimerTransfer_Timer(int index)
{
    if (!isChannel(index) || index != runningChannel() || isBusy())
        return;
    if (index == channels::ieee488)
        m_module.GpibTransfer = true;
    const int next = m_row.number + 1;
    if (next > m_rows.last()) {
        complete();
        return;
    }
    m_list.setCurrentCell(next, listKinds::firstColumn);
    if (!m_module.ResponseReady)
        return;
    if (session().isClosed() && session().reconnect().isInCharge() &&
        m_rows.step(next).kind == ListStep::Kind::Send) {
        if (!m_notes.isClosed())
            showClosed();
        return; // until the device is back
    }
    const quint64 start = m_starts;
    finishRow(Verdict::None);
    if (isOn(start))
        startRow(index, next);
}

void TransferEngine::startRow(int index, int number)
{
    m_module.ResponseReady = false;
    const ListStep step = m_rows.step(number);
    setRow({.number = number, .command = step.command, .isOpen = true});
    const quint64 start = m_starts;
    if (step.kind == ListStep::Kind::Send && m_channels.at(index).isClosed())
        showClosed();
    else
        showRow();
    if (isOn(start))
        Q_EMIT rowStarted(number, step.command);
    if (!isOn(start))
        return;
    switch (step.kind) {
    case ListStep::Kind::Send:
        send(step.command);
        break;
    case ListStep::Kind::Nothing:
        skip(Verdict::None);
        break;
    case ListStep::Kind::Check:
        check();
        break;
    case ListStep::Kind::SyntaxError:
        cancelAtSyntaxError();
    }
}

void TransferEngine::send(const QString &command)
{
    const quint64 start = m_starts;
    session().setCommand(command);
    {
        const QScopedValueRollback inside(m_inside, Inside::Send);
        session().send();
    }
    // Whatever became of the send: without a reply no tick may move on.
    if (isOn(start) && !m_module.ResponseReady)
        session().TimerTransfer->stop();
}

void TransferEngine::skip(Verdict verdict)
{
    session().setCommand({});
    m_module.ResponseReady = true;
    finishRow(verdict);
}

void TransferEngine::check()
{
    m_row.isJudged = true;
    if (m_rows.judge(m_row.number)) {
        skip(Verdict::Passed);
        return;
    }
    const quint64 start = m_starts;
    finishRow(Verdict::Failed);
    if (isOn(start) && showMessage(listTexts::testFailed)) {
        reset(m_channel);
        Q_EMIT runEnded(Outcome::Failed);
    }
}

void TransferEngine::cancelAtSyntaxError()
{
    if (!showMessage(listTexts::syntaxErrorBox))
        return;
    reset(m_channel);
    session().setCommand(listTexts::syntaxError);
    Q_EMIT runEnded(Outcome::SyntaxError);
}

void TransferEngine::complete()
{
    const quint64 start = m_starts;
    finishRow(Verdict::None);
    if (!isOn(start))
        return;
    const bool test = m_list.kind() == listKinds::testList;
    reset(m_channel);
    session().setResponse(listTexts::transferComplete.toLatin1());
    if (test)
        showMessage(listTexts::testPassed);
    Q_EMIT runEnded(test ? Outcome::Passed : Outcome::Complete);
}

// What a Channel says

void TransferEngine::commandSent(int index, const QString &command)
{
    if (index == runningChannel() && m_inside == Inside::Send)
        return; // the row's own
    if (index != runningChannel())
        m_notes.owe(index, command);
    else if (command == m_row.command && m_notes.isClosed())
        showRow(); // it is sent again
    else
        m_notes.addSentByHand(index, m_row.number > 0 ? m_row.number : 1, command);
    Q_EMIT noted(m_notes.text());
}

void TransferEngine::replyArrived(int index, qsizetype keep, QByteArrayView tail)
{
    if (index != runningChannel()) {
        m_notes.settle(index);
        return;
    }
    if (m_inside == Inside::MessageBox)
        return;
    m_module.ResponseReady = true;
    if (m_row.number > 0) // a device that talks without being asked does not hold up the first row
        session().TimerTransfer->start();
    if (keep == 0 && m_notes.isClosed())
        showRow(); // it was sent again
    // The verdict of a check stands, whatever still arrives for the row before it.
    if (m_row.number > 0 && !m_row.isJudged)
        mirror(keep, tail);
}

void TransferEngine::mirror(qsizetype keep, QByteArrayView tail)
{
    const int column = m_rows.replyColumn();
    const auto change = m_row.mirror.canFollow(keep, m_list.textLength(m_row.number, column))
                            ? m_row.mirror.follow(keep, tail)
                            : m_row.mirror.show(session().response().bytes(), keep + tail.size());
    if (!change)
        return;
    m_list.replaceTail(m_row.number, column, change->keep, QLatin1StringView(change->text));
    if (!change->isCut)
        return;
    const QString note = m_notes.addCut(m_channel, m_row.number);
    Q_EMIT noted(m_notes.text());
    Q_EMIT troubled(note);
}

/// The GPIB time-out passed without a reply; the response says so already.
void TransferEngine::replyTimedOut(int index)
{
    if (index != runningChannel())
        m_notes.settle(index); // most commands that are sent by hand have no reply there
    if (index != runningChannel() || m_inside == Inside::MessageBox)
        return;
    if (m_row.number > 0)
        m_notes.owe(index, m_row.number);
    reset(index);
    Q_EMIT runEnded(Outcome::TimedOut);
}

/// A run whose Channel was closed waits for it, while a row still needs it.
void TransferEngine::openChanged(int index)
{
    const bool isClosed = m_channels.at(index).isClosed();
    if (isClosed)
        m_notes.settle(index);
    if (index != runningChannel() || !(awaitsReply() || m_rows.isSendBelow(m_row.number)))
        return;
    if (isClosed)
        showClosed();
    else if (m_notes.isClosed() && !awaitsReply())
        showRow();
    else if (m_notes.isClosed()) {
        m_notes.setReopened(m_channel, m_row.number);
        showProgress(listTexts::reopenedProgress);
    }
}

/// The row's command is out, or was refused, and its reply, or the rest of it, has not come.
bool TransferEngine::awaitsReply() const
{
    return !m_module.ResponseReady || !session().TimerTransfer->isActive();
}

// Notes, ends and messages

void TransferEngine::showClosed()
{
    const bool isSent = awaitsReply();
    const int row = isSent ? m_row.number : m_rows.nextSend(m_row.number);
    const QString reason = m_notes.setClosed(m_channel, row, isSent);
    showProgress(listTexts::closedProgress);
    Q_EMIT troubled(reason);
}

void TransferEngine::showRow()
{
    m_notes.clearClosed();
    showProgress({});
}

void TransferEngine::showProgress(const QString &beside)
{
    Q_EMIT progressChanged(m_row.number, m_rows.last(), beside);
    Q_EMIT noted(m_notes.text());
}

void TransferEngine::finishRow(Verdict verdict)
{
    if (std::exchange(m_row.isOpen, false))
        Q_EMIT rowFinished(m_row.number, m_list.text(m_row.number, m_rows.replyColumn()), verdict);
}

/// Returns whether the run is on when the box is closed.
bool TransferEngine::showMessage(const QString &text)
{
    const quint64 start = m_starts;
    if (m_run != Run::None)
        session().TimerTransfer->stop();
    {
        const QScopedValueRollback inside(m_inside, Inside::MessageBox);
        m_dialogs.showMessage(this, text);
    }
    return isOn(start);
}

} // namespace corvane
