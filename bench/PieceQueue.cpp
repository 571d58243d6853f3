// SPDX-License-Identifier: GPL-3.0-or-later
#include "bench/PieceQueue.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace corvane::bench {

PieceQueue::PieceQueue(Sink sink)
    : m_sink(std::move(sink))
{
    for (QTimer *timer : {&m_timer, &m_unaskedTimer}) {
        timer->setSingleShot(true);
        timer->setTimerType(Qt::PreciseTimer);
    }
    m_timer.callOnTimeout([this] {
        m_pieces.front().afterMs = 0;
        run();
    });
    m_unaskedTimer.callOnTimeout([this] { runUnasked(); });
    m_clock.start();
}

void PieceQueue::add(const Pieces &pieces)
{
    // More than a recording holds: of a request that is asked again and again they add up.
    constexpr size_t mostUnasked = 2'000'000;

    qint64 due = m_clock.elapsed();
    bool isUnasked = false;
    for (const TimedPiece &piece : pieces) {
        if (piece.turn == Turn::Reply) {
            sendWaiting();
            due = m_clock.elapsed();
        }
        due += piece.afterMs;
        isUnasked = piece.turn == Turn::Unasked || (isUnasked && piece.turn == Turn::Rest);
        if (isUnasked)
            m_unasked.emplace_hint(m_unasked.end(), due, piece);
        else
            m_pieces.push_back(piece);
    }
    while (m_unasked.size() > mostUnasked)
        sendFirstUnasked();
    if (!m_timer.isActive())
        run();
    runUnasked();
}

void PieceQueue::clear()
{
    m_timer.stop();
    m_pieces.clear();
    m_unaskedTimer.stop();
    m_unasked.clear();
}

void PieceQueue::run()
{
    while (!m_pieces.empty()) {
        if (m_pieces.front().afterMs > 0) {
            m_timer.start(m_pieces.front().afterMs);
            return;
        }
        sendFirst();
    }
    runUnasked();
}

void PieceQueue::runUnasked()
{
    const auto isInsideReply = [this] {
        return !m_pieces.empty() && m_pieces.front().turn == Turn::Rest;
    };
    while (!m_unasked.empty() && !isInsideReply()) {
        const qint64 waitMs = m_unasked.begin()->first - m_clock.elapsed();
        if (waitMs > 0) {
            constexpr qint64 longestMs = std::numeric_limits<int>::max();
            m_unaskedTimer.start(static_cast<int>(std::min(waitMs, longestMs)));
            return;
        }
        sendFirstUnasked();
    }
}

/// All but what a fault delays, and what stands behind that.
void PieceQueue::sendWaiting()
{
    while (!m_pieces.empty() && m_pieces.front().turn != Turn::Next) {
        m_timer.stop();
        sendFirst();
    }
}

void PieceQueue::sendFirst()
{
    // What is unasked and has begun ends before.
    while (!m_unasked.empty() && m_unasked.begin()->second.turn == Turn::Rest)
        sendFirstUnasked();
    if (m_pieces.empty()) // the stream has closed on it
        return;
    const TimedPiece piece = std::move(m_pieces.front());
    m_pieces.pop_front();
    m_sink(piece);
}

void PieceQueue::sendFirstUnasked()
{
    const TimedPiece piece = std::move(m_unasked.begin()->second);
    m_unasked.erase(m_unasked.begin());
    m_sink(piece);
}

} // namespace corvane::bench
