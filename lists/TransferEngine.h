#pragma once

#include "common/Module1.h"

#include <QByteArrayView>
#include <QObject>
#include <QString>

namespace corvane {

class CommandListArea;
class Dialogs;
class ListHost;
class TextGrid;
struct ListStep;

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

    /// The response box of the Channel has changed: its first `keep` bytes stand, then `tail`
    /// follows. To be called for every piece of a reply, after the box has been written. The work
    /// is the tail's, however long the reply already is. Does nothing unless the Channel runs a
    /// list.
    void replyArrived(int index, qsizetype keep, QByteArrayView tail);
    /// The GPIB time-out passed without a reply; txtIn says so already.
    void replyTimedOut(int index);

    /// The Channel that the run is on; -1: none.
    [[nodiscard]] int runningChannel() const { return m_module.transferRunning() ? m_channel : -1; }
    /// True while a message box of the run is open or its send has not returned: the window must
    /// not be destroyed.
    [[nodiscard]] bool isBusy() const { return m_holds > 0; }

Q_SIGNALS:
    void runStarted(int index);
    /// A row's step begins; `command` is what goes out, empty when the row sends nothing.
    void rowStarted(int row, const QString &command);
    /// A row is done; `reply` is the text of its reply cell.
    void rowFinished(int row, const QString &reply, corvane::TransferEngine::RowVerdict verdict);
    void runEnded(corvane::TransferEngine::Outcome outcome);

private:
    enum class Mode { Get, Send };

    void start(int index, Mode mode);
    bool refuse(int index, Outcome outcome, const QString &message);
    void send(int index, const QString &command);
    void skip(int index, RowVerdict verdict);
    void check(int index);
    void syntaxError(int index);
    void complete(int index);
    void finishRow(RowVerdict verdict);
    bool showMessage(const QString &text);
    void stopRun(int index, Outcome outcome);
    void reset(int index);
    void showProgress();
    [[nodiscard]] ListStep currentStep() const;
    [[nodiscard]] int replyColumn() const;

    Module1 &m_module;
    CommandListArea &m_area;
    TextGrid &m_grid;
    ListHost &m_host;
    Dialogs &m_dialogs;

    int m_channel = -1;
    quint64 m_run = 0;          // counts starts, so that a frame below knows whether its run is on
    int m_holds = 0;            // frames in which the run may not move on
    bool m_rowOpen = false;     // the current row has started and not finished
    bool m_rowJudged = false;   // the current row's reply cell holds a verdict
    qsizetype m_mirrored = -1;  // length of the reply cell while it equals the response box
    bool m_settling = false;    // the end of the run is being shown; its outcome is known
};

} // namespace corvane
