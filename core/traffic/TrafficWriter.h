// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "devices/UnwaitingOutput.h"

#include <QFile>
#include <QObject>
#include <QTimer>

#include <memory>

namespace corvane {

class TrafficRecorder;

/// Writes what a recorder records to a file as it comes, as JSON lines. What cannot be written any
/// more ends it, with a word; a reader of standard output that is slow does not hold the program
/// up, and what it misses is counted in its place.
class TrafficWriter : public QObject
{
    Q_OBJECT

public:
    /// What a program that is killed has not written yet is no older than this.
    static constexpr int intervalMs = 200;
    /// How long a reader may take nothing at the end.
    static constexpr int patienceMs = 3000;

    /// Begins the file anew, with the events that the recorder still has; "-" is standard output.
    /// Throws PlatformError when it cannot be written. The recorder must outlive the writer.
    TrafficWriter(TrafficRecorder &recorder, const QString &path);

    /// Writes the rest, and no more afterwards. Returns why not all was written; empty when it was.
    QString finish();
    /// Why it has ended; empty while it goes on.
    [[nodiscard]] const QString &fault() const { return m_fault; }

Q_SIGNALS:
    /// It has ended, once.
    void failed(const QString &fault);

private:
    void timer_Timer();
    /// Writes some of what has come; false: nothing is left, or nothing can be written now.
    bool writeSome();
    void fill();
    void tellLoss();
    bool put();
    bool putIntoFile();
    bool checkFile();
    void makeRoom(quint64 before);
    void fail(const QString &why);

    TrafficRecorder &m_recorder;
    const QString m_path;
    std::unique_ptr<UnwaitingOutput> m_output; ///< standard output; null for a file
    QFile m_file;
    QTimer m_timer;
    quint64 m_next = 0;   ///< the number of the first event that is not in m_pending yet
    quint64 m_lost = 0;   ///< events before it that are not told yet
    QByteArray m_pending; ///< lines to be written
    QString m_fault;
};

} // namespace corvane
