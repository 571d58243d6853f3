#pragma once

#include <QByteArray>
#include <QByteArrayView>

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
    /// The file could not be read to its end.
    [[nodiscard]] bool failed() const { return m_failed; }

private:
    bool readMore();
    void take(qsizetype length);

    QIODevice &m_device;
    qsizetype m_maximumLine;
    QByteArray m_buffer;
    qsizetype m_at = 0;          // where the next line begins in the buffer
    bool m_skipLineFeed = false; // the last line ended in CR: a LF right behind belongs to it
    bool m_failed = false;
    QByteArrayView m_line;
};

} // namespace corvane
