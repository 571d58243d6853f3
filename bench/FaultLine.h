#pragma once

#include "bench/Fault.h"

#include <vector>

namespace corvane::bench {

/// One piece of a spoilt reply.
struct TimedPiece
{
    /// Milliseconds after the piece before it.
    int afterMs = 0;
    QByteArray bytes;
    /// The reply's end: where a GPIB device marks its last byte.
    bool end = false;
};

/// What becomes of one reply.
struct SpoiltReply
{
    std::vector<TimedPiece> pieces;
    bool drop = false;
    /// Bytes to stream after the pieces, that many at a time.
    qint64 floodBytes = 0;
    int floodPiece = 0;
};

/// The fault that is in force at one place of the bench, applied to each reply that passes. It
/// decides what is sent and when; its users send it.
class FaultLine
{
public:
    void order(const Fault &fault);
    [[nodiscard]] const Fault &fault() const { return m_fault; }
    /// Counts the orders, so that a long flood notices a new one.
    [[nodiscard]] int orders() const { return m_orders; }

    /// The reply, line end included, as the fault leaves it.
    SpoiltReply spoil(const QByteArray &reply);

private:
    Fault m_fault;
    int m_orders = 0;
    /// The reply that waits for the next command.
    QByteArray m_held;
};

} // namespace corvane::bench
