// SPDX-License-Identifier: GPL-3.0-or-later
#include "bench/ReplySender.h"

#include "bench/FloodPattern.h"

#include <algorithm>

namespace corvane::bench {

ReplySender::ReplySender(ByteStream &stream, FaultLine &faults)
    : QObject(&stream)
    , m_stream(stream)
    , m_faults(faults)
    , m_queue([this](const TimedPiece &piece) { m_stream.send(piece.bytes); })
{
    m_floodTurn.setSingleShot(true);
    connect(&m_floodTurn, &QTimer::timeout, this, &ReplySender::flood);
    // Never at once: this comes from inside send().
    connect(&stream, &ByteStream::drained, this, [this] {
        if (m_floodLeft > 0)
            m_floodTurn.start(0);
    });
    connect(&stream, &ByteStream::closed, this, [this] {
        m_queue.clear();
        m_floodLeft = 0;
    });
}

bool ReplySender::send(const Pieces &reply)
{
    if (reply.empty())
        return true;
    const SpoiltReply spoilt = m_faults.spoil(reply);
    if (spoilt.drop) {
        m_stream.dropPeer();
        return false;
    }
    m_queue.add(spoilt.pieces);
    if (spoilt.floodBytes > 0)
        startFlood(spoilt.floodBytes, spoilt.floodPiece);
    return true;
}

void ReplySender::startFlood(qint64 bytes, int piece)
{
    m_floodLeft = bytes;
    m_floodDone = 0;
    m_floodPiece = piece;
    m_floodOrder = m_faults.orders();
    m_floodTime.start();
    m_floodTurn.start(0);
}

void ReplySender::flood()
{
    // Little enough a turn that everything else on this thread goes on meanwhile.
    constexpr int piecesATurn = 200;
    constexpr qint64 bytesATurn = 1 << 18;
    constexpr qint64 enoughBacklog = 1 << 16;

    if (m_floodOrder != m_faults.orders() || m_floodTime.hasExpired(longestFloodMs))
        m_floodLeft = 0;
    qint64 sent = 0;
    for (int i = 0; i < piecesATurn && sent < bytesATurn && m_floodLeft > 0; ++i) {
        if (m_stream.backlog() > enoughBacklog)
            return;
        const qint64 size = std::min<qint64>(m_floodPiece, m_floodLeft);
        m_stream.send(floodPattern(m_floodDone, size));
        m_floodDone += size;
        m_floodLeft -= size;
        sent += size;
    }
    if (m_floodLeft > 0)
        m_floodTurn.start(0);
}

} // namespace corvane::bench
