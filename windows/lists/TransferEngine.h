#pragma once

#include "core/channels/Module1.h"
#include "core/lists/ReplyMirror.h"
#include "core/lists/RunRows.h"
#include "windows/lists/RunNotes.h"

#include <QByteArrayView>
#include <QObject>
#include <QString>

namespace corvane {

class CommandListArea;
class Dialogs;
class ListHost;
class TextGrid;

/// The list engine: sends the list row by row over one Channel, a row a tick, stores the replies in
/// the grid and judges the checks. It owns the run; sending, timers and response boxes are the
/// host's, the list is the area's.
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

    enum class RowVerdict { None, Passed, Failed };
    Q_ENUM(RowVerdict)

    TransferEngine(Module1 &module, CommandListArea &area, ListHost &host, Dialogs &dialogs,
                   QObject *parent = nullptr);

    /// Get list: asks for every row's command and fills the value column.
    void cmdLoadFrmChmber_Click(int index);
    /// Send list: sends every row and judges the checks.
    void cmdLoadToChmber_Click(int index);
    /// The two on the showing Channel, and its stop button.
    void cmdGetList_Click();
    void cmdSendList_Click();
    void cmdStopSend_Click();
    /// Ends the run, whichever Channel it is on.
    void ResetTransferData(int index);
    /// One step of the run.
    void TimerTransfer_Timer(int index);

    /// A command goes out on the Channel. One that the run has not sent is said: its reply will
    /// stand in the row at hand, as replies carry no mark of what they answer.
    void commandSent(int index, const QString &command);
    /// The response box of the Channel has changed: its first `keep` bytes stand, then `tail`
    /// follows. To be called for every piece of a reply, after the box has been written. The work
    /// is the tail's, however long the reply already is. Does nothing unless the Channel runs a
    /// list.
    void replyArrived(int index, qsizetype keep, QByteArrayView tail);
    /// The Channel was closed, or is open again: its run waits all the same, and `noted` says so.
    /// Does nothing when no row needs the Channel any more.
    void channelOpenChanged(int index);
    /// The GPIB time-out passed without a reply; txtIn says so already.
    void replyTimedOut(int index);

    /// The Channel that the run is on; -1: none.
    [[nodiscard]] int runningChannel() const { return m_module.transferRunning() ? m_channel : -1; }
    /// True while a message box of the run is open or its send has not returned: the window must
    /// not be destroyed.
    [[nodiscard]] bool isBusy() const { return m_boxOpen || m_sending; }

Q_SIGNALS:
    void runStarted(int index);
    /// A row's step begins; `command` is what goes out, empty when the row sends nothing.
    void rowStarted(int row, const QString &command);
    /// A row is done; `reply` is the text of its reply cell.
    void rowFinished(int row, const QString &reply, corvane::TransferEngine::RowVerdict verdict);
    void runEnded(corvane::TransferEngine::Outcome outcome);
    /// What the window is to say about the run; empty: nothing any more.
    void noted(const QString &note);
    /// The run cannot go on as it should: its Channel was closed, or a reply is longer than its
    /// cell. It waits for the user.
    void troubled(const QString &reason);

private:
    enum class Mode { Get, Send };

    void start(int index, Mode mode);
    void begin(int index, Mode mode);
    void clearEarlierRun();
    void refuse(int index, Outcome outcome, const QString &message);
    void clearOptions(int index);
    void reset(int index);

    void startRow(int index, int row);
    void finishRow(RowVerdict verdict);
    void send(int index, const QString &command);
    void skip(int index, RowVerdict verdict);
    void check(int index);
    void syntaxError(int index);
    void complete(int index);
    void stopRun(int index);
    void mirror(int index, int row, qsizetype keep, QByteArrayView tail);
    /// Shows the row at hand: nothing of its Channel any more, or that it is closed, or open again.
    void showRow();
    void showClosed();
    void showReopened();
    void showProgress(const QString &beside);
    bool showMessage(const QString &text);

    [[nodiscard]] bool isOn(quint64 run) const;
    [[nodiscard]] bool needsChannel() const;
    [[nodiscard]] bool awaitsReply() const;

    Module1 &m_module;
    CommandListArea &m_area;
    TextGrid &m_grid;
    const RunRows m_rows;
    RunNotes m_notes;
    ListHost &m_host;
    Dialogs &m_dialogs;

    int m_channel = -1;
    quint64 m_run = 0;        // counts starts, so that a frame below knows whether its run is on
    bool m_boxOpen = false;   // a message box of the run is open
    bool m_sending = false;   // the host's send has not returned
    bool m_settling = false;  // the run is being stopped with an outcome that is already known
    bool m_rowOpen = false;   // the current row has started and not finished
    bool m_rowJudged = false; // the current row's reply cell holds a verdict
    ReplyMirror m_mirror;
    QString m_rowCommand;
};

} // namespace corvane
