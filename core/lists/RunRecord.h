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

    /// A run begins on the Channel, which must outlive it: nothing is judged yet.
    void restart(const ChannelSession &channel);
    /// From the run's start to the row that was done last.
    [[nodiscard]] double secondsToLastRow() const { return m_secondsToLastRow; }
    [[nodiscard]] bool hasVerdict() const { return !m_judged.isEmpty(); }
    /// Which rows Get List has left without a value; empty: none.
    [[nodiscard]] QString missingValues() const;
    /// The run as it is by now. `fault`: what went wrong other than a failed check; empty when
    /// nothing did.
    [[nodiscard]] RunReport report(const QString &fault) const;
    /// Why an outcome is neither passed nor failed; empty when it is one of them.
    static QString faultOf(TransferEngine::Outcome outcome);

private:
    /// How a check went.
    struct Judged
    {
        GridModel::Verdict verdict = GridModel::Verdict::None;
        double seconds = 0;
    };

    /// A row's command goes out to where the Channel is connected by now.
    void notePlace();
    void finishRow(int row, const QString &reply, GridModel::Verdict verdict);
    [[nodiscard]] RunReport::Check checkAt(int row) const;

    const CommandList &m_list;
    const TransferEngine &m_engine;
    const ChannelSession *m_channel = nullptr;
    QStringList m_places;       ///< where the devices were that were asked, in turn
    QStringList m_emptyRows;    ///< those that Get List has left without a value
    QMap<int, Judged> m_judged; ///< by row
    QDateTime m_began;
    QElapsedTimer m_sinceStart;
    QElapsedTimer m_sinceCheck;
    double m_secondsToLastRow = 0;
};

} // namespace corvane
