#pragma once

#include "lists/TransferEngine.h"
#include "main/CommandLine.h"
#include "main/RunReport.h"

#include <QElapsedTimer>
#include <QObject>

#include <map>
#include <optional>

class QTextStream;

namespace corvane {

class Main;

/// One list run without a display, by the same window and engine: loads the list, connects the
/// Channel, runs, prints a line a row and writes the reports. It leaves the fixed messages to the
/// dialogs of the window.
class UnattendedRun : public QObject
{
    Q_OBJECT

public:
    static constexpr int passed = 0;
    static constexpr int checkFailed = 1;
    static constexpr int anythingElse = 2;

    UnattendedRun(Main &window, CommandLine line, QTextStream &rows, QTextStream &messages);

    /// Does it all and returns the exit code. SIGINT and SIGTERM end it as Stop does.
    int execute();

private:
    bool prepare();
    void run();
    void stop();
    bool conclude();
    bool refuse(const QString &reason);
    bool refuseAtRow(const QString &reason);
    void printRow(int row, const QString &reply, TransferEngine::RowVerdict verdict);
    bool writeFile(const QString &path, const QByteArray &bytes);
    [[nodiscard]] RunReport report() const;
    [[nodiscard]] RunReport::Check checkAt(int row) const;
    [[nodiscard]] int exitCode() const;

    Main &m_window;
    const CommandLine m_line;
    QTextStream &m_rows;
    QTextStream &m_messages;
    std::optional<TransferEngine::Outcome> m_outcome;
    QString m_fault;
    int m_row = 0;     ///< the row at hand; 0: none yet
    QString m_command; ///< what it sends
    std::map<int, TransferEngine::RowVerdict> m_verdicts;
    QElapsedTimer m_sinceStartOfRow;
    QElapsedTimer m_sinceStart;
};

} // namespace corvane
