// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/channels/ResponseText.h"

#include "core/text/LineEnds.h"

#include <algorithm>

namespace corvane {

namespace {

/// Up to here a text grows step by step.
constexpr qsizetype smallText = qsizetype{1024} * 1024;

void appendWithoutLineEnds(QByteArray &text, QByteArrayView arrival)
{
    auto from = arrival.begin();
    while (from != arrival.end()) {
        const auto lineEnd = std::find_if(from, arrival.end(), lineEnds::isOne);
        text.append(from, lineEnd - from);
        from = std::find_if_not(lineEnd, arrival.end(), lineEnds::isOne);
    }
}

} // namespace

void ResponseText::assign(const QByteArray &bytes)
{
    m_bytes = bytes;
    m_dropped = 0;
    m_searched = 0;
}

qsizetype ResponseText::append(QByteArrayView arrival, const Cleaning &cleaning)
{
    // A long text that moves into a larger room holds up the window. It gets all the room it can
    // ever need while it is small; the system gives it no memory before it is written to.
    const qsizetype size = m_bytes.size() + arrival.size();
    if (size > smallText && size > m_bytes.capacity())
        m_bytes.reserve(std::max(size, m_most + m_most / 4 + smallText));
    const qsizetype keep = m_dropped + appendCleaned(arrival, cleaning);
    dropOldest();
    return std::max(keep, m_dropped);
}

qsizetype ResponseText::appendCleaned(QByteArrayView arrival, const Cleaning &cleaning)
{
    if (m_sequence != cleaning.sequence) {
        m_sequence = cleaning.sequence;
        m_searched = 0;
    }
    const qsizetype before = m_bytes.size();
    if (cleaning.lineEnds)
        appendWithoutLineEnds(m_bytes, arrival);
    else
        m_bytes.append(arrival);
    if (m_sequence.isEmpty())
        return before;

    const qsizetype keep = std::max(m_searched, before - mostRevisited);
    const qsizetype overlap = m_sequence.size() - 1;
    qsizetype found = m_bytes.indexOf(m_sequence, keep);
    if (found < 0) {
        m_searched = std::max(keep, m_bytes.size() - overlap);
        return keep;
    }
    QByteArray cleaned;
    const qsizetype firstJoin = found;
    qsizetype from = keep;
    while (found >= 0) {
        cleaned.append(QByteArrayView(m_bytes).sliced(from, found - from));
        from = found + m_sequence.size();
        found = m_bytes.indexOf(m_sequence, from);
    }
    cleaned.append(QByteArrayView(m_bytes).sliced(from));
    m_bytes.truncate(keep);
    m_bytes.append(cleaned);
    m_searched = std::max<qsizetype>(0, firstJoin - overlap);
    return keep;
}

void ResponseText::dropOldest()
{
    if (m_bytes.size() <= m_most + m_most / 4)
        return;
    const qsizetype oldest = m_bytes.size() - m_most;
    // In place: the newest bytes move into the room that is there already.
    std::copy(m_bytes.cbegin() + oldest, m_bytes.cend(), m_bytes.begin());
    m_bytes.truncate(m_most);
    m_dropped += oldest;
    m_searched = std::max<qsizetype>(0, m_searched - oldest);
}

} // namespace corvane
