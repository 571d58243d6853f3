// SPDX-License-Identifier: GPL-3.0-or-later
#include "bench/FaultLine.h"

#include <utility>

namespace corvane::bench {

namespace {

using Kind = Fault::Kind;

constexpr const char *lineEnd = "\r\n";

QByteArray bytesOf(const Pieces &reply)
{
    QByteArray bytes;
    for (const TimedPiece &piece : reply)
        bytes += piece.bytes;
    return bytes;
}

QByteArray withoutLineEnd(QByteArray reply)
{
    while (reply.endsWith('\r') || reply.endsWith('\n'))
        reply.chop(1);
    return reply;
}

/// The reply, its first piece that much later, and no request hurries it.
Pieces delayed(Pieces reply, int ms)
{
    using Turn = TimedPiece::Turn;
    reply.front().afterMs += ms;
    if (reply.front().turn == Turn::Reply)
        reply.front().turn = Turn::Next;
    return reply;
}

Pieces joined(Pieces first, const Pieces &second)
{
    first.insert(first.end(), second.begin(), second.end());
    return first;
}

QByteArray garbage(const QByteArray &text)
{
    if (!text.isEmpty())
        return text + lineEnd;
    QByteArray all;
    for (int value = 0; value < 256; ++value)
        all.append(static_cast<char>(value));
    return all + lineEnd;
}

/// Cut where a receiver finds it hardest: inside the address in front ("<0", "5:"), in the middle
/// of the text, and between CR and LF.
Pieces split(const QByteArray &reply, int startMs, int ms)
{
    QByteArray rest = withoutLineEnd(reply);
    Pieces pieces;
    const auto cut = [&](qsizetype size) {
        if (size > 0)
            pieces.push_back({pieces.empty() ? startMs : ms, rest.first(size), false});
        rest = rest.sliced(size);
    };
    if (rest.startsWith('<') && rest.size() >= 4)
        cut(2);
    cut(rest.size() / 2);
    cut(rest.size());
    for (const char c : reply.sliced(withoutLineEnd(reply).size()))
        pieces.push_back({pieces.empty() ? startMs : ms, QByteArray(1, c), false});
    if (!pieces.empty())
        pieces.back().end = true;
    return pieces;
}

} // namespace

void FaultLine::order(const Fault &fault)
{
    m_fault = fault;
    m_held.clear();
    ++m_orders;
}

SpoiltReply FaultLine::spoil(const Pieces &reply)
{
    const int startMs = reply.front().afterMs;
    const Fault fault = m_fault;
    if (fault.once)
        m_fault = {};
    switch (fault.kind) {
    case Kind::None:
        // A reply held back by a fault that acted once comes before the next one.
        return {joined(std::exchange(m_held, {}), reply)};
    case Kind::Silent:
    case Kind::Unplug:
        return {};
    case Kind::Slow:
        return {delayed(reply, fault.ms)};
    case Kind::Late:
        return {std::exchange(m_held, reply)};
    case Kind::Split:
        return {split(bytesOf(reply), startMs, fault.ms)};
    case Kind::Garbage:
        return {{{startMs, garbage(fault.text), true}}};
    case Kind::Twice:
        return {joined(reply, delayed(reply, fault.ms))};
    case Kind::NoEnd:
        return {{{startMs, withoutLineEnd(bytesOf(reply)), false}}};
    case Kind::Drop:
        return {.pieces = {}, .drop = true};
    case Kind::Flood:
        return {.pieces = {}, .floodBytes = fault.bytes, .floodPiece = fault.piece};
    }
    return {};
}

} // namespace corvane::bench
