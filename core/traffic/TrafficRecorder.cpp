// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/traffic/TrafficRecorder.h"

#include "core/channels/ChannelSession.h"
#include "devices/Transport.h"

#include <algorithm>
#include <limits>

namespace corvane {

namespace {

/// What is known of an event, in eight bytes: a recording is mostly short commands and replies.
struct Mark
{
    quint32 sinceBlock; ///< µs
    quint32 end : 22;   ///< of its content in the block
    quint32 channel : 6;
    quint32 kind : 4;
};
static_assert(sizeof(Mark) == 8);

} // namespace

class TrafficRecorder::Block
{
public:
    void reset(quint64 first, qint64 time)
    {
        m_first = first;
        m_time = time;
        m_count = 0;
        m_addressed.reset();
    }

    [[nodiscard]] quint64 first() const { return m_first; }
    [[nodiscard]] quint64 end() const { return m_first + m_count; }
    /// The number of its last Addressed event.
    [[nodiscard]] std::optional<quint64> addressed() const { return m_addressed; }

    [[nodiscard]] bool takes(qint64 time, qsizetype size) const
    {
        const auto marks = static_cast<qsizetype>(m_count + 1) * qsizetype{sizeof(Mark)};
        return contentEnd(m_count) + size + marks <= blockSize &&
               time - m_time <= std::numeric_limits<quint32>::max();
    }

    void add(const TrafficEvent &event)
    {
        const qsizetype from = contentEnd(m_count);
        std::ranges::copy(event.content, m_bytes.get() + from);
        if (event.kind == TrafficKind::Addressed)
            m_addressed = end();
        ++m_count;
        *markOf(m_count - 1) = {static_cast<quint32>(event.time - m_time),
                                static_cast<quint32>(from + event.content.size()) & 0x3F'FFFFU,
                                static_cast<quint32>(event.channel) & 0x3FU,
                                static_cast<quint32>(event.kind) & 0xFU};
    }

    [[nodiscard]] TrafficEvent at(quint64 number) const
    {
        const auto index = static_cast<std::size_t>(number - m_first);
        const Mark mark = *markOf(index);
        const qsizetype from = contentEnd(index);
        return {m_time + mark.sinceBlock, static_cast<int>(mark.channel),
                static_cast<TrafficKind>(mark.kind),
                QByteArrayView(m_bytes.get() + from, mark.end - from)};
    }

private:
    /// Where the content of the first `count` events ends.
    [[nodiscard]] qsizetype contentEnd(std::size_t count) const
    {
        return count == 0 ? 0 : markOf(count - 1)->end;
    }
    [[nodiscard]] Mark *markOf(std::size_t index) const
    {
        return reinterpret_cast<Mark *>(m_bytes.get() + blockSize) - index - 1;
    }

    LargePage m_bytes = makeLargePage();
    quint64 m_first = 0;
    qint64 m_time = 0;
    std::size_t m_count = 0;
    std::optional<quint64> m_addressed;
};

TrafficRecorder::TrafficRecorder(qsizetype most)
    : m_mostBlocks(static_cast<std::size_t>(std::max<qsizetype>(most / blockSize, 2)))
    , m_began(QDateTime::currentDateTimeUtc())
{
}

TrafficRecorder::~TrafficRecorder() = default;

void TrafficRecorder::listenTo(const ChannelSession &session)
{
    using Session = ChannelSession;
    const int channel = session.index();
    const Transport *transport = &session.transport();
    connect(transport, &Transport::sent, this,
            [this, channel](QByteArrayView bytes) { add(channel, TrafficKind::Sent, bytes); });
    connect(transport, &Transport::received, this,
            [this, channel](QByteArrayView bytes) { add(channel, TrafficKind::Received, bytes); });
    connect(transport, &Transport::addressed, this, [this, channel](const QString &address) {
        addText(channel, TrafficKind::Addressed, address);
    });
    connect(transport, &Transport::timedOut, this,
            [this, channel] { add(channel, TrafficKind::TimedOut, {}); });
    const auto fault = [this, channel](const QString &text) { addFault(channel, text); };
    connect(transport, &Transport::failed, this, fault);
    connect(&session, &Session::connectFailed, this, fault);
    connect(&session, &Session::faultChanged, this, fault);
    connect(&session, &Session::openChanged, this, [this, channel, &session](bool open) {
        addText(channel, open ? TrafficKind::Connected : TrafficKind::Disconnected,
                open ? session.place() : QString());
    });
}

/// A fault is told by the transport and by the session it befell, in one turn of the event loop; it
/// is one event. The same one in a later turn is another.
void TrafficRecorder::addFault(int channel, const QString &text)
{
    const auto index = static_cast<std::size_t>(channel);
    if (text.isEmpty() || (index < m_faults.size() && m_faults[index] == text))
        return;
    addText(channel, TrafficKind::Fault, text);
    if (m_faults.empty())
        QMetaObject::invokeMethod(
            this, [this] { m_faults.clear(); }, Qt::QueuedConnection);
    m_faults.resize(std::max(m_faults.size(), index + 1));
    m_faults[index] = text;
}

void TrafficRecorder::addText(int channel, TrafficKind kind, const QString &text)
{
    add(channel, kind, text.toUtf8());
}

void TrafficRecorder::add(int channel, TrafficKind kind, QByteArrayView content)
{
    if (const auto index = static_cast<std::size_t>(channel); index < m_faults.size())
        m_faults[index].clear();
    do {
        const QByteArrayView piece = content.first(std::min(content.size(), longestEvent));
        addPiece(channel, kind, piece);
        content = content.sliced(piece.size());
    } while (!content.isEmpty());
}

void TrafficRecorder::addPiece(int channel, TrafficKind kind, QByteArrayView content)
{
    const qint64 time = now();
    if (m_blocks.empty() || !m_blocks.back()->takes(time, content.size()))
        startBlock(time);
    m_blocks.back()->add({time, channel, kind, content});
    ++m_end;
}

/// The oldest block is used anew once all are full: its events are the ones to go.
void TrafficRecorder::startBlock(qint64 time)
{
    std::unique_ptr<Block> block;
    if (m_blocks.size() >= m_mostBlocks) {
        Q_EMIT aboutToDrop(m_blocks.front()->end());
        keepAddress(*m_blocks.front());
        block = std::move(m_blocks.front());
        m_blocks.pop_front();
    } else {
        block = std::make_unique<Block>();
    }
    block->reset(m_end, time);
    m_blocks.push_back(std::move(block));
}

void TrafficRecorder::keepAddress(const Block &dropped)
{
    const std::optional<quint64> addressed = dropped.addressed();
    if (!addressed)
        return;
    m_addressedBefore = dropped.at(*addressed);
    m_addressBefore = m_addressedBefore->content.toByteArray();
    m_addressedBefore->content = m_addressBefore;
}

quint64 TrafficRecorder::first() const
{
    return m_blocks.empty() ? 0 : m_blocks.front()->first();
}

TrafficEvent TrafficRecorder::at(quint64 number) const
{
    const auto after = std::ranges::upper_bound(m_blocks, number, {}, &Block::first);
    return (*std::prev(after))->at(number);
}

} // namespace corvane
