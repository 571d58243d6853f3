// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QByteArrayView>

#include <optional>

namespace corvane {

/// The copy of a response box that a cell holds: the reply on one line, up to a bound. It follows
/// the box piece by piece, with work that is the piece's however long the reply already is. It
/// touches neither of them: it says what becomes of the cell.
class ReplyMirror
{
public:
    /// Characters of one reply that its cell holds at most: the first ones.
    static constexpr qsizetype longestCell = 1'000'000;

    /// The cell's first `keep` characters stand, then `text` follows.
    struct Change
    {
        qsizetype keep = 0;
        QByteArray text;
        bool isCut = false; ///< not all of the piece fits
    };

    /// The box keeps its first `keep` bytes and `tail` follows. False when the cell, which has
    /// `cellLength` characters by now, cannot follow that: the whole box is to be shown then.
    [[nodiscard]] bool canFollow(qsizetype keep, qsizetype cellLength) const;
    /// Nothing when the cell stays as it is, full already.
    std::optional<Change> follow(qsizetype keep, QByteArrayView tail);
    /// The cell is to show the whole box, whose end is at the position `end`: it may have dropped
    /// its oldest bytes.
    std::optional<Change> show(QByteArrayView box, qsizetype end);

private:
    std::optional<Change> write(qsizetype keep, QByteArrayView piece);
    void remember(QByteArrayView piece, qsizetype end);

    qsizetype m_box = 0;   ///< where the reply ends
    qsizetype m_line = 0;  ///< its length without line ends
    qsizetype m_cell = -1; ///< characters in the cell; -1: it holds none of this reply
    QByteArray m_end;      ///< the reply's last bytes: a later piece may take some back
};

} // namespace corvane
