#pragma once

#include <QByteArray>

namespace corvane {

/// The text of a response box, one byte a character, cleaned as it arrives. The work for an arrival
/// depends on that arrival and the one before it, never on what the box already holds.
class ResponseText
{
public:
    /// What is taken out of the text at an arrival.
    struct Cleaning
    {
        /// Every CR and every LF of the arrival.
        bool lineEnds = false;
        /// Every occurrence of these bytes in the text, also one that only this arrival completes.
        QByteArray sequence;
    };

    [[nodiscard]] const QByteArray &bytes() const { return m_bytes; }

    void assign(const QByteArray &bytes);

    /// Appends an arrival, cleaned. Returns how many leading bytes of the old text still stand; all
    /// behind them is new.
    ///
    /// The sequence is removed in one pass from left to right, as if the whole text were searched
    /// at each arrival: an occurrence that only the removal of another one puts together goes with
    /// the next arrival.
    qsizetype append(QByteArrayView arrival, const Cleaning &cleaning);

private:
    QByteArray m_bytes;
    QByteArray m_sequence;
    /// No occurrence of m_sequence begins before this position.
    qsizetype m_searched = 0;
};

} // namespace corvane
