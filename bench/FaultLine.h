// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "bench/Fault.h"
#include "bench/Responder.h"

namespace corvane::bench {

/// What becomes of one reply.
struct SpoiltReply
{
    Pieces pieces;
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

    /// The reply, line end included, as the fault leaves it. One that is cut anew, or replaced,
    /// begins when the reply would have.
    SpoiltReply spoil(const Pieces &reply);

private:
    Fault m_fault;
    int m_orders = 0;
    /// The reply that waits for the next command.
    Pieces m_held;
};

} // namespace corvane::bench
