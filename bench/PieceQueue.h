// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "bench/FaultLine.h"

#include <QTimer>

#include <deque>
#include <functional>

namespace corvane::bench {

/// Hands on the pieces of replies in order, each at its time; what is unasked and still waits when
/// another reply comes goes before that at once.
class PieceQueue
{
public:
    using Sink = std::function<void(const TimedPiece &)>;

    explicit PieceQueue(Sink sink);

    void add(const Pieces &pieces);
    void clear();

private:
    void run();

    Sink m_sink;
    std::deque<TimedPiece> m_pieces;
    QTimer m_timer;
};

} // namespace corvane::bench
