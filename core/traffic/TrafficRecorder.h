// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/traffic/TrafficEvents.h"
#include "devices/LargePage.h"
#include "devices/SteadyClock.h"

#include <QObject>

#include <deque>
#include <memory>
#include <optional>
#include <vector>

namespace corvane {

class ChannelSession;

/// What went over the Channels, both ways, and what became of their connections: always on, in a
/// bounded memory. When that is full the oldest events make room.
///
/// Events are numbered as they come, from 0; the numbers of those that were dropped are not given
/// again.
class TrafficRecorder : public QObject, public TrafficEvents
{
    Q_OBJECT

public:
    /// Memory that is taken at most, whatever the events are like.
    static constexpr qsizetype mostKept = qsizetype{32} << 20;
    /// Bytes of one event at most: more are recorded as several.
    static constexpr qsizetype longestEvent = qsizetype{32} << 10;

    /// `most` bytes are kept, two blocks of them at least.
    explicit TrafficRecorder(qsizetype most = mostKept);
    ~TrafficRecorder() override;

    /// Records all that passes the session's transport, whoever uses it, and the session's
    /// connections and faults, for as long as both live.
    void listenTo(const ChannelSession &session);
    /// Records an event that happens now.
    void add(int channel, TrafficKind kind, QByteArrayView content);

    [[nodiscard]] const QDateTime &began() const override { return m_began; }
    [[nodiscard]] qint64 now() const override { return steadyMicroseconds() - m_start; }
    [[nodiscard]] quint64 first() const override;
    [[nodiscard]] quint64 end() const override { return m_end; }
    [[nodiscard]] TrafficEvent at(quint64 number) const override;
    /// The last Addressed event before first(): what follows is for that device until another one
    /// is told. Nothing when there was none. Its content lives until the next call of add().
    [[nodiscard]] const std::optional<TrafficEvent> &addressedBefore() const
    {
        return m_addressedBefore;
    }
    /// The memory taken, in bytes.
    [[nodiscard]] qsizetype size() const { return blockSize * std::ssize(m_blocks); }

Q_SIGNALS:
    /// The events before this number are about to be dropped: the last moment to read them.
    void aboutToDrop(quint64 before);

private:
    /// Holds events by their number: their contents from the front, what is known of each from the
    /// back.
    class Block;

    static constexpr qsizetype blockSize = largePageSize;

    void addFault(int channel, const QString &text);
    void addText(int channel, TrafficKind kind, const QString &text);
    void addPiece(int channel, TrafficKind kind, QByteArrayView content);
    void startBlock(qint64 time);
    void keepAddress(const Block &dropped);

    const std::size_t m_mostBlocks;
    QDateTime m_began;
    const qint64 m_start = steadyMicroseconds();
    std::deque<std::unique_ptr<Block>> m_blocks;
    quint64 m_end = 0;
    std::optional<TrafficEvent> m_addressedBefore;
    QByteArray m_addressBefore;    ///< its content
    std::vector<QString> m_faults; ///< by Channel: the fault that was told in this turn of events
};

} // namespace corvane
