// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/lists/RunReport.h"
#include "core/lists/TransferEngine.h"

#include <QElapsedTimer>
#include <QMap>

namespace corvane {

/// Keeps of a list's run what its reports need besides the list itself: when it began, and how and
/// when its checks were judged. It listens to the engine.
class RunRecord : public QObject
{
    Q_OBJECT

public:
    /// The list and the engine must outlive the record.
    RunRecord(const CommandList &list, const TransferEngine &engine, QObject *parent = nullptr);

    /// A run begins: nothing is judged yet.
    void restart();
    /// From the run's start to the row that was done last.
    [[nodiscard]] double secondsToLastRow() const { return m_secondsToLastRow; }
    [[nodiscard]] bool hasVerdict() const { return !m_judged.isEmpty(); }
    /// The run as it is by now, on this Channel. `fault`: what went wrong other than a failed
    /// check; empty when nothing did.
    [[nodiscard]] RunReport report(const ChannelSession &channel, const QString &fault) const;
    /// Why an outcome is neither passed nor failed; empty when it is one of them.
    static QString faultOf(TransferEngine::Outcome outcome);

private:
    /// How a check went.
    struct Judged
    {
        GridModel::Verdict verdict = GridModel::Verdict::None;
        double seconds = 0;
    };

    void finishRow(int row, GridModel::Verdict verdict);
    [[nodiscard]] RunReport::Check checkAt(int row) const;

    const CommandList &m_list;
    QMap<int, Judged> m_judged; ///< by row
    QDateTime m_began;
    QElapsedTimer m_sinceStart;
    QElapsedTimer m_sinceCheck;
    double m_secondsToLastRow = 0;
};

} // namespace corvane
