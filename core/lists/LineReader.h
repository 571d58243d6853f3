// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QString>

class QIODevice;

namespace corvane {

/// The lines of a text file, one after the other, with little more than a line in memory. CR LF, LF
/// and CR end a line; the last line may lack its end.
class LineReader
{
public:
    LineReader(QIODevice &device, qsizetype maximumLine);

    /// Reads the next line. False at the end of the file, after a read error, and at a line that is
    /// longer than the maximum.
    bool next();
    /// The line without its end; valid until the next call of next().
    [[nodiscard]] QByteArrayView line() const { return m_line; }
    /// Its number in the file, from 1; after a failure that of the line that could not be read.
    [[nodiscard]] int number() const { return m_number; }
    /// Why the file could not be read to its end; empty when nothing failed.
    [[nodiscard]] QString fault() const { return m_fault; }

private:
    bool readMore();
    void take(qsizetype length);

    QIODevice &m_device;
    qsizetype m_maximumLine;
    QByteArray m_buffer;
    qsizetype m_at = 0;          // where the next line begins in the buffer
    bool m_skipLineFeed = false; // the last line ended in CR: a LF right behind belongs to it
    int m_number = 0;
    QString m_fault;
    QByteArrayView m_line;
};

} // namespace corvane
