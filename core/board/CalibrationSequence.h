// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/board/BoardLink.h"
#include "core/board/CalibrationFindings.h"
#include "core/board/CalibrationTable.h"

#include <QObject>

#include <vector>

namespace corvane {

class BoardLink;
class BoardSession;

/// How a calibration or scan ended. A failure of its own has a reason for a message box; the
/// summary tells every end in a line.
struct CalibrationEnd
{
    enum class Outcome { Done, Cancelled, Failed };

    Outcome outcome = Outcome::Done;
    QString reason{};
    QString summary{};
};

/// One step of a calibration or scan, and the time of its waits.
struct CalibrationStep
{
    int channel;
    QString what;
    int ms;
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
    /// The cell has another text. `remark`: what is wrong with it; empty: nothing.
    void cellChanged(int row, int column, const QString &remark);
    void cellSelected(int row, int column);
    /// Where the sequence is, for the technician.
    void progressed(const QString &text);

protected:
    void start(std::vector<CalibrationStep> steps);
    /// True when nothing more may be exchanged.
    [[nodiscard]] bool isEnded() const;
    /// `left` says, after an end before the last step, how the board was left.
    [[nodiscard]] CalibrationEnd end(const QString &left = {}) const;
    /// Goes on to the next step and shows it.
    void nextStep();

    // Each returns false when the sequence has ended.
    /// `wentOut` tells whether the command was sent before the end.
    bool send(const QString &command, bool *wentOut = nullptr);
    bool pause(qint16 ms);
    bool query(const QString &command, qint16 ms, QString &reply);
    bool fail(const QString &reason);
    void noteAnswer(const QString &reply) { m_isSilent = m_isSilent || reply.isEmpty(); }

    void setCell(int row, int channel, const QString &text, const QString &remark = {});
    void clearChannel(int channel);
    /// Puts the reply's first three fields into three rows from `firstRow` on. `sent`: the gain and
    /// offset that the board was given; empty: they are not known.
    void fillRows(int firstRow, int channel, const QString &reply, const QList<double> &sent = {});
    /// Puts the meter's answer, read as `value`, into its row. `doubt`: why it may be another's.
    void fillMeterRow(int channel, const QString &reply, double value, const QString &doubt = {});
    [[nodiscard]] QString title(int row) const { return m_table.text(row, 0); }
    void find(int channel, const QString &what) { m_findings.add(channel, what); }
    /// What is computed from now on comes from readings with such findings, if there are any.
    void computeFromReadings() { m_isDoubtful = !m_findings.isEmpty(); }

    BoardLink &m_link;
    BoardLink::Method m_method = BoardLink::Ieee; ///< at the start
    BoardSession &m_session;

private:
    [[nodiscard]] QString place() const;

    CalibrationTable &m_table;
    bool m_cancelled = false;
    QString m_failure;
    CalibrationFindings m_findings;
    bool m_isDoubtful = false;
    std::vector<CalibrationStep> m_steps;
    size_t m_step = 0;
    /// An answer stayed out: how long later exchanges wait is not known.
    bool m_isSilent = false;
};

} // namespace corvane
