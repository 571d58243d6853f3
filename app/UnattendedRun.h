// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "app/CommandLine.h"
#include "app/RunOutputs.h"
#include "core/lists/RunRecord.h"

#include <QElapsedTimer>
#include <QObject>

#include <functional>
#include <map>
#include <optional>

class QTextStream;

namespace corvane {

class ChannelSession;
class ChannelSet;
class CommandList;
class Workbench;

/// One list run without a window, by the same list and engine: loads the list, connects the
/// Channel, runs, prints a line a row and writes the results. It leaves the fixed messages to the
/// dialogs of the workbench.
class UnattendedRun : public QObject
{
    Q_OBJECT

public:
    static constexpr int passed = 0;
    static constexpr int checkFailed = 1;
    static constexpr int anythingElse = 2;

    /// `out` is standard output, over a device; `messages` takes what is said on the way and, where
    /// a result goes to standard output, the rows.
    UnattendedRun(Workbench &workbench, CommandLine line, QTextStream &out, QTextStream &messages);

    /// Does it all and returns the exit code. SIGINT, SIGTERM and SIGHUP end it as Stop does.
    /// `begun` is called when the list is loaded and nothing is sent yet; it may throw
    /// PlatformError, which ends the run.
    int execute(const std::function<void()> &begun = [] {});

private:
    bool loadList();
    bool prepare();
    bool connectChannel();
    void run();
    void stop();
    bool refuse(const QString &reason);
    bool refuseAtRow(const QString &reason);
    void printRow(int row, const QString &reply, GridModel::Verdict verdict);
    void judgeOutcome();
    void writeResults();
    void write(const QString &path, const QByteArray &bytes);
    [[nodiscard]] qint64 patienceMs() const;
    /// Ends the run; "%1" in the reason takes the seconds of so many patiences.
    void giveUp(const QString &reason, int patiences);
    [[nodiscard]] RunReport report() const;

    const CommandLine m_line;
    ChannelSet &m_channels;
    CommandList &m_list;
    TransferEngine &m_engine;
    ChannelSession &m_channel;
    RunOutputs m_outputs;
    RunRecord m_record;
    QTextStream &m_out;
    QTextStream &m_messages;
    QTextStream &m_rows;
    std::optional<TransferEngine::Outcome> m_outcome;
    QStringList m_faults;
    QString m_fault;           ///< the Channel's, told already; that of its send ends the run
    int m_row = 0;             ///< the row at hand; 0: none yet
    QString m_command;         ///< what it sends
    QElapsedTimer m_sinceSign; ///< of life: a command went out, or a piece of a reply came
    QElapsedTimer m_sinceRow;  ///< its command went out
};

} // namespace corvane
