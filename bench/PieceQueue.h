// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "bench/FaultLine.h"

#include <QElapsedTimer>
#include <QTimer>

#include <deque>
#include <functional>
#include <map>

namespace corvane::bench {

/// Hands on the pieces of replies in order, each at its time and in its turn. What is unasked does
/// not come inside a reply, nor a reply inside it.
class PieceQueue
{
public:
    using Sink = std::function<void(const TimedPiece &)>;

    explicit PieceQueue(Sink sink);

    void add(const Pieces &pieces);
    void clear();

private:
    using Turn = TimedPiece::Turn;

    void run();
    void runUnasked();
    void sendWaiting();
    void sendFirst();
    void sendFirstUnasked();

    Sink m_sink;
    std::deque<TimedPiece> m_pieces;
    QTimer m_timer;
    /// By the time when it is due.
    std::multimap<qint64, TimedPiece> m_unasked;
    QTimer m_unaskedTimer;
    QElapsedTimer m_clock;
};

} // namespace corvane::bench
