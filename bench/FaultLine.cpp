#include "bench/FaultLine.h"

#include <utility>

namespace corvane::bench {

namespace {

using Kind = Fault::Kind;

constexpr const char *lineEnd = "\r\n";

QByteArray withoutLineEnd(const QByteArray &reply)
{
    return reply.endsWith(lineEnd) ? reply.chopped(2) : reply;
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
std::vector<TimedPiece> split(const QByteArray &reply, int ms)
{
    QByteArray rest = withoutLineEnd(reply);
    std::vector<TimedPiece> pieces;
    const auto cut = [&](qsizetype size) {
        if (size > 0)
            pieces.push_back({pieces.empty() ? 0 : ms, rest.first(size), false});
        rest = rest.sliced(size);
    };
    if (rest.startsWith('<') && rest.size() >= 4)
        cut(2);
    cut(rest.size() / 2);
    cut(rest.size());
    for (const char c : reply.sliced(withoutLineEnd(reply).size()))
        pieces.push_back({pieces.empty() ? 0 : ms, QByteArray(1, c), false});
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

SpoiltReply FaultLine::spoil(const QByteArray &reply)
{
    const Fault fault = m_fault;
    if (fault.once)
        m_fault = {};
    switch (fault.kind) {
    case Kind::None:
        // A reply held back by a fault that acted once comes before the next one.
        if (!m_held.isEmpty())
            return {{{0, std::exchange(m_held, {}), true}, {0, reply, true}}};
        return {{{0, reply, true}}};
    case Kind::Silent:
    case Kind::Unplug:
        return {};
    case Kind::Slow:
        return {{{fault.ms, reply, true}}};
    case Kind::Late: {
        const QByteArray earlier = std::exchange(m_held, reply);
        return earlier.isEmpty() ? SpoiltReply{} : SpoiltReply{{{0, earlier, true}}};
    }
    case Kind::Split:
        return {split(reply, fault.ms)};
    case Kind::Garbage:
        return {{{0, garbage(fault.text), true}}};
    case Kind::Twice:
        return {{{0, reply, true}, {fault.ms, reply, true}}};
    case Kind::NoEnd:
        return {{{0, withoutLineEnd(reply), false}}};
    case Kind::Drop:
        return {.pieces = {}, .drop = true};
    case Kind::Flood:
        return {.pieces = {}, .floodBytes = fault.bytes, .floodPiece = fault.piece};
    }
    return {};
}

} // namespace corvane::bench
