#pragma once

#include "bench/FaultLine.h"

#include <QTimer>

#include <deque>
#include <functional>

namespace corvane::bench {

/// Hands on the pieces of replies in order, each at its time.
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
