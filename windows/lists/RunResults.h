// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/lists/RunRecord.h"

namespace corvane {

class ChannelSet;
class Dialogs;

/// The results of the last run, as they stood when it ended, to be saved as a table or as a JUnit
/// report.
class RunResults : public QObject
{
    Q_OBJECT

public:
    /// All that is given must outlive the results.
    RunResults(const ChannelSet &channels, const CommandList &list, const TransferEngine &engine,
               Dialogs &dialogs, QObject *parent);

    /// True from the end of a run to the start of the next one.
    [[nodiscard]] bool areThere() const { return m_report.has_value(); }
    /// Asks for a file, whose ending says in which form, and writes it. `asker` as for Dialogs.
    void save(QObject *asker);

Q_SIGNALS:
    void changed(bool areThere);
    /// What became of a save; empty: nothing to be said any more.
    void noted(const QString &note);

private:
    void begin(int channel);
    void end(TransferEngine::Outcome outcome);

    const ChannelSet &m_channels;
    const TransferEngine &m_engine;
    Dialogs &m_dialogs;
    RunRecord m_record;
    bool m_isRunning = false;
    QStringList m_faults;
    std::optional<RunReport> m_report;
};

} // namespace corvane
