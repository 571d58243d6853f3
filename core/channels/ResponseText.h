// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>

namespace corvane {

/// The text of a response box, one byte a character, cleaned as it arrives. The work for an arrival
/// depends on that arrival and the end of the text before it, never on what the box already holds.
///
/// The newest bytes are kept: at least as many as the bound says, and at most a quarter more, so
/// that dropping the oldest costs little. Positions count from the beginning of the reply, dropped
/// bytes among them.
class ResponseText
{
public:
    static constexpr qsizetype mostKept = qsizetype{64} * 1024 * 1024;
    /// How far back from its end the text is searched again at an arrival.
    static constexpr qsizetype mostRevisited = 16384;

    explicit ResponseText(qsizetype most = mostKept)
        : m_most(most)
    {
    }

    /// What is taken out of the text at an arrival.
    struct Cleaning
    {
        /// Every CR and every LF of the arrival.
        bool lineEnds = false;
        /// Every occurrence of these bytes in the text, also one that only this arrival completes.
        QByteArray sequence;
    };

    /// The text; its first byte is at the position dropped().
    [[nodiscard]] const QByteArray &bytes() const { return m_bytes; }
    [[nodiscard]] qsizetype dropped() const { return m_dropped; }

    void assign(const QByteArray &bytes);

    /// Appends an arrival, cleaned. Returns the position up to which the old text still stands; all
    /// behind it is new.
    ///
    /// The sequence is removed in one pass from left to right, as if the whole text were searched
    /// at each arrival: an occurrence that only the removal of another one puts together goes with
    /// the next arrival, unless it lies further back than the text is searched again.
    qsizetype append(QByteArrayView arrival, const Cleaning &cleaning);

private:
    qsizetype appendCleaned(QByteArrayView arrival, const Cleaning &cleaning);
    void dropOldest();

    qsizetype m_most;
    QByteArray m_bytes;
    qsizetype m_dropped = 0;
    QByteArray m_sequence;
    /// No occurrence of m_sequence is looked for before this byte.
    qsizetype m_searched = 0;
};

} // namespace corvane
