#pragma once

#include "board/CalibrationTable.h"

#include <QObject>

namespace corvane {

class BoardLink;
class BoardSession;

/// How a calibration or scan ended. Failed has a reason for the technician.
struct CalibrationEnd
{
    enum class Outcome { Done, Cancelled, Failed };

    Outcome outcome = Outcome::Done;
    QString reason;

    bool operator==(const CalibrationEnd &) const = default;
};

/// What calibrations and scans have in common: exchanges with the board that stop at a cancel, and
/// read-backs into the table. Begins no operation of its own and shows no failure.
class CalibrationSequence : public QObject
{
    Q_OBJECT

public:
    CalibrationSequence(BoardLink &link, BoardSession &session, CalibrationTable &table);

    /// Ends the running sequence before its next exchange or meter reading; a command that was sent
    /// still gets its answer read.
    void cancel() { m_cancelled = true; }

Q_SIGNALS:
    void cellChanged(int row, int column);
    void cellSelected(int row, int column);
    /// Where the sequence is, for the technician.
    void progressed(const QString &text);

protected:
    void start(int steps);
    /// True when nothing more may be exchanged.
    [[nodiscard]] bool isEnded() const;
    [[nodiscard]] CalibrationEnd end() const;
    void showStep(int channel, const QString &what);

    // Each returns false when the sequence has ended.
    bool send(const QString &command);
    bool pause(qint16 ms);
    bool query(const QString &command, qint16 ms, QString &reply);
    bool fail(const QString &reason);

    void setCell(int row, int channel, const QString &text);
    void clearChannel(int channel);
    /// Puts the reply's first three fields into three rows from `firstRow` on.
    void fillRows(int firstRow, int channel, const QString &reply);

    BoardLink &m_link;
    BoardSession &m_session;

private:
    CalibrationTable &m_table;
    bool m_cancelled = false;
    QString m_failure;
    int m_step = 0;
    int m_steps = 0;
};

} // namespace corvane
