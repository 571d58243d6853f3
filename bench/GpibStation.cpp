// SPDX-License-Identifier: GPL-3.0-or-later
#include "bench/GpibStation.h"

#include "bench/FloodPattern.h"

namespace corvane::bench {

GpibStation::GpibStation(Responder &device)
    : m_device(device)
    , m_pieces([this](const TimedPiece &piece) {
        if (piece.bytes.isEmpty())
            return;
        m_output.push_back({piece.bytes, piece.end});
        Q_EMIT ready();
    })
{
}

void GpibStation::listen(const QByteArray &bytes, bool end)
{
    if (!m_plugged)
        return;
    if (!m_keepUnread) {
        m_pieces.clear();
        m_output.clear();
    }
    for (const QByteArray &line : m_reader.feed(bytes))
        answer(line);
    const QByteArray rest = end ? m_reader.take() : QByteArray();
    if (!rest.isEmpty())
        answer(rest);
}

void GpibStation::answer(const QByteArray &line)
{
    const Pieces reply = m_device.respond(line);
    if (reply.empty())
        return;
    m_keepUnread = m_faults.fault().kind != Fault::Kind::None;
    const SpoiltReply spoilt = m_faults.spoil(reply);
    m_pieces.add(spoilt.pieces);
    if (spoilt.floodBytes > 0)
        m_pieces.add({{0, floodPattern(0, spoilt.floodBytes), true}});
}

GpibStation::Talk GpibStation::talk(std::optional<char> stop)
{
    if (m_output.empty() || !m_plugged)
        return {};
    Talk next = m_output.front();
    m_output.pop_front();
    const qsizetype found = stop ? next.bytes.indexOf(*stop) : -1;
    if (found >= 0 && found + 1 < next.bytes.size()) {
        m_output.push_front({next.bytes.sliced(found + 1), next.end});
        next = {next.bytes.first(found + 1), false};
    }
    return next;
}

void GpibStation::clear()
{
    m_reader.take();
    m_pieces.clear();
    m_output.clear();
}

void GpibStation::unplug()
{
    clear();
    m_plugged = false;
}

bool GpibStation::replug()
{
    m_plugged = true;
    return true;
}

} // namespace corvane::bench
