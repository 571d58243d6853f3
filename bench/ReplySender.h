// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "bench/ByteStream.h"
#include "bench/PieceQueue.h"

#include <QElapsedTimer>

namespace corvane::bench {

/// Sends replies on one stream as the place's fault leaves them: in pieces, as a flood, or by
/// dropping the connection.
class ReplySender : public QObject
{
public:
    /// A flood ends after this many milliseconds even when nobody takes it.
    static constexpr qint64 longestFloodMs = 60'000;

    /// Lives as long as the stream; the fault line outlives both.
    ReplySender(ByteStream &stream, FaultLine &faults);

    /// False: the connection was dropped in the reply's place.
    bool send(const Pieces &reply);

private:
    void startFlood(qint64 bytes, int piece);
    void flood();

    ByteStream &m_stream;
    FaultLine &m_faults;
    PieceQueue m_queue;
    qint64 m_floodLeft = 0;
    qint64 m_floodDone = 0;
    int m_floodPiece = 0;
    int m_floodOrder = 0;
    QElapsedTimer m_floodTime;
    QTimer m_floodTurn;
};

} // namespace corvane::bench
