// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/lists/ReplyMirror.h"
#include "core/lists/RunNotes.h"
#include "core/lists/RunRows.h"
#include "core/text/GridModel.h"

#include <QObject>

namespace corvane {

class ChannelSession;
class ChannelSet;
class CommandList;
class Dialogs;

/// The list engine: sends the list row by row over one Channel, a row a tick, stores the replies in
/// the list and judges the checks. It owns the run: what Module1 says of it is derived from here.
/// It hears of sends, replies, time-outs and the timer's ticks from the Channels themselves.
///
/// One run at a time: a start resets the run that is on. While a message box of the run is open, or
/// its send has not returned, neither ticks nor replies move it on. An index outside 0..4 is
/// ignored everywhere.
class TransferEngine : public QObject
{
    Q_OBJECT

public:
    /// How a run ended, or why it did not start.
    enum class Outcome {
        Complete,    ///< the list reached its end; no test list
        Passed,      ///< a test list reached its end
        Failed,      ///< a check failed
        SyntaxError, ///< a row lacks a cell that it needs
        Empty,       ///< not started: the list is empty
        Incomplete,  ///< not started: row 1 lacks its second cell
        TimedOut,    ///< no reply within the GPIB time-out
        Stopped      ///< stopped, reset, or the list was replaced
    };
    Q_ENUM(Outcome)

    using Verdict = GridModel::Verdict;

    TransferEngine(ChannelSet &channels, CommandList &list, Dialogs &dialogs,
                   QObject *parent = nullptr);

    /// Get list: asks for every row's command and fills the value column.
    void cmdLoadFrmChmber_Click(int index) { start(index, Run::Get); }
    /// Send list: sends every row and judges the checks.
    void cmdLoadToChmber_Click(int index) { start(index, Run::Send); }
    /// Ends the run, whichever Channel it is on.
    void ResetTransferData(int index);
    /// One step of the run.
    void TimerTransfer_Timer(int index);

    /// The Channel that the run is on; -1: none.
    [[nodiscard]] int runningChannel() const { return m_run == Run::None ? -1 : m_channel; }
    /// True while a message box of the run is open or its send has not returned: the window must
    /// not be destroyed.
    [[nodiscard]] bool isBusy() const { return m_inside != Inside::Nothing; }
    /// A Get List run is on.
    [[nodiscard]] bool isGetting() const { return m_run == Run::Get; }
    /// Why a reply of the last run may answer something else; empty: no reason.
    [[nodiscard]] const QString &doubt() const { return m_notes.doubt(); }

Q_SIGNALS:
    /// A run on the Channel is wanted: what is still being typed into its entries counts.
    void aboutToStart(int index);
    void runStarted(int index);
    /// A row's step begins; `command` is what goes out, empty when the row sends nothing.
    void rowStarted(int row, const QString &command);
    /// A row is done; `reply` is the text of its reply cell.
    void rowFinished(int row, const QString &reply, corvane::GridModel::Verdict verdict);
    void runEnded(corvane::TransferEngine::Outcome outcome);
    /// How far the run is, and what is to know about it; row 0: no run.
    void progressChanged(int row, int rows, const QString &beside);
    /// What is to be said about the run; empty: nothing any more.
    void noted(const QString &note);
    /// The run cannot go on as it should: its Channel was closed, or a reply is longer than its
    /// cell. It waits for the user.
    void troubled(const QString &reason);

private:
    enum class Run { None, Get, Send };
    /// What of the engine is on the stack below an event that reaches it.
    enum class Inside { Nothing, Send, MessageBox };

    /// The row that was started last.
    struct Row
    {
        int number = 0; ///< 0: none yet
        QString command;
        bool isOpen = false;   ///< started and not finished
        bool isJudged = false; ///< its reply cell holds a verdict
        ReplyMirror mirror = {};
    };

    void listenTo(ChannelSession &session);
    /// A command goes out. One that the run has not sent is said: its reply will stand in the row
    /// at hand, as replies carry no mark of what they answer.
    void commandSent(int index, const QString &command);
    /// The response of the Channel has changed: its first `keep` bytes stand, then `tail` follows.
    /// The work is the tail's, however long the reply already is.
    void replyArrived(int index, qsizetype keep, QByteArrayView tail);
    void openChanged(int index);
    void replyTimedOut(int index);

    void start(int index, Run run);
    void begin(int index, Run run);
    void refuse(int index, Outcome outcome, const QString &message);
    void clearOptions(int index);
    void reset(int index);
    void release(int index);

    void setRun(Run run);
    void setRow(Row row);
    void startRow(int index, int number);
    void finishRow(Verdict verdict);
    void send(const QString &command);
    void skip(Verdict verdict);
    void check();
    void cancelAtSyntaxError();
    void complete();
    void mirror(qsizetype keep, QByteArrayView tail);
    /// Shows the row at hand: nothing of its Channel any more, or that it is closed.
    void showRow();
    void showClosed();
    void showProgress(const QString &beside);
    bool showMessage(const QString &text);

    /// The Channel of the run.
    [[nodiscard]] ChannelSession &session() const;
    [[nodiscard]] bool isOn(quint64 start) const { return m_run != Run::None && m_starts == start; }
    [[nodiscard]] bool awaitsReply() const;

    ChannelSet &m_channels;
    Module1 &m_module;
    CommandList &m_list;
    Dialogs &m_dialogs;
    RunRows m_rows;
    RunNotes m_notes;

    Run m_run = Run::None;
    Inside m_inside = Inside::Nothing;
    int m_channel = -1;
    quint64 m_starts = 0; // so that a frame below knows whether its run is on
    Row m_row;
};

} // namespace corvane
