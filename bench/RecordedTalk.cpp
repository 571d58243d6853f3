// SPDX-License-Identifier: GPL-3.0-or-later
#include "bench/RecordedTalk.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace corvane::bench {

RecordedTalk::RecordedTalk(const QString &channel, std::optional<RecordedDevice::Gpib> gpib,
                           qint64 &kept)
    : m_kept(kept)
{
    m_device.channel = channel;
    m_device.gpib = gpib;
    m_device.unasked.emplace_back();
}

void RecordedTalk::begin(qint64 time)
{
    open(m_device.unasked.back(), Turn::Unasked, time);
}

void RecordedTalk::connected(qint64 time)
{
    keep({});
    m_request.take();
    m_device.unasked.emplace_back();
    begin(time);
}

void RecordedTalk::part()
{
    m_request.take();
    m_open = nullptr;
}

void RecordedTalk::open(Pieces &pieces, Turn turn, qint64 time)
{
    m_open = &pieces;
    m_turn = turn;
    m_openedAt = time;
    m_lastMs = 0;
}

void RecordedTalk::sent(const QByteArray &bytes, qint64 time)
{
    QList<QByteArray> lines = m_request.feed(bytes);
    // A message on the GPIB ends by its mark too.
    if (const QByteArray rest = m_device.gpib ? m_request.take() : QByteArray(); !rest.isEmpty())
        lines.append(rest);
    for (const QByteArray &line : lines) {
        keep(line);
        if (++m_device.exchanges == 1)
            m_device.firstRequest = line;
        open(m_device.replies[line].emplace_back(), Turn::Reply, time);
    }
}

bool RecordedTalk::received(const QByteArray &bytes, qint64 time)
{
    constexpr qint64 longestMs = std::numeric_limits<int>::max();
    if (bytes.isEmpty())
        return true;
    if (!m_open)
        return false;
    keep(bytes);
    // Rounded from the request on, so that many small delays add up to the whole.
    const qint64 ms = std::max(m_lastMs, (time - m_openedAt + 500) / 1000);
    const auto afterMs = static_cast<int>(std::min(ms - m_lastMs, longestMs));
    m_open->push_back({afterMs, bytes, false, turnOf(afterMs)});
    m_lastMs = ms;
    return true;
}

/// On the GPIB nothing comes that is not read.
TimedPiece::Turn RecordedTalk::turnOf(int afterMs) const
{
    if (m_device.gpib)
        return Turn::Next;
    if (m_open->empty())
        return m_turn;
    return afterMs >= Recording::quietMs ? Turn::Unasked : Turn::Rest;
}

QString RecordedTalk::movesFrom(const QString &place)
{
    const QString before = std::exchange(m_place, place);
    const bool moves = !before.isEmpty() && before != place;
    return moves && !std::exchange(m_hasMoved, true) ? before : QString();
}

/// Counts what a piece or a request takes, with what is around it.
void RecordedTalk::keep(const QByteArray &bytes)
{
    constexpr qint64 around = 160;
    m_kept += bytes.size() + around;
}

std::optional<RecordedDevice> RecordedTalk::finish()
{
    const auto markEnds = [](std::vector<Pieces> &all) {
        for (Pieces &pieces : all) {
            if (!pieces.empty())
                pieces.back().end = true;
        }
    };
    if (m_device.exchanges == 0 && std::ranges::all_of(m_device.unasked, &Pieces::empty))
        return std::nullopt;
    markEnds(m_device.unasked);
    for (std::vector<Pieces> &replies : m_device.replies)
        markEnds(replies);
    return std::move(m_device);
}

} // namespace corvane::bench
