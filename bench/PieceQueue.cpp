// SPDX-License-Identifier: GPL-3.0-or-later
#include "bench/PieceQueue.h"

#include <utility>

namespace corvane::bench {

PieceQueue::PieceQueue(Sink sink)
    : m_sink(std::move(sink))
{
    m_timer.setSingleShot(true);
    m_timer.setTimerType(Qt::PreciseTimer);
    m_timer.callOnTimeout([this] {
        m_pieces.front().afterMs = 0;
        run();
    });
}

void PieceQueue::add(const Pieces &pieces)
{
    for (TimedPiece &waiting : m_pieces)
        waiting.afterMs = waiting.isUnasked ? 0 : waiting.afterMs;
    m_pieces.insert(m_pieces.end(), pieces.begin(), pieces.end());
    if (m_pieces.empty() || (m_timer.isActive() && !m_pieces.front().isUnasked))
        return;
    m_timer.stop();
    run();
}

void PieceQueue::clear()
{
    m_timer.stop();
    m_pieces.clear();
}

void PieceQueue::run()
{
    while (!m_pieces.empty()) {
        if (m_pieces.front().afterMs > 0) {
            m_timer.start(m_pieces.front().afterMs);
            return;
        }
        const TimedPiece piece = m_pieces.front();
        m_pieces.pop_front();
        m_sink(piece);
    }
}

} // namespace corvane::bench
