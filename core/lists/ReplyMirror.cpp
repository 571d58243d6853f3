// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/lists/ReplyMirror.h"

#include "core/text/LineEnds.h"

#include <algorithm>

namespace corvane {

namespace {

constexpr qsizetype endKept = 32768; // more than a piece ever takes back

} // namespace

bool ReplyMirror::canFollow(qsizetype keep, qsizetype cellLength) const
{
    const qsizetype back = m_box - keep;
    return keep == 0 || (cellLength == m_cell && back >= 0 && back <= m_end.size());
}

std::optional<ReplyMirror::Change> ReplyMirror::follow(qsizetype keep, QByteArrayView tail)
{
    if (keep == 0)
        return show(tail, tail.size());
    const qsizetype back = m_box - keep;
    const qsizetype taken = lineEnds::removed(m_end.last(back)).size();
    m_end.chop(back);
    auto change = write(m_line - taken, tail);
    remember(tail, keep + tail.size());
    return change;
}

std::optional<ReplyMirror::Change> ReplyMirror::show(QByteArrayView box, qsizetype end)
{
    *this = {};
    auto change = write(0, box);
    remember(box, end);
    return change;
}

std::optional<ReplyMirror::Change> ReplyMirror::write(qsizetype keep, QByteArrayView piece)
{
    Change change{.keep = keep, .text = lineEnds::removed(piece.toByteArray())};
    m_line = keep + change.text.size();
    if (keep >= longestCell)
        return std::nullopt;
    change.isCut = m_line > longestCell;
    change.text.truncate(longestCell - keep);
    m_cell = keep + change.text.size();
    return change;
}

void ReplyMirror::remember(QByteArrayView piece, qsizetype end)
{
    m_box = end;
    m_end += piece.last(std::min(piece.size(), endKept));
    if (m_end.size() > 2 * endKept)
        m_end.remove(0, m_end.size() - endKept);
}

} // namespace corvane
