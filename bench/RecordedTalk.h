// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "bench/LineReader.h"
#include "bench/Recording.h"

namespace corvane::bench {

/// Puts the recorded traffic with one device together: requests, the replies to them, and what came
/// unasked. Times are in microseconds.
class RecordedTalk
{
public:
    /// Adds the bytes of memory that it takes to `kept`, which outlives it. What is received before
    /// begin(), connected() or a request belongs to nothing that is known.
    RecordedTalk(const QString &channel, std::optional<RecordedDevice::Gpib> gpib, qint64 &kept);

    /// What is received from now on comes unasked.
    void begin(qint64 time);
    /// The same, after another connection.
    void connected(qint64 time);
    /// Events are missing here: no request is half sent, and none waits for its reply.
    void part();
    void sent(const QByteArray &bytes, qint64 time);
    /// False: it is not known what the bytes belong to, and they are not kept.
    bool received(const QByteArray &bytes, qint64 time);
    /// Where the connections before went, when this is the first one that goes elsewhere; else
    /// empty.
    QString movesFrom(const QString &place);

    /// The device, once nothing more follows; nothing when there was no data.
    std::optional<RecordedDevice> finish();

private:
    using Turn = TimedPiece::Turn;

    void open(Pieces &pieces, Turn turn, qint64 time);
    void keep(const QByteArray &bytes);
    [[nodiscard]] Turn turnOf(int afterMs) const;

    qint64 &m_kept;
    RecordedDevice m_device;
    /// What was sent of a request that is not ended yet.
    LineReader m_request;
    /// Takes what is received: the reply to the last request, or what came unasked. Null: not
    /// known.
    Pieces *m_open = nullptr;
    /// Of its first piece.
    Turn m_turn = Turn::Next;
    qint64 m_openedAt = 0;
    /// Milliseconds from there to the last piece.
    qint64 m_lastMs = 0;
    QString m_place;
    bool m_hasMoved = false;
};

} // namespace corvane::bench
