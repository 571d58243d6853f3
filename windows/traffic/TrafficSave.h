// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/traffic/TrafficFormat.h"

#include <QObject>
#include <QTimer>

#include <optional>
#include <vector>

namespace corvane {

class TrafficRecorder;

/// Saves events in a file, put together in several turns of the event loop, so that everything else
/// goes on meanwhile. What the recorder drops until then is saved all the same.
class TrafficSave : public QObject
{
    Q_OBJECT

public:
    /// The numbers of the events, ascending; the path's ending says in which format.
    TrafficSave(const TrafficRecorder &recorder, std::vector<quint64> numbers, const QString &path);

    [[nodiscard]] const QString &path() const { return m_path; }
    /// How many events have been put together; those that had been dropped before are none.
    [[nodiscard]] qsizetype count() const { return m_count; }
    /// Does at once what is still to be done, if anything is, and gives what done() tells.
    QString finish();

Q_SIGNALS:
    /// Why the file could not be written, and is as it was; empty: it is written.
    void done(const QString &fault);

private:
    void turn_Timer();
    void add(quint64 before);
    TrafficEvent addNext();

    const TrafficRecorder &m_recorder;
    const std::vector<quint64> m_numbers;
    const QString m_path;
    const TrafficFormat m_format;
    std::size_t m_next = 0;
    qsizetype m_count = 0;
    QByteArray m_bytes;
    std::optional<QString> m_fault; ///< none: not yet written
    QTimer m_turn;
};

} // namespace corvane
